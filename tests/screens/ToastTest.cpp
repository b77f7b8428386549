#include "screens/Toast.h"

#include "screens/Screen.h"
#include "support/ManualClock.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class ToastTest : public testing::Test {
protected:
    ToastTest() : toast(look, clock, &window) {
        window.resize(500, 300);
        toast.setAnchor({250, 280});
        present(window);
    }

    /// What stands there after that long.
    QString textAfter(std::chrono::milliseconds time) {
        clock.advance(time);
        QCoreApplication::processEvents();
        return toast.text();
    }

    StillLook look;
    ManualClock clock;
    QWidget window;
    Toast toast;
};

} // namespace

TEST_F(ToastTest, itStandsFor2600MillisecondsAndGoes) {
    EXPECT_FALSE(toast.isVisible());
    toast.showText(u"Hello"_s);
    EXPECT_TRUE(toast.isVisible());
    EXPECT_EQ(textAfter(2599ms), u"Hello"_s);
    EXPECT_EQ(textAfter(1ms), QString());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !toast.isVisible(); }));
}

TEST_F(ToastTest, aSecondOneStandsItsFullTime) {
    toast.showText(u"One"_s);
    EXPECT_EQ(textAfter(2000ms), u"One"_s);
    toast.showText(u"Two"_s);
    EXPECT_EQ(textAfter(2599ms), u"Two"_s);
    EXPECT_EQ(textAfter(1ms), QString());
}

TEST_F(ToastTest, itMayGoBeforeItsTime) {
    auto *other = new Toast(look, clock, &window);
    other->showText(u"One"_s);
    delete other;
    clock.advance(3s);
    QCoreApplication::processEvents();
}

TEST_F(ToastTest, itStandsInTheMiddleOverItsAnchor) {
    toast.showText(u"Hello"_s);
    EXPECT_EQ(toast.geometry().bottom(), 280);
    EXPECT_NEAR(toast.geometry().center().x(), 250, 1);
}

TEST_F(ToastTest, aScreenReaderHearsIt) {
    toast.showText(u"Hello"_s);
    EXPECT_EQ(spokenRole(&toast), QAccessible::Notification);
    EXPECT_EQ(spokenName(&toast), u"Hello"_s);
}
