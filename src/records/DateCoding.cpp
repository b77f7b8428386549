#include "records/Coder.h"

#include <chrono>

// By hand rather than by Qt's general date parser: the chat index holds thousands of dates, and the
// general parser also takes fractions and texts without a zone.

namespace {

constexpr qint64 secondsPerMinute = 60;
constexpr qint64 secondsPerHour = 60 * secondsPerMinute;
constexpr qint64 secondsPerDay = 24 * secondsPerHour;

/// Takes a fixed-width text apart from its front; a part that isn't there makes it fail for good.
class FixedWidthReader {
public:
    explicit FixedWidthReader(QStringView text) : m_rest(text) {}

    int number(qsizetype digits) {
        int value = 0;
        for (qsizetype index = 0; index < digits; ++index) {
            const char16_t digit = takeUnit();
            if (digit < u'0' || digit > u'9')
                m_failed = true;
            value = value * 10 + (digit - u'0');
        }
        return value;
    }

    int numberUpTo(int greatest, qsizetype digits = 2) {
        const int value = number(digits);
        m_failed = m_failed || value > greatest;
        return value;
    }

    void literal(char16_t expected) { m_failed = takeUnit() != expected || m_failed; }

    char16_t takeUnit() {
        if (m_rest.isEmpty()) {
            m_failed = true;
            return 0;
        }
        const char16_t unit = m_rest.front().unicode();
        m_rest = m_rest.sliced(1);
        return unit;
    }

    void fail() { m_failed = true; }
    bool tookAll() const { return !m_failed && m_rest.isEmpty(); }

private:
    QStringView m_rest;
    bool m_failed = false;
};

/// Seconds since 1970 of a day and a time of day, as they stand in the text.
qint64 readLocalTime(FixedWidthReader &reader) {
    const std::chrono::year year(reader.number(4));
    reader.literal(u'-');
    const std::chrono::month month(static_cast<unsigned>(reader.number(2)));
    reader.literal(u'-');
    const std::chrono::day day(static_cast<unsigned>(reader.number(2)));
    reader.literal(u'T');
    const int hours = reader.numberUpTo(23);
    reader.literal(u':');
    const int minutes = reader.numberUpTo(59);
    reader.literal(u':');
    const int seconds = reader.numberUpTo(59);
    const std::chrono::year_month_day date(year, month, day);
    if (!date.ok() || year < std::chrono::year(1)) {
        reader.fail();
        return 0;
    }
    const qint64 days = std::chrono::sys_days(date).time_since_epoch().count();
    return days * secondsPerDay + hours * secondsPerHour + minutes * secondsPerMinute + seconds;
}

/// How many seconds the zone is ahead of UTC.
qint64 readZone(FixedWidthReader &reader) {
    const char16_t mark = reader.takeUnit();
    if (mark == u'Z')
        return 0;
    if (mark != u'+' && mark != u'-')
        reader.fail();
    const int hours = reader.numberUpTo(23);
    reader.literal(u':');
    const int minutes = reader.numberUpTo(59);
    const qint64 offset = hours * secondsPerHour + minutes * secondsPerMinute;
    return mark == u'-' ? -offset : offset;
}

void putNumber(char16_t *place, unsigned value, int digits) {
    for (int index = digits - 1; index >= 0; --index, value /= 10)
        place[index] = static_cast<char16_t>(u'0' + value % 10);
}

} // namespace

QString encodeDate(const QDateTime &date) {
    using namespace std::chrono;
    if (!date.isValid())
        throw EncodingError("a date isn't valid");
    const sys_seconds moment = floor<seconds>(sys_time<milliseconds>(milliseconds(date.toMSecsSinceEpoch())));
    const sys_days midnight = floor<days>(moment);
    const year_month_day day(midnight);
    if (day.year() < year(1) || day.year() > year(9999))
        throw EncodingError("a date lies outside the years 1 to 9999");
    const hh_mm_ss time(moment - midnight);
    char16_t text[] = u"0000-00-00T00:00:00Z";
    putNumber(text, static_cast<unsigned>(static_cast<int>(day.year())), 4);
    putNumber(text + 5, static_cast<unsigned>(day.month()), 2);
    putNumber(text + 8, static_cast<unsigned>(day.day()), 2);
    putNumber(text + 11, static_cast<unsigned>(time.hours().count()), 2);
    putNumber(text + 14, static_cast<unsigned>(time.minutes().count()), 2);
    putNumber(text + 17, static_cast<unsigned>(time.seconds().count()), 2);
    return QString::fromUtf16(text, std::size(text) - 1);
}

std::optional<QDateTime> decodeDate(QStringView text) {
    FixedWidthReader reader(text);
    const qint64 local = readLocalTime(reader);
    const qint64 ahead = readZone(reader);
    if (!reader.tookAll())
        return std::nullopt;
    return QDateTime::fromSecsSinceEpoch(local - ahead, Qt::UTC);
}
