#pragma once

#include "pages/MarkdownBlock.h"
#include "pages/drawing/TextPart.h"

#include <deque>
#include <vector>

/// Texts of a figure that are set alike, one for each item of a list. Each is laid and placed for itself,
/// and has more than enough width until then.
class TextList {
public:
    /// `theme` must outlive this object.
    TextList(const DrawingTheme &theme, const TextPart::Setting &setting)
        : m_theme(theme),
          m_setting(setting) {}

    /// From now on these are the texts. What stays the same is neither read nor laid again. Gives the place
    /// of the first that differs; their number if none does.
    qsizetype setTexts(const Texts &texts);
    void setColor(const QColor &color);

    qsizetype size() const { return qsizetype(m_parts.size()); }
    TextPart &operator[](qsizetype index) { return m_parts[size_t(index)]; }
    const TextPart &operator[](qsizetype index) const { return m_parts[size_t(index)]; }

    void listTexts(std::vector<const TextPart *> &texts) const;

private:
    const DrawingTheme &m_theme;
    TextPart::Setting m_setting;
    std::deque<TextPart> m_parts;
};

/// Places two texts side by side, the first lines on one baseline: one at `origin`, the other as far to the
/// right as it is told. Gives the height of both, a whole number.
double placeSideBySide(TextPart &one, TextPart &other, const QPointF &origin, double distance);

/// What the items of a block consist of, one list for each part.
Texts leftsOf(const QList<TextPair> &pairs);
Texts rightsOf(const QList<TextPair> &pairs);
Texts labelsOf(const QList<LabelledNumber> &items);
QList<double> valuesOf(const QList<LabelledNumber> &items);
