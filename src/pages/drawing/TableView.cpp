#include "pages/drawing/TableView.h"

#include "pages/drawing/Fill.h"

namespace {

constexpr double columnGap = 18;
constexpr double rowGap = 10;
constexpr double bandGap = 18;
constexpr double leastColumn = 72;
constexpr double headerTracking = 0.8;
constexpr double headerLineOpacity = 0.18;
constexpr double rowLineOpacity = 0.08;

/// The cells without the empty ones at the end, which show nothing.
qsizetype cellCount(const Texts &texts) {
    const auto last =
        std::find_if(texts.crbegin(), texts.crend(), [](QStringView text) { return !text.isEmpty(); });
    return texts.crend() - last;
}

} // namespace

double TableView::take(const BlockContent &content) {
    const auto &[header, rows] = std::get<block::Table>(content);
    const auto count = size_t(rows.size()) + 1;
    double changed = height();
    if (count < m_rows.size())
        changed = topOf(count);
    m_rows.resize(count);
    changed = std::min(changed, takeRow(0, header));
    for (size_t row = 1; row < count; ++row)
        changed = std::min(changed, takeRow(row, rows.at(qsizetype(row) - 1)));
    const QList<ColumnBand> before = m_bands;
    m_bands = columnBands(wantedWidths(width()), width(), columnGap, leastColumn);
    // In several bands, whatever happens to the first moves the others.
    return before == m_bands && m_bands.size() <= 1 ? changed : 0;
}

double TableView::takeRow(size_t row, const Texts &texts) {
    const auto count = size_t(cellCount(texts));
    double changed = m_rows[row].size() > count ? topOf(row) : height();
    m_rows[row].resize(count);
    for (size_t column = 0; column < count; ++column)
        changed = std::min(changed, takeCell(m_rows[row][column], row, texts.at(qsizetype(column))));
    return changed;
}

double TableView::takeCell(Cell &cell, size_t row, QStringView text) {
    const bool stays = cell.text ? cell.text->shows(text) : text.isEmpty();
    if (stays)
        return height();
    if (text.isEmpty()) {
        cell = {};
        return topOf(row);
    }
    if (!cell.text) {
        const bool isHeader = row == 0;
        cell.text =
            std::make_unique<TextPart>(theme(), isHeader ? captionSetting(theme(), headerTracking)
                                                         : TextPart::Setting{.step = TextStep::callout});
        cell.text->layIn(width());
    }
    cell.text->setText(text);
    cell.measuredIn = -1;
    return topOf(row);
}

double TableView::topOf(size_t row) const {
    return row < m_tops.size() ? m_tops[row] : height();
}

QList<double> TableView::wantedWidths(double width) {
    QList<double> wanted{0};
    for (Row &row : m_rows) {
        if (wanted.size() < qsizetype(row.size()))
            wanted.resize(qsizetype(row.size()));
        for (size_t column = 0; column < row.size(); ++column) {
            Cell &cell = row[column];
            if (cell.text && std::exchange(cell.measuredIn, width) != width) {
                cell.text->layIn(width);
                cell.wanted = cell.text->usedWidth();
            }
            double &widest = wanted[qsizetype(column)];
            widest = std::max(widest, cell.wanted);
        }
    }
    return wanted;
}

double TableView::arrange(double width) {
    m_bands = columnBands(wantedWidths(width), width, columnGap, leastColumn);
    m_lines.clear();
    m_tops.clear();
    double top = 0;
    for (const ColumnBand &band : m_bands) {
        if (top > 0)
            top += bandGap;
        arrangeBand(band, top);
    }
    return top;
}

void TableView::arrangeBand(const ColumnBand &band, double &top) {
    const bool isFirstBand = band.first == 0;
    const double bandWidth = band.width(columnGap);
    for (Row &row : m_rows) {
        const bool isHeader = &row == &m_rows.front();
        if (isFirstBand)
            m_tops.push_back(top);
        top += (isHeader ? 0 : rowGap);
        top += arrangeRow(row, band, top) + rowGap;
        m_lines.push_back(
            {QRectF(0, top, bandWidth, figure::hairline), isHeader ? headerLineOpacity : rowLineOpacity});
        top += figure::hairline;
    }
}

double TableView::arrangeRow(Row &row, const ColumnBand &band, double top) {
    double height = 0;
    double left = 0;
    for (qsizetype index = 0; index < band.widths.size(); ++index) {
        const auto column = size_t(band.first + index);
        if (column >= row.size())
            break;
        if (TextPart *text = row[column].text.get()) {
            height = std::max(height, text->layIn(band.widths.at(index)));
            text->moveTo({left, top});
        }
        left += band.widths.at(index) + columnGap;
    }
    return height;
}

void TableView::listTexts(TextParts &texts) const {
    for (const Row &row : m_rows) {
        for (const Cell &cell : row) {
            if (cell.text)
                texts.push_back(cell.text.get());
        }
    }
}

void TableView::drawFigure(QPainter &painter, const QRectF &clip) const {
    const auto isAbove = [](const Line &line, double y) { return line.area.bottom() < y; };
    auto line = std::lower_bound(m_lines.begin(), m_lines.end(), clip.top(), isAbove);
    for (; line != m_lines.end() && line->area.top() <= clip.bottom(); ++line)
        fill(painter, line->area, theme().shade(line->opacity));
}

SpokenPart TableView::spoken() const {
    SpokenPart table{.role = QAccessible::Table, .area = QRectF(0, 0, width(), height())};
    for (const Row &row : m_rows) {
        const bool isHeader = &row == &m_rows.front();
        SpokenPart spokenRow{.role = QAccessible::Row};
        for (const Cell &cell : row) {
            const SpokenPart empty{.role = QAccessible::Cell};
            spokenRow.parts.push_back(
                cell.text ? spokenText(*cell.text, isHeader ? QAccessible::ColumnHeader : QAccessible::Cell)
                          : empty);
            spokenRow.area |= spokenRow.parts.back().area;
        }
        table.parts.push_back(std::move(spokenRow));
    }
    return table;
}
