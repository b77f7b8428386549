#pragma once

#include <QFont>
#include <QTextLayout>

class QPainter;

/// A text in one line of a given width. One that is too wide is set in smaller letters, down to 0.6 of
/// their size, and one that is still too wide is cut. Needs a QGuiApplication.
class FittedLine {
public:
    FittedLine(const QString &text, const QFont &font, double width);

    /// Draws it with the painter's pen, `middle` being the middle of its baseline.
    void draw(QPainter &painter, const QPointF &middle) const;

private:
    QTextLayout m_layout;
};
