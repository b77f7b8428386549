#pragma once

#include "pages/drawing/TextList.h"

/// The lines of a chart that have a label at the left and a number at the right.
class ValueLines {
public:
    /// `theme` must outlive this object.
    explicit ValueLines(const DrawingTheme &theme);

    /// From now on these are the lines; there are as many numbers as labels. Gives the place of the first
    /// line that differs; their number if none does.
    qsizetype setLines(const Texts &labels, const QStringList &numbers);

    qsizetype size() const { return m_labels.size(); }
    /// Places a line in that width, the top left of it at `origin`, and gives its height.
    double place(qsizetype line, const QPointF &origin, double width);
    /// What the number takes, as wide as it was placed.
    QRectF numberArea(qsizetype line) const;

    void listTexts(std::vector<const TextPart *> &texts) const;
    /// What a screen reader says of the lines below that title.
    QString sentence(const QString &title) const;

private:
    TextList m_labels;
    TextList m_numbers;
};
