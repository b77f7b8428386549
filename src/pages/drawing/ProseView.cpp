#include "pages/drawing/ProseView.h"

namespace {

TextPart::Setting settingOf(const DrawingTheme &theme, const BlockContent &like) {
    TextPart::Setting setting{.use = TextPart::Use::selectable};
    if (const auto *heading = std::get_if<block::Heading>(&like)) {
        setting.step = heading->level <= 2 ? TextStep::title2 : TextStep::headline;
    } else if (std::holds_alternative<block::Subtitle>(like)) {
        setting.step = TextStep::title3;
        setting.color = theme.secondary;
    }
    return setting;
}

} // namespace

ProseView::ProseView(const DrawingTheme &theme, const BlockContent &like)
    : BlockView(theme),
      m_role(std::holds_alternative<block::Paragraph>(like) ? QAccessible::Paragraph : QAccessible::Heading),
      m_text(theme, settingOf(theme, like)) {}

double ProseView::take(const BlockContent &content) {
    if (const auto *paragraph = std::get_if<block::Paragraph>(&content))
        return m_text.setText(joinedLines(paragraph->lines));
    if (const auto *heading = std::get_if<block::Heading>(&content))
        return m_text.setText(heading->text);
    return m_text.setText(std::get<block::Subtitle>(content).text);
}

SpokenPart ProseView::spoken() const {
    return spokenText(m_text, m_role);
}
