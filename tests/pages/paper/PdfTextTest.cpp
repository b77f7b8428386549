#include "pages/drawing/DrawingTheme.h"
#include "pages/paper/PdfPaper.h"
#include "pages/paper/PdfReader.h"

#include <QFontDatabase>
#include <QPainter>
#include <QTextLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr double lineWidth = 400;

/// The text as a paragraph in that font, printed and read again. Poppler takes signs and digits within text
/// that runs from the right for something else than they are, so that the samples have none there.
QString readBack(const QString &text, const QFont &font) {
    PdfPaper paper(u"Test"_s, {lineWidth + 40, 1000});
    QPainter painter(&paper);
    QTextOption option;
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    layout.beginLayout();
    double y = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(lineWidth);
        line.setPosition({0, y});
        y += line.height() + 10;
    }
    layout.endLayout();
    layout.draw(&painter, {20, 20});
    painter.end();
    return PdfReader(paper.written()).words();
}

QFont textFont(double tracking = 0) {
    QFont font = paperTheme().font(TextStep::body);
    font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    return font;
}

struct Sample {
    const char *name;
    QString text;
};

void PrintTo(const Sample &sample, std::ostream *out) {
    *out << sample.name;
}

class PdfText : public ::testing::TestWithParam<Sample> {};

const Sample samples[] = {
    {"latin", u"The quick brown fox jumps over the lazy dog, 1234567890 times."_s},
    {"accents", u"Füße, naïve café, Łódź, Đặng Thị Hà, ǅ, e̅ x̂ ñ Å"_s},
    {"ligatures", u"office fluffy first afflict ffi ﬁ Æsir œuvre"_s},
    {"signs", u"A: B; C:D 12:30 (X) [Y] {Z} -> => != <= -- --- 3x4 x*y – — •"_s},
    {"quotes", u"‘a’ “b” «c» ‹d› „e“ 5′ 6″ ½ ² µ Ω Ω K K № € ™ © §"_s},
    {"greek", u"Ωμέγα, ἀρχὴ τοῦ εὐαγγελίου, ΠΑΝ;"_s},
    {"cyrillic", u"Привет, мир! Съешь ещё этих мягких булок. Її ґанок."_s},
    {"armenianGeorgian", u"Բարեւ ձեզ, გამარჯობა"_s},
    {"arabic", u"السلام عليكم ورحمة الله وبركاته ولا حول"_s},
    {"arabicWithVowels", u"بِسْمِ اللَّهِ الرَّحْمَٰنِ الرَّحِيمِ"_s},
    {"persian", u"این یک متن فارسی است که می‌خواهم بخوانم"_s},
    {"hebrew", u"שלום עולם מה נשמע היום? הכל בסדר!"_s},
    {"hebrewWithPoints", u"בְּרֵאשִׁית בָּרָא אֱלֹהִים אֵת הַשָּׁמַיִם"_s},
    {"hindi", u"हिन्दी में नमस्ते, विद्यार्थी क्षेत्र श्री"_s},
    {"tamil", u"தமிழ் மொழி கொண்டு"_s},
    {"thai", u"สวัสดีครับ น้ำที่นี่"_s},
    {"chinese", u"中文：你好，世界。日本語のテキスト、カタカナ。"_s},
    {"korean", u"안녕하세요 세계"_s},
    {"emoji", u"😀 👍🏽 👨‍👩‍👧 🇩🇪🇫🇷 1️⃣ ❤️ end 🏳️‍🌈."_s},
    {"mathematics", u"∑ ∫ √2 ≤ ≠ ≈ ∞ 𝑥 𝔸"_s},
};

} // namespace

TEST_P(PdfText, whatIsReadIsWhatWasWritten) {
    const QString &text = GetParam().text;
    EXPECT_EQ(readBack(text, textFont()).toStdString(), text.toStdString());
}

TEST_P(PdfText, soItIsInSpacedLettersAndInOtherFaces) {
    const QString &text = GetParam().text;
    EXPECT_EQ(readBack(text, paperTheme().font(TextStep::body)).toStdString(), text.toStdString());
    EXPECT_EQ(readBack(text, textFont(1)).toStdString(), text.toStdString());
    EXPECT_EQ(readBack(text, paperTheme().font(TextStep::quote)).toStdString(), text.toStdString());
}

INSTANTIATE_TEST_SUITE_P(Scripts, PdfText, ::testing::ValuesIn(samples),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST(PdfText, whatIsNotSeenIsReadToo) {
    const QString text = u"a\u200Bb c\u2060d"_s;
    EXPECT_EQ(readBack(text, textFont()).toStdString(), text.toStdString());
}

TEST(PdfText, codeIsReadAsItWasWritten) {
    const QString text = u"if (x != 1 && y <= 2) -> { return \"ffi\"; } // ο ж 中"_s;
    EXPECT_EQ(readBack(text, paperTheme().font(TextStep::code)).toStdString(), text.toStdString());
}

TEST(PdfText, aFontHasMoreThanAByteOfCharacters) {
    QString text;
    for (char16_t ideograph = 0x4E00; ideograph < 0x4E00 + 600; ++ideograph)
        text += QChar(ideograph);
    EXPECT_EQ(readBack(text, textFont()).remove(u' ').toStdString(), text.toStdString());
}
