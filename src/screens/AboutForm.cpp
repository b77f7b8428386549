#include "screens/AboutForm.h"

#include "core/AppState.h"
#include "engine/EngineBuild.h"
#include "platform/Bundle.h"
#include "screens/FormSection.h"
#include "screens/Style.h"
#include "screens/TextView.h"
#include "screens/WordButton.h"

#include <QDesktopServices>
#include <QHBoxLayout>

using namespace Qt::StringLiterals;

AboutForm::AboutForm(AppState &app, const Look &look, QWidget *parent)
    : SettingsForm(parent),
      m_app(app),
      m_engineBuild(engineBuild(resourcesFolder())),
      m_model(currentModel()),
      m_poweredBy(new TextView(look, {.text = TextStyle::callout})),
      m_engine(new TextView(look, {.text = TextStyle::caption})),
      m_licences(new TextView(look, {.text = TextStyle::callout, .ink = TextView::Ink::secondary})),
      m_updates(new TextView(look, {.text = TextStyle::callout})),
      m_check(new WordButton(look, u"Check for updates"_s)),
      m_download(new WordButton(look, u"Download"_s)) {
    // To be copied into a question for help, also by those who have no mouse.
    m_engine->setFocusPolicy(Qt::StrongFocus);
    setSections({makeSection(look)});
    connect(m_check, &WordButton::clicked, &app.updates(), &UpdateChecker::check);
    connect(m_download, &WordButton::clicked, this,
            [this] { QDesktopServices::openUrl(m_model.downloadURL); });
    connect(&app, &AppState::settingsChanged, this, &AboutForm::follow);
    connect(&app, &AppState::activeTierChanged, this, &AboutForm::follow);
    connect(&app.updates(), &UpdateChecker::statusChanged, this, &AboutForm::follow);
    follow();
}

FormSection *AboutForm::makeSection(const Look &look) {
    auto *section = new FormSection(look, u"About"_s);
    section->addValue(u"Version"_s, m_model.version);
    section->addControl(m_poweredBy);
    section->addControl(m_engine);
    section->addControl(m_licences);
    m_offline = section->addText(u"Update checks are off while Offline Mode is on."_s);
    m_online = section->addControl(makeUpdates());
    return section;
}

QWidget *AboutForm::makeUpdates() {
    auto *updates = new QWidget;
    auto *column = new QVBoxLayout(updates);
    column->setContentsMargins({});
    column->setSpacing(style::spaceSmall);
    m_download->setWidest(style::formWidth);
    auto *line = new QHBoxLayout;
    line->setSpacing(style::space);
    line->addWidget(m_check, 0, Qt::AlignTop);
    line->addWidget(m_updates, 1, Qt::AlignVCenter);
    column->addLayout(line);
    column->addWidget(m_download, 0, Qt::AlignLeft);
    return updates;
}

AboutFormModel AboutForm::currentModel() const {
    return aboutFormModel({.program = programVersion(),
                           .engineBuild = m_engineBuild,
                           .settings = m_app.settings(),
                           .activeTier = m_app.activeTier(),
                           .updates = m_app.updates().status()});
}

void AboutForm::follow() {
    m_model = currentModel();
    m_poweredBy->setText(m_model.poweredBy);
    m_engine->setText(m_model.engine);
    m_licences->setText(m_model.licences);
    m_offline->setVisible(!m_model.canCheck);
    m_online->setVisible(m_model.canCheck);
    m_updates->setText(m_model.updates);
    // What is told of where the focus is gets read aloud.
    m_check->setAccessibleDescription(m_model.updates);
    if (!m_model.downloading.isEmpty())
        m_download->setName(m_model.downloading);
    m_download->setVisible(!m_model.downloading.isEmpty());
}
