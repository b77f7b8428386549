#include "pages/drawing/TextPart.h"

#include "pages/InlineText.h"
#include "pages/drawing/LinkAddress.h"
#include "pages/drawing/Tabular.h"
#include "pages/drawing/Typefaces.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr int leastCodeSize = 9;
constexpr double codeGroundRadius = 3;
constexpr double codeGroundReach = 2; ///< beyond the letters at both ends

/// Letter by letter, since a capital may be longer than what it is the capital of.
AttributedText inCapitals(const AttributedText &text) {
    AttributedText result;
    qsizetype done = 0;
    for (InlineRun run : text.runs) {
        result.text += text.text.sliced(done, run.start - done).toUpper();
        done = run.start + run.length;
        const QString letters = text.text.sliced(run.start, run.length).toUpper();
        run.start = result.text.size();
        run.length = letters.size();
        result.text += letters;
        result.runs.append(run);
    }
    result.text += text.text.sliced(done).toUpper();
    return result;
}

/// Code must not read otherwise than the machine reads that it is copied to.
QTextCharFormat codeFormat() {
    QTextCharFormat format;
    format.setProperty(TextFlow::showsTurns, true);
    return format;
}

AttributedText readText(const QString &source, const TextPart::Setting &setting) {
    const bool isPlain = setting.reading == TextPart::Reading::plain;
    const AttributedText text = isPlain ? AttributedText{source, {}} : inlineAttributedText(source);
    return setting.letters == TextPart::Letters::capitals ? inCapitals(text) : text;
}

} // namespace

TextPart::TextPart(const DrawingTheme &theme, const Setting &setting)
    : m_theme(theme),
      m_setting(setting),
      m_font(theme.font(setting.step, setting.tracking)) {
    m_flow.setFormat(m_font, theme.lineSpacing, setting.alignment);
}

double TextPart::setText(QStringView source) {
    if (shows(source))
        return height();
    m_source = source.toString();
    const AttributedText text = readText(m_source, m_setting);
    m_links.clear();
    m_codes.clear();
    for (const InlineRun &run : text.runs) {
        if (const auto address = linkAddress(run.link))
            appendLink({int(run.start), int(run.length), *address});
        if (run.styles.testFlag(InlineStyle::code))
            m_codes.append({int(run.start), int(run.start + run.length)});
    }
    const double changed = m_flow.setText(text.text, formatsOf(text));
    return std::min(changed, height());
}

void TextPart::appendLink(const Link &link) {
    // What looks different within a link is a run of its own.
    const bool goesOn = !m_links.isEmpty() && m_links.last().address == link.address &&
                        m_links.last().start + m_links.last().length == link.start;
    if (goesOn)
        m_links.last().length += link.length;
    else
        m_links.append(link);
}

double TextPart::layIn(double width) {
    m_flow.setWidth(width);
    return height();
}

double TextPart::height() const {
    return std::ceil(m_flow.height());
}

double TextPart::usedWidth() const {
    return std::ceil(m_flow.usedWidth());
}

QList<QRectF> TextPart::areasOf(const Link &link) const {
    QList<QRectF> areas = m_flow.areasOf(link.start, link.start + link.length);
    for (QRectF &area : areas)
        area.translate(m_origin);
    return areas;
}

const TextPart::Link *TextPart::linkAt(const QPointF &point) const {
    const int place = m_flow.positionAt(point - m_origin);
    const auto isBefore = [](const Link &link, int position) { return link.start + link.length < position; };
    auto link = std::lower_bound(m_links.begin(), m_links.end(), place, isBefore);
    for (; link != m_links.end() && link->start <= place; ++link) {
        for (const QRectF &area : areasOf(*link)) {
            if (area.contains(point))
                return &*link;
        }
    }
    return nullptr;
}

void TextPart::draw(QPainter &painter, const QRectF &clip, const TextSelection &selection) const {
    if (!area().intersects(clip))
        return;
    painter.translate(m_origin);
    const QRectF inside = clip.translated(-m_origin);
    drawCodeGrounds(painter, inside);
    painter.setPen(m_setting.color.isValid() ? m_setting.color : m_theme.primary);
    m_flow.draw(painter, inside, selection, m_theme.selection, m_theme.primary);
    painter.translate(-m_origin);
}

void TextPart::drawCodeGrounds(QPainter &painter, const QRectF &clip) const {
    if (m_codes.isEmpty())
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.codeGround());
    painter.setRenderHint(QPainter::Antialiasing);
    const int first = m_flow.positionAt({0, clip.top()});
    const auto isBefore = [](const TextSelection &code, int place) { return code.end() <= place; };
    for (auto code = std::lower_bound(m_codes.begin(), m_codes.end(), first, isBefore); code != m_codes.end();
         ++code) {
        for (const QRectF &area : m_flow.areasOf(code->start(), code->end())) {
            if (area.top() > clip.bottom())
                return;
            painter.drawRoundedRect(area.adjusted(-codeGroundReach, 0, codeGroundReach, 0), codeGroundRadius,
                                    codeGroundRadius);
        }
    }
}

TextFlow::Formats TextPart::formatsOf(const AttributedText &text) const {
    if (m_setting.digits == Digits::tabular)
        return tabularFormats(m_font, text.text);
    if (m_setting.step == TextStep::code)
        return {{0, int(text.text.size()), codeFormat()}};
    TextFlow::Formats formats;
    formats.reserve(text.runs.size());
    for (const InlineRun &run : text.runs) {
        QTextCharFormat format = formatOf(run.styles);
        if (linkAddress(run.link)) {
            format.setForeground(m_theme.link);
            format.setFontUnderline(true);
        }
        formats.append({int(run.start), int(run.length), format});
    }
    return formats;
}

QTextCharFormat TextPart::formatOf(InlineStyles styles) const {
    QTextCharFormat format = styles.testFlag(InlineStyle::code) ? codeFormat() : QTextCharFormat();
    if (styles.testFlag(InlineStyle::strong))
        format.setFontWeight(QFont::Bold);
    if (styles.testFlag(InlineStyle::emphasis))
        format.setFontItalic(!m_font.italic());
    if (styles.testFlag(InlineStyle::strikethrough))
        format.setFontStrikeOut(true);
    if (styles.testFlag(InlineStyle::code)) {
        format.setFontFamilies(withEmoji(monospacedFamily()));
        format.setProperty(QTextFormat::FontPixelSize, std::max(m_font.pixelSize() - 1, leastCodeSize));
    }
    return format;
}

TextPart::Setting captionSetting(const DrawingTheme &theme, double tracking) {
    return {.step = TextStep::caption,
            .color = theme.secondary,
            .tracking = tracking,
            .letters = TextPart::Letters::capitals};
}
