#include "e2e/WindowFixture.h"
#include "records/ChatStore.h"
#include "records/Settings.h"

using namespace Qt::StringLiterals;

namespace {

class WindowSidebar : public WindowFixture {
protected:
    bool lists(const QString &title) { return window().waitFor(title, AccessibleRole::listItem); }
    bool opens(const QString &title) { return window().press(title, AccessibleRole::listItem); }
    bool isOpen(const QString &title) {
        return eventually([&] { return window().isChosen(title, AccessibleRole::listItem); });
    }

    void rename(const QString &title, const QString &newTitle) {
        ASSERT_TRUE(program.chooseFromMenu(title, 1));
        ASSERT_TRUE(window().waitFor(u"Title"_s, AccessibleRole::text));
        EXPECT_EQ(window().text(u"Title"_s), title);
        ASSERT_TRUE(window().setText(u"Title"_s, newTitle));
        ASSERT_TRUE(window().press(u"Save"_s));
        ASSERT_TRUE(lists(newTitle));
    }

    static QStringList titlesOnDisk() {
        QStringList titles;
        for (const ConversationSummary &summary : ChatStore().list())
            titles.append(summary.title);
        return titles;
    }
};

} // namespace

TEST_F(WindowSidebar, aChatIsBegunRenamedAndDeleted) {
    startProgram();
    ASSERT_TRUE(lists(u"New chat"_s));
    rename(u"New chat"_s, u"Garden plans"_s);
    EXPECT_EQ(titlesOnDisk(), QStringList(u"Garden plans"_s));
    ASSERT_TRUE(window().press(u"New Chat"_s));
    ASSERT_TRUE(lists(u"New chat"_s));
    EXPECT_TRUE(isOpen(u"New chat"_s));
    EXPECT_FALSE(window().isChosen(u"Garden plans"_s, AccessibleRole::listItem));
    ASSERT_TRUE(opens(u"Garden plans"_s));
    EXPECT_TRUE(isOpen(u"Garden plans"_s));
    ASSERT_TRUE(program.chooseFromMenu(u"New chat"_s, 2));
    ASSERT_TRUE(window().waitUntilGone(u"New chat"_s, AccessibleRole::listItem));
    EXPECT_EQ(titlesOnDisk(), QStringList(u"Garden plans"_s));
}

TEST_F(WindowSidebar, aReplyGoesOnWhileAnotherChatIsOpen) {
    startProgramEndless();
    rename(u"New chat"_s, u"Garden plans"_s);
    send(u"Hello!"_s);
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(window().press(u"New Chat"_s));
    ASSERT_TRUE(isOpen(u"New chat"_s));
    EXPECT_TRUE(window().said(u"You"_s).isEmpty()) << "the new chat is empty";
    EXPECT_TRUE(window().shows(u"Stop generating"_s, AccessibleRole::pushButton)) << "the reply goes on";
    ASSERT_TRUE(opens(u"Garden plans"_s));
    ASSERT_TRUE(isOpen(u"Garden plans"_s));
    EXPECT_TRUE(eventually([this] { return window().said(u"You"_s) == QStringList(u"Hello!"_s); }));
    const QString before = window().said(u"Ostrelin"_s).value(0);
    EXPECT_TRUE(eventually([&] { return window().said(u"Ostrelin"_s).value(0).size() > before.size(); }));
    ASSERT_TRUE(window().press(u"Stop generating"_s));
    ASSERT_TRUE(program.waitForReply());
}

TEST_F(WindowSidebar, theSwitchCutsOffFromTheWeb) {
    startProgram();
    for (int turn = 0; turn < 2; ++turn) {
        const bool was = window().isChosen(u"Offline Mode"_s, AccessibleRole::checkBox);
        const SearchMode next = was ? SearchMode::always : SearchMode::off;
        ASSERT_TRUE(window().press(u"Offline Mode"_s, AccessibleRole::checkBox));
        EXPECT_TRUE(eventually([&] { return loadSettings().searchMode == next; }));
        EXPECT_NE(window().isChosen(u"Offline Mode"_s, AccessibleRole::checkBox), was);
    }
}
