#include "screens/SidebarModel.h"

#include <QTimeZone>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QTimeZone berlin("Europe/Berlin");

QDateTime local(const QDate &date, const QTime &time) {
    return QDateTime(date, time, berlin);
}

ConversationSummary chat(const QString &title, const QDateTime &updatedAt) {
    return {QUuid::createUuid(), title, updatedAt.toUTC(), 0};
}

/// The 15th of November, in the afternoon.
SidebarState stateWith(const QList<ConversationSummary> &summaries) {
    SidebarState state;
    state.summaries = summaries;
    state.now = local(QDate(2026, 11, 15), QTime(14, 30));
    return state;
}

QStringList listed(SidebarState state, SessionRange range) {
    state.range = range;
    QStringList titles;
    for (const ConversationSummary &summary : sidebarModel(state).chats)
        titles.append(summary.title);
    return titles;
}

} // namespace

TEST(SidebarModelTest, aRangeListsWhatChangedSinceItsFirstMoment) {
    const SidebarState state = stateWith({
        chat(u"now"_s, local(QDate(2026, 11, 15), QTime(14, 30))),
        chat(u"midnight"_s, local(QDate(2026, 11, 15), QTime(0, 0))),
        chat(u"yesterday"_s, local(QDate(2026, 11, 14), QTime(23, 59))),
        chat(u"six days ago"_s, local(QDate(2026, 11, 9), QTime(0, 0))),
        chat(u"before that"_s, local(QDate(2026, 11, 8), QTime(23, 59, 59))),
        chat(u"29 days ago"_s, local(QDate(2026, 10, 17), QTime(0, 0))),
        chat(u"30 days ago"_s, local(QDate(2026, 10, 16), QTime(23, 59, 59))),
    });
    EXPECT_EQ(listed(state, SessionRange::today), (QStringList{u"now"_s, u"midnight"_s}));
    EXPECT_EQ(listed(state, SessionRange::week),
              (QStringList{u"now"_s, u"midnight"_s, u"yesterday"_s, u"six days ago"_s}));
    EXPECT_EQ(listed(state, SessionRange::month),
              (QStringList{u"now"_s, u"midnight"_s, u"yesterday"_s, u"six days ago"_s, u"before that"_s,
                           u"29 days ago"_s}));
    EXPECT_EQ(listed(state, SessionRange::all).size(), 7);
}

TEST(SidebarModelTest, theOrderStays) {
    const QDateTime now = local(QDate(2026, 11, 15), QTime(12, 0));
    const SidebarState state = stateWith({chat(u"b"_s, now), chat(u"a"_s, now), chat(u"c"_s, now)});
    for (const SessionRange range : sessionRanges)
        EXPECT_EQ(listed(state, range), (QStringList{u"b"_s, u"a"_s, u"c"_s}));
}

TEST(SidebarModelTest, aChatOfTheFutureIsListed) {
    const SidebarState state = stateWith({chat(u"later"_s, local(QDate(2027, 1, 1), QTime(0, 0)))});
    EXPECT_EQ(listed(state, SessionRange::today), QStringList(u"later"_s));
}

TEST(SidebarModelTest, anEmptyListSaysSoInTheWordsOfItsRange) {
    SidebarState state = stateWith({});
    for (const SessionRange range : sessionRanges) {
        state.range = range;
        EXPECT_EQ(sidebarModel(state).emptyText, emptyTextOf(range));
    }
    state.summaries = {chat(u"old"_s, local(QDate(2020, 1, 1), QTime(0, 0)))};
    EXPECT_EQ(sidebarModel(state).emptyText, QString());
    state.range = SessionRange::week;
    EXPECT_EQ(sidebarModel(state).emptyText, u"No chats in the last 7 days."_s);
}

TEST(SidebarModelTest, theSwitchIsThereUnlessTheModelKnowsNoTools) {
    SidebarState state = stateWith({});
    EXPECT_TRUE(sidebarModel(state).offersSearch) << "without a model";
    state.activeTier = ModelTier{.id = u"house"_s, .supportsTools = true};
    EXPECT_TRUE(sidebarModel(state).offersSearch);
    state.activeTier->supportsTools = false;
    EXPECT_FALSE(sidebarModel(state).offersSearch);
}

TEST(SidebarModelTest, theSwitchIsOnExactlyWhileThereIsNoSearch) {
    SidebarState state = stateWith({});
    state.searchMode = SearchMode::off;
    EXPECT_TRUE(sidebarModel(state).isOffline);
    state.searchMode = SearchMode::ask;
    EXPECT_FALSE(sidebarModel(state).isOffline);
    state.searchMode = SearchMode::always;
    EXPECT_FALSE(sidebarModel(state).isOffline);
}

TEST(SidebarModelTest, offMeansAlwaysWhateverWasBefore) {
    EXPECT_EQ(searchModeOf(true), SearchMode::off);
    EXPECT_EQ(searchModeOf(false), SearchMode::always);
}
