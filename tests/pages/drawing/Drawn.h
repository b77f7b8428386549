#pragma once

#include "pages/MarkdownParser.h"
#include "pages/drawing/BlockViews.h"

#include <QImage>
#include <QPainter>

/// The only block of a text, which must be one.
inline MarkdownBlock blockOf(const QString &text) {
    return parseMarkdownBlocks(text).at(0);
}

/// The view of that block in that width.
inline std::unique_ptr<BlockView> viewOf(const QString &text, const DrawingTheme &theme, double width) {
    const MarkdownBlock block = blockOf(text);
    std::unique_ptr<BlockView> view = makeBlockView(block.content, theme);
    view->layIn(width);
    view->setBlock(block.content);
    return view;
}

/// Light letters on a dark ground.
inline DrawingTheme darkTheme() {
    DrawingTheme theme = paperTheme();
    theme.primary = QColor(236, 236, 240);
    theme.secondary = QColor(150, 150, 158);
    theme.link = QColor(126, 178, 255);
    theme.selection = QColor(60, 80, 120);
    return theme;
}

inline const QColor darkGround(52, 53, 56);

/// How far around a view a picture goes on, so that what is painted outside is seen.
inline constexpr int pictureMargin = 10;

/// The view on a plain ground with a margin around it.
inline QImage pictureOf(const BlockView &view, const QColor &ground = Qt::white,
                        const TextSelection &selection = {}) {
    QImage image(int(view.width()) + 2 * pictureMargin, int(view.height()) + 2 * pictureMargin,
                 QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    painter.translate(pictureMargin, pictureMargin);
    view.draw(painter, QRectF(0, 0, view.width(), view.height()), selection);
    return image;
}

/// What differs from the ground, in the view's coordinates; null if nothing does.
inline QRect inkIn(const QImage &picture, const QColor &ground = Qt::white) {
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != ground.rgb())
                ink |= QRect(x - pictureMargin, y - pictureMargin, 1, 1);
        }
    }
    return ink;
}

/// A pixel's colour, in the view's coordinates.
inline QRgb colorAt(const QImage &picture, int x, int y) {
    return picture.pixel(x + pictureMargin, y + pictureMargin);
}

/// What a colour with some opacity looks like on a ground.
inline QRgb laidOn(const QColor &ground, const QColor &color) {
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(ground);
    QPainter(&image).fillRect(0, 0, 1, 1, color);
    return image.pixel(0, 0);
}
