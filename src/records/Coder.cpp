#include "records/Coder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {

void requireFinite(const QJsonValue &json) {
    switch (json.type()) {
    case QJsonValue::Double:
        if (!std::isfinite(json.toDouble()))
            throw EncodingError("a number isn't finite");
        break;
    case QJsonValue::Array:
        for (const QJsonValueConstRef each : json.toArray())
            requireFinite(each);
        break;
    case QJsonValue::Object:
        for (const QJsonValueConstRef each : json.toObject())
            requireFinite(each);
        break;
    default:
        break;
    }
}

} // namespace

QByteArray encodeText(const QJsonValue &json) {
    requireFinite(json);
    return (json.isArray() ? QJsonDocument(json.toArray()) : QJsonDocument(json.toObject())).toJson();
}

QJsonValue decodeText(const QByteArray &text) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (document.isNull())
        throw DecodingError(error.errorString().toStdString() + " at " + std::to_string(error.offset));
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}
