#include "pages/Described.h"
#include "pages/DialectText.h"
#include "pages/MarkdownParser.h"
#include "pages/PageAnalysis.h"
#include "pages/PlainDialect.h"

#include <set>

#include <gtest/gtest.h>

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
