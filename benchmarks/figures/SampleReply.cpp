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

/// As many of the tokens, over and over, as it takes.
QList<QString> repeated(const QList<QString> &tokens, qsizetype characters) {
    QList<QString> result;
    qsizetype length = 0;
    while (length < characters) {
        result.append(tokens.at(result.size() % tokens.size()));
        length += result.last().size();
    }
    return result;
}

/// Words with the white space before them.
QList<QString> tokensOf(QStringView text) {
    QList<QString> tokens;
    for (const QChar character : text) {
        const bool begins = tokens.isEmpty() || (character.isSpace() && !tokens.last().back().isSpace());
        if (begins)
            tokens.append(QString());
        tokens.last() += character;
    }
    return tokens;
}

} // namespace

QList<QString> sampleTokens(qsizetype characters) {
    // Every tenth word or so is none of ASCII's, as in a reply that isn't English.
    static const QList<QString> words{u"The"_s,   u" garden"_s, u" was"_s,   u" quiet"_s,   u","_s,
                                      u" and"_s,  u" a"_s,      u" naïve"_s, u" song"_s,    u"bird"_s,
                                      u" –"_s,    u" \"so"_s,   u" it"_s,    u" seems\""_s, u" kept"_s,
                                      u" sing"_s, u"ing"_s,     u" to"_s,    u" its"_s,     u" neighbour"_s,
                                      u"s"_s,     u".\n\n"_s};
    return repeated(words, characters);
}

QList<QString> sampleMarkdownTokens(qsizetype characters) {
    static const QList<QString> tokens = tokensOf(uR"(
## A month in the garden
The garden was **quiet**, and a *naïve* songbird – "so it seems" – kept singing to its neighbours, as
[the almanac](https://example.org/almanac) says of `May`.

- **Water** in the morning, before the sun is over the wall.
- **Weed** what stands between the beans.
- Leave the rest alone.

1. Sow the peas.
2. Set the sticks.

| Bed | Plants | Harvest |
|---|---|---|
| North | Beans | 4 kg |
| South | Tomatoes | 12 kg |

```chart:green
North: 4
South: 12
```
```python
def harvest(beds):
    return sum(bed.kilograms for bed in beds)
```
> A garden is never finished.

```cards:amber
Spring | Sow
Autumn | Gather
```
---
)");
    return repeated(tokens, characters);
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
