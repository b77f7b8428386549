#include "web/SearchResults.h"

#include "web/Attribute.h"
#include "web/Elements.h"
#include "web/MarkupScan.h"
#include "web/ReadableText.h"
#include "web/WebURL.h"

#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

/// Where the links of a page lead to. They are asked for in the order of their beginnings; what links within
/// one another share is read once.
class LinkTargets {
public:
    explicit LinkTargets(QStringView page)
        : m_page(page),
          m_lowered(foldedCase(page)),
          m_doubleQuotes(page, u'"'),
          m_singleQuotes(page, u'\'') {}

    /// The target of the link between those places; nothing if it has none.
    std::optional<QString> of(qsizetype start, qsizetype end) {
        if (m_reference.start < start)
            read(start);
        if (m_reference.start >= end)
            return std::nullopt;
        return m_reference.quoteEnd < end ? m_reference.quoted : m_reference.bare;
    }

private:
    /// A value of href that isn't empty, read in both ways: a quote counts only if it ends within the link.
    struct Reference {
        qsizetype start = -1;
        qsizetype quoteEnd = 0;
        std::optional<QString> quoted;
        std::optional<QString> bare;
    };

    void read(qsizetype from) {
        auto found = findAttribute(m_lowered, u"href", from);
        while (found && (found->value == m_page.size() || m_page[found->value] == u'>'))
            found = findAttribute(m_lowered, u"href", found->value);
        if (!found) {
            m_reference = {.start = m_page.size()};
            return;
        }
        const qsizetype quoteEnd = endOfQuote(found->value);
        m_reference = {.start = found->start,
                       .quoteEnd = quoteEnd,
                       .quoted =
                           quoteEnd < m_page.size() ? resolved(found->value + 1, quoteEnd) : std::nullopt,
                       .bare = resolved(found->value, bareEnd(found->value))};
    }

    /// The size of the page if no quote begins there, or if it has no end.
    qsizetype endOfQuote(qsizetype start) {
        if (m_page[start] == u'"')
            return m_doubleQuotes.from(start + 1);
        return m_page[start] == u'\'' ? m_singleQuotes.from(start + 1) : m_page.size();
    }

    qsizetype bareEnd(qsizetype from) const {
        while (from < m_page.size() && m_page[from] != u'>' && !m_page[from].isSpace())
            ++from;
        return from;
    }

    std::optional<QString> resolved(qsizetype start, qsizetype end) const {
        return resolveResultURL(replaceEntities(m_page.sliced(start, end - start)));
    }

    const QStringView m_page;
    const QString m_lowered;
    NextPlace m_doubleQuotes;
    NextPlace m_singleQuotes;
    Reference m_reference;
};

} // namespace

QList<SearchSource> parseSearchResults(const QString &html) {
    constexpr qsizetype mostResults = 5;
    const QList<QStringView> snippets = elementsWithClass(u"result__snippet", html);
    LinkTargets targets(html);
    QList<SearchSource> results;
    for (const QStringView link : elementsWithClass(u"result__a", html)) {
        if (results.size() == mostResults)
            break;
        const qsizetype start = link.data() - QStringView(html).data();
        const auto target = targets.of(start, start + link.size());
        if (!target)
            continue;
        results.append({.id = results.size() + 1,
                        .title = cleanText(link),
                        .url = *target,
                        .snippet = cleanText(snippets.value(results.size()))});
    }
    return results;
}

std::optional<QString> resolveResultURL(const QString &href) {
    QString text = href.trimmed();
    if (text.startsWith(u"//"_s))
        text.prepend(u"https:"_s);
    const std::optional<QUrl> url = parseURL(text);
    if (!url)
        return std::nullopt;
    const QString target = QUrlQuery(*url).queryItemValue(u"uddg"_s, QUrl::FullyDecoded);
    if (!target.isEmpty())
        return target;
    const bool leadsToAPage = text.startsWith(u"http://"_s) || text.startsWith(u"https://"_s);
    return leadsToAPage ? std::optional(text) : std::nullopt;
}
