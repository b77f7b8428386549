#include "screens/DataForm.h"

#include "screens/FormSection.h"
#include "screens/Style.h"
#include "screens/WordButton.h"

using namespace Qt::StringLiterals;

DataForm::DataForm(const Look &look, QWidget *parent) : SettingsForm(parent) {
    auto *section = new FormSection(look, u"Data"_s);
    auto *erase =
        new WordButton(look, u"Delete all my data related to Ostrelin (including my downloaded LLMs)"_s,
                       WordButton::Tone::destructive);
    erase->setWidest(style::formWidth);
    connect(erase, &WordButton::clicked, this, &DataForm::eraseRequested);
    section->addButtons({erase});
    setSections({section});
}
