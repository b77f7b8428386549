#include "pages/PageAnalysis.h"

#include "pages/Lines.h"
#include "records/Characters.h"

#include <QSet>
#include <QStringTokenizer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isDirectiveName(const QString &name) {
    static const QSet<QString> names{
        u"metric"_s,  u"chart"_s, u"line"_s,    u"donut"_s, u"progress"_s, u"callout"_s,  u"timeline"_s,
        u"sources"_s, u"flow"_s,  u"compare"_s, u"cards"_s, u"spec"_s,     u"subtitle"_s, u"divider"_s,
    };
    return names.contains(name);
}

bool isLanguageName(const QString &name) {
    static const QSet<QString> names{
        u"python"_s,     u"py"_s,       u"swift"_s,    u"js"_s,      u"javascript"_s, u"ts"_s,
        u"typescript"_s, u"jsx"_s,      u"tsx"_s,      u"json"_s,    u"yaml"_s,       u"yml"_s,
        u"toml"_s,       u"ini"_s,      u"xml"_s,      u"html"_s,    u"css"_s,        u"scss"_s,
        u"sass"_s,       u"bash"_s,     u"sh"_s,       u"shell"_s,   u"zsh"_s,        u"fish"_s,
        u"powershell"_s, u"ps1"_s,      u"sql"_s,      u"graphql"_s, u"go"_s,         u"golang"_s,
        u"rust"_s,       u"ruby"_s,     u"rb"_s,       u"java"_s,    u"kotlin"_s,     u"scala"_s,
        u"c"_s,          u"cpp"_s,      u"c++"_s,      u"csharp"_s,  u"cs"_s,         u"php"_s,
        u"perl"_s,       u"lua"_s,      u"r"_s,        u"matlab"_s,  u"julia"_s,      u"dart"_s,
        u"elixir"_s,     u"haskell"_s,  u"clojure"_s,  u"objc"_s,    u"assembly"_s,   u"asm"_s,
        u"dockerfile"_s, u"makefile"_s, u"diff"_s,     u"patch"_s,   u"http"_s,       u"regex"_s,
        u"latex"_s,      u"tex"_s,      u"markdown"_s, u"md"_s,      u"text"_s,       u"txt"_s,
        u"plaintext"_s,  u"csv"_s,      u"tsv"_s,      u"log"_s,     u"env"_s,        u"properties"_s,
    };
    return names.contains(name);
}

/// What stands behind the three backticks of a fence line; nothing for any other line.
std::optional<QStringView> infoOf(QStringView trimmed) {
    if (!isFence(trimmed))
        return std::nullopt;
    return trimmedLine(trimmed.sliced(3));
}

/// The name that stands before the colour, if there is one.
QString nameIn(QStringView info) {
    const qsizetype colon = info.indexOf(u':');
    return trimmedLine(colon < 0 ? info : info.first(colon)).toString().toLower();
}

bool opensPage(QStringView trimmed) {
    const std::optional<QStringView> info = infoOf(trimmed);
    return info && info->toString().toLower() == u"page";
}

/// Asked about each line behind the opening one: whether it closes the page.
class ClosingLine {
public:
    bool operator()(QStringView trimmed) {
        const std::optional<QStringView> info = infoOf(trimmed);
        if (!info)
            return false;
        m_depth += info->isEmpty() ? -1 : 1;
        return m_depth < 0;
    }

private:
    qsizetype m_depth = 0; ///< of the fences inside the page
};

/// Where a line stands, and where the next one begins: behind the text's end if there is none.
struct LinePlace {
    qsizetype start;
    qsizetype next;
};

/// The next line for which `isIt` gives true; the walk is then behind it.
template<typename IsIt>
std::optional<LinePlace> findLine(LineWalk &lines, IsIt isIt) {
    while (!lines.isAtEnd()) {
        const qsizetype start = lines.start();
        const bool isFound = isIt(lines.trimmed());
        lines.advance();
        if (isFound)
            return LinePlace{start, lines.start()};
    }
    return std::nullopt;
}

PageAnalysis analyzeClosedPage(const QString &visible, QStringView inner) {
    if (inner.trimmed().isEmpty())
        return {visible, std::nullopt, issue::Empty{}};
    if (const std::optional<QString> name = firstUnknownDirective(inner))
        return {visible, std::nullopt, issue::UnknownDirective{*name}};
    return {visible, PageSnapshot{derivePageTitle(inner, u"Page"_s), inner.toString()}, std::nullopt};
}

QString withoutStrongMarks(QStringView line) {
    QString plain;
    for (const QStringView piece : qTokenize(line, u"**"))
        plain += piece;
    return plain;
}

} // namespace

PageAnalysis analyzePageReply(const QString &text) {
    LineWalk lines(text);
    const std::optional<LinePlace> opening = findLine(lines, opensPage);
    if (!opening)
        return {text, std::nullopt, issue::Missing{}};
    const QStringView before = QStringView(text).first(opening->start);
    const std::optional<LinePlace> closing = findLine(lines, ClosingLine());
    if (!closing)
        return {before.trimmed().toString(), std::nullopt, issue::UnclosedFence{}};
    const QStringView after = QStringView(text).sliced(std::min(closing->next, text.size()));
    // The line feed before the closing line is no part of the page.
    const qsizetype end = std::max(opening->next, closing->start - 1);
    return analyzeClosedPage(before.toString().append(after).trimmed(),
                             QStringView(text).sliced(opening->next, end - opening->next));
}

std::optional<QString> firstUnknownDirective(QStringView markdown) {
    for (LineWalk lines(markdown); !lines.isAtEnd(); lines.advance()) {
        const QString name = nameIn(infoOf(lines.trimmed()).value_or(QStringView()));
        if (!name.isEmpty() && !isDirectiveName(name) && !isLanguageName(name))
            return name;
    }
    return std::nullopt;
}

QString derivePageTitle(QStringView markdown, const QString &fallback) {
    constexpr qsizetype longestTitle = 60;
    for (LineWalk lines(markdown); !lines.isAtEnd(); lines.advance()) {
        QStringView line = lines.trimmed();
        if (isFence(line))
            continue;
        while (line.startsWith(u'#'))
            line = line.sliced(1);
        const QString title = withoutStrongMarks(trimmedLine(line));
        if (!title.isEmpty())
            return firstCharacters(title, longestTitle).toString();
    }
    return fallback;
}

QStringView hidePageWhileStreaming(QStringView text) {
    constexpr QStringView opening = u"```page";
    for (qsizetype found = text.indexOf(opening); found >= 0; found = text.indexOf(opening, found + 1)) {
        qsizetype start = found;
        while (start > 0 && isBlank(text[start - 1]))
            --start;
        if (start == 0)
            return text.first(0);
        if (text[start - 1] == u'\n')
            return text.first(start - 1);
    }
    return text;
}
