#include "conversation/PageReply.h"
#include "conversation/Turn.h"
#include "conversation/TurnFixture.h"
#include "conversation/TurnServices.h"
#include "pages/PageStore.h"

using namespace Qt::StringLiterals;

// A page from the reply to the draft, and from there to the disk.

namespace {

const QString page = u"```page\n# Tea\nGreen.\n```"_s;
const PageSnapshot snapshot{u"Tea"_s, u"# Tea\nGreen."_s};

class PageTurn : public TurnFixture {
protected:
    PageTurn() {
        TurnPoints points = turnServices(clock);
        points.makeTitle = nullptr;
        makeChat(points);
        chat->newChat();
    }

    /// A turn whose reply is to be a page.
    void sayAccepted(const QString &text) {
        await(generate(chat.get(), *chat->conversation(),
                       {.question = UserMessage{text, {}}, .pageAccepted = true}, {}));
    }

    QStringList promptEnds() const {
        QStringList ends;
        for (qsizetype request = 0; request < engine.requests().size(); ++request)
            ends.append(prompt(request).endsWith(pageCorrection()) ? u"corrected"_s : u"plain"_s);
        return ends;
    }
};

} // namespace

TEST_F(PageTurn, anAcceptedPageBecomesADraft) {
    const QSignalSpy opened(chat.get(), &ChatController::pageDraftChanged);
    engine.answer(Script::reply({page}));
    sayAccepted(u"Page"_s);
    EXPECT_EQ(last().page, snapshot);
    EXPECT_EQ(last().content, QString());
    EXPECT_EQ(saved(), *chat->conversation());
    ASSERT_TRUE(chat->pageDraft());
    EXPECT_EQ(chat->pageDraft()->markdown, snapshot.markdown);
    EXPECT_EQ(chat->pageDraft()->createdAt, clock.now());
    EXPECT_EQ(opened.count(), 1);
    EXPECT_TRUE(listPages().isEmpty()) << "nobody has saved it";
}

TEST_F(PageTurn, aPageThatIsFinishedBehindAnotherChatBecomesADraftToo) {
    engine.answer(Script().content(page.first(12)).hold().content(page.sliced(12)).finish(u"stop"_s).done());
    const Conversation first = *chat->conversation();
    TaskHandle turn;
    turn.start([&](std::stop_token stop) {
        return generate(chat.get(), first, {.question = UserMessage{u"Page"_s, {}}, .pageAccepted = true},
                        stop);
    });
    ASSERT_TRUE(eventually([&] { return messages().size() == 2 && !last().content.isEmpty(); }));
    chat->newChat();
    engine.goOn();
    ASSERT_TRUE(eventually([&] { return !turn.isRunning(); }));
    EXPECT_NE(chat->conversation()->id, first.id);
    ASSERT_TRUE(chat->pageDraft());
    EXPECT_EQ(chat->pageDraft()->markdown, snapshot.markdown);
    EXPECT_EQ(ChatStore().load(first.id)->messages.last().page, snapshot);
}

TEST_F(PageTurn, aPageThatFailsIsAskedForOnceMoreAndThenGivenUp) {
    engine.answer(Script::reply({u"no page"_s}));
    engine.answer(Script::reply({u"still none"_s}));
    sayAccepted(u"Page"_s);
    EXPECT_EQ(promptEnds(), (QStringList{u"plain"_s, u"corrected"_s}));
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(last().content, u"still none"_s);
    EXPECT_EQ(last().pageFailed, true);
    EXPECT_FALSE(chat->pageDraft());
}

TEST_F(PageTurn, aPageThatFailsOnceMayStillCome) {
    engine.answer(Script::reply({u"no page"_s}));
    engine.answer(Script::reply({page}));
    sayAccepted(u"Page"_s);
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(last().page, snapshot);
    EXPECT_FALSE(last().pageFailed);
    EXPECT_TRUE(chat->pageDraft());
}

TEST_F(PageTurn, aPageThatNobodyAskedForHasNoDraft) {
    engine.answer(Script::reply({page}));
    say(u"Hi"_s);
    EXPECT_EQ(last().page, snapshot);
    EXPECT_FALSE(chat->pageDraft());
}

TEST_F(PageTurn, theRetryTakesTheFailedReplyAwayAndCorrectsAtOnce) {
    engine.answer(Script::reply({u"no page"_s}));
    engine.answer(Script::reply({u"still none"_s}));
    sayAccepted(u"Page"_s);
    engine.answer(Script::reply({u"not yet"_s}));
    engine.answer(Script::reply({page}));
    chat->retryPage();
    ASSERT_EQ(messages().size(), 2) << "the question, and the reply that begins";
    ASSERT_TRUE(waitForTurn());
    EXPECT_EQ(promptEnds(), (QStringList{u"plain"_s, u"corrected"_s, u"corrected"_s, u"corrected"_s}));
    EXPECT_FALSE(body(2).contains("tools"_L1));
    EXPECT_EQ(body(2)["messages"_L1].toArray().size(), 2) << "the prompt and the question";
    ASSERT_EQ(messages().size(), 2);
    EXPECT_EQ(last().page, snapshot);
    EXPECT_TRUE(chat->pageDraft());
    EXPECT_EQ(saved(), *chat->conversation());
}

TEST_F(PageTurn, theRetryLeavesAReplyThatDidNotFail) {
    engine.answer(Script::reply({u"fine"_s}));
    say(u"Hi"_s);
    engine.answer(Script::reply({page}));
    chat->retryPage();
    ASSERT_TRUE(waitForTurn());
    ASSERT_EQ(messages().size(), 3);
    EXPECT_EQ(messages().at(1).content, u"fine"_s);
    EXPECT_EQ(last().page, snapshot);
}

TEST_F(PageTurn, thereIsNoRetryWhileATurnRunsOrWithoutAChat) {
    engine.answer(Script().content(u"half"_s).hold());
    chat->send(u"Hi"_s);
    ASSERT_TRUE(eventually([&] { return last().content == u"half"_s; }));
    chat->retryPage();
    EXPECT_EQ(engine.requests().size(), 1);
    chat->stop();
    chat->resetAll();
    chat->retryPage();
    EXPECT_FALSE(chat->isGenerating());
}

TEST_F(PageTurn, aCardOpensItsPageAsAnotherDraftEachTime) {
    chat->openPage(snapshot);
    ASSERT_TRUE(chat->pageDraft());
    const PageDocument first = *chat->pageDraft();
    EXPECT_EQ(first, (PageDocument{first.id, u"Tea"_s, u"# Tea\nGreen."_s, clock.now(), clock.now()}));
    chat->openPage(snapshot);
    EXPECT_NE(chat->pageDraft()->id, first.id);
}

TEST_F(PageTurn, aDraftIsSavedWithItsTimeAndClosed) {
    chat->openPage(snapshot);
    PageDocument draft = *chat->pageDraft();
    clock.advance(std::chrono::hours(1));
    chat->savePageDraft();
    EXPECT_FALSE(chat->pageDraft());
    draft.updatedAt = clock.now();
    EXPECT_EQ(loadPage(draft.id), draft);
    chat->savePageDraft();
    EXPECT_EQ(listPages().size(), 1);
}

TEST_F(PageTurn, aDraftThatIsClosedIsGone) {
    chat->openPage(snapshot);
    chat->closePageDraft();
    EXPECT_FALSE(chat->pageDraft());
    EXPECT_TRUE(listPages().isEmpty());
}

TEST_F(PageTurn, anotherChatClosesTheDraft) {
    const QUuid first = chat->conversation()->id;
    const auto closes = [&](const std::function<void()> &leave) {
        chat->openPage(snapshot);
        leave();
        return !chat->pageDraft();
    };
    EXPECT_TRUE(closes([&] { chat->newChat(); }));
    EXPECT_TRUE(closes([&] { chat->openConversation(first); }));
    EXPECT_TRUE(closes([&] { chat->resetAll(); }));
}

TEST_F(PageTurn, aChatThatCannotBeOpenedLeavesTheDraft) {
    chat->openPage(snapshot);
    chat->openConversation(QUuid::createUuid());
    EXPECT_TRUE(chat->pageDraft());
}
