#include "pages/drawing/Figure.h"

using namespace Qt::StringLiterals;

// What holds for every figure.

namespace {

struct Kind {
    QString name;
    QString line; ///< of its fence, with a place for a text
    bool showsWhenEmpty = false;
    bool isOneDrawing = false; ///< any change draws it as a whole
};

void PrintTo(const Kind &kind, std::ostream *out) {
    *out << kind.name.toStdString();
}

class FiguresTest : public Figure, public testing::WithParamInterface<Kind> {
protected:
    QString with(const QStringList &texts, const QString &color = {}) const {
        QStringList lines;
        for (const QString &text : texts)
            lines.append(GetParam().line.arg(text));
        return fence(GetParam().name + color, lines);
    }

    void expectInside(const QString &text) {
        const QRect area(-4, -4, int(view->width()) + 8, int(view->height()) + 8);
        EXPECT_TRUE(area.contains(inkIn(picture(), ground))) << text.toStdString();
    }

    /// Draws no more than a part of a high view, in a picture of that part.
    QImage strip(double top, double height) const {
        QImage image(int(view->width()) + 2 * pictureMargin, int(height), QImage::Format_RGB32);
        image.fill(ground);
        QPainter painter(&image);
        painter.translate(pictureMargin, -top);
        painter.setClipRect(QRectF(-pictureMargin, top, image.width(), height));
        view->draw(painter, QRectF(0, top, view->width(), height));
        return image;
    }
};

std::string nameOf(const testing::TestParamInfo<Kind> &info) {
    return info.param.name.toStdString();
}

} // namespace

TEST_P(FiguresTest, anEmptyOneShowsNothingOrItsFrame) {
    shown(fence(GetParam().name, {}));
    EXPECT_EQ(!inkIn(picture()).isNull(), GetParam().showsWhenEmpty);
    EXPECT_EQ(view->height() > 0, GetParam().showsWhenEmpty);
    EXPECT_TRUE(view->targets().isEmpty());
    view->spoken();
}

TEST_P(FiguresTest, anUnknownColourIsNone) {
    const QStringList texts{u"one"_s, u"two"_s, u"three"_s};
    shown(with(texts));
    const QImage neutral = picture();
    shown(with(texts, u":mauve"_s));
    EXPECT_EQ(picture(), neutral);
}

TEST_P(FiguresTest, anyTextStaysInside) {
    for (const QString &text :
         {u"gÅ one"_s, u"שלום עולם"_s, u"漢字かな交じり文"_s, u"👩‍💻 a\u0301\u0323"_s,
          u"word "_s.repeated(60), QString(300, u'w'), u"**b** `c` ~~d~~"_s}) {
        for (const double width : {320.0, 700.0}) {
            shown(with({u"first"_s, text, u"last"_s}), width);
            expectInside(text);
        }
    }
}

TEST_P(FiguresTest, noRoomIsNoHarm) {
    for (const double width : {0.0, 1.0, 40.0}) {
        shown(with({u"first"_s, u"second"_s}), width);
        picture();
    }
}

TEST_P(FiguresTest, anyChangeIsDrawnAsAnew) {
    shown(with({u"one"_s}));
    const QStringList three{u"one"_s, u"two"_s, u"three"_s};
    for (const QStringList &texts : {QStringList{u"one"_s, u"two"_s},
                                     {u"one"_s, u"twofold"_s},
                                     three,
                                     {u"one"_s, u"two"_s},
                                     {u"other"_s},
                                     {u"שלום"_s, u"two"_s},
                                     {},
                                     three,
                                     manyLines(u"a%1"_s, 30),
                                     manyLines(u"a%1"_s, 31)})
        expectChange(with(texts));
    expectChange(with(three, u":red"_s));
    expectChange(with(three, u":blue"_s));
}

TEST_P(FiguresTest, anEqualBlockChangesNothing) {
    shown(with({u"one"_s, u"two"_s}));
    const double changed = change(with({u"one"_s, u"two"_s}));
    if (GetParam().isOneDrawing)
        EXPECT_LE(changed, 0);
    else
        EXPECT_EQ(changed, view->height());
}

TEST_P(FiguresTest, anotherWidthIsLaidAsAnew) {
    const QString text = with({u"word "_s.repeated(20), u"two"_s, u"שלום"_s});
    shown(text, 700);
    view->layIn(320);
    EXPECT_EQ(picture(), fresh(text));
    view->layIn(500);
    EXPECT_EQ(picture(), fresh(text));
}

TEST_P(FiguresTest, aPartIsDrawnAsInTheWhole) {
    shown(with(manyLines(u"item %1"_s, 12)));
    const QImage whole = picture();
    for (double top = 0; top + 7 <= view->height(); top += 7)
        ASSERT_TRUE(areAlike(strip(top, 7), whole.copy(0, pictureMargin + int(top), whole.width(), 7)))
            << top;
}

TEST_P(FiguresTest, inTheDarkNothingIsBlack) {
    useDarkTheme();
    shown(with({u"one"_s, u"two"_s, u"three"_s}));
    const QImage drawn = picture();
    int bright = 0;
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x) {
            ASSERT_GE(qGray(drawn.pixel(x, y)) + 3, qGray(ground.rgb())) << x << ' ' << y;
            bright += qGray(drawn.pixel(x, y)) > 130 ? 1 : 0;
        }
    }
    EXPECT_GT(bright, 20);
}

TEST_P(FiguresTest, aListWithoutEndIsLaidAndGrows) {
    QStringList texts = manyLines(u"item %1"_s, 10'000);
    shown(with(texts), 700);
    strip(view->height() / 2, 800);
    const double height = view->height();
    texts.append(u"last"_s);
    EXPECT_LE(change(with(texts)), height);
    strip(view->height() - 400, 400);
}

TEST_P(FiguresTest, aPictureMadeSmallerKeepsItsHairlines) {
    shown(with({u"one"_s, u"two"_s, u"three"_s}));
    const QImage whole = picture();
    QImage small(whole.size(), QImage::Format_RGB32);
    small.fill(ground);
    QPainter painter(&small);
    painter.translate(pictureMargin, pictureMargin);
    painter.scale(0.4, 0.4);
    view->draw(painter, QRectF(0, 0, view->width(), view->height()));
    painter.end();
    const QRect ink = inkIn(small);
    const QRect full = inkIn(whole);
    EXPECT_NEAR(ink.width(), full.width() * 0.4, 2);
    EXPECT_NEAR(ink.height(), full.height() * 0.4, 2);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, FiguresTest,
    testing::Values(
        Kind{.name = u"metric"_s, .line = u"%1: 12"_s, .isOneDrawing = true},
        Kind{.name = u"chart"_s, .line = u"%1: 12"_s},
        Kind{.name = u"line"_s, .line = u"%1: 12"_s, .showsWhenEmpty = true, .isOneDrawing = true},
        Kind{.name = u"donut"_s, .line = u"%1: 12"_s, .showsWhenEmpty = true, .isOneDrawing = true},
        Kind{.name = u"progress"_s, .line = u"%1: 12"_s}, Kind{.name = u"timeline"_s, .line = u"%1"_s},
        Kind{.name = u"sources"_s, .line = u"%1"_s}, Kind{.name = u"flow"_s, .line = u"%1"_s},
        Kind{.name = u"compare"_s, .line = u"%1 | other"_s, .showsWhenEmpty = true},
        Kind{.name = u"cards"_s, .line = u"%1 | other"_s}, Kind{.name = u"spec"_s, .line = u"key | %1"_s}),
    nameOf);
