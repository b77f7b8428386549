#include "pages/MarkdownParser.h"
#include "pages/PageAnalysis.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Texts of a megabyte and more on which a careless reader takes minutes. The time allowed is that of a
// sanitizer's build on a busy machine; what each really takes is some milliseconds.

namespace {

constexpr qint64 allowedMilliseconds = 5000;
constexpr qsizetype megabyte = 1'000'000;

QList<MarkdownBlock> parsedInTime(const QString &text) {
    QElapsedTimer timer;
    timer.start();
    QList<MarkdownBlock> blocks = parseMarkdownBlocks(text);
    EXPECT_LT(timer.elapsed(), allowedMilliseconds) << text.first(20).toStdString();
    return blocks;
}

} // namespace

TEST(HostileText, longRunsOfOneKindAreReadInOnePass) {
    const QStringList units{u"`"_s,         u"```\n"_s,
                            u"```a\n"_s,    u"#"_s,
                            u"# "_s,        u">"_s,
                            u">\n"_s,       u"- "_s,
                            u"- a\n"_s,     u"1"_s,
                            u"1."_s,        u"1. "_s,
                            u"1. a\n"_s,    u"|"_s,
                            u"|\n"_s,       u"|-\n"_s,
                            u" "_s,         u"\t"_s,
                            u" a"_s,        u"\n"_s,
                            u"-"_s,         u"\u3000"_s,
                            u"a\n\n"_s,     u"\U0001D7D0"_s,
                            u"三"_s,        QString(QChar(0xD800)),
                            u"```chart\n"_s};
    for (const QString &unit : units)
        parsedInTime(unit.repeated(2 * megabyte / unit.size()));
}

TEST(HostileText, directiveBodiesAreReadInOnePass) {
    const QStringList names{u"metric"_s,   u"chart"_s,   u"flow"_s, u"cards"_s,
                            u"timeline"_s, u"callout"_s, u"x"_s};
    const QStringList units{u":"_s, u"a: 1\n"_s, u"->"_s,  u"-> "_s, u"a->b"_s, u"|"_s,
                            u"%"_s, u"1"_s,      u"a\n"_s, u" "_s,   u"\n"_s};
    for (const QString &name : names) {
        for (const QString &unit : units)
            parsedInTime(u"```"_s + name + u'\n' + unit.repeated(megabyte / unit.size()));
    }
}

TEST(HostileText, aNumberOfAMillionDigitsIsANumber) {
    const QString digits(megabyte, u'9');
    for (const QString &number :
         {digits, u"0."_s + digits, u"1e"_s + digits, u"0x"_s + digits, u"0x1p-"_s + digits})
        parsedInTime(u"```chart\na: "_s + number);
}

TEST(HostileText, wideTablesAndLongFlowsAreWhole) {
    const QString row = u"| a"_s.repeated(500) + u"|\n"_s;
    const auto blocks = parsedInTime(row.repeated(500));
    const auto &table = std::get<block::Table>(blocks.first().content);
    EXPECT_EQ(table.header.size(), 500);
    EXPECT_EQ(table.rows.size(), 499);

    QString flow = u"```flow\n"_s;
    for (int step = 0; step < 10'000; ++step)
        flow += u"step %1 -> "_s.arg(step);
    EXPECT_EQ(std::get<block::Flow>(parsedInTime(flow).first().content).steps.size(), 10'000);
}

TEST(HostileText, aPageThatIsMentionedOftenIsLookedForInOnePass) {
    const QStringList units{u"x```page"_s, u"x  ```page  "_s, u"`"_s,
                            u" "_s,        u"```pag"_s,       u"x"_s + QString(999, u' ') + u"```page"_s};
    for (const QString &unit : units) {
        const QString text = u"x"_s + unit.repeated(2 * megabyte / unit.size());
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(hidePageWhileStreaming(text).size(), text.size());
        EXPECT_LT(timer.elapsed(), allowedMilliseconds);
    }
}

TEST(HostileText, aReplyIsSplitInOnePass) {
    const QStringList units{u"```page\n"_s, u"```\n"_s, u"```chart\n"_s, u"#"_s, u"# \n"_s,
                            u"**"_s,        u"**a"_s,   u"\n"_s,         u" "_s, u"` "_s,
                            u"```"_s,       u"a:"_s,    u"e\u0301"_s};
    for (const QString &unit : units) {
        const QString inner = unit.repeated(2 * megabyte / unit.size());
        QElapsedTimer timer;
        timer.start();
        analyzePageReply(inner);
        analyzePageReply(u"```page\n"_s + inner);
        analyzePageReply(u"```page\n"_s + inner + u"\n```"_s);
        EXPECT_LT(timer.elapsed(), allowedMilliseconds) << unit.toStdString();
    }
}
