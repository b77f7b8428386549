#pragma once

#include "pages/drawing/RowsView.h"
#include "pages/drawing/TextList.h"

/// Values in large type below their labels, side by side in equal columns with a hairline between each two.
/// They go on in further rows where a word would be broken otherwise: half a number misleads.
class MetricRow : public RowsView {
public:
    explicit MetricRow(const DrawingTheme &theme);

    SpokenPart spoken() const override;

private:
    double take(const BlockContent &content) override;
    qsizetype rowsIn(double width) override;
    double placeRow(qsizetype row, double top, double width) override;
    double placeMetric(qsizetype metric, double top);
    void drawRow(QPainter &painter, qsizetype row, const QRectF &area) const override;
    void listTexts(TextParts &texts) const override;
    /// How many columns have room for every word.
    qsizetype columnsIn(double width) const;
    double widestWord(qsizetype metric) const;
    double leftOf(qsizetype metric) const;
    /// The metric after the last one of a row.
    qsizetype endOf(qsizetype row) const;

    TextList m_labels;
    TextList m_values;
    QStringList m_names;         ///< the labels as they were written
    QList<double> m_widestWords; ///< of each metric
    qsizetype m_columns = 1;
    double m_columnWidth = 0;
};
