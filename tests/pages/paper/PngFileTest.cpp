#include "pages/paper/PngFile.h"

#include <QImage>

#include <gtest/gtest.h>

namespace {

QImage noise(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    quint32 state = 1;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            state = state * 1'664'525 + 1'013'904'223;
            image.setPixel(x, y, qRgb(int(state >> 24), int(state >> 16) & 255, int(state >> 8) & 255));
        }
    }
    return image;
}

QImage readBack(const QImage &image, int rowsAtOnce) {
    PngFile file(image.size(), 144);
    for (int top = 0; top < image.height(); top += rowsAtOnce)
        file.append(image.copy(0, top, image.width(), std::min(rowsAtOnce, image.height() - top)));
    return QImage::fromData(file.finished(), "png");
}

} // namespace

TEST(PngFile, aPictureIsReadBackAsItWas) {
    const QImage image = noise(301, 97);
    for (const int rowsAtOnce : {1, 10, 97, 1000})
        EXPECT_EQ(readBack(image, rowsAtOnce).convertToFormat(QImage::Format_RGB32), image) << rowsAtOnce;
}

TEST(PngFile, itSaysHowLargeItsPixelsAre) {
    const QImage image = readBack(noise(1, 1), 1);
    EXPECT_EQ(image.dotsPerMeterX(), 5669);
    EXPECT_EQ(image.dotsPerMeterY(), 5669);
    EXPECT_FALSE(image.hasAlphaChannel());
}
