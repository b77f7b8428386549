#pragma once

#include "records/CaseNames.h"
#include "records/Coder.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QUrl>

/// What the JSON forms of all records are made of: the forms of plain values and lists, and the fields
/// of an object. A record names its fields once, in a function that is run by a FieldWriter or by a
/// FieldReader:
///
///     constexpr auto fields = [](auto &record, auto &value) {
///         record.required("id"_L1, value.id);
///         record.optional("note"_L1, value.note);
///     };
///     QJsonValue encode(const Thing &value) { return encodeFields(value, fields); }
///     void decode(const QJsonValue &json, Thing &value) { decodeFields(json, value, fields); }

QJsonValue encode(bool value);
QJsonValue encode(qint64 value);
QJsonValue encode(double value);
QJsonValue encode(const QString &value);
QJsonValue encode(const QUuid &value);
QJsonValue encode(const QDateTime &value);
QJsonValue encode(const QUrl &value);

/// Each throws DecodingError for a value of another type: a Boolean is no number, and a number is an
/// integer only if it is a whole one that 64 bits hold.
void decode(const QJsonValue &json, bool &value);
void decode(const QJsonValue &json, qint64 &value);
void decode(const QJsonValue &json, double &value);
void decode(const QJsonValue &json, QString &value);
void decode(const QJsonValue &json, QUuid &value);
void decode(const QJsonValue &json, QDateTime &value);
void decode(const QJsonValue &json, QUrl &value);

template<typename E, typename = std::enable_if_t<std::is_enum_v<E>>>
QJsonValue encode(E value) {
    return nameOf(value);
}

template<typename E, typename = std::enable_if_t<std::is_enum_v<E>>>
void decode(const QJsonValue &json, E &value) {
    QString name;
    decode(json, name);
    const std::optional<E> found = caseNamed<E>(name);
    if (!found)
        throw DecodingError("unknown case \"" + name.toStdString() + '"');
    value = *found;
}

template<typename T>
QJsonValue encode(const QList<T> &values) {
    QJsonArray array;
    for (const T &each : values)
        array.append(encode(each));
    return array;
}

template<typename T>
void decode(const QJsonValue &json, QList<T> &values) {
    if (!json.isArray())
        throw DecodingError(json.isUndefined() ? "missing" : "not an array");
    const QJsonArray array = json.toArray();
    values.clear();
    values.reserve(array.size());
    for (const QJsonValueConstRef each : array) {
        T value;
        decode(each, value);
        values.append(std::move(value));
    }
}

/// Gathers the fields of an object.
class FieldWriter {
public:
    template<typename T>
    void required(QLatin1StringView key, const T &field) {
        m_object.insert(key, encode(field));
    }

    /// Leaves the key out if there is no value.
    template<typename T>
    void optional(QLatin1StringView key, const std::optional<T> &field) {
        if (field)
            required(key, *field);
    }

    template<typename T>
    void defaulted(QLatin1StringView key, const T &field) {
        required(key, field);
    }

    QJsonObject object() const { return m_object; }

private:
    QJsonObject m_object;
};

/// Takes the fields of an object; unknown keys don't matter. Throws DecodingError, with the key before
/// the reason.
class FieldReader {
public:
    explicit FieldReader(const QJsonValue &json);

    template<typename T>
    void required(QLatin1StringView key, T &field) const {
        take(key, m_object.value(key), field);
    }

    /// A missing key and a null both give nothing.
    template<typename T>
    void optional(QLatin1StringView key, std::optional<T> &field) const {
        const QJsonValue json = m_object.value(key);
        field.reset();
        if (!json.isUndefined() && !json.isNull())
            take(key, json, field.emplace());
    }

    /// A missing key leaves the record's own default; a null is an error.
    template<typename T>
    void defaulted(QLatin1StringView key, T &field) const {
        const QJsonValue json = m_object.value(key);
        if (!json.isUndefined())
            take(key, json, field);
    }

private:
    template<typename T>
    static void take(QLatin1StringView key, const QJsonValue &json, T &field) {
        try {
            decode(json, field);
        } catch (const DecodingError &error) {
            throw DecodingError(std::string(key.data(), static_cast<size_t>(key.size())) + ": " +
                                error.what());
        }
    }

    QJsonObject m_object;
};

template<typename T, typename Fields>
QJsonValue encodeFields(const T &value, const Fields &fields) {
    FieldWriter writer;
    fields(writer, value);
    return writer.object();
}

template<typename T, typename Fields>
void decodeFields(const QJsonValue &json, T &value, const Fields &fields) {
    const FieldReader reader(json);
    value = T{};
    fields(reader, value);
}
