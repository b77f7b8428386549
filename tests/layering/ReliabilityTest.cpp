/// The tests that stand behind the promises exist.

#include "layering/SourceTree.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct NamedTest {
    QString file;
    QString suite;
    QString name;
};

/// The tests that the document names: each stands behind the file in which it is.
QList<NamedTest> namedTests() {
    static const QRegularExpression name(u"`(tests/[\\w/]+\\.cpp)`|`(\\w+)\\.(\\w+)`"_s);
    QList<NamedTest> tests;
    for (const QString &line : textOf(u"docs/reliability.md"_s).split(u'\n')) {
        QString file;
        for (const QRegularExpressionMatch &match : name.globalMatch(line)) {
            if (match.hasCaptured(1))
                file = match.captured(1);
            else if (!file.isEmpty())
                tests.append({file, match.captured(2), match.captured(3)});
        }
    }
    return tests;
}

bool exists(const NamedTest &test) {
    const QRegularExpression declaration(uR"(^TEST(_F|_P)?\(%1,\s*%2\))"_s.arg(test.suite, test.name),
                                         QRegularExpression::MultilineOption);
    return declaration.match(textOf(test.file)).hasMatch();
}

} // namespace

TEST(Reliability, everyTestThatThePromisesNameExists) {
    const QList<NamedTest> tests = namedTests();
    EXPECT_GT(tests.size(), 80);
    for (const NamedTest &test : tests)
        EXPECT_TRUE(exists(test)) << test.file.toStdString() << " has no " << test.suite.toStdString() << '.'
                                  << test.name.toStdString();
}

TEST(Reliability, eachRowOfItsTablesNamesATest) {
    for (const QString &line : textOf(u"docs/reliability.md"_s).split(u'\n')) {
        const bool isPromise = line.startsWith(u"| "_s) && !line.endsWith(u"| Tests |"_s);
        EXPECT_TRUE(!isPromise || line.contains(u".cpp`: `"_s)) << line.toStdString();
    }
}
