#include "screens/SchedulesForm.h"

#include "screens/FormSection.h"
#include "screens/WordButton.h"

using namespace Qt::StringLiterals;

SchedulesForm::SchedulesForm(const Look &look, QWidget *parent) : SettingsForm(parent) {
    auto *section = new FormSection(look, u"Scheduled runs"_s);
    section->addText(
        u"Run a prompt on a schedule, even while Ostrelin is closed. The result is saved as a chat."_s);
    auto *manage = new WordButton(look, u"Manage scheduled runs…"_s);
    connect(manage, &WordButton::clicked, this, &SchedulesForm::schedulesRequested);
    section->addButtons({manage});
    setSections({section});
}
