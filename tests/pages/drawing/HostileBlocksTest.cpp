#include "pages/drawing/Drawn.h"
#include "pages/drawing/MarkdownView.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Texts that nobody would write, but a model may. Each is laid, drawn in part and continued in a moment.

namespace {

constexpr int million = 1'000'000;
constexpr int sight = 400;

struct Hostile {
    const char *name;
    QString text;

    friend void PrintTo(const Hostile &hostile, std::ostream *stream) { *stream << hostile.name; }
};

class HostileBlocksTest : public testing::TestWithParam<Hostile> {
protected:
    HostileBlocksTest() { view.layIn(720); }

    void drawAt(double top) const {
        QImage image(720, sight, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.translate(0, -top);
        view.draw(painter, QRectF(0, top, 720, sight));
    }

    MarkdownView view{paperTheme()};
};

} // namespace

TEST_P(HostileBlocksTest, itIsLaidWithoutOverlapDrawnAndContinued) {
    const QString &text = GetParam().text;
    view.setText(text);
    for (const double top : {0.0, view.height() / 2, view.height() - sight})
        drawAt(top);
    view.setText(text + u"more"_s);
    for (size_t index = 1; index < view.blockCount(); ++index)
        ASSERT_GE(view.topOf(index), view.topOf(index - 1) + view.block(index - 1).height());
    drawAt(view.height() - sight);
    EXPECT_EQ(view.positionAt({0, view.height()}), view.positionAt({0, 2 * view.height()}));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, HostileBlocksTest,
    testing::Values(
        Hostile{"strokes", QString(million, u'|')}, Hostile{"strokeLines", u"|\n"_s.repeated(100'000)},
        Hostile{"columns", u"| column "_s.repeated(500)}, Hostile{"rows", u"| a | b |\n"_s.repeated(10'000)},
        Hostile{"wordsInOneLine", u"word "_s.repeated(2 * million / 5)},
        Hostile{"lettersInOneLine", QString(million, u'w')},
        Hostile{"lettersInOneItem", u"- "_s + QString(million, u'w')},
        Hostile{"lettersFromTheRight", QString(u"שלום "_s).repeated(100'000)},
        Hostile{"code", u"```\n"_s + QString(million, u'w')}, Hostile{"fences", u"```\n"_s.repeated(20'000)},
        Hostile{"items", u"- a\n"_s.repeated(10'000)}, Hostile{"numbers", u"1. a\n"_s.repeated(10'000)},
        Hostile{"blocks", u"a\n\n"_s.repeated(10'000)},
        Hostile{"marks", u"**b** `c` [d](https://e.example) "_s.repeated(3'000)},
        Hostile{"openMarks", u"*_`[~"_s.repeated(20'000)},
        Hostile{"combiningMarks", u"a"_s + QString(100'000, QChar(0x301))},
        Hostile{"people", QString(u"\U0001F469\u200D\U0001F4BB"_s).repeated(20'000)},
        Hostile{"nulls", QString(100'000, QChar(0))}),
    [](const testing::TestParamInfo<Hostile> &hostile) { return hostile.param.name; });
