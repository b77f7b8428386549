#include "e2e/OwnSite.h"
#include "e2e/WindowFixture.h"
#include "pages/PageDate.h"
#include "pages/PageStore.h"
#include "records/Memory.h"
#include "records/Settings.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr char results[] = "<html><body><div class=\"result\">"
                           "<a class=\"result__a\" href=\"https://okra.example/tbilisi\">Okra in Tbilisi</a>"
                           "<a class=\"result__snippet\">It is harvested in August.</a></div></body></html>";

constexpr int returnKey = 0xff0d;
constexpr int downKey = 0xff54;

/// What the model asks for, and the person's answers in the window. The model says what it finds most likely.
class WindowTools : public WindowFixture {
protected:
    WindowTools() {
        searchPage.answer(Script(200).raw(results));
        Settings settings = loadSettings();
        settings.installed->sampling.temperature = 0;
        settings.searchMode = SearchMode::ask;
        saveSettings(settings);
    }

    /// The first message that made a call of that tool.
    static std::optional<Message> callerOf(const QString &tool) {
        for (const Message &message : savedChat().messages) {
            for (const ToolCall &call : message.toolCalls.value_or(QList<ToolCall>())) {
                if (call.name == tool)
                    return message;
            }
        }
        return std::nullopt;
    }

    /// Sends a text, and presses the answer on the card that comes.
    void askAndAnswer(const QString &text, const QString &answer) {
        send(text);
        ASSERT_TRUE(window().waitFor(answer, AccessibleRole::pushButton));
        ASSERT_TRUE(window().press(answer));
    }

    /// Saves the page that is shown under that name in the files' folder, through the dialog.
    void saveAs(const QString &button, const QString &name) {
        ASSERT_TRUE(window().waitFor(button, AccessibleRole::pushButton));
        ASSERT_TRUE(window().press(button));
        ASSERT_TRUE(window().waitFor(u"File name:"_s, AccessibleRole::text));
        ASSERT_TRUE(window().setText(u"File name:"_s, files.filePath(name)));
        ASSERT_TRUE(window().press(u"Save"_s));
        ASSERT_TRUE(window().waitUntilGone(u"File name:"_s, AccessibleRole::text));
    }

    bool fileBegins(const QString &name, const QByteArray &beginning) const {
        QFile file(files.filePath(name));
        return file.open(QIODevice::ReadOnly) && file.readAll().startsWith(beginning);
    }

    QTemporaryDir files;
    ScriptedEngine searchPage;
    EnvironmentVariable searchAddress{"OSTRELIN_SEARCHURL", searchPage.url().toEncoded() + "/html/"};
    const QString question = u"Search the web for okra harvest in Tbilisi"_s;
};

} // namespace

TEST_F(WindowTools, aSearchIsAllowedOnce) {
    startProgram();
    send(question);
    ASSERT_TRUE(window().waitFor(u"Search"_s, AccessibleRole::pushButton));
    EXPECT_TRUE(searchPage.requests().isEmpty()) << "nobody has allowed it yet";
    ASSERT_TRUE(window().press(u"Search"_s));
    ASSERT_TRUE(window().waitFor(u"Searched: okra harvest in Tbilisi"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(program.waitForReply());
    ASSERT_EQ(searchPage.requests().size(), 1);
    EXPECT_EQ(searchPage.requests().first().body, "q=okra%20harvest%20in%20Tbilisi");
    const std::optional<Message> caller = callerOf(u"web_search"_s);
    ASSERT_TRUE(caller);
    ASSERT_TRUE(caller->searchEvent);
    EXPECT_EQ(caller->searchEvent->status, SearchStatus::allowed);
    ASSERT_EQ(caller->searchEvent->sources.size(), 1);
    EXPECT_EQ(caller->searchEvent->sources.first().url, u"https://okra.example/tbilisi"_s);
    ASSERT_TRUE(window().press(u"Searched: okra harvest in Tbilisi"_s));
    EXPECT_TRUE(window().waitFor(u"[1] Okra in Tbilisi"_s, AccessibleRole::pushButton));
    EXPECT_EQ(loadSettings().searchMode, SearchMode::ask);
}

TEST_F(WindowTools, aSearchIsAllowedForever) {
    startProgram();
    askAndAnswer(question, u"Always allow"_s);
    ASSERT_TRUE(window().waitFor(u"Searched: okra harvest in Tbilisi"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(program.waitForReply());
    EXPECT_EQ(loadSettings().searchMode, SearchMode::always);
    ASSERT_TRUE(window().press(u"New Chat"_s));
    send(question);
    ASSERT_TRUE(eventually([this] { return searchPage.requests().size() == 2; })) << "it asked again";
    ASSERT_TRUE(program.waitForReply());
}

TEST_F(WindowTools, aSearchIsTurnedDown) {
    startProgram();
    askAndAnswer(question, u"Don't search"_s);
    ASSERT_TRUE(window().waitFor(u"Not searched: okra harvest in Tbilisi"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(program.waitForReply());
    EXPECT_TRUE(searchPage.requests().isEmpty());
    EXPECT_EQ(callerOf(u"web_search"_s)->searchEvent->status, SearchStatus::denied);
}

TEST_F(WindowTools, aStopWhileACardIsOpenRefuses) {
    startProgram();
    send(question);
    ASSERT_TRUE(window().waitFor(u"Search"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(window().press(u"Stop generating"_s));
    ASSERT_TRUE(window().waitUntilGone(u"Search"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(window().waitFor(u"Not searched: okra harvest in Tbilisi"_s, AccessibleRole::pushButton));
    EXPECT_TRUE(searchPage.requests().isEmpty());
}

TEST_F(WindowTools, aPageThatWasFoundIsRead) {
    if (qgetenv(ownNetworkMark) != "1")
        GTEST_SKIP() << "NO PAGE WAS READ: this system lets nobody have a network of their own";
    // The model copies this address; others it likes to mend.
    ScriptedEngine site(QString::fromLatin1(siteAddress), 8123);
    site.answerEach([](const ScriptedEngine::Request &request) {
        if (request.line.startsWith("POST"))
            return Script(200).raw(
                "<a class=\"result__a\" href=\"http://site.example:8123/okra\">Okra in Tbilisi</a>"
                "<a class=\"result__snippet\">It is harvested in August.</a>");
        return Script(200).raw("<html><body><script>no</script><p>Okra is picked at dawn.</p></body></html>");
    });
    const EnvironmentVariable address("OSTRELIN_SEARCHURL", "http://site.example:8123/html/");
    Settings settings = loadSettings();
    settings.searchMode = SearchMode::always;
    saveSettings(settings);
    startProgram();
    send(question);
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(program.waitForReply());
    send(u"Open the first result"_s);
    ASSERT_TRUE(eventually([&] { return site.requests().size() == 2; }, 30'000)) << "it opened nothing";
    ASSERT_TRUE(program.waitForReply());
    EXPECT_EQ(site.requests().last().line, "GET /okra HTTP/1.1");
    EXPECT_FALSE(site.requests().last().headers.contains("cookie"));
    EXPECT_FALSE(site.requests().last().headers.contains("referer"));
    const QList<Message> messages = savedChat().messages;
    EXPECT_TRUE(std::any_of(messages.begin(), messages.end(), [](const Message &message) {
        return message.role == Role::tool && message.content == u"Okra is picked at dawn."_s;
    }));
}

TEST_F(WindowTools, aFactIsKeptAndTheNextChatKnowsIt) {
    startProgram();
    send(u"Remember that I like kumquats"_s);
    ASSERT_TRUE(window().waitFor(u"Remember"_s, AccessibleRole::pushButton));
    EXPECT_EQ(readMemory(), QString());
    ASSERT_TRUE(window().press(u"Remember"_s));
    ASSERT_TRUE(program.waitForReply());
    EXPECT_EQ(readMemory(), u"- User likes kumquats"_s);
    ASSERT_TRUE(window().press(u"New Chat"_s));
    ASSERT_TRUE(window().waitUntilGone(u"Copy"_s, AccessibleRole::pushButton));
    send(u"What do I like?"_s);
    ASSERT_TRUE(waitForText());
    ASSERT_TRUE(program.waitForReply());
    EXPECT_TRUE(window().said(u"Ostrelin"_s).value(0).contains(u"kumquats"_s))
        << window().said(u"Ostrelin"_s).join(u'\n').toStdString();
}

TEST_F(WindowTools, aFactIsTurnedDown) {
    startProgram();
    askAndAnswer(u"Remember that I like kumquats"_s, u"Not now"_s);
    ASSERT_TRUE(program.waitForReply());
    EXPECT_EQ(readMemory(), QString());
}

TEST_F(WindowTools, aPageIsTurnedDown) {
    startProgram();
    askAndAnswer(u"Make a page about falconry"_s, u"No"_s);
    ASSERT_TRUE(program.waitForReply());
    for (const Message &message : savedChat().messages)
        EXPECT_FALSE(message.page);
}

TEST_F(WindowTools, aPageIsAgreedOnSavedListedExportedAndDeleted) {
    startProgram();
    askAndAnswer(u"Make a page about falconry"_s, u"Yes"_s);
    ASSERT_TRUE(program.waitForReply());
    ASSERT_TRUE(window().waitFor(u"Save as PDF"_s, AccessibleRole::pushButton)) << "the page doesn't stand";
    const std::optional<PageSnapshot> page = savedChat().messages.last().page;
    ASSERT_TRUE(page);
    EXPECT_TRUE(listPages().isEmpty()) << "nobody has saved it yet";
    ASSERT_TRUE(window().press(u"Save"_s));
    ASSERT_TRUE(eventually([] { return listPages().size() == 1; }));
    EXPECT_EQ(listPages().first().title, page->title);
    EXPECT_EQ(loadPage(listPages().first().id)->markdown, page->markdown);
    ASSERT_TRUE(window().waitUntilGone(u"Save as PDF"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(program.closeWindow());
    ASSERT_TRUE(program.waitForEnd());

    startProgram();
    ASSERT_TRUE(window().press(u"Pages"_s));
    const PageSummary saved = listPages().first();
    const QString row = saved.title + u", "_s + shownDateAndTime(saved.updatedAt);
    ASSERT_TRUE(window().waitFor(row, AccessibleRole::listItem)) << "the page isn't listed";
    ASSERT_TRUE(window().press(row, AccessibleRole::listItem));
    saveAs(u"Save as PDF"_s, u"page.pdf"_s);
    EXPECT_TRUE(eventually([this] { return fileBegins(u"page.pdf"_s, "%PDF-"); }));
    saveAs(u"Save as image"_s, u"page.png"_s);
    EXPECT_TRUE(eventually([this] { return fileBegins(u"page.png"_s, "\x89PNG"); }));
    ASSERT_TRUE(window().askForMenu(row, AccessibleRole::listItem));
    // A menu is no part of the window's tree, and takes the keys only once it is there.
    letPass(500);
    ASSERT_TRUE(window().typeKey(downKey));
    ASSERT_TRUE(window().typeKey(returnKey));
    EXPECT_TRUE(window().waitUntilGone(row, AccessibleRole::listItem));
    EXPECT_TRUE(listPages().isEmpty());
}

TEST_F(WindowTools, aPageIsOpenedFromItsCardOnceMore) {
    startProgram();
    askAndAnswer(u"Make a page about falconry"_s, u"Yes"_s);
    ASSERT_TRUE(program.waitForReply());
    ASSERT_TRUE(window().waitFor(u"Save as PDF"_s, AccessibleRole::pushButton));
    const QString title = savedChat().messages.last().page->title;
    ASSERT_TRUE(window().press(u"Close"_s));
    ASSERT_TRUE(window().waitUntilGone(u"Save as PDF"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(window().press(title));
    EXPECT_TRUE(window().waitFor(u"Save as PDF"_s, AccessibleRole::pushButton));
    EXPECT_TRUE(listPages().isEmpty());
}
