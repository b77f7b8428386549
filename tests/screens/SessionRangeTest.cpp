#include "screens/SessionRange.h"

#include <QTimeZone>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QDateTime in(const char *zone, const QString &moment) {
    const QTimeZone there(zone);
    EXPECT_TRUE(there.isValid()) << zone;
    const QDateTime local = QDateTime::fromString(moment, Qt::ISODate);
    return QDateTime(local.date(), local.time(), there);
}

std::string utc(const std::optional<QDateTime> &moment) {
    return moment ? moment->toUTC().toString(Qt::ISODate).toStdString() : "none";
}

} // namespace

TEST(SessionRangeTest, theRangesStandInTheOrderOfTheMenu) {
    QStringList labels;
    QStringList texts;
    for (const SessionRange range : sessionRanges) {
        labels.append(labelOf(range));
        texts.append(emptyTextOf(range));
    }
    EXPECT_EQ(labels, (QStringList{u"Today"_s, u"Last 7 days"_s, u"Last 30 days"_s, u"All time"_s}));
    EXPECT_EQ(texts, (QStringList{u"No chats today."_s, u"No chats in the last 7 days."_s,
                                  u"No chats in the last 30 days."_s, u"No chats yet."_s}));
}

TEST(SessionRangeTest, aRangeBeginsWithADayAndHoldsTheCurrentOne) {
    const QDateTime now = in("UTC", u"2026-11-15T13:18:58"_s);
    EXPECT_EQ(utc(lowerBound(SessionRange::today, now)), "2026-11-15T00:00:00Z");
    EXPECT_EQ(utc(lowerBound(SessionRange::week, now)), "2026-11-09T00:00:00Z");
    EXPECT_EQ(utc(lowerBound(SessionRange::month, now)), "2026-10-17T00:00:00Z");
    EXPECT_EQ(lowerBound(SessionRange::all, now), std::nullopt);
}

TEST(SessionRangeTest, theDayIsThatOfThePersonsTimeZone) {
    EXPECT_EQ(utc(lowerBound(SessionRange::today, in("Asia/Tokyo", u"2026-11-15T08:00:00"_s))),
              "2026-11-14T15:00:00Z");
    EXPECT_EQ(utc(lowerBound(SessionRange::today, in("America/Los_Angeles", u"2026-11-15T23:59:59"_s))),
              "2026-11-15T08:00:00Z");
}

TEST(SessionRangeTest, theFirstAndTheLastMomentOfADayHaveTheSameBound) {
    EXPECT_EQ(utc(lowerBound(SessionRange::week, in("Europe/Berlin", u"2026-07-10T00:00:00"_s))),
              utc(lowerBound(SessionRange::week, in("Europe/Berlin", u"2026-07-10T23:59:59"_s))));
}

TEST(SessionRangeTest, aChangeOfDaylightSavingTimeLeavesTheDaysWhole) {
    // Seven times 24 hours before is another hour of the day.
    EXPECT_EQ(utc(lowerBound(SessionRange::week, in("Europe/Berlin", u"2026-03-31T12:00:00"_s))),
              "2026-03-24T23:00:00Z");
    EXPECT_EQ(utc(lowerBound(SessionRange::week, in("Europe/Berlin", u"2026-10-28T12:00:00"_s))),
              "2026-10-21T22:00:00Z");
    EXPECT_EQ(utc(lowerBound(SessionRange::month, in("America/New_York", u"2026-11-15T12:00:00"_s))),
              "2026-10-17T04:00:00Z");
}

TEST(SessionRangeTest, aDayWithoutMidnightBeginsWithItsFirstMoment) {
    // The clocks went from 24:00 to 01:00.
    EXPECT_EQ(utc(lowerBound(SessionRange::today, in("America/Sao_Paulo", u"2018-11-04T12:00:00"_s))),
              "2018-11-04T03:00:00Z");
    EXPECT_EQ(utc(lowerBound(SessionRange::week, in("America/Sao_Paulo", u"2018-11-10T12:00:00"_s))),
              "2018-11-04T03:00:00Z");
}

TEST(SessionRangeTest, aDayThatWasLeftOutGivesNoBoundOrALaterOne) {
    // Samoa crossed the date line and had no 30th of December.
    const auto bound = lowerBound(SessionRange::week, in("Pacific/Apia", u"2012-01-05T12:00:00"_s));
    EXPECT_TRUE(!bound || *bound <= in("Pacific/Apia", u"2011-12-31T00:00:00"_s)) << utc(bound);
}

TEST(SessionRangeTest, withoutADateThereIsNoBound) {
    EXPECT_EQ(lowerBound(SessionRange::today, QDateTime()), std::nullopt);
}
