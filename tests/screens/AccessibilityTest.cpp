#include "screens/AllScreens.h"
#include "screens/HouseStyle.h"
#include "screens/KeyboardWalk.h"
#include "screens/SideWindow.h"
#include "screens/SpokenItemOf.h"
#include "screens/Style.h"

using namespace Qt::StringLiterals;

namespace {

class AccessibilityTest : public AllScreens {
protected:
    /// Shows every screen in a window of its own, and asks for each what is wrong with it.
    template<typename Question>
    void askOfEach(Question faultsOfWindow) {
        look.applyToApplication();
        for (const Screen &screen : screens()) {
            SCOPED_TRACE(screen.name.toStdString());
            SideWindow window(look, screen.name, screen.make());
            window.resize(screen.size.isEmpty() ? QSize(style::windowWidth, style::windowHeight)
                                                : screen.size);
            present(window);
            // What came up only now has a place only now.
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
            for (const QString &fault : faultsOfWindow(window))
                ADD_FAILURE() << fault.toStdString();
        }
    }
};

} // namespace

TEST_F(AccessibilityTest, whateverIsPressedHasANameOfItsOwn) {
    askOfEach([](QWidget &window) {
        return faultsOf(spokenItemOf(QAccessible::queryAccessibleInterface(&window)));
    });
}

TEST_F(AccessibilityTest, keysAloneLeadEverywhereAndBack) {
    askOfEach([](QWidget &window) { return KeyboardWalk(window).faults(); });
}

TEST(SpokenItemTest, aControlWithoutANameIsAFault) {
    const SpokenItem button{.role = u"Button"_s, .isControl = true};
    const SpokenItem text{.role = u"Text"_s, .takesFocus = true};
    EXPECT_EQ(faultsOf({.role = u"Window"_s, .items = {button, text}}).size(), 2);
    EXPECT_TRUE(faultsOf({.role = u"Window"_s, .items = {{.role = u"Text"_s}}}).isEmpty());
}

TEST(SpokenItemTest, twoControlsOfOnePlaceMustNotSoundAlike) {
    const SpokenItem close{.role = u"Button"_s, .name = u"Close"_s, .isControl = true};
    SpokenItem other = close;
    EXPECT_EQ(faultsOf({.role = u"Window"_s, .items = {close, {.items = {close}}}}).size(), 1);
    other.description = u"The chart"_s;
    EXPECT_TRUE(faultsOf({.role = u"Window"_s, .items = {close, other}}).isEmpty());
    const SpokenItem place{.role = u"List item"_s, .name = u"A chart"_s, .items = {close}};
    EXPECT_TRUE(faultsOf({.role = u"Window"_s, .items = {close, place, place}}).isEmpty());
}
