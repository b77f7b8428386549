#include "conversation/SearchHint.h"

#include "conversation/TurnFixture.h"
#include "conversation/TurnServices.h"

using namespace Qt::StringLiterals;

namespace {

class SearchHint : public TurnFixture {
protected:
    SearchHint() {
        TurnPoints points = turnServices(clock);
        points.makeTitle = nullptr;
        makeChat(points);
        host.tier->supportsTools = true;
    }

    void sayAnswered(const QString &reply) {
        engine.answer(Script::reply({reply}));
        say(u"Hi"_s);
    }
};

} // namespace

TEST_F(SearchHint, aReplyThatSpeaksOfTheWebSuggestsIt) {
    for (const QString &reply :
         {u"I can't search."_s, u"No INTERNET here."_s, u"Recently."_s, u"Research"_s}) {
        sayAnswered(reply);
        EXPECT_TRUE(chat->showSearchHint()) << reply.toStdString();
    }
    sayAnswered(u"The sky is blue."_s);
    EXPECT_FALSE(chat->showSearchHint());
}

TEST_F(SearchHint, onlyWhileTheWebIsOff) {
    for (const SearchMode mode : {SearchMode::ask, SearchMode::always}) {
        host.fakeSettings.searchMode = mode;
        sayAnswered(u"recent"_s);
        EXPECT_FALSE(chat->showSearchHint());
    }
}

TEST_F(SearchHint, aModelThatCannotSearchGivesNone) {
    host.tier->supportsTools = false;
    sayAnswered(u"recent"_s);
    EXPECT_FALSE(chat->showSearchHint());
}

TEST_F(SearchHint, aTurnThatFailsOrIsStoppedGivesNone) {
    engine.answer(Script().content(u"recent"_s).pause(20).drop());
    say(u"Hi"_s);
    EXPECT_FALSE(chat->showSearchHint());
    engine.answer(Script().content(u"recent"_s).hold());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"recent"_s; }));
    chat->stop();
    letPass(30);
    EXPECT_FALSE(chat->showSearchHint());
}

TEST_F(SearchHint, itGoesWithTheNextTurnAndWithAnotherChat) {
    const QSignalSpy changes(chat.get(), &ChatController::showSearchHintChanged);
    sayAnswered(u"recent"_s);
    engine.answer(Script().hold());
    chat->send(u"Hi"_s);
    EXPECT_FALSE(chat->showSearchHint());
    ASSERT_TRUE(eventually([&] { return engine.requests().size() == 2; }));
    chat->stop();
    EXPECT_EQ(changes.count(), 2);
    const QUuid id = chat->conversation()->id;
    for (const auto &leave : QList<std::function<void()>>{
             [&] { chat->newChat(); }, [&] { chat->openConversation(id); }, [&] { chat->resetAll(); }}) {
        sayAnswered(u"recent"_s);
        ASSERT_TRUE(chat->showSearchHint());
        leave();
        EXPECT_FALSE(chat->showSearchHint());
    }
}

TEST_F(SearchHint, aReplyInAChatThatIsNotOnScreenGivesNone) {
    engine.answer(Script().content(u"recent"_s).hold().finish(u"stop"_s).done());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"recent"_s; }));
    chat->newChat();
    engine.goOn();
    ASSERT_TRUE(waitForTurn());
    EXPECT_FALSE(chat->showSearchHint());
}
