#include "pages/DialectText.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

const QStringList pieces{
    u"```"_s,        u"```bash"_s,
    u"``"_s,         u"`"_s,
    u"````"_s,       u"# "_s,
    u"#"_s,          u"###### "_s,
    u"#######"_s,    u"---"_s,
    u"***"_s,        u"___"_s,
    u"-"_s,          u"- "_s,
    u"* "_s,         u"+ "_s,
    u"+"_s,          u">"_s,
    u"> "_s,         u"1. "_s,
    u"23."_s,        u"1.5 "_s,
    u"1) "_s,        u"½. "_s,
    u"三. "_s,       u"\U0001D7D0. "_s,
    u"."_s,          u"|"_s,
    u"||"_s,         u"| a | b |"_s,
    u"|---|:-:|"_s,  u"| - - |"_s,
    u"|:\t-|"_s,     u"->"_s,
    u" -> "_s,       u":"_s,
    u"a: 5"_s,       u"b : $1,2%"_s,
    u": 7"_s,        u"c: nan"_s,
    u"d:-0"_s,       u"e: 1e999"_s,
    u"f: 0x1p-3"_s,  u"g: 12 ms"_s,
    u"h: -.5"_s,     u"i: +-1"_s,
    u"j:"_s,         u"k: \f3"_s,
    u"l: ٣"_s,       u"a"_s,
    u"word"_s,       u" "_s,
    u"  "_s,         u"\t"_s,
    u"\u00A0"_s,     u"\u3000"_s,
    u"\r"_s,         u"\v"_s,
    u"\u2028"_s,     u"ä"_s,
    u"\U0001F600"_s, u"%"_s,
    u"$"_s,          u"İ"_s,
    u"\u212A"_s,     QString(QChar(0)),
};

const QStringList fences{
    u"metric"_s,   u"chart"_s,   u"line"_s,  u"donut"_s,   u"progress"_s, u"callout"_s,
    u"timeline"_s, u"sources"_s, u"flow"_s,  u"compare"_s, u"cards"_s,    u"spec"_s,
    u"subtitle"_s, u"divider"_s, u"Chart"_s, u"FLOW"_s,    u"python"_s,   u"page"_s,
    u"pages"_s,    u""_s,        u"ſpec"_s,  u" cards "_s, u"metric2"_s,
};

const QStringList colors{u""_s, u":green"_s, u": RED "_s, u":"_s, u":a:b"_s, u" :\u00A0İ"_s};

const QString &oneOf(const QStringList &texts, std::mt19937 &random) {
    return texts.at(static_cast<qsizetype>(random() % static_cast<size_t>(texts.size())));
}

QString line(std::mt19937 &random) {
    if (random() % 5 == 0)
        return u"```"_s + oneOf(fences, random) + oneOf(colors, random);
    QString text;
    const size_t count = random() % 5;
    for (size_t index = 0; index < count; ++index)
        text += oneOf(pieces, random);
    return text;
}

} // namespace

QString dialectText(std::mt19937 &random) {
    QStringList lines;
    const size_t count = random() % 14;
    for (size_t index = 0; index < count; ++index) {
        // Lists and tables only come to be if like lines follow each other.
        const bool isLike = !lines.isEmpty() && random() % 3 == 0;
        lines.append(isLike ? lines.last() : line(random));
    }
    return lines.join(u'\n');
}
