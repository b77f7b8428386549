#include "web/Elements.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QStringList found(const QString &page, QStringView className = u"result__a") {
    QStringList texts;
    for (const QStringView element : elementsWithClass(className, page))
        texts.append(element.toString());
    return texts;
}

QString outer(const QString &page, QStringView tag, qsizetype start = 0) {
    const auto element = outerElement(tag, start, page);
    return element ? element->toString() : u"none"_s;
}

} // namespace

TEST(ElementsWithClass, areGivenWithTheirTags) {
    EXPECT_EQ(found(u"x<a class=\"result__a\" href='y'>One <b>1</b></a>z"_s),
              QStringList{u"<a class=\"result__a\" href='y'>One <b>1</b></a>"_s});
    EXPECT_EQ(found(u"no such thing"_s), QStringList());
    EXPECT_EQ(found(QString()), QStringList());
}

TEST(ElementsWithClass, anyCaseAndEitherQuoteCount) {
    for (const QString &page :
         {u"<A CLASS='RESULT__A'></a>"_s, u"<a class = \"result__a\"></A>"_s,
          u"<a\nclass=\n'result__a'></a>"_s, u"<a id=x class=\"y result__a z\" title=t></a>"_s,
          u"<a class='result__a\"></a>"_s, u"<a data-class='result__a'></a>"_s,
          u"<a/class='result__a'/></a>"_s})
        EXPECT_EQ(found(page), QStringList{page}) << page.toStdString();
    for (const QString &page :
         {u"<a class=result__a></a>"_s, u"< a class='result__a'></a>"_s, u"<a klass='result__a'></a>"_s,
          u"<a class='result__a></a>"_s, u"<a class='result__a'"_s, u"<ä class='result__a'></ä>"_s})
        EXPECT_EQ(found(page), QStringList()) << page.toStdString();
}

TEST(ElementsWithClass, theNameIsAWordOfItsOwn) {
    for (const QString &name : {u"result__a"_s, u"result__a-x"_s, u"x-result__a"_s, u"x.result__a.y"_s})
        EXPECT_EQ(found(u"<a class='%1'></a>"_s.arg(name)).size(), 1) << name.toStdString();
    for (const QString &name : {u"result__snippet"_s, u"result__ab"_s, u"xresult__a"_s, u"result__a_"_s,
                                u"result__a1"_s, u"äresult__a"_s, u"result__a\u0301"_s, u"result__\u00E4"_s})
        EXPECT_EQ(found(u"<a class='%1'></a>"_s.arg(name)).size(), 0) << name.toStdString();
    EXPECT_EQ(found(u"<a class='xresult__a result__a'></a>"_s).size(), 1);
}

TEST(ElementsWithClass, withinOneAnotherEachCount) {
    EXPECT_EQ(found(u"<a class='result__a'>1<a class='result__a'>2</a></a>"_s),
              (QStringList{u"<a class='result__a'>1<a class='result__a'>2</a></a>"_s,
                           u"<a class='result__a'>2</a>"_s}));
    EXPECT_EQ(found(u"<b class='result__a'><a class='result__a'></b></a>"_s),
              (QStringList{u"<b class='result__a'><a class='result__a'></b>"_s,
                           u"<a class='result__a'></b></a>"_s}));
}

TEST(ElementsWithClass, withoutAnEndAreLeftOut) {
    EXPECT_EQ(found(u"<a class='result__a'>1<a class='result__a'>2</a>"_s),
              QStringList{u"<a class='result__a'>2</a>"_s});
    EXPECT_EQ(found(u"</a><a class='result__a'></b></a >"_s), QStringList());
}

TEST(ElementsWithClass, aTagMayEndWithinAQuotationOrBeginAnotherOne) {
    EXPECT_EQ(found(u"<a title='>' class='result__a'></a>"_s), QStringList());
    EXPECT_EQ(found(u"<a class='> result__a'></a>"_s), QStringList{u"<a class='> result__a'></a>"_s});
    EXPECT_EQ(found(u"<b <a class='result__a'></a></b>"_s),
              QStringList{u"<b <a class='result__a'></a></b>"_s});
}

TEST(ElementsWithClass, aNameThatRunsIntoTheAttributeEndsBeforeIt) {
    EXPECT_EQ(found(u"<aclass='result__a'></a>"_s), QStringList{u"<aclass='result__a'></a>"_s});
    EXPECT_EQ(found(u"<class='result__a'></class>"_s), QStringList());
}

TEST(OuterElement, endsWhereAsManyAreClosedAsOpened) {
    EXPECT_EQ(outer(u"<a>1</a>2</a>"_s, u"a"), u"<a>1</a>"_s);
    EXPECT_EQ(outer(u"<a><a></a>1</a>2"_s, u"a"), u"<a><a></a>1</a>"_s);
    EXPECT_EQ(outer(u"x<A>1</a>"_s, u"a", 1), u"<A>1</a>"_s);
    EXPECT_EQ(outer(u"<a>1</A>"_s, u"A"), u"<a>1</A>"_s);
}

TEST(OuterElement, aLongerNameOpensOneButNoneIsClosedByIt) {
    EXPECT_EQ(outer(u"<a><abbr>1</abbr></a>2</a>"_s, u"a"), u"<a><abbr>1</abbr></a>2</a>"_s);
    EXPECT_EQ(outer(u"<a><abbr>1</abbr></a>"_s, u"a"), u"none"_s);
}

TEST(OuterElement, withoutAnEndIsNone) {
    for (const QString &page : {u""_s, u"<a>"_s, u"<a></a"_s, u"<a></b>"_s, u"<a></a >"_s, u"<a><a></a>"_s})
        EXPECT_EQ(outer(page, u"a"), u"none"_s) << page.toStdString();
    EXPECT_EQ(outer(u"<a></a>"_s, u"a", 7), u"none"_s);
    EXPECT_EQ(outer(u"<a></a>"_s, u"a", 8), u"none"_s);
}

TEST(OuterElement, fromBehindItsBeginningIsCountedAllTheSame) {
    EXPECT_EQ(outer(u"</a><a><a></a></a>"_s, u"a"), u"</a><a><a></a>"_s);
}
