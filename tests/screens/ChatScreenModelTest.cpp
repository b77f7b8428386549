#include "screens/ChatScreenModel.h"

#include "screens/Submission.h"

#include <QSet>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Kind = MessageRowModel::Kind;
using State = EngineStatus::State;

Message message(Role role, const QString &content) {
    return {.id = QUuid::createUuid(), .role = role, .content = content};
}

Conversation chatOf(const QList<Message> &messages) {
    return {.id = QUuid::createUuid(), .title = u"Autumn"_s, .messages = messages};
}

const Attachment file{.id = QUuid::createUuid(), .name = u"notes.txt"_s, .text = u"milk"_s};

QList<Kind> kindsOf(const QList<MessageRowModel> &rows) {
    QList<Kind> kinds;
    for (const MessageRowModel &row : rows)
        kinds.append(row.kind);
    return kinds;
}

} // namespace

TEST(StatusLampTest, everyStateHasItsColorAndItsWord) {
    using Color = StatusLamp::Color;
    using Light = StatusLamp::Light;
    const auto lamp = [](State state) { return statusLamp({state, {}}); };
    EXPECT_EQ(lamp(State::stopped), (StatusLamp{Color::quiet, Light::steady, u"Ostrelin status: Stopped"_s}));
    EXPECT_EQ(lamp(State::starting),
              (StatusLamp{Color::waking, Light::pulsing, u"Ostrelin status: Waking up"_s}));
    EXPECT_EQ(lamp(State::loading), lamp(State::starting));
    EXPECT_EQ(lamp(State::ready), (StatusLamp{Color::good, Light::steady, u"Ostrelin status: Ready"_s}));
    EXPECT_EQ(lamp(State::failed),
              (StatusLamp{Color::bad, Light::steady, u"Ostrelin status: Engine error"_s}));
}

TEST(ChatScreenModelTest, withoutAChatTheEmptyStateStands) {
    const ChatScreenModel model = chatScreenModel({});
    EXPECT_TRUE(model.showsEmptyState);
    EXPECT_EQ(model.title, u"New chat"_s);
    EXPECT_TRUE(model.rows.isEmpty());
    EXPECT_TRUE(model.conversationID.isNull());
}

TEST(ChatScreenModelTest, aChatWithoutMessagesIsEmptyToo) {
    ChatScreenState state{.conversation = chatOf({})};
    EXPECT_TRUE(chatScreenModel(state).showsEmptyState);
    EXPECT_EQ(chatScreenModel(state).title, u"Autumn"_s);
    state.conversation->messages.append(message(Role::user, u"Hi"_s));
    EXPECT_FALSE(chatScreenModel(state).showsEmptyState);
}

TEST(ChatScreenModelTest, onlyALightModelHasAHint) {
    ChatScreenState state;
    EXPECT_EQ(chatScreenModel(state).emptyHint, QString());
    state.activeTier = ModelTier{.id = u"lite-2"_s};
    EXPECT_EQ(chatScreenModel(state).emptyHint, u"Great for writing, brainstorming and quick questions."_s);
    state.activeTier = ModelTier{.id = u"pro-lite"_s};
    EXPECT_EQ(chatScreenModel(state).emptyHint, QString());
}

TEST(ChatScreenModelTest, messagesForTheModelAloneAreNotDrawn) {
    const Conversation chat = chatOf({message(Role::system, u"be kind"_s), message(Role::user, u"Hi"_s),
                                      message(Role::assistant, {}), message(Role::tool, u"{}"_s),
                                      message(Role::assistant, u"Hello"_s)});
    const auto rows = messageRows(chat, std::nullopt);
    EXPECT_EQ(kindsOf(rows), (QList{Kind::user, Kind::assistant}));
    EXPECT_EQ(rows.at(1).id, chat.messages.at(4).id);
    EXPECT_EQ(rows.at(1).text, u"Hello"_s);
}

TEST(ChatScreenModelTest, theFilesOfAQuestionStandByTheirNames) {
    Message question = message(Role::user, u"What do I need?"_s);
    question.attachments = {file, file};
    EXPECT_EQ(messageRows(chatOf({question}), {}).at(0).attachments, QStringList(2, u"notes.txt"_s));
    EXPECT_EQ(messageRows(chatOf({question}), {}).at(0).text, u"What do I need?"_s);
    question.content = u" \n"_s;
    EXPECT_EQ(messageRows(chatOf({question}), {}).at(0).text, QString());
    const MessageRowModel row = messageRows(chatOf({question}), {}).at(0);
    question.attachments->removeLast();
    EXPECT_FALSE(drawsTheSame(row, messageRows(chatOf({question}), {}).at(0)));
}

TEST(ChatScreenModelTest, aReplyWithoutTextTypesWhileItIsWritten) {
    Conversation chat = chatOf({message(Role::user, u"Hi"_s), message(Role::assistant, u" \n"_s)});
    const QUuid reply = chat.messages.at(1).id;
    ASSERT_EQ(kindsOf(messageRows(chat, reply)), (QList{Kind::user, Kind::assistant}));
    EXPECT_TRUE(messageRows(chat, reply).at(1).isStreaming);
    EXPECT_EQ(messageRows(chat, reply).at(1).text, QString());
    chat.messages[1].content = u"\nHel "_s;
    EXPECT_EQ(messageRows(chat, reply).at(1).text, u"Hel"_s);
    EXPECT_FALSE(messageRows(chat, std::nullopt).at(1).isStreaming);
    EXPECT_EQ(messageRows(chat, std::nullopt).at(1).text, u"\nHel "_s);
}

TEST(ChatScreenModelTest, aReplyThatIsWrittenHidesItsTagsAndItsPage) {
    const Conversation chat = chatOf({message(Role::assistant, u"a<think>b</think>c\n```page\n# d"_s)});
    const QUuid reply = chat.messages.at(0).id;
    EXPECT_EQ(messageRows(chat, reply).at(0).text, u"ac"_s);
    EXPECT_EQ(messageRows(chat, std::nullopt).at(0).text, chat.messages.at(0).content);
}

TEST(ChatScreenModelTest, aReplyIsDrawnForWhatBelongsToItAlone) {
    Message reply = message(Role::assistant, QString());
    EXPECT_TRUE(messageRows(chatOf({reply}), {}).isEmpty());
    const auto extrasOf = [&] {
        const auto rows = messageRows(chatOf({reply}), {});
        return rows.isEmpty() ? ReplyExtras() : rows.first().extras;
    };
    reply.searchEvent = SearchEvent{u"tea"_s, SearchStatus::denied, {}};
    EXPECT_EQ(extrasOf().search, reply.searchEvent);
    reply.searchEvent.reset();
    reply.page = PageSnapshot{u"Tea"_s, u"# Tea"_s};
    EXPECT_EQ(extrasOf().page, reply.page);
    EXPECT_FALSE(messageRows(chatOf({reply}), {}).first().hasActions());
    reply.page.reset();
    reply.pageFailed = false;
    EXPECT_TRUE(extrasOf().isEmpty());
    reply.pageFailed = true;
    EXPECT_TRUE(extrasOf().hasFailedPage);
}

TEST(ChatScreenModelTest, aCardHangsOnTheReplyThatAsks) {
    const Message first = message(Role::assistant, u"one"_s);
    const Message second = message(Role::assistant, QString());
    ChatScreenState state{.conversation = chatOf({first, second}), .isGenerating = true};
    const auto askedOf = [&] {
        QList<Asked> asked;
        for (const MessageRowModel &row : chatScreenModel(state).rows)
            asked.append(row.extras.asked);
        return asked;
    };
    EXPECT_EQ(askedOf(), QList<Asked>(1)) << "a reply with nothing to show is none";
    const PendingSearch search{QUuid::createUuid(), second.id, u"tea"_s};
    state.pendingPermission = search;
    EXPECT_EQ(askedOf(), (QList<Asked>{Asked(), search}));
    state.pendingPermission.reset();
    const PendingPageOffer offer{QUuid::createUuid(), first.id};
    state.pendingPageOffer = offer;
    EXPECT_EQ(askedOf(), (QList<Asked>{offer}));
    state.pendingPageOffer.reset();
    const PendingMemory memory{QUuid::createUuid(), second.id, u"Has a dog"_s};
    state.pendingMemory = memory;
    EXPECT_EQ(askedOf(), (QList<Asked>{Asked(), memory}));
    state.pendingMemory->messageID = QUuid::createUuid();
    EXPECT_EQ(askedOf(), (QList<Asked>{Asked()})) << "the one that asks is in another chat";
}

TEST(ChatScreenModelTest, theHintAtTheWebIsShownAsPublished) {
    EXPECT_FALSE(chatScreenModel({}).showsSearchHint);
    EXPECT_TRUE(chatScreenModel({.showSearchHint = true}).showsSearchHint);
    EXPECT_FALSE(chatScreenModel({.isGenerating = true, .showSearchHint = true}).showsSearchHint)
        << "nothing can be asked again yet";
    EXPECT_FALSE(chatScreenModel({.showSearchHint = true, .searchMode = SearchMode::ask}).showsSearchHint);
}

TEST(ChatScreenModelTest, aReplyWhoseToolsAreAtWorkHasDots) {
    Message calling = message(Role::assistant, QString());
    calling.toolCalls = QList<ToolCall>{{u"c"_s, u"web_search"_s, u"{}"_s}};
    ChatScreenState state{.conversation = chatOf({message(Role::user, u"Hi"_s), calling}),
                          .isGenerating = true};
    const auto isStreaming = [&] { return chatScreenModel(state).rows.last().isStreaming; };
    EXPECT_EQ(chatScreenModel(state).rows.size(), 1) << "another chat's turn runs";
    state.generatingID = state.conversation->id;
    EXPECT_TRUE(isStreaming());
    state.conversation->messages.append(message(Role::tool, u"found"_s));
    EXPECT_TRUE(isStreaming());
    state.pendingPermission = PendingSearch{QUuid::createUuid(), calling.id, u"tea"_s};
    EXPECT_FALSE(isStreaming()) << "it is the person's turn";
    state.pendingPermission.reset();
    state.conversation->messages.append(message(Role::assistant, u"So."_s));
    EXPECT_FALSE(isStreaming()) << "the title is made";
}

TEST(ChatScreenModelTest, onlyTheLastReplyCanBeRegenerated) {
    ChatScreenState state{.conversation =
                              chatOf({message(Role::user, u"Hi"_s), message(Role::assistant, u"Hello"_s),
                                      message(Role::user, u"And?"_s)})};
    const auto allowed = [&state] {
        QList<bool> rows;
        for (const MessageRowModel &row : chatScreenModel(state).rows)
            rows.append(row.canRegenerate);
        return rows;
    };
    EXPECT_EQ(allowed(), (QList{false, false, false}));
    state.conversation->messages.append(message(Role::assistant, u"Well."_s));
    EXPECT_EQ(allowed(), (QList{false, false, false, true}));
    state.isGenerating = true;
    EXPECT_EQ(allowed(), (QList{false, false, false, false}));
}

TEST(ChatScreenModelTest, aChatThatShowsNothingYetIsNotEmpty) {
    const ChatScreenModel model = chatScreenModel({.conversation = chatOf({message(Role::assistant, {})})});
    EXPECT_FALSE(model.showsEmptyState);
    EXPECT_TRUE(model.rows.isEmpty());
}

TEST(ChatScreenModelTest, aReplyHasActionsOnceItIsWritten) {
    EXPECT_TRUE((MessageRowModel{.kind = Kind::assistant, .text = u"a"_s}).hasActions());
    EXPECT_FALSE(
        (MessageRowModel{.kind = Kind::assistant, .text = u"a"_s, .isStreaming = true}).hasActions());
    EXPECT_FALSE(MessageRowModel{.kind = Kind::assistant}.hasActions());
    EXPECT_FALSE((MessageRowModel{.kind = Kind::user, .text = u"a"_s}).hasActions());
    EXPECT_FALSE((MessageRowModel{.kind = Kind::note, .text = u"a"_s}).hasActions());
}

TEST(ChatScreenModelTest, whatTheModelThoughtStandsInItsRow) {
    Conversation chat = chatOf({message(Role::assistant, {})});
    Message &reply = chat.messages[0];
    reply.reasoning = u"hm"_s;
    ASSERT_EQ(kindsOf(messageRows(chat, std::nullopt)), QList{Kind::assistant}) << "also without a text";
    EXPECT_EQ(messageRows(chat, std::nullopt).at(0).reasoning, u"hm"_s);
    EXPECT_FALSE(messageRows(chat, std::nullopt).at(0).isReasoningStreaming());
    EXPECT_TRUE(messageRows(chat, reply.id).at(0).isReasoningStreaming());
    reply.content = u"<think>so</think>"_s;
    EXPECT_TRUE(messageRows(chat, reply.id).at(0).isReasoningStreaming()) << "nothing of that is shown";
    reply.content += u"Yes"_s;
    EXPECT_FALSE(messageRows(chat, reply.id).at(0).isReasoningStreaming());
    reply.reasoning = QString();
    reply.content = QString();
    EXPECT_TRUE(messageRows(chat, std::nullopt).isEmpty());
}

TEST(ChatScreenModelTest, messagesOfOneIdHaveRowsOfTheirOwn) {
    const Message one = message(Role::user, u"one"_s);
    Message two = one;
    two.content = u"two"_s;
    Message three = one;
    three.content = u"three"_s;
    Conversation chat = chatOf({one, message(Role::assistant, u"Yes"_s), two, three});
    const auto idsOf = [](const QList<MessageRowModel> &rows) {
        QList<QUuid> ids;
        for (const MessageRowModel &row : rows)
            ids.append(row.id);
        return ids;
    };
    const QList<QUuid> ids = idsOf(messageRows(chat, std::nullopt));
    ASSERT_EQ(ids.size(), 4);
    EXPECT_EQ(QSet(ids.begin(), ids.end()).size(), 4);
    EXPECT_EQ(ids.first(), one.id);
    chat.messages.append(message(Role::assistant, u"No"_s));
    EXPECT_EQ(idsOf(messageRows(chat, std::nullopt)).mid(0, 4), ids) << "they are the same rows later on";
}

TEST(ChatScreenModelTest, aMessageWithoutAnIdIsNotTheNote) {
    Message nameless = message(Role::user, u"one"_s);
    nameless.id = QUuid();
    Conversation chat = chatOf({nameless});
    chat.droppedCount = 1;
    const auto rows = messageRows(chat, std::nullopt);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows.at(0).kind, Kind::note);
    EXPECT_NE(rows.at(1).id, rows.at(0).id);
}

TEST(ChatScreenModelTest, rowsShareTheTextOfTheirMessages) {
    const QString text = QString::number(12345);
    const Conversation chat = chatOf({message(Role::user, text), message(Role::assistant, text)});
    const auto rows = messageRows(chat, std::nullopt);
    EXPECT_TRUE(rows.at(0).text.isSharedWith(chat.messages.at(0).content));
    EXPECT_TRUE(rows.at(1).text.isSharedWith(chat.messages.at(1).content));
}

TEST(ChatScreenModelTest, theNoteOnDroppedMessagesStandsOnTop) {
    Conversation chat = chatOf({message(Role::user, u"Hi"_s)});
    chat.droppedCount = 0;
    EXPECT_EQ(messageRows(chat, std::nullopt).size(), 1);
    chat.droppedCount = 1;
    const auto rows = messageRows(chat, std::nullopt);
    EXPECT_EQ(kindsOf(rows), (QList{Kind::note, Kind::user}));
    EXPECT_EQ(rows.at(0).text,
              u"Earlier messages aren't being sent to the model to fit this Mac's memory."_s);
}

TEST(ChatScreenModelTest, onlyAFailedEngineHasABanner) {
    ChatScreenState state{.engine = {State::ready, u"old"_s}};
    EXPECT_EQ(chatScreenModel(state).engineFailure, QString());
    state.engine = EngineStatus::failed(u"It broke."_s);
    EXPECT_EQ(chatScreenModel(state).engineFailure, u"It broke."_s);
}

TEST(ChatScreenModelTest, theFourSuggestionsAreTheGivenOnes) {
    EXPECT_EQ(suggestions(),
              (QStringList{u"Write a friendly note thanking a coworker for helping me hit a deadline."_s,
                           u"Explain how compound interest works, in plain words."_s,
                           u"Brainstorm five names for a neighborhood coffee shop."_s,
                           u"I have a job interview next week. Make me a short prep plan."_s}));
}

TEST(SubmissionTest, nothingIsSentDuringAReply) {
    const QString refusal = u"Ostrelin is still answering. Stop that first, or wait for it to finish."_s;
    EXPECT_EQ(submission(u"Hi"_s, {}, true), (Submission{Submission::Kind::refuse, refusal}));
    EXPECT_EQ(submission({}, {file}, true), (Submission{Submission::Kind::refuse, refusal}));
}

TEST(SubmissionTest, nothingIsSentWithoutAWord) {
    const Submission refused{Submission::Kind::refuse, u"Did you forget to type a message to the AI?"_s};
    EXPECT_EQ(submission({}, {}, false), refused);
    EXPECT_EQ(submission(u" \n\t"_s, {}, false), refused);
}

TEST(SubmissionTest, aFileNeedsNoWord) {
    EXPECT_EQ(submission({}, {file}, false), (Submission{Submission::Kind::send, QString()}));
}

TEST(SubmissionTest, aTextGoesOutAsItWasWritten) {
    EXPECT_EQ(submission(u" Hi \n"_s, {}, false), (Submission{Submission::Kind::send, u" Hi \n"_s}));
}

TEST(ChatScreenModelTest, aShortageOfMemoryHasItsBanner) {
    EXPECT_EQ(chatScreenModel({}).memoryWarning, QString());
    EXPECT_EQ(chatScreenModel({.memoryWarning = u"Little memory."_s}).memoryWarning, u"Little memory."_s);
}

TEST(ChatScreenModelTest, theSpeedIsThatOfTheSettings) {
    EXPECT_EQ(chatScreenModel({.responseSpeed = ResponseSpeed::calm}).speed, ResponseSpeed::calm);
}

TEST(ChatScreenModelTest, aTemporaryPlaceAndABetterModelHaveTheirBanners) {
    EXPECT_EQ(chatScreenModel({}).moveHint, QString());
    EXPECT_EQ(chatScreenModel({}).upgradeOffer, QString());
    const ChatScreenModel model =
        chatScreenModel({.needsMoveToApplications = true, .upgradeBanner = u"Better?"_s});
    EXPECT_EQ(model.moveHint, u"Ostrelin is running from a temporary location. Move it to the Applications "
                              "folder, then open it from there."_s);
    EXPECT_EQ(model.upgradeOffer, u"Better?"_s);
}
