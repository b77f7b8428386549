#include "records/ChatStore.h"
#include "records/Memory.h"
#include "screens/AppFixture.h"
#include "screens/ChatScreen.h"
#include "screens/ConsentCard.h"
#include "screens/SearchHintCard.h"
#include "screens/Style.h"
#include "screens/Toast.h"

using namespace Qt::StringLiterals;

namespace {

/// What the model asks for, from its call to the person's answer on a card.
class ChatScreenConsentTest : public AppFixture {
protected:
    ChatScreenConsentTest() {
        start();
        screen.resize(900, 700);
        present(screen);
    }

    void setSearchMode(SearchMode mode) {
        Settings settings = app.settings();
        settings.searchMode = mode;
        app.saveSettings(settings);
    }

    void call(const QString &name, const QString &arguments) {
        engine.answer(Script::toolCall(u"c1"_s, name, arguments));
        engine.answer(Script::reply({u"I found recent news."_s}));
        screen.submit(u"Hi"_s);
    }

    bool press(const QString &name) {
        if (!eventually([&] { return buttonNamed(screen, name); }))
            return false;
        click(buttonNamed(screen, name));
        return true;
    }

    QString result() {
        const QList<Message> &messages = app.chat().conversation()->messages;
        for (const Message &message : messages) {
            if (message.role == Role::tool)
                return message.content;
        }
        return {};
    }

    StillLook look;
    ChatScreen screen{app, look, clock};
};

} // namespace

TEST_F(ChatScreenConsentTest, aFactIsKeptOnceThePersonSaysSo) {
    call(u"remember"_s, u"{\"fact\":\"Has a dog\"}"_s);
    ASSERT_TRUE(press(u"Remember"_s));
    finishTurn();
    EXPECT_EQ(readMemory(), u"- Has a dog"_s);
    EXPECT_EQ(app.memory(), u"- Has a dog"_s);
    EXPECT_FALSE(screen.findChild<ConsentCard *>());
}

TEST_F(ChatScreenConsentTest, aSearchIsTurnedDown) {
    setSearchMode(SearchMode::ask);
    call(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    ASSERT_TRUE(press(u"Don't search"_s));
    finishTurn();
    EXPECT_EQ(result(), u"The user declined the search. Answer from your own knowledge and say you couldn't "
                        "check the web."_s);
    EXPECT_TRUE(buttonNamed(screen, u"Not searched: tea"_s));
}

TEST_F(ChatScreenConsentTest, anAlwaysIsASetting) {
    ScriptedEngine page;
    page.answer(Script(200).raw("<a class=\"result__a\" href=\"https://tea.example/\">Tea</a>"));
    const EnvironmentVariable searchAddress("OSTRELIN_SEARCHURL", page.url().toEncoded());
    setSearchMode(SearchMode::ask);
    call(u"web_search"_s, u"{\"query\":\"tea\"}"_s);
    ASSERT_TRUE(press(u"Always allow"_s));
    finishTurn();
    EXPECT_EQ(app.settings().searchMode, SearchMode::always);
    EXPECT_EQ(loadSettings().searchMode, SearchMode::always);
    ASSERT_TRUE(press(u"Searched: tea"_s));
    EXPECT_TRUE(buttonNamed(screen, u"[1] Tea"_s));
}

TEST_F(ChatScreenConsentTest, aPageIsOfferedAndTurnedDown) {
    call(u"offer_page"_s, u"{}"_s);
    ASSERT_TRUE(press(u"No"_s));
    finishTurn();
    EXPECT_EQ(result(), u"The user declined the page. Answer in the chat instead."_s);
}

TEST_F(ChatScreenConsentTest, aCardWaitsInItsOwnChat) {
    call(u"offer_page"_s, u"{}"_s);
    ASSERT_TRUE(eventually([&] { return buttonNamed(screen, u"Yes"_s); }));
    const QUuid first = app.chat().conversation()->id;
    app.chat().newChat();
    EXPECT_FALSE(screen.findChild<ConsentCard *>());
    app.chat().openConversation(first);
    EXPECT_TRUE(screen.findChild<ConsentCard *>());
    app.chat().stop();
    EXPECT_FALSE(screen.findChild<ConsentCard *>());
}

TEST_F(ChatScreenConsentTest, theHintTurnsTheWebOnAndAsksAgain) {
    engine.answer(Script::reply({u"I can't search the internet."_s}));
    screen.submit(u"What is new?"_s);
    finishTurn();
    auto *hint = screen.findChild<SearchHintCard *>();
    ASSERT_TRUE(hint->isVisible());
    engine.answer(Script::reply({u"Tea is new."_s}));
    ASSERT_TRUE(press(u"Turn on web search"_s));
    EXPECT_FALSE(hint->isVisible());
    EXPECT_EQ(loadSettings().searchMode, SearchMode::always) << "not only on demand";
    finishTurn();
    const QList<Message> messages = app.chat().conversation()->messages;
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages.first().content, u"What is new?"_s);
    EXPECT_EQ(messages.last().content, u"Tea is new."_s);
}

TEST_F(ChatScreenConsentTest, thereIsNoHintWhileTheTitleIsMade) {
    engine.answer(Script::reply({u"Nothing recent."_s}));
    engine.answer(Script(200).hold());
    screen.submit(u"Hi"_s);
    auto *hint = screen.findChild<SearchHintCard *>();
    ASSERT_TRUE(eventually([&] { return app.chat().showSearchHint(); }));
    EXPECT_FALSE(hint->isVisible());
    app.chat().stop();
    EXPECT_TRUE(hint->isVisible());
}

TEST_F(ChatScreenConsentTest, aPageThatFailedIsNotTriedWhileAnotherReplyIsWritten) {
    Conversation chat = newConversation(clock.now().addSecs(-60), u"Pages"_s);
    Message failed{.id = QUuid::createUuid(), .role = Role::assistant, .content = u"So."_s};
    failed.pageFailed = true;
    chat.messages = {{.id = QUuid::createUuid(), .content = u"A page"_s}, failed};
    ChatStore().save(chat);
    engine.answer(Script().content(u"half"_s).hold());
    screen.submit(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 1; }));
    app.chat().openConversation(chat.id);
    ASSERT_TRUE(press(u"Try again"_s));
    EXPECT_EQ(app.chat().conversation()->messages.size(), 2);
    EXPECT_EQ(screen.findChild<Toast *>()->text(),
              u"Ostrelin is still answering. Stop that first, or wait for it to finish."_s);
    app.chat().stop();
}

TEST_F(ChatScreenConsentTest, theHintStandsUnderTheMessagesAndOverTheComposer) {
    engine.answer(Script::reply({u"Nothing recent."_s}));
    screen.submit(u"Hi"_s);
    auto *hint = screen.findChild<SearchHintCard *>();
    EXPECT_FALSE(hint->isVisible());
    finishTurn();
    QCoreApplication::processEvents();
    const auto button = buttonNamed(*hint, u"Turn on web search"_s);
    EXPECT_EQ(hint->width(), style::columnWidth);
    EXPECT_EQ(hint->rect().right() - button->geometry().right(), 10);
}
