#include "figures/SampleReply.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

QByteArray payload(const QByteArray &reason, const QByteArray &delta) {
    return R"({"choices":[{"finish_reason":)" + reason + R"(,"index":0,"delta":)" + delta +
           R"(}],"created":1795260710,"id":"chatcmpl-fFtc10zsGWgy8yfRVvA4jeFamJmx5iyJ","model":"ostrelin",)"
           R"("system_fingerprint":"b11669-Debian","object":"chat.completion.chunk"})";
}

} // namespace

QList<QString> sampleTokens(qsizetype characters) {
    // Every tenth word or so is none of ASCII's, as in a reply that isn't English.
    static const QList<QString> words{u"The"_s,   u" garden"_s, u" was"_s,   u" quiet"_s,   u","_s,
                                      u" and"_s,  u" a"_s,      u" naïve"_s, u" song"_s,    u"bird"_s,
                                      u" –"_s,    u" \"so"_s,   u" it"_s,    u" seems\""_s, u" kept"_s,
                                      u" sing"_s, u"ing"_s,     u" to"_s,    u" its"_s,     u" neighbour"_s,
                                      u"s"_s,     u".\n\n"_s};
    QList<QString> tokens;
    qsizetype length = 0;
    while (length < characters) {
        tokens.append(words.at(tokens.size() % words.size()));
        length += tokens.last().size();
    }
    return tokens;
}

QByteArray tokenPayload(const QString &token) {
    const QJsonObject delta{{u"content"_s, token}};
    return payload("null", QJsonDocument(delta).toJson(QJsonDocument::Compact));
}

QByteArray finalPayload() {
    return payload(R"("stop")", "{}");
}

QByteArray eventOf(const QByteArray &payload) {
    return "data: " + payload + "\n\n";
}
