#include "screens/SearchForm.h"

#include "core/AppState.h"
#include "screens/FormSection.h"
#include "screens/SegmentedPicker.h"

using namespace Qt::StringLiterals;

namespace {
/// In the order of their words.
constexpr std::array searchModes = {SearchMode::off, SearchMode::ask, SearchMode::always};
} // namespace

SearchForm::SearchForm(AppState &app, const Look &look, QWidget *parent)
    : SettingsForm(parent),
      m_app(app),
      m_mode(new SegmentedPicker(look, u"Web search"_s, {u"Off"_s, u"Ask each time"_s, u"Always allow"_s})) {
    auto *section = new FormSection(look, u"Web search"_s);
    m_rows = {section->addRow(u"Web search"_s, m_mode),
              section->addText(
                  u"With web search off, your chats stay on this Mac. With web search on, each search query "
                  "is sent to DuckDuckGo, and pages Ostrelin opens can see this Mac's IP address."_s)};
    m_refusal = section->addText(u"Web search needs a larger model."_s);
    setSections({section});
    connect(m_mode, &SegmentedPicker::picked, this,
            [&app](int index) { app.changeSetting(&Settings::searchMode, searchModes.at(size_t(index))); });
    connect(&app, &AppState::settingsChanged, this, &SearchForm::follow);
    connect(&app, &AppState::activeTierChanged, this, &SearchForm::follow);
    follow();
}

void SearchForm::follow() {
    m_mode->setCurrent(int(m_app.settings().searchMode));
    const std::optional<ModelTier> tier = m_app.activeTier();
    const bool canSearch = !tier || tier->supportsTools;
    for (QWidget *row : m_rows)
        row->setVisible(canSearch);
    m_refusal->setVisible(!canSearch);
}
