#include "pages/drawing/CodeBlock.h"

#include "pages/drawing/Fill.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double radius = 8;
constexpr double barPaddingX = 12;
constexpr double barPaddingY = 8;
constexpr double codePadding = 12;
constexpr double languageTracking = 0.8;
constexpr double buttonReachX = 8; ///< of the button's area, beyond its word
constexpr double buttonReachY = 4;

QStringView withoutOuterLineEnds(QStringView code) {
    const auto isLineEnd = [](QChar character) { return character == u'\n' || character == u'\r'; };
    while (!code.isEmpty() && isLineEnd(code.front()))
        code = code.sliced(1);
    while (!code.isEmpty() && isLineEnd(code.back()))
        code.chop(1);
    return code;
}

TextPart::Setting languageSetting(const DrawingTheme &theme) {
    TextPart::Setting setting = captionSetting(theme, languageTracking);
    setting.reading = TextPart::Reading::plain;
    return setting;
}

} // namespace

CodeBlock::CodeBlock(const DrawingTheme &theme)
    : BlockView(theme),
      m_language(theme, languageSetting(theme)),
      m_copy(theme,
             {.step = TextStep::button, .color = theme.secondary, .reading = TextPart::Reading::plain}),
      m_code(theme, {.step = TextStep::code,
                     .alignment = Qt::AlignLeft | Qt::AlignAbsolute,
                     .reading = TextPart::Reading::plain}) {
    m_copy.layIn(theme.bodySize * 10);
    if (theme.showsButtons)
        m_copy.setText(u"Copy");
    m_copy.layIn(m_copy.usedWidth());
}

double CodeBlock::take(const BlockContent &content) {
    const auto &[language, code] = std::get<block::Code>(content);
    m_written = code.toString();
    const bool isSameLanguage = m_language.shows(language);
    m_language.setText(language);
    const double changed = m_code.area().top() + m_code.setText(withoutOuterLineEnds(code));
    return isSameLanguage ? std::min(changed, height() - radius) : 0;
}

double CodeBlock::arrange(double width) {
    const double room = std::max(width - 3 * barPaddingX - m_copy.usedWidth(), 1.0);
    const double words = std::max(m_language.layIn(room), m_copy.height());
    m_language.moveTo({barPaddingX, barPaddingY + std::floor((words - m_language.height()) / 2)});
    m_copy.moveTo(
        {width - barPaddingX - m_copy.usedWidth(), barPaddingY + std::floor((words - m_copy.height()) / 2)});
    m_barHeight = words + 2 * barPaddingY;
    const double code = m_code.layIn(std::max(width - 2 * codePadding, 1.0));
    m_code.moveTo({codePadding, m_barHeight + figure::hairline + codePadding});
    return m_code.area().top() + code + codePadding;
}

void CodeBlock::listTexts(TextParts &texts) const {
    texts.insert(texts.end(), {&m_language, &m_copy, &m_code});
}

void CodeBlock::drawFigure(QPainter &painter, const QRectF &) const {
    const double half = figure::hairline / 2.0;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme().shade(figure::hairlineOpacity), figure::hairline));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(0, 0, width(), height()).adjusted(half, half, -half, -half), radius,
                            radius);
    fill(painter, QRectF(figure::hairline, m_barHeight, width() - 2 * figure::hairline, figure::hairline),
         theme().shade(figure::hairlineOpacity));
}

QList<Target> CodeBlock::buttons() const {
    if (!theme().showsButtons)
        return {};
    const QRectF area = m_copy.area().adjusted(-buttonReachX, -buttonReachY, buttonReachX, buttonReachY);
    return {{.kind = Target::Kind::copy, .name = u"Copy"_s, .copied = m_written, .areas = {area}}};
}

SpokenPart CodeBlock::spoken() const {
    SpokenPart code{.role = QAccessible::Grouping,
                    .name = m_language.text().isEmpty() ? u"Code"_s : u"Code, "_s + m_language.text(),
                    .area = QRectF(0, 0, width(), height())};
    for (const Target &button : buttons())
        code.parts.push_back({.role = QAccessible::Button,
                              .name = button.name,
                              .area = button.areas.first(),
                              .target = button});
    code.parts.push_back(spokenText(m_code));
    return code;
}
