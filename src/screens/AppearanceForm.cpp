#include "screens/AppearanceForm.h"

#include "core/AppState.h"
#include "screens/FormSection.h"
#include "screens/Look.h"
#include "screens/SegmentedPicker.h"
#include "screens/ThemePicker.h"

using namespace Qt::StringLiterals;

namespace {

template<typename Choice, size_t count>
QStringList namesOf(const std::array<Choice, count> &choices) {
    QStringList names;
    for (const Choice choice : choices)
        names.append(displayName(choice));
    return names;
}

} // namespace

AppearanceForm::AppearanceForm(AppState &app, const Look &look, QWidget *parent)
    : SettingsForm(parent),
      m_app(app),
      m_theme(new ThemePicker(look)),
      m_textSize(new SegmentedPicker(look, u"Text size"_s, namesOf(textSizes))),
      m_typeFace(new SegmentedPicker(look, u"Typeface"_s, namesOf(typeFaces))) {
    auto *appearance = new FormSection(look, u"Appearance"_s);
    appearance->addTallRow(u"Theme"_s, m_theme);
    auto *text = new FormSection(look, u"Text"_s);
    text->addRow(u"Text size"_s, m_textSize);
    text->addRow(u"Typeface"_s, m_typeFace);
    setSections({appearance, text});

    connect(m_theme, &ThemePicker::picked, this,
            [&app](Theme theme) { app.changeSetting(&Settings::theme, theme); });
    connect(m_textSize, &SegmentedPicker::picked, this,
            [&app](int index) { app.changeSetting(&Settings::textSize, textSizes.at(size_t(index))); });
    connect(m_typeFace, &SegmentedPicker::picked, this,
            [&app](int index) { app.changeSetting(&Settings::typeFace, typeFaces.at(size_t(index))); });
    connect(&app, &AppState::settingsChanged, this, &AppearanceForm::follow);
    follow();
}

void AppearanceForm::follow() {
    m_theme->setTheme(m_app.settings().theme);
    m_textSize->setCurrent(int(m_app.settings().textSize));
    m_typeFace->setCurrent(int(m_app.settings().typeFace));
}
