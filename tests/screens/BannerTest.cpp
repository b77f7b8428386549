#include "screens/Banner.h"

#include "screens/Screen.h"
#include "screens/TextBox.h"
#include "screens/WordButton.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

class BannerTest : public testing::Test {
protected:
    BannerTest() {
        Settings settings;
        settings.textSize = TextSize::extraLarge;
        look.follow(settings);
        banner.addButton(u"Download"_s);
        banner.addButton(u"Not now"_s);
        banner.setText(u"Your Mac can run a smarter version of Ostrelin. Download (9.0 GB)?"_s);
        auto *column = new QVBoxLayout(&window);
        column->setContentsMargins({});
        column->addWidget(&banner);
        column->addStretch();
        present(window);
    }

    void resize(int width) {
        window.resize(width, 400);
        QCoreApplication::processEvents();
    }

    QRect text() const { return banner.findChild<TextBox *>()->geometry(); }
    QRect button(const QString &name) const { return buttonNamed(banner, name)->geometry(); }
    int line() const { return QFontMetrics(look.font(TextStyle::callout)).height(); }

    StillLook look;
    QWidget window;
    Banner banner{look, Banner::Tone::offer};
};

} // namespace

TEST_F(BannerTest, theButtonsStandBesideTheTextWhereThereIsRoom) {
    resize(720);
    EXPECT_GT(button(u"Download"_s).left(), text().right());
    EXPECT_GT(button(u"Not now"_s).left(), button(u"Download"_s).right());
    EXPECT_EQ(button(u"Not now"_s).right(), banner.rect().right() - 12);
    EXPECT_NEAR(button(u"Download"_s).center().y(), banner.rect().center().y(), 1);
    EXPECT_NEAR(text().center().y(), banner.rect().center().y(), 1);
    EXPECT_EQ(banner.height(), 12 + std::max(button(u"Download"_s).height(), text().height()) + 12);
}

TEST_F(BannerTest, inANarrowWindowTheyStandBelowIt) {
    resize(352);
    EXPECT_EQ(text().left(), button(u"Download"_s).left());
    EXPECT_GT(button(u"Download"_s).top(), text().bottom());
    EXPECT_EQ(text().right(), banner.rect().right() - 12);
    EXPECT_GE(text().height(), 2 * line());
    EXPECT_GE(button(u"Download"_s).height(), 28);
    EXPECT_EQ(banner.rect().bottom() - button(u"Download"_s).bottom(), 12);
    resize(720);
    EXPECT_GT(button(u"Download"_s).left(), text().right());
}

TEST_F(BannerTest, thereIsAlwaysALineToRead) {
    banner.setText(u"A long line of the engine's log. "_s.repeated(30));
    for (const int width : {352, 720}) {
        resize(width);
        window.resize(width, window.minimumSizeHint().height());
        QCoreApplication::processEvents();
        EXPECT_LT(banner.height(), 160);
        EXPECT_GE(text().height(), line()) << width;
    }
}

TEST_F(BannerTest, aScreenReaderHearsItAndWhatItsButtonsAreAbout) {
    banner.setText(u"Something is on offer."_s);
    EXPECT_EQ(spokenRole(&banner), QAccessible::Notification);
    EXPECT_EQ(spokenName(&banner), u"Something is on offer."_s);
}
