#include "pages/MarkdownCache.h"

#include "pages/MarkdownParser.h"
#include "pages/TextCache.h"

#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Box {
    int value = 0;
};

QString textOf(int number) {
    return u"text "_s + QString::number(number);
}

} // namespace

TEST(MarkdownCache, itGivesWhatTheParserGives) {
    for (const QString &text : {u""_s, u"# a\nb"_s, u"```chart\na: 1\n```"_s}) {
        EXPECT_EQ(cachedMarkdownBlocks(text), parseMarkdownBlocks(text));
        EXPECT_EQ(cachedMarkdownBlocks(text), parseMarkdownBlocks(text));
    }
}

TEST(MarkdownCache, theSameTextIsParsedOnce) {
    const QString text = u"- one\n- two"_s;
    const QList<MarkdownBlock> first = cachedMarkdownBlocks(text);
    EXPECT_EQ(cachedMarkdownBlocks(QString(text.data(), text.size())).constData(), first.constData());
}

TEST(MarkdownCache, itMayBeAskedFromSeveralThreads) {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([] {
            for (int round = 0; round < 2000; ++round) {
                const QString text = u"# "_s + textOf(round % 500);
                if (cachedMarkdownBlocks(text) != parseMarkdownBlocks(text))
                    std::abort();
            }
        });
    }
}

TEST(TextCache, itRemembersAsManyAsItsLimitAndForgetsTheLeastRecent) {
    TextCache<Box> cache(rememberedBlockTexts);
    for (int number = 0; number < 400; ++number)
        cache.insert(textOf(number), {number});
    for (int number = 0; number < 400; ++number)
        ASSERT_EQ(cache.find(textOf(number)).value().value, number);
    cache.find(textOf(0));
    cache.insert(textOf(400), {400});
    EXPECT_TRUE(cache.find(textOf(0)));
    EXPECT_FALSE(cache.find(textOf(1)));
    EXPECT_TRUE(cache.find(textOf(2)));
}

TEST(TextCache, theTextIsComparedExactly) {
    TextCache<Box> cache(2);
    cache.insert(u"a"_s, {1});
    EXPECT_FALSE(cache.find(u"A"_s));
    EXPECT_FALSE(cache.find(u"a "_s));
    EXPECT_TRUE(cache.find(u"a"_s));
}

TEST(TextCache, longTextsArePushedOutSooner) {
    TextCache<Box> cache(rememberedBlockTexts);
    const QString reply(100'000, u'x');
    for (int version = 0; version < 400; ++version)
        cache.insert(reply + textOf(version), {version});
    int kept = 0;
    for (int version = 0; version < 400; ++version)
        kept += cache.find(reply + textOf(version)) ? 1 : 0;
    EXPECT_EQ(kept, 19);
    EXPECT_TRUE(cache.find(reply + textOf(399)));
}

TEST(TextCache, evenTheLongestTextIsRemembered) {
    TextCache<Box> cache(rememberedBlockTexts);
    const QString huge(5'000'000, u'x');
    cache.insert(huge, {7});
    EXPECT_EQ(cache.find(huge).value().value, 7);
}
