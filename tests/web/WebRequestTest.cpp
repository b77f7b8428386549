#include "web/WebRequest.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// What is sent and what is read of the answer is looked at where the requests are sent.

TEST(WebRequest, ofASearchLetsTheServerBeSilentForFifteenSeconds) {
    const HttpRequest request = searchRequest(u"tea"_s, QUrl(u"https://search.test/html/"_s));
    EXPECT_EQ(request.idleTimeout, std::chrono::seconds(15));
    EXPECT_FALSE(request.wholeTimeout);
}

TEST(WebRequest, ofAPageLetsTheServerBeSilentForTenSeconds) {
    const HttpRequest request = pageRequest(QUrl(u"https://e.test/"_s));
    EXPECT_EQ(request.idleTimeout, std::chrono::seconds(10));
    EXPECT_FALSE(request.wholeTimeout);
}
