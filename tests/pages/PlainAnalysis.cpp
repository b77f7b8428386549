#include "pages/PlainAnalysis.h"

#include "pages/PageAnalysis.h"
#include "records/Characters.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString legalNames =
    u" metric chart line donut progress callout timeline sources flow compare cards spec subtitle divider "
    "python py swift js javascript ts typescript jsx tsx json yaml yml toml ini xml html css scss sass bash "
    "sh shell zsh fish powershell ps1 sql graphql go golang rust ruby rb java kotlin scala c cpp c++ csharp "
    "cs php perl lua r matlab julia dart elixir haskell clojure objc assembly asm dockerfile makefile diff "
    "patch http regex latex tex markdown md text txt plaintext csv tsv log env properties "_s;

QString trimmed(QString line) {
    static const QRegularExpression blanks(u"\\A[\\t\\p{Zs}]+|[\\t\\p{Zs}]+\\z"_s,
                                           QRegularExpression::UseUnicodePropertiesOption);
    return line.remove(blanks);
}

bool isFenceLine(const QString &line) {
    return trimmed(line).startsWith(u"```"_s);
}

QString info(const QString &line) {
    return trimmed(trimmed(line).mid(3));
}

QString unknownName(const QStringList &page) {
    for (const QString &line : page) {
        const QString name =
            isFenceLine(line) ? trimmed(info(line).section(u':', 0, 0)).toLower() : QString();
        if (!name.isEmpty() && (name.contains(u' ') || !legalNames.contains(u' ' + name + u' ')))
            return name;
    }
    return {};
}

QString beginning(const QString &text) {
    QString first = text;
    while (characterCount(first) > 60)
        first.chop(1);
    return first;
}

QString title(const QStringList &page) {
    for (const QString &line : page) {
        QString plain = trimmed(line);
        while (plain.startsWith(u'#'))
            plain.remove(0, 1);
        plain = trimmed(plain).remove(u"**"_s);
        if (!isFenceLine(line) && !plain.isEmpty())
            return beginning(plain);
    }
    return u"Page"_s;
}

QString result(const QStringList &visible, const QString &kind, const QString &payload = {}) {
    return visible.join(u'\n').trimmed() + u" | "_s + kind + u' ' + payload;
}

QString closedPage(const QStringList &visible, const QStringList &page) {
    if (page.join(u'\n').trimmed().isEmpty())
        return result(visible, u"empty"_s);
    if (const QString name = unknownName(page); !name.isEmpty())
        return result(visible, u"unknown"_s, name);
    return result(visible, u"page"_s, title(page) + u" | "_s + page.join(u'\n'));
}

} // namespace

QString plainlyAnalyzed(const QString &text) {
    const QStringList lines = text.split(u'\n');
    qsizetype opening = 0;
    while (opening < lines.size() &&
           (!isFenceLine(lines[opening]) || info(lines[opening]).toLower() != u"page"_s))
        ++opening;
    if (opening == lines.size())
        return text + u" | missing "_s;
    int depth = 0;
    for (qsizetype index = opening + 1; index < lines.size(); ++index) {
        if (!isFenceLine(lines[index]))
            continue;
        if (!info(lines[index]).isEmpty())
            ++depth;
        else if (depth > 0)
            --depth;
        else
            return closedPage(lines.mid(0, opening) + lines.mid(index + 1),
                              lines.mid(opening + 1, index - opening - 1));
    }
    return result(lines.mid(0, opening), u"unclosed"_s);
}

QString describedAnalysis(const QString &text) {
    const PageAnalysis analysis = analyzePageReply(text);
    QString found;
    if (analysis.page)
        found += u"page "_s + analysis.page->title + u" | "_s + analysis.page->markdown;
    if (analysis.issue) {
        const QStringList names{u"unknown "_s, u"missing "_s, u"unclosed "_s, u"empty "_s};
        found += names.at(static_cast<qsizetype>(analysis.issue->index()));
        if (const auto *unknown = std::get_if<issue::UnknownDirective>(&*analysis.issue))
            found += unknown->name;
    }
    return analysis.visible + u" | "_s + found;
}

QString plainlyHiddenPage(const QString &text) {
    QStringList shown;
    for (const QString &line : text.split(u'\n')) {
        if (trimmed(line).startsWith(u"```page"_s))
            return shown.join(u'\n');
        shown.append(line);
    }
    return text;
}
