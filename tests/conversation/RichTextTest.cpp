#include "conversation/RichText.h"

#include "TextBeginning.h"

#include <QStringList>

#include <random>
#include <utility>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray sample = R"({\rtf1\ansi\ansicpg1252\uc1\deff0\deflang1033
{\fonttbl{\f0\froman\fcharset0\fprq2{\*\panose 02020603050405020304}Times New Roman{\*\falt Times};}
{\f1\fmodern\fcharset128 MS Mincho;}{\f2\fcharset204 Arial Cyr;}{\f3\fcharset2 Symbol;}}
{\colortbl;\red0\green0\blue0;}{\stylesheet{\ql\fs24 Normal;}{\*\cs10 \additive Default;}}
{\*\listtable{\list\listtemplateid1{\listlevel{\leveltext\'01\u-3913 ?;}}}}
{\info{\title Hidden}{\creatim\yr2024}}{\*\generator A program;}
{\header\pard\plain Page {\field{\*\fldinst PAGE}{\fldrslt 1}}\par}
\pard\plain\qc{\b\fs32 Caf\'e9 \u8212\'97 d\'e9j\'e0 vu}\par
\pard\plain {\f1\'93\'fa\'96\'7b\'8c\'ea} and {\f2\'cf\'f0\'e8}\u-10179?\u-8704?.\line
{\listtext\f3\'b7\tab}One{\footnote\pard {\super\chftn}A note.} with a {\field{\*\fldinst
HYPERLINK "https://example.org"}{\fldrslt\ul link}}.\par
{\*\shppict{\pict\pngblip\picw1 89504e470d0a}}{\nonshppict{\pict\wmetafile8 0100}}
\trowd\cellx100\cellx200 a\cell b\~c\cell\row\trowd\cellx100\cellx200 {\v x}\cell \'80 5\cell\row
\pard\{\ldblquote done\rdblquote\}\par})";

const QString sampleText =
    u"Café — déjà vu\n日本語 and При😀.\n·\tOne [A note.] with a link.\na\tb\u00A0c\n\t€ 5\n{“done”}\n"_s;

/// The text of a document with that body.
std::string textOf(const QByteArray &body) {
    return plainTextOfRichText("{\\rtf1" + body + '}').value_or(u"no rich text"_s).toStdString();
}

/// A body put together by chance, and the text that it must give.
class GeneratedBody {
public:
    explicit GeneratedBody(unsigned seed) : m_random(seed) { addGroup(0, Shown::yes); }

    QByteArray body;
    QString text;

private:
    enum class Shown { yes, no };

    void addGroup(int depth, Shown shown) {
        for (unsigned pieces = m_random() % 6; pieces > 0; --pieces) {
            if (depth < 40 && m_random() % 5 < 2)
                addInnerGroup(depth, shown);
            else
                addPiece(shown);
        }
    }

    void addInnerGroup(int depth, Shown shown) {
        static const QByteArrayList shownStarts{"{", "{\\b ", "{\\f1\\uc2 ", "{\\listtext ", "{\n"};
        static const QByteArrayList hiddenStarts{"{\\*\\unknown ", "{\\info ", "{\\v ", "{\\pict\\bin3 {}}"};
        const bool hides = m_random() % 4 == 0;
        body += any(hides ? hiddenStarts : shownStarts);
        addGroup(depth + 1, hides ? Shown::no : shown);
        body += '}';
    }

    void addPiece(Shown shown) {
        static const QList<std::pair<QByteArray, QString>> pieces{
            {"text ", u"text "_s},
            {"\\par\n", u"\n"_s},
            {"\\'e9", u"é"_s},
            {"\\tab ", u"\t"_s},
            {"{\\uc1\\u8212 ?}", u"—"_s},
            {"\\\\\\{", u"\\{"_s},
            {"\\'41\\'42", u"AB"_s},
            {"\\u-10179\\u-8704", u"😀"_s},
            {"\\unknown1 ", {}},
            {"\\bin2 }}", {}},
            {"\\b0\\i ", {}},
            {"\r\n", {}},
            {"\\bullet x", u"•x"_s},
        };
        const auto &[written, read] = pieces.at(m_random() % size_t(pieces.size()));
        // Ends the fallback of the character before, if it had one.
        body += "{}" + (written.startsWith("\\u-") ? "{\\uc0" + written + '}' : written);
        if (shown == Shown::yes)
            text += read;
    }

    QByteArray any(const QByteArrayList &list) { return list.at(m_random() % size_t(list.size())); }

    std::mt19937 m_random;
};

} // namespace

TEST(RichText, onlyADocumentThatBeginsAsOneIsRead) {
    for (const char *other : {"", "{", "{\\rt", "rtf1 text", " {\\rtf1 text}", "{\\urtf1 text}", "{rtf1}"})
        EXPECT_FALSE(plainTextOfRichText(other)) << other;
    EXPECT_EQ(plainTextOfRichText("{\\rtf1 text}"), u"text"_s);
    EXPECT_EQ(plainTextOfRichText("{\\rtf}"), QString());
    EXPECT_EQ(plainTextOfRichText("{\\rtf"), QString());
}

TEST(RichText, whatFollowsTheDocumentIsNotRead) {
    EXPECT_EQ(plainTextOfRichText("{\\rtf1 a}b{\\rtf1 c}"), u"a"_s);
    EXPECT_EQ(plainTextOfRichText(QByteArrayView("{\\rtf1 a}\0", 11)), u"a"_s);
}

TEST(RichText, paragraphsAndLinesEndWithALineFeed) {
    EXPECT_EQ(textOf(" a\\par b\\line c\\page d\\sect e\\column f"), "a\nb\nc\nd\ne\nf");
    EXPECT_EQ(textOf(" a\\\nb\\\r\nc\\\rd"), "a\nb\nc\nd");
}

TEST(RichText, lineEndsAndControlCharactersOfTheFileMeanNothing) {
    EXPECT_EQ(textOf("\r\n a\nb\r\nc\x1a\x7f\td"), " abc\td");
    EXPECT_EQ(textOf("\\pc a\\'1a\\'82\\'00\\'0a\\'7f\\'09b"), "aé\tb");
}

TEST(RichText, oneBlankBehindAControlWordBelongsToIt) {
    EXPECT_EQ(textOf("\\b a\\b0  b\\i\\i0c\\fs-24 d\\ldblquote e\\rdblquote"), "a bcd“e”");
    EXPECT_EQ(textOf("\\fs24-a\\fs-b"), "-a-b");
}

TEST(RichText, wordsAndSymbolsStandForCharacters) {
    EXPECT_EQ(textOf(" \\emdash\\endash\\bullet\\lquote\\rquote\\ldblquote\\rdblquote"), "—–•‘’“”");
    EXPECT_EQ(textOf(" a\\emspace\\enspace\\qmspace\\tab\\\tb"), "a\u2003\u2002\u2005\t\tb");
    EXPECT_EQ(textOf(" \\zwj\\zwnj\\zwbo\\zwnbo\\ltrmark\\rtlmark"), "\u200D\u200C\u200B\u2060\u200E\u200F");
    EXPECT_EQ(textOf(" a\\~b\\_c\\-d\\\\\\{\\}\\:\\|"), "a\u00A0b\u2011cd\\{}");
}

TEST(RichText, cellsArePartedByTabulatorsAndRowsByLineFeeds) {
    EXPECT_EQ(textOf("\\trowd a\\cell b\\cell\\row\\trowd c\\cell\\cell\\row d"), "a\tb\nc\t\nd");
    EXPECT_EQ(textOf(" a{\\nestcell{\\*\\nesttableprops\\trowd\\nestrow}{\\nonesttables\\par}}\\cell\\row"),
              "a\n\n");
}

TEST(RichText, whatIsNotReadOnThePageIsLeftOut) {
    for (const char *group :
         {"{\\fonttbl{\\f0\\fswiss Helvetica;}}", "{\\colortbl;\\red1\\green2\\blue3;}",
          "{\\stylesheet{\\s0 Normal;}{\\*\\cs10 \\additive Default;}}",
          "{\\info{\\title A title}{\\author Somebody}}", "{\\pict\\pngblip 89504e47}",
          "{\\*\\shppict{\\pict 8950}}{\\nonshppict{\\pict 8950}}", "{\\header a}{\\footerr b}",
          "{\\*\\unknown a{b}{\\shptxt c}{\\b d}}", "{\\*\\unknown1\n}", "{\\*\\b a}",
          "{\\v hidden{\\b still}}", "{\\v\\v1 a}", "{\\deleted a}", "{\\xe{index}}", "{\\tc contents}",
          "{\\info{\\*\\ud{a}}{\\footnote b}}", "{\\header{\\shp{\\*\\shpinst{\\shptxt a}}}}"})
        EXPECT_EQ(textOf(QByteArray(" a") + group + 'b'), "ab") << group;
}

TEST(RichText, hiddenTextEndsWhereItIsSaid) {
    EXPECT_EQ(textOf("\\v a\\v0 b\\v c\\plain d\\deleted e\\deleted0 f"), "bdf");
}

TEST(RichText, numbersOfListsAreText) {
    EXPECT_EQ(textOf("{\\listtext\\tab 1.\\tab}{\\pntext\\'b7\\tab}{\\*\\pn\\pnlvlblt{\\pntxtb a}}b"),
              "\t1.\t·\tb");
}

TEST(RichText, aFieldIsItsResult) {
    EXPECT_EQ(textOf("{\\field{\\*\\fldinst{HYPERLINK \"https://a.org\"}}{\\fldrslt{\\ul a link}}} b"),
              "a link b");
    EXPECT_EQ(textOf("{\\field{\\fldinst PAGE}{\\fldrslt 1}}"), "1");
    EXPECT_EQ(textOf("{\\object\\objemb{\\*\\objclass A}{\\*\\objdata 0105}{\\result a}}"), "a");
}

TEST(RichText, aFootnoteStandsInBrackets) {
    EXPECT_EQ(textOf(" a{\\super\\chftn}{\\footnote\\ftnalt{\\chftn}{\\b note}} b"), "a [note] b");
    EXPECT_EQ(textOf(" a{\\*\\footnote b{\\footnote c}}"), "a [bc]");
}

TEST(RichText, whatIsWrittenInAShapeIsText) {
    EXPECT_EQ(textOf(" a{\\shp{\\*\\shpinst\\shpleft1{\\sp{\\sn posh}{\\sv 1}}{\\shptxt\\pard b\\par}}"
                     "{\\shprslt{\\*\\do\\dpx1 c}d}}"),
              "ab\n");
}

TEST(RichText, aTextThatIsGivenTwiceIsReadOnce) {
    EXPECT_EQ(textOf("{\\upr{a?}{\\*\\ud{a\\u8212 ?}}}"), "a—");
}

TEST(RichText, aCharacterByNumberHasAFallback) {
    EXPECT_EQ(textOf("\\u8212?a\\u8212 ?b\\u8212\\'97c"), "—a—b—c");
    EXPECT_EQ(textOf("\\uc0\\u8212 ?\\uc2\\u8212 ??a{\\uc3\\u8212 ???}\\u8212 ??b"), "—?—a——b");
    EXPECT_EQ(textOf("\\uc2\\u8212\\'81\\'5ca\\uc1\\u8212\\emdash b\\u8212\\~c"), "—a—b—c");
    EXPECT_EQ(textOf("\\uc4\\u8212\\bin3 {}}\\{\\b cd"), "—d");
}

TEST(RichText, aFallbackEndsWithItsGroupAndSwallowsNothingElse) {
    EXPECT_EQ(textOf("{\\uc5\\u8212}abc"), "—abc");
    EXPECT_EQ(textOf("\\uc5\\u8212 a{b}"), "—b");
    EXPECT_EQ(textOf("\\u8212\\par a\\u8212\\u8212?b"), "—\na——b");
}

TEST(RichText, aCharacterByNumberMayBeNegativeOrAPair) {
    EXPECT_EQ(textOf("\\u-4 ?\\u65532 ?"), "\uFFFC\uFFFC");
    EXPECT_EQ(textOf("\\u-10179?\\u-8704?\\u55357?\\u56832?\\u128512?"), "😀😀😀");
    EXPECT_EQ(textOf("\\u-10179?a\\u-8704?"), "\uFFFDa\uFFFD");
}

TEST(RichText, whereANumberSaysNothingTheFallbackDoes) {
    EXPECT_EQ(textOf("\\u-3913\\'b7\\u61607 *\\u9999999999a\\u-99999b\\u0 c\\u d"), "·*abcd");
}

TEST(RichText, bytesAreOfTheDocumentsCodePage) {
    EXPECT_EQ(textOf("\\'e9\\'80\\'93"), "é€“");
    EXPECT_EQ(textOf("\\mac\\'8e"), "é");
    EXPECT_EQ(textOf("\\pc\\'82"), "é");
    EXPECT_EQ(textOf("\\pca\\'b5"), "Á");
    EXPECT_EQ(textOf("\\ansi\\ansicpg1251\\'cf\\'f0"), "Пр");
    EXPECT_EQ(textOf("\\ansicpg1250\\'b9\xB9"), "ąą");
    EXPECT_EQ(textOf("\\ansicpg65001\\'c3\\'a9\xC3\xA9"), "éé");
    for (const char *unknown : {"0", "1", "1200", "37", "-5"})
        EXPECT_EQ(textOf(QByteArray("\\ansicpg") + unknown + "\\'e9a"), "éa") << unknown;
}

TEST(RichText, aFontMayHaveACodePageOfItsOwn) {
    const QByteArray fonts =
        "\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset204{\\*\\falt B};}"
        "{\\f2\\fcharset161\\cpg1251 C;}{\\f3\\fcharset1 D;}{\\f4\\fcharset2 Symbol;}}";
    EXPECT_EQ(textOf(fonts + "\\'e9\\f1\\'e9\\f2\\'e9\\f3\\'e9\\f4\\'b7\\f9\\'e9"), "éййé·é");
    EXPECT_EQ(textOf(fonts + "\\'e9{\\f1\\'e9}\\'e9\\f1\\'e9\\plain\\'e9"), "éйéйé");
    EXPECT_EQ(textOf("\\deff1{\\fonttbl\\f0\\fcharset0 A;\\f1\\fcharset238 B;}\\'b9\\f0\\'b9"), "ą¹");
}

TEST(RichText, everyCharacterSetOfTheFormatIsKnown) {
    const QList<std::pair<int, QByteArray>> samples{
        {77, "\\'8e"},  {128, "\\'82\\'a0"}, {129, "\\'b0\\'a1"}, {134, "\\'c4\\'e3"}, {136, "\\'a7\\'41"},
        {161, "\\'e1"}, {162, "\\'f0"},      {163, "\\'fe"},      {177, "\\'e0"},      {178, "\\'c7"},
        {186, "\\'e0"}, {204, "\\'e0"},      {222, "\\'a1"},      {238, "\\'b9"},
    };
    const QStringList expected{u"é"_s, u"あ"_s, u"가"_s, u"你"_s, u"你"_s, u"α"_s, u"ğ"_s,
                               u"₫"_s, u"א"_s,  u"ا"_s,  u"ą"_s,  u"а"_s,  u"ก"_s, u"ą"_s};
    for (qsizetype place = 0; place < samples.size(); ++place) {
        const auto &[characterSet, bytes] = samples.at(place);
        EXPECT_EQ(
            textOf("{\\fonttbl{\\f0\\fcharset" + QByteArray::number(characterSet) + " A;}}\\f0" + bytes),
            expected.at(place).toStdString())
            << characterSet;
    }
}

TEST(RichText, aCharacterOfTwoBytesMayBeWrittenInAnyWay) {
    const QByteArray japanese = "\\ansicpg932 ";
    EXPECT_EQ(textOf(japanese + "\\'83\\'41\\'83A\\'83\n\\'41\x83\x41\x83\\'41"), "アアアアア");
    EXPECT_EQ(textOf(japanese + "\\'95\\'5c\\'95\\\\{\\'83}{\\'41}"), "表表ア");
    EXPECT_EQ(textOf(japanese + "\\'83\\par\\'83\\u8212?A"), "\n—A");
}

TEST(RichText, whatIsNoCodeOfAByteGivesNothing) {
    EXPECT_EQ(textOf(" a\\'zzb\\'4zc\\' 1d\\'+1e\\'0xf"), "azzb4zc 1d+1e0xf");
}

TEST(RichText, dataArePassedOver) {
    EXPECT_EQ(textOf("{\\pict\\bin5 }}}\\{}a\\bin0 b\\bin-3 c\\bin d"), "abcd");
    EXPECT_EQ(textOf(" a\\bin99999999999 bcd"), "a");
}

TEST(RichText, badNestingIsReadAsFarAsItGoes) {
    EXPECT_EQ(textOf(" a}b"), "a");
    EXPECT_EQ(textOf(" a{b{c"), "abc");
    EXPECT_EQ(textOf("{}{{}}{\\*}{\\*a}{\\*{b}}c"), "abc");
}

TEST(RichText, aDocumentOfEveryKindOfPieceIsRead) {
    EXPECT_EQ(plainTextOfRichText(sample), sampleText);
}

TEST(RichText, aDocumentThatIsCutOffGivesTheBeginningOfItsText) {
    for (qsizetype size = 5; size < sample.size(); ++size) {
        const QString part = plainTextOfRichText(sample.first(size)).value();
        EXPECT_TRUE(isTextOfBeginning(part, sampleText)) << size << ": " << part.toStdString();
    }
}

TEST(RichText, generatedDocumentsGiveTheirText) {
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        const GeneratedBody generated(seed);
        ASSERT_EQ(textOf(generated.body), generated.text.toStdString()) << generated.body.toStdString();
    }
}

TEST(RichText, anyDepthAndAnyLengthIsRead) {
    constexpr qsizetype size = 2'000'000;
    for (const char *unit : {"{", "{\\f1", "{\\*\\x", "{\\footnote", "{a\\cell\\row", "\\'", "\\'82",
                             "\\u-10179", "\\fcharset1\\f2", "\\bin1", "\\", "\\uc9999\\u1", "{\\'82\\u9 "})
        EXPECT_LE(plainTextOfRichText("{\\rtf1" + QByteArray(unit).repeated(size / qstrlen(unit)))->size(),
                  size);
    const QByteArray deep = QByteArray("{").repeated(size) + 'a' + QByteArray("}").repeated(size) + 'b';
    EXPECT_EQ(textOf(deep), "ab");
}
