#include "screens/PageFailedLine.h"

#include "screens/Screen.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class PageFailedLineTest : public testing::Test {
protected:
    /// The line on the chat's ground in that theme.
    QImage pictureIn(Theme theme) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        line.resize(500, line.layIn(500));
        line.show();
        QImage picture(line.size(), QImage::Format_RGB32);
        picture.fill(look.palette().background);
        line.render(&picture, {}, {}, QWidget::DrawChildren);
        return picture;
    }

    QPushButton *button() const { return buttonNamed(line, u"Try again"_s); }

    StillLook look;
    PageFailedLine line{look};
};

/// The columns of a picture in which something stands, as the first and the last; `from` on.
std::pair<int, int> inkedColumns(const QImage &picture, int from, int to) {
    int first = -1;
    int last = -1;
    for (int x = from; x < to; ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            if (picture.pixel(x, y) == picture.pixel(0, 0))
                continue;
            first = first < 0 ? x : first;
            last = x;
        }
    }
    return {first, last};
}

} // namespace

TEST_F(PageFailedLineTest, itSaysWhatIsTheMatterTenBeforeTheWord) {
    const QImage picture = pictureIn(Theme::crispWhite);
    const int advance =
        QFontMetrics(look.font(TextStyle::callout)).horizontalAdvance(u"Couldn't build the page."_s);
    const auto [first, last] = inkedColumns(picture, 0, advance + 5);
    EXPECT_NEAR(first, 0, 2);
    EXPECT_NEAR(last, advance, 3);
    const auto [word, end] = inkedColumns(picture, advance + 5, picture.width());
    EXPECT_NEAR(word, advance + 10, 2);
    EXPECT_EQ(button()->accessibleDescription(), u"Couldn't build the page."_s);
}

TEST_F(PageFailedLineTest, theWordLooksLikeOneToPressInEveryTheme) {
    for (const Theme theme : themes) {
        const QImage picture = pictureIn(theme);
        EXPECT_GT(pixelsOf(picture.copy(button()->geometry()), look.palette().linkInk()), 0)
            << displayName(theme).toStdString();
        EXPECT_NE(look.palette().linkInk(), look.palette().secondaryInk());
    }
}

TEST_F(PageFailedLineTest, aPressTriesAgain) {
    const QSignalSpy retried(&line, &PageFailedLine::retried);
    line.layIn(500);
    line.show();
    click(button());
    EXPECT_EQ(retried.count(), 1);
}
