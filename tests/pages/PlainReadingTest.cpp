#include "pages/Described.h"
#include "pages/DialectText.h"
#include "pages/MarkdownParser.h"
#include "pages/PageAnalysis.h"
#include "pages/PlainAnalysis.h"
#include "pages/PlainDialect.h"

#include <map>
#include <set>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// A reply that may hold a page: by chance some of its lines are those of a page's fences.
QString replyText(std::mt19937 &random) {
    const QStringList fences{u"```page"_s, u"``` PAGE\t"_s, u"```"_s, u"  ``` "_s, u"```Chart: red"_s, u""_s};
    QStringList parts;
    for (int part = 0; part < 5; ++part) {
        parts.append(fences.at(static_cast<qsizetype>(random() % static_cast<size_t>(fences.size()))));
        parts.append(dialectText(random));
        if (random() % 16 == 0)
            parts.last() += u"**long # title** "_s.repeated(8);
    }
    return parts.join(u'\n');
}

/// A page as long as no chance of its own opens another one earlier.
QString pageText(std::mt19937 &random) {
    return u"```page\n"_s + dialectText(random) + u"\n```\n"_s + replyText(random);
}

} // namespace

TEST(PlainReading, theParserAgreesWithIt) {
    std::mt19937 random(20);
    std::set<size_t> kinds;
    for (int round = 0; round < 6000; ++round) {
        const QString text = dialectText(random);
        const QList<MarkdownBlock> blocks = parseMarkdownBlocks(text);
        for (const MarkdownBlock &block : blocks)
            kinds.insert(block.content.index());
        ASSERT_EQ(described(blocks).toStdString(), plainlyDescribed(text).toStdString())
            << text.toStdString();
    }
    EXPECT_EQ(kinds.size(), std::variant_size_v<BlockContent>) << "some kinds never came up";
}

TEST(PlainReading, thePageIsHiddenAlike) {
    std::mt19937 random(21);
    int hidden = 0;
    for (int round = 0; round < 4000; ++round) {
        const QString text = dialectText(random);
        const QString shown = hidePageWhileStreaming(text).toString();
        ASSERT_EQ(shown, plainlyHiddenPage(text)) << text.toStdString();
        hidden += shown == text ? 0 : 1;
    }
    EXPECT_GT(hidden, 200);
}

TEST(PlainReading, aFinishedReplyIsSplitAlike) {
    std::mt19937 random(22);
    std::map<size_t, int> issues;
    int pages = 0;
    for (int round = 0; round < 10'000; ++round) {
        const QString text = round % 2 == 0 ? replyText(random) : pageText(random);
        ASSERT_EQ(describedAnalysis(text).toStdString(), plainlyAnalyzed(text).toStdString())
            << text.toStdString();
        const PageAnalysis analysis = analyzePageReply(text);
        ASSERT_NE(analysis.page.has_value(), analysis.issue.has_value()) << text.toStdString();
        if (analysis.issue)
            ++issues[analysis.issue->index()];
        pages += analysis.page ? 1 : 0;
    }
    EXPECT_GT(pages, 300);
    for (size_t kind = 0; kind < std::variant_size_v<PageIssue>; ++kind)
        EXPECT_GT(issues[kind], 100) << "issue " << kind << " hardly ever came up";
}
