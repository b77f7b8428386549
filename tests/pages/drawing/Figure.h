#pragma once

#include "pages/drawing/Drawn.h"

#include <gtest/gtest.h>

/// The view of a block, laid in a width and drawn.
class Figure : public testing::Test {
protected:
    /// Shows the only block of a text.
    BlockView &shown(const QString &text, double width = 300) {
        view = viewOf(text, theme, width);
        return *view;
    }

    /// Shows the only block of another text, and gives where the drawing changes.
    double change(const QString &text) { return view->setBlock(blockOf(text).content); }

    QImage picture() const { return pictureOf(*view, ground); }
    QRgb on(const QColor &color) const { return laidOn(ground, color); }
    QRgb bare() const { return ground.rgb(); }

    void useDarkTheme() {
        theme = darkTheme();
        ground = darkGround;
    }

    /// What would be drawn by a view that never showed anything else.
    QImage fresh(const QString &text) const { return pictureOf(*viewOf(text, theme, view->width()), ground); }

    /// A change must leave alone what is above the place that it gives, and end as a fresh view does.
    void expectChange(const QString &text) {
        const QImage before = picture();
        const double top = change(text);
        EXPECT_EQ(picture(), fresh(text)) << text.toStdString();
        const QRect untouched(0, 0, before.width(), int(std::min(top, view->height())) + pictureMargin);
        EXPECT_EQ(picture().copy(untouched), before.copy(untouched)) << text.toStdString();
    }

    DrawingTheme theme = paperTheme();
    QColor ground = Qt::white;
    std::unique_ptr<BlockView> view;
};

/// Whether no part of any colour differs by more than a painter's rounding.
inline bool areAlike(const QImage &one, const QImage &other) {
    constexpr int rounding = 2;
    if (one.size() != other.size())
        return false;
    for (int y = 0; y < one.height(); ++y) {
        const uchar *first = one.constScanLine(y);
        const uchar *second = other.constScanLine(y);
        for (qsizetype part = 0; part < one.bytesPerLine(); ++part) {
            if (std::abs(first[part] - second[part]) > rounding)
                return false;
        }
    }
    return true;
}

/// A fence around the lines.
inline QString fence(const QString &info, const QStringList &lines) {
    return QStringLiteral("```") + info + u'\n' + lines.join(u'\n') + QStringLiteral("\n```");
}

/// How many pixels in a row have that colour, in the view's coordinates.
inline int countInRow(const QImage &picture, int y, QRgb color) {
    int count = 0;
    for (int x = 0; x < picture.width(); ++x)
        count += picture.pixel(x, y + pictureMargin) == color ? 1 : 0;
    return count;
}

/// How many pixels in a column have that colour, in the view's coordinates.
inline int countInColumn(const QImage &picture, int x, QRgb color) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        count += picture.pixel(x + pictureMargin, y) == color ? 1 : 0;
    return count;
}

/// The lines of a list that is long beyond measure.
inline QStringList manyLines(const QString &line, int count) {
    QStringList lines;
    for (int number = 0; number < count; ++number)
        lines.append(line.arg(number));
    return lines;
}
