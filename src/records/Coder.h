#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>
#include <stdexcept>

/// Raised when a text isn't the JSON form of the record that was asked for; what() leads to the place.
class DecodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Raised when a value has no JSON form: a number that isn't finite, a date beyond the year 9999.
class EncodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The one encoder of everything persisted: indented, keys in ascending order, so that two saves of
/// the same value are byte-identical. Takes an object or an array; gives UTF-8. Throws EncodingError if
/// a number in it isn't finite.
QByteArray encodeText(const QJsonValue &json);

/// The one decoder of everything persisted. Throws DecodingError if `text` isn't a JSON object or array.
QJsonValue decodeText(const QByteArray &text);

/// A date as "2026-11-15T13:18:58Z": UTC, whole seconds, the fraction dropped (RFC 3339). Throws
/// EncodingError for an invalid date and for years outside 1 to 9999.
QString encodeDate(const QDateTime &date);

/// The date of an RFC 3339 text with whole seconds and a zone, "Z" or "±hh:mm", in upper case; nothing
/// for anything else, days that no calendar has included. The date is in UTC.
std::optional<QDateTime> decodeDate(QStringView text);

/// A UUID in its canonical 8-4-4-4-12 form, in upper case, without braces.
QString encodeUuid(const QUuid &id);

/// The UUID of a text in the canonical form, of either case; nothing for anything else.
std::optional<QUuid> decodeUuid(QStringView text);

/// The JSON text of a record or a list. Its form is found by overload: `encode(const T &)`.
template<typename T>
QByteArray encodeRecord(const T &value) {
    return encodeText(encode(value));
}

/// The record or list of a JSON text, by the overload `decode(const QJsonValue &, T &)`. Throws
/// DecodingError.
template<typename T>
T decodeRecord(const QByteArray &text) {
    T value;
    decode(decodeText(text), value);
    return value;
}
