#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 300;

class CalloutViewTest : public Figure {
protected:
    BlockView &callout(const QString &text, const QString &color = {}) {
        return shown(fence(u"callout"_s + color, {text}), width);
    }

    QString caption() const { return view->spoken().name; }
};

} // namespace

TEST_F(CalloutViewTest, theBarIsThreeWideAndAsHighAsTheCallout) {
    callout(u"one\ntwo"_s);
    const QRgb bar = on(theme.shade(0.35));
    for (const int x : {0, 1, 2})
        EXPECT_EQ(countInColumn(picture(), x, bar), view->height());
    EXPECT_EQ(countInColumn(picture(), 3, bare()), picture().height());
    EXPECT_EQ(countInColumn(picture(), 10, bare()), picture().height());
}

TEST_F(CalloutViewTest, theColourSaysWhatItIs) {
    callout(u"one"_s);
    EXPECT_EQ(caption(), u"NOTE"_s);
    callout(u"one"_s, u":warning"_s);
    EXPECT_EQ(caption(), u"WARNING"_s);
    callout(u"one"_s, u":red"_s);
    EXPECT_EQ(caption(), u"IMPORTANT"_s);
    callout(u"one"_s, u":success"_s);
    EXPECT_EQ(caption(), u"TIP"_s);
}

TEST_F(CalloutViewTest, aPurpleOneIsAPurpleNote) {
    callout(u"one"_s, u":purple"_s);
    EXPECT_EQ(caption(), u"NOTE"_s);
    EXPECT_EQ(colorAt(picture(), 1, 5), QColor::fromRgbF(0.48F, 0.28F, 0.76F).rgb());
}

TEST_F(CalloutViewTest, onlyTheTextCanBeSelected) {
    callout(u"one **two**"_s);
    EXPECT_EQ(view->textBetween(0, view->length()), u"one two"_s);
}

TEST_F(CalloutViewTest, theTextStandsSixBelowTheCaption) {
    callout(u"one"_s);
    const double captionHeight = TextPart(theme, captionSetting(theme, 1.2)).height();
    EXPECT_EQ(view->caretAt(0).top(), captionHeight + 6);
}

TEST_F(CalloutViewTest, aTextFromTheRightHasItsBarThere) {
    callout(u"שלום"_s);
    const QRgb bar = on(theme.shade(0.35));
    EXPECT_EQ(countInColumn(picture(), width - 1, bar), view->height());
    EXPECT_EQ(countInColumn(picture(), 0, bare()), picture().height());
    EXPECT_GT(inkIn(picture()).left(), width / 2);
}

TEST_F(CalloutViewTest, anEmptyOneIsItsCaption) {
    callout({});
    EXPECT_EQ(caption(), u"NOTE"_s);
    EXPECT_EQ(view->length(), 0);
}

TEST_F(CalloutViewTest, anyChangeIsDrawnAsAnew) {
    callout(u"one"_s);
    for (const QString &text : {u"one\ntwo"_s, u"one\ntwofold"_s, u"שלום"_s, u"one"_s, QString()})
        expectChange(fence(u"callout"_s, {text}));
    expectChange(fence(u"callout:red"_s, {u"one"_s}));
    expectChange(fence(u"callout:error"_s, {u"one"_s}));
    expectChange(fence(u"callout:amber"_s, {u"one"_s}));
}

TEST_F(CalloutViewTest, growthChangesItsLastLine) {
    callout(u"one\ntw"_s);
    const double lastLine = view->caretAt(4).top();
    EXPECT_EQ(change(fence(u"callout"_s, {u"one\ntwo"_s})), lastLine);
}
