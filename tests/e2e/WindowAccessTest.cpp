#include "e2e/TopLevelWindow.h"
#include "e2e/WindowFixture.h"
#include "records/Settings.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int tabKey = 0xff09;
constexpr int spaceKey = 0x20;
constexpr int controlComma = 0x2c;

/// The program as somebody uses it who sees no screen and has no mouse.
class WindowAccess : public WindowFixture {
protected:
    void expectNoFaults(const char *place) {
        const QStringList faults = faultsOf(window().contents());
        EXPECT_TRUE(faults.isEmpty()) << place << ": " << faults.join(u'\n').toStdString();
    }

    /// Presses Tab until the keyboard is there.
    bool tabTo(const QString &name) {
        if (!focusTopLevelWindow(program.pid()))
            return false;
        constexpr int most = 40;
        QString here = window().nameOfFocus();
        for (int presses = 0; presses < most && here != name; ++presses) {
            const QString before = here;
            if (!window().typeKey(tabKey) ||
                !eventually([&] { return (here = window().nameOfFocus()) != before; }))
                return false;
        }
        return here == name;
    }
};

} // namespace

TEST_F(WindowAccess, whateverIsPressedHasANameOfItsOwnInEveryWindow) {
    startProgram();
    expectNoFaults("the empty chat");
    send(suggestion);
    ASSERT_TRUE(program.waitForReply());
    expectNoFaults("a chat");
    ASSERT_TRUE(window().press(u"Pages"_s));
    ASSERT_TRUE(window().waitFor(u"Choose a page."_s, AccessibleRole::label));
    expectNoFaults("the pages");
    ASSERT_TRUE(window().press(u"Settings"_s));
    for (const QString &pane : {u"Appearance"_s, u"Memory"_s, u"Web search"_s, u"Scheduled runs"_s,
                                u"Model"_s, u"Data"_s, u"About"_s}) {
        ASSERT_TRUE(window().waitFor(pane, AccessibleRole::listItem));
        ASSERT_TRUE(window().press(pane, AccessibleRole::listItem));
        expectNoFaults(qPrintable(pane));
    }
    ASSERT_TRUE(window().press(u"Scheduled runs"_s, AccessibleRole::listItem));
    ASSERT_TRUE(window().press(u"Manage scheduled runs…"_s));
    ASSERT_TRUE(window().waitFor(u"New"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(window().press(u"New"_s));
    ASSERT_TRUE(window().waitFor(u"Prompt"_s, AccessibleRole::text));
    expectNoFaults("a new schedule");
}

TEST_F(WindowAccess, aChatGoesByKeysAlone) {
    startProgram();
    ASSERT_TRUE(tabTo(suggestion));
    ASSERT_TRUE(window().typeKey(spaceKey));
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(program.waitForReply());
    ASSERT_TRUE(tabTo(u"Copy"_s));
    ASSERT_TRUE(tabTo(u"New Chat"_s));
    ASSERT_TRUE(window().typeKey(spaceKey));
    EXPECT_TRUE(window().waitFor(suggestion, AccessibleRole::pushButton));
    ASSERT_TRUE(tabTo(u"Offline Mode"_s));
    ASSERT_TRUE(window().typeKey(spaceKey));
    EXPECT_TRUE(eventually([] { return loadSettings().searchMode == SearchMode::always; }));
    ASSERT_TRUE(window().typeWithControl(controlComma));
    EXPECT_TRUE(window().waitFor(u"Appearance"_s, AccessibleRole::listItem));
}

TEST_F(WindowAccess, theEndOfAReplyIsTold) {
    startProgram();
    const std::unique_ptr<AccessibleNotices> notices = window().notices();
    send(suggestion);
    EXPECT_TRUE(notices->waitFor(u"The reply has ended."_s));
    ASSERT_TRUE(tabTo(u"Copy"_s));
    ASSERT_TRUE(window().typeKey(spaceKey));
    EXPECT_TRUE(notices->waitFor(u"Copied"_s));
}
