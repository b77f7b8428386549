#include "web/Elements.h"
#include "web/PlainMarkup.h"
#include "web/ReadableText.h"
#include "web/SearchResults.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// The quick reading of pages gives what the regular expressions give.

namespace {

QStringList copies(const QList<QStringView> &views) {
    QStringList texts;
    for (const QStringView view : views)
        texts.append(view.toString());
    return texts;
}

std::optional<QString> copy(std::optional<QStringView> view) {
    return view ? std::optional(view->toString()) : std::nullopt;
}

} // namespace

TEST(PlainReading, ofElementsIsTheSame) {
    std::mt19937 random(61);
    qsizetype found = 0;
    for (int round = 0; round < 20'000; ++round) {
        const QString page = pageOfResults(random);
        const QStringList elements = copies(elementsWithClass(u"result__a", page));
        ASSERT_EQ(elements, plainlyFoundElements(u"result__a"_s, page)) << page.toStdString();
        found += elements.size();
    }
    EXPECT_GT(found, 5'000);
}

TEST(PlainReading, ofOneElementIsTheSameFromAnyPlace) {
    std::mt19937 random(62);
    int found = 0;
    for (int round = 0; round < 1'000; ++round) {
        const QString page = pageOfResults(random);
        for (const QString &tag : {u"a"_s, u"b"_s, u"abbr"_s, u"K"_s}) {
            for (qsizetype start = 0; start <= page.size(); start += 1 + qsizetype(random() % 8)) {
                const auto element = copy(outerElement(tag, start, page));
                ASSERT_EQ(element, plainlyOuterElement(tag, start, page))
                    << start << ' ' << page.toStdString();
                found += element ? 1 : 0;
            }
        }
    }
    EXPECT_GT(found, 5'000);
}

TEST(PlainReading, ofResultsIsTheSame) {
    std::mt19937 random(63);
    qsizetype found = 0;
    for (int round = 0; round < 20'000; ++round) {
        const QString page = pageOfResults(random) + u"<a class=result__a>"_s + pageOfResults(random);
        const QList<SearchSource> results = parseSearchResults(page);
        ASSERT_EQ(results, plainlyReadResults(page)) << page.toStdString();
        found += results.size();
    }
    EXPECT_GT(found, 5'000);
}

TEST(PlainReading, ofAWholePageIsTheSame) {
    std::mt19937 random(64);
    int different = 0;
    for (int round = 0; round < 20'000; ++round) {
        const QString page = pageOfElements(random);
        ASSERT_EQ(cleanText(page), plainlyCleanText(page)) << page.toStdString();
        ASSERT_EQ(plainText(page), plainlyReadText(page)) << page.toStdString();
        different += plainText(page) == cleanText(page) ? 0 : 1;
    }
    EXPECT_GT(different, 3'000);
}
