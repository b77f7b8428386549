#include "web/PlainMarkup.h"

#include "web/SearchResults.h"

#include <QHash>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The pattern with \s and \b spelled out, since the library has ideas of its own about both.
QString spelledOut(QString pattern) {
    const QString space =
        u"\\x{9}-\\x{D} \\x{85}\\x{A0}\\x{1680}\\x{2000}-\\x{200A}\\x{2028}\\x{2029}\\x{202F}\\x{205F}\\x{3000}"_s;
    const QString word = u"[\\p{L}\\p{M}\\p{Nd}\\p{Nl}\\p{Pc}\\x{200C}\\x{200D}]"_s;
    pattern.replace(u"\\b"_s, u"(?:(?<=%1)(?!%1)|(?<!%1)(?=%1))"_s.arg(word));
    pattern.replace(u"[\\s\\S]"_s, u"(?s:.)"_s);
    pattern.replace(u"[^\\s"_s, u"[^"_s + space);
    return pattern.replace(u"\\s"_s, u'[' + space + u']');
}

const QRegularExpression &expression(const QString &pattern) {
    static QHash<QString, QRegularExpression> made;
    auto found = made.find(pattern);
    if (found == made.end())
        found = made.insert(
            pattern, QRegularExpression(spelledOut(pattern), QRegularExpression::CaseInsensitiveOption));
    return *found;
}

QString pieced(std::mt19937 &random, const QStringList &pieces, size_t most) {
    QString text;
    for (size_t count = random() % most; count > 0; --count)
        text += pieces.at(static_cast<qsizetype>(random() % static_cast<size_t>(pieces.size())));
    return text;
}

QString plainlyReplacedEntities(QString text) {
    text.replace(u"&lt;"_s, u"<"_s);
    text.replace(u"&gt;"_s, u">"_s);
    text.replace(u"&quot;"_s, u"\""_s);
    text.replace(u"&#39;"_s, u"'"_s);
    text.replace(u"&nbsp;"_s, u" "_s);
    return text.replace(u"&amp;"_s, u"&"_s);
}

} // namespace

std::optional<QString> plainlyOuterElement(const QString &tag, qsizetype start, const QString &page) {
    const QString opening = u'<' + tag;
    const QString closing = u"</"_s + tag + u'>';
    int depth = 0;
    for (qsizetype cursor = start; cursor < page.size();) {
        const qsizetype opened = page.indexOf(opening, cursor, Qt::CaseInsensitive);
        const qsizetype closed = page.indexOf(closing, cursor, Qt::CaseInsensitive);
        if (closed < 0)
            return std::nullopt;
        if (opened >= 0 && opened < closed) {
            ++depth;
            cursor = opened + opening.size();
        } else {
            --depth;
            cursor = closed + closing.size();
            if (depth == 0)
                return page.sliced(start, cursor - start);
        }
    }
    return std::nullopt;
}

QStringList plainlyFoundElements(const QString &className, const QString &page) {
    const QRegularExpression &tag =
        expression(u"<([a-zA-Z0-9]+)[^>]*class\\s*=\\s*[\"'][^\"']*\\b"_s +
                   QRegularExpression::escape(className) + u"\\b[^\"']*[\"'][^>]*>"_s);
    QStringList elements;
    for (const QRegularExpressionMatch &match : tag.globalMatch(page)) {
        if (const auto element = plainlyOuterElement(match.captured(1), match.capturedStart(), page))
            elements.append(*element);
    }
    return elements;
}

QString plainlyCleanText(QString html) {
    html.replace(expression(u"<[^>]+>"_s), u" "_s);
    html = plainlyReplacedEntities(html);
    return html.replace(expression(u"\\s+"_s), u" "_s).trimmed();
}

QString plainlyReadText(QString html) {
    for (const QString &name : {u"script"_s, u"style"_s, u"nav"_s, u"footer"_s, u"noscript"_s})
        html.replace(expression(u"<%1\\b[^>]*>[\\s\\S]*?</%1>"_s.arg(name)), u" "_s);
    const QRegularExpressionMatch body = expression(u"<body\\b[^>]*>"_s).match(html);
    if (body.hasMatch())
        html = plainlyOuterElement(u"body"_s, body.capturedStart(), html).value_or(html);
    return plainlyCleanText(html);
}

QList<SearchSource> plainlyReadResults(const QString &html) {
    const QRegularExpression &reference = expression(u"href\\s*=\\s*(\"([^\"]*)\"|'([^']*)'|([^\\s>]+))"_s);
    const QStringList snippets = plainlyFoundElements(u"result__snippet"_s, html);
    QList<SearchSource> results;
    for (const QString &link : plainlyFoundElements(u"result__a"_s, html)) {
        const QRegularExpressionMatch found = reference.match(link);
        if (!found.hasMatch() || results.size() == 5)
            continue;
        QString target;
        for (const int group : {4, 3, 2})
            target = found.hasCaptured(group) ? found.captured(group) : target;
        if (const auto url = resolveResultURL(plainlyReplacedEntities(target)))
            results.append({results.size() + 1, plainlyCleanText(link), *url,
                            plainlyCleanText(snippets.value(results.size()))});
    }
    return results;
}

QString pageOfResults(std::mt19937 &random) {
    static const QStringList pieces{u"<a class=\"result__a\" href=\"https://e.test/1\">One</a>"_s,
                                    u"<a class='x result__a' href='//d.test/l/?uddg=https%3A%2F%2Fe.test'>"_s,
                                    u"<A CLASS = \"result__A\" HREF=http://e.test/2>"_s,
                                    u"<aclass=\"result__a\" "_s,
                                    u"<abbr class=\"result__a\">"_s,
                                    u"<b class=\"result__a\">"_s,
                                    u"<a class=\"a>b result__a\""_s,
                                    u"<a class=\"result__a\" class='result__a-x'"_s,
                                    u"<div class=\"result__snippet\">Snippet &amp;lt; </div>"_s,
                                    u"<a class='my-result__snippet y'>"_s,
                                    u"<a class=\"result__a_\">"_s,
                                    u"<a class=\"\u00E4result__a\">"_s,
                                    u"<a claſs=\"reſult__a\">"_s,
                                    u"<\u212A class='result__a'>"_s,
                                    u"</k>"_s,
                                    u"<a"_s,
                                    u"<"_s,
                                    u"</a>"_s,
                                    u"</A>"_s,
                                    u"</abbr>"_s,
                                    u"</b>"_s,
                                    u"</div>"_s,
                                    u"</ a>"_s,
                                    u">"_s,
                                    u"/>"_s,
                                    u"class="_s,
                                    u"class\u00A0=\n"_s,
                                    u"result__a"_s,
                                    u" result__snippet "_s,
                                    u"\""_s,
                                    u"'"_s,
                                    u" "_s,
                                    u"="_s,
                                    u"href="_s,
                                    u"hREF = "_s,
                                    u"href=\"\""_s,
                                    u"href='https://e.test/a b&amp;c'"_s,
                                    u"http://e.test/&quot;"_s,
                                    u"ftp://e.test"_s,
                                    u"text"_s,
                                    u"<b>bold</b>"_s,
                                    u"\U0001D400"_s,
                                    u"\n"_s};
    return pieced(random, pieces, 24);
}

QString pageOfElements(std::mt19937 &random) {
    static const QStringList pieces{u"<script>"_s,    u"</script>"_s,   u"<SCRIPT src=\"a>b\">"_s,
                                    u"</Script>"_s,   u"<ſcript\n>"_s,  u"<scripts>"_s,
                                    u"<script"_s,     u"<style>"_s,     u"</style>"_s,
                                    u"<style-x>"_s,   u"<nav>"_s,       u"</nav>"_s,
                                    u"<nav_>"_s,      u"<nav\u0301>"_s, u"<nav\u200D>"_s,
                                    u"<footer/>"_s,   u"</footer>"_s,   u"<noscript>"_s,
                                    u"</noscript>"_s, u"<body>"_s,      u"<BODY id=a>"_s,
                                    u"</body>"_s,     u"<bodyx>"_s,     u"<body\U0001D400>"_s,
                                    u"<body"_s,       u"</body >"_s,    u"<p>"_s,
                                    u"</p>"_s,        u"<>"_s,          u"<"_s,
                                    u">"_s,           u"</"_s,          u"&amp;"_s,
                                    u"&amp;lt;"_s,    u"&lt;"_s,        u"&gt;"_s,
                                    u"&quot;"_s,      u"&#39;"_s,       u"&nbsp;"_s,
                                    u"&AMP;"_s,       u"&#x27;"_s,      u"&"_s,
                                    u"amp;"_s,        u";"_s,           u"word"_s,
                                    u" "_s,           u"\n\t"_s,        u"\u00A0"_s,
                                    u"\u0085"_s,      u"\u200B"_s,      u"\u180E"_s,
                                    u"\u3000"_s,      u"\u000B"_s,      u"\u001F"_s,
                                    u"\U0001F600"_s,  u"ä"_s,           u"\0"_s};
    return pieced(random, pieces, 28);
}
