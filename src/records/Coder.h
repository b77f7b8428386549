#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonValue>
#include <QList>
#include <QString>

#include <optional>
#include <stdexcept>

/// Raised when a text isn't the JSON form of the record that was asked for.
class DecodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The one encoder of everything persisted: indented, keys in ascending order, so that two saves of
/// the same value are byte-identical. Takes an object or an array; gives UTF-8.
QByteArray encodeText(const QJsonValue &json);

/// The one decoder of everything persisted. Throws DecodingError if `text` isn't a JSON object or array.
QJsonValue decodeText(const QByteArray &text);

/// A date as "2026-11-15T13:18:58Z": UTC, whole seconds, the fraction dropped (RFC 3339).
QString encodeDate(const QDateTime &date);

/// The date of an RFC 3339 text with whole seconds and a zone; nothing for anything else.
std::optional<QDateTime> decodeDate(QStringView text);

/// The JSON forms of records and lists, found by overload: `encode(const T &)` and
/// `decode(const QJsonValue &, T &)`.
template<typename T>
QByteArray encodeRecord(const T &value) {
    return encodeText(encode(value));
}

template<typename T>
T decodeRecord(const QByteArray &text) {
    T value;
    decode(decodeText(text), value);
    return value;
}
