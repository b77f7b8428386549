#include "conversation/History.h"

#include "records/Characters.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString marker = u"\n\n…(trimmed to fit this Mac's memory)"_s;

Message message(Role role, const QString &content) {
    return {.id = QUuid::createUuid(), .role = role, .content = content};
}

Message user(int characters) {
    return message(Role::user, QString(characters, u'u'));
}

Message assistant(int characters) {
    return message(Role::assistant, QString(characters, u'a'));
}

Message calling(const QStringList &ids) {
    Message result = message(Role::assistant, QString());
    result.toolCalls = QList<ToolCall>();
    for (const QString &id : ids)
        result.toolCalls->append({id, u"f"_s, u"{}"_s});
    return result;
}

Message answer(const QString &id) {
    Message result = message(Role::tool, u"ok"_s);
    result.toolCallId = id;
    return result;
}

Message withFiles(Message result, const QStringList &texts) {
    result.attachments = QList<Attachment>();
    for (const QString &text : texts)
        result.attachments->append({QUuid::createUuid(), u"f"_s, text});
    return result;
}

/// The fitting as it is told, step by step and slowly.
FittedHistory slowFit(QList<Message> messages, qint64 contextLength) {
    const qint64 budget = contextLength * 3 / 4;
    qsizetype last = messages.size() - 1;
    while (last >= 0 && messages.at(last).role != Role::user)
        --last;
    if (last < 0)
        return {messages, 0};
    QList<Message> head = messages.first(last);
    const QList<Message> tail = messages.sliced(last);
    qint64 dropped = 0;
    while (estimateTokens(head + tail) > budget && !head.isEmpty()) {
        const Message first = head.takeFirst();
        ++dropped;
        while (!head.isEmpty() && head.first().role == Role::tool) {
            bool belongs = first.role == Role::tool;
            if (first.role == Role::assistant && first.toolCalls) {
                for (const ToolCall &call : *first.toolCalls)
                    belongs = belongs || head.first().toolCallId == call.id;
            }
            if (!belongs)
                break;
            head.removeFirst();
            ++dropped;
        }
    }
    return {head + tail, dropped};
}

} // namespace

TEST(EstimateTokens, evenAnEmptyMessageCountsEleven) {
    EXPECT_EQ(estimateTokens({message(Role::user, QString())}), 11);
    EXPECT_EQ(estimateTokens({}), 0);
}

TEST(EstimateTokens, charactersAreDividedAndRoundedUp) {
    EXPECT_EQ(estimateTokens({user(3)}), 11);
    EXPECT_EQ(estimateTokens({user(4)}), 12);
    EXPECT_EQ(estimateTokens({user(7)}), 12);
    EXPECT_EQ(estimateTokens({user(8)}), 13);
    EXPECT_EQ(estimateTokens({user(350)}), 110);
}

TEST(EstimateTokens, charactersAreWhatAReaderSees) {
    EXPECT_EQ(estimateTokens({message(Role::user, u"🇩🇪🇫🇷🇮🇹"_s)}), 11);
}

TEST(EstimateTokens, filesAndArgumentsCountAsOneTextEach) {
    EXPECT_EQ(estimateTokens({withFiles(user(0), {u"1234"_s, u"567"_s})}), 12);
    Message calls = message(Role::assistant, QString());
    calls.toolCalls =
        QList<ToolCall>{{u"a"_s, u"long name that does not count"_s, u"1234"_s}, {u"b"_s, u"f"_s, u"5678"_s}};
    EXPECT_EQ(estimateTokens({calls}), 1 + 1 + 3 + 8);
}

TEST(FitHistory, whatFitsIsLeftAlone) {
    const QList<Message> messages{user(10), assistant(10), user(10)};
    EXPECT_EQ(fitHistory(messages, 4096), (FittedHistory{messages, 0}));
}

TEST(FitHistory, withoutAQuestionNothingIsDroppedWhateverTheSize) {
    const QList<Message> messages{message(Role::system, QString(100'000, u's')), assistant(100'000)};
    EXPECT_EQ(fitHistory(messages, 100), (FittedHistory{messages, 0}));
    EXPECT_EQ(fitHistory({}, 100), (FittedHistory{{}, 0}));
}

TEST(FitHistory, theOldestGoFirstUntilThreeQuartersAreKept) {
    // 110 tokens each; the budget of 400 is 300.
    const QList<Message> messages{user(350), assistant(350), user(350), assistant(350)};
    EXPECT_EQ(fitHistory(messages, 400), (FittedHistory{messages.sliced(2), 2}));
}

TEST(FitHistory, exactlyTheBudgetIsWithinIt) {
    const QList<Message> messages{user(350), assistant(350), user(350)};
    EXPECT_EQ(fitHistory(messages, 440).droppedCount, 0);
    EXPECT_EQ(fitHistory(messages, 439).droppedCount, 1);
}

TEST(FitHistory, aCallGoesTogetherWithItsAnswers) {
    const QList<Message> messages{calling({u"a"_s, u"b"_s, u"c"_s}), answer(u"a"_s), answer(u"b"_s),
                                  answer(u"c"_s), user(350)};
    EXPECT_EQ(fitHistory(messages, 200), (FittedHistory{messages.sliced(4), 4}));
}

TEST(FitHistory, anAnswerToAnotherCallEndsTheBlock) {
    // The call and its own answer go; the stranger then goes with its neighbour, being too much as well.
    const QList<Message> messages{calling({u"a"_s}), answer(u"a"_s), answer(u"x"_s), user(350)};
    EXPECT_EQ(fitHistory(messages, 165).droppedCount, 2);
    EXPECT_EQ(fitHistory(messages, 150).droppedCount, 3);
}

TEST(FitHistory, answersWhoseCallIsGoneGoTogether) {
    const QList<Message> messages{answer(u"a"_s), answer(u"b"_s), assistant(1), user(350)};
    EXPECT_EQ(fitHistory(messages, 170), (FittedHistory{messages.sliced(2), 2}));
}

TEST(FitHistory, anEmptyListOfCallsIsNoCall) {
    const QList<Message> messages{calling({}), answer(u"a"_s), user(350)};
    EXPECT_EQ(fitHistory(messages, 165), (FittedHistory{messages.sliced(1), 1}));
}

TEST(FitHistory, whatFollowsTheQuestionIsNeverDropped) {
    const QList<Message> messages{user(350), calling({u"a"_s}), answer(u"a"_s)};
    const FittedHistory fitted = fitHistory(QList<Message>{assistant(350)} + messages, 180);
    EXPECT_EQ(fitted.droppedCount, 1);
    EXPECT_EQ(fitted.messages, messages);
}

TEST(FitHistory, aQuestionThatIsTooLongIsHalvedUntilItFits) {
    const FittedHistory fitted = fitHistory({assistant(5), user(1000)}, 200);
    EXPECT_EQ(fitted.droppedCount, 1);
    ASSERT_EQ(fitted.messages.size(), 1);
    EXPECT_EQ(fitted.messages.first().content, QString(250, u'u'));
}

TEST(FitHistory, aQuestionIsCutBetweenCharacters) {
    const FittedHistory fitted = fitHistory(
        {message(Role::user, u"👩‍👩‍👧👩‍👩‍👧👩‍👩‍👧"_s.repeated(200))},
        160);
    EXPECT_EQ(fitted.messages.first().content, u"👩‍👩‍👧"_s.repeated(300));
}

TEST(FitHistory, aContextForNothingEndsAfterTheQuestionIsGone) {
    const FittedHistory fitted = fitHistory({user(1'000'000), assistant(1'000'000)}, 1);
    EXPECT_EQ(fitted.messages.first().content, QString());
    EXPECT_EQ(fitted.messages.last().content.size(), 1'000'000);
}

TEST(FitHistory, filesAreCutBeforeTheQuestionAndMarked) {
    const FittedHistory fitted = fitHistory({withFiles(user(100), {QString(1000, u'x')})}, 400);
    EXPECT_EQ(fitted.messages.first().content.size(), 100);
    EXPECT_EQ(fitted.messages.first().attachments->first().text, QString(500, u'x') + marker);
}

TEST(FitHistory, theMarkerCanBeCutAgain) {
    const FittedHistory fitted = fitHistory({withFiles(user(0), {QString(1000, u'x')})}, 200);
    const QString once = QString(500, u'x') + marker;
    EXPECT_EQ(fitted.messages.first().attachments->first().text, once.first(once.size() / 2) + marker);
}

TEST(FitHistory, theLongestFileOfTheOldestMessageIsCutFirst) {
    const QList<Message> messages{
        withFiles(user(1), {QString(300, u'a'), QString(400, u'b'), QString(400, u'c')}),
        withFiles(assistant(1), {QString(5000, u'd')})};
    const FittedHistory fitted = fitHistory(messages, 2300);
    const QList<Attachment> files = *fitted.messages.first().attachments;
    EXPECT_EQ(files.at(0).text.size(), 300);
    EXPECT_EQ(files.at(1).text, QString(200, u'b') + marker);
    EXPECT_EQ(files.at(2).text.size(), 400);
    EXPECT_EQ(fitted.messages.last().attachments->first().text.size(), 5000);
}

TEST(FitHistory, sixtyFourPassesAreTheMost) {
    // Each pass halves the largest file, and so many of them never fit.
    QStringList files;
    for (int file = 0; file < 20; ++file)
        files.append(QString(1 << 16, u'x'));
    QStringList expected = files;
    for (int pass = 0; pass < 64; ++pass) {
        QString &largest =
            *std::ranges::max_element(expected, {}, [](const QString &text) { return characterCount(text); });
        largest = firstCharacters(largest, characterCount(largest) / 2).toString() + marker;
    }
    const FittedHistory fitted = fitHistory({withFiles(user(10), files)}, 4);
    QStringList texts;
    for (const Attachment &file : *fitted.messages.first().attachments)
        texts.append(file.text);
    EXPECT_EQ(texts, expected);
    EXPECT_EQ(fitted.messages.first().content.size(), 10);
}

TEST(FitHistory, theGivenMessagesStayAsTheyAre) {
    const QList<Message> messages{withFiles(user(1000), {QString(1000, u'x')})};
    const QList<Message> before = messages;
    fitHistory(messages, 10);
    EXPECT_EQ(messages, before);
}

TEST(FitHistory, itDropsWhatASlowReadingOfTheRuleDrops) {
    std::mt19937 random(11);
    for (int round = 0; round < 2000; ++round) {
        QList<Message> messages;
        const int length = static_cast<int>(random() % 12);
        for (int index = 0; index < length; ++index) {
            switch (random() % 5) {
            case 0:
                messages.append(user(static_cast<int>(random() % 60)));
                break;
            case 1:
                messages.append(assistant(static_cast<int>(random() % 60)));
                break;
            case 2:
                messages.append(calling({QString::number(random() % 3), QString::number(random() % 3)}));
                break;
            default:
                messages.append(answer(QString::number(random() % 3)));
                break;
            }
        }
        const FittedHistory slow = slowFit(messages, 160);
        const FittedHistory fitted = fitHistory(messages, 160);
        ASSERT_EQ(fitted.droppedCount, slow.droppedCount);
        if (estimateTokens(slow.messages) <= 120) {
            ASSERT_EQ(fitted.messages, slow.messages);
        }
    }
}
