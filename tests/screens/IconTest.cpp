#include "screens/Icon.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

QImage drawn(Icon icon, const QColor &color, double scale = 1) {
    QImage image(QSize(16, 16) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawIcon(painter, icon, QRectF(0, 0, 16, 16), color);
    return image;
}

int opaquePixels(const QImage &image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y).alpha() > 200;
    }
    return count;
}

} // namespace

TEST(IconTest, everySymbolIsThereAndTakesTheColor) {
    for (const Icon icon : {Icon::arrowUp, Icon::check, Icon::chevron, Icon::chip, Icon::clock, Icon::close,
                            Icon::download, Icon::gear, Icon::information, Icon::page, Icon::palette,
                            Icon::paperclip, Icon::plus, Icon::stop, Icon::trash, Icon::warning}) {
        const QImage image = drawn(icon, Qt::red);
        EXPECT_GT(opaquePixels(image), 10);
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x) {
                const QColor color = image.pixelColor(x, y);
                EXPECT_TRUE(color.alpha() == 0 || (color.green() == 0 && color.blue() == 0));
            }
        }
    }
}

TEST(IconTest, aFinerScreenGetsAFinerSymbol) {
    const QImage fine = drawn(Icon::stop, Qt::black, 2);
    EXPECT_GT(opaquePixels(fine), 3 * opaquePixels(drawn(Icon::stop, Qt::black)));
}
