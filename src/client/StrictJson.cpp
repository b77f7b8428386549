#include "client/StrictJson.h"

#include <QJsonDocument>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// What a text of JSON is made of, whatever its order: the order Qt reads to the letter. No piece can be read
/// as another, so that nothing is ever tried twice.
bool hasStrictPieces(const QString &text) {
    static const QRegularExpression pieces(
        uR"(\A(?:[ \t\r\n{}\[\]:,]++|true|false|null|-?(?:0|[1-9][0-9]*+)(?:\.[0-9]++)?(?:[eE][+-]?[0-9]++)?(?![0-9])|)"
        uR"("(?:[^"\\\x00-\x1F]++|\\["\\/bfnrt]|\\u(?:[0-9A-Ca-cEFef][0-9A-Fa-f]{3}|[Dd][0-7][0-9A-Fa-f]{2})|)"
        uR"(\\u[Dd][89ABab][0-9A-Fa-f]{2}\\u[Dd][C-Fc-f][0-9A-Fa-f]{2})*+")*+\z)"_s);
    return pieces.match(text).hasMatch();
}

} // namespace

QByteArray strictJson(const QJsonDocument &document) {
    QByteArray json = document.toJson(QJsonDocument::Compact);
    // Whole pairs are written as they are, so what is escaped from this range is half of one.
    for (qsizetype place = json.indexOf('\\'); place >= 0; place = json.indexOf('\\', place + 2)) {
        if (json.sliced(place, 3) == "\\ud" && json.at(place + 3) >= '8')
            json.replace(place + 2, 4, "fffd");
    }
    return json;
}

QString strictJson(const QString &written) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(written.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError)
        return {};
    return hasStrictPieces(written) ? written : QString::fromUtf8(strictJson(document));
}
