#include "records/JsonFields.h"

namespace {

/// What a missing key looks like to the decoders: a value of no type.
QString textOf(const QJsonValue &json) {
    if (json.isUndefined())
        throw DecodingError("missing");
    if (!json.isString())
        throw DecodingError("not a string");
    return json.toString();
}

void requireNumber(const QJsonValue &json) {
    if (json.isUndefined())
        throw DecodingError("missing");
    if (!json.isDouble())
        throw DecodingError("not a number");
}

template<typename T>
void assign(T &value, const std::optional<T> &found, const char *problem) {
    if (!found)
        throw DecodingError(problem);
    value = *found;
}

} // namespace

QJsonValue encode(bool value) {
    return value;
}

QJsonValue encode(qint64 value) {
    return value;
}

QJsonValue encode(double value) {
    return value;
}

QJsonValue encode(const QString &value) {
    return value;
}

QJsonValue encode(const QUuid &value) {
    return encodeUuid(value);
}

QJsonValue encode(const QDateTime &value) {
    return encodeDate(value);
}

QJsonValue encode(const QUrl &value) {
    return QString::fromLatin1(value.toEncoded());
}

void decode(const QJsonValue &json, bool &value) {
    if (!json.isBool())
        throw DecodingError(json.isUndefined() ? "missing" : "not a Boolean");
    value = json.toBool();
}

void decode(const QJsonValue &json, qint64 &value) {
    requireNumber(json);
    value = json.toInteger(0);
    // The default comes back for what isn't whole or doesn't fit; so ask twice, with another one.
    if (value == 0 && json.toInteger(1) == 1)
        throw DecodingError("not an integer");
}

void decode(const QJsonValue &json, double &value) {
    requireNumber(json);
    value = json.toDouble();
}

void decode(const QJsonValue &json, QString &value) {
    value = textOf(json);
}

void decode(const QJsonValue &json, QUuid &value) {
    assign(value, decodeUuid(textOf(json)), "not a UUID");
}

void decode(const QJsonValue &json, QDateTime &value) {
    assign(value, decodeDate(textOf(json)), "not a date in whole seconds with a zone");
}

void decode(const QJsonValue &json, QUrl &value) {
    const QUrl url(textOf(json), QUrl::StrictMode);
    if (!url.isValid())
        throw DecodingError("not a URL");
    value = url;
}

FieldReader::FieldReader(const QJsonValue &json) : m_object(json.toObject()) {
    if (!json.isObject())
        throw DecodingError(json.isUndefined() ? "missing" : "not an object");
}
