#include "records/Characters.h"

#include <QFile>
#include <QList>
#include <QTextBoundaryFinder>

#include <random>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Where the characters of a text begin, as Qt finds them.
QList<qsizetype> beginningsByQt(const QString &text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    QList<qsizetype> beginnings;
    for (qsizetype at = 0; at >= 0 && at < text.size(); at = finder.toNextBoundary())
        beginnings.append(at);
    return beginnings;
}

QString textOf(char32_t point) {
    return QString::fromUcs4(&point, 1);
}

std::string codePointsOf(const QString &text) {
    std::string points;
    for (const uint point : text.toUcs4())
        points += QString::number(point, 16).toStdString() + ' ';
    return points;
}

/// Scripts for which Qt goes beyond the Unicode rules: those of India, Thai, Tibetan, Burmese, Khmer.
bool isTailoredByQt(char32_t point) {
    return (point >= 0x900 && point < 0x10A0) || (point >= 0x1780 && point < 0x1800) ||
           (point >= 0x19E0 && point < 0x1A00) || (point >= 0xA8E0 && point < 0xA900) ||
           (point >= 0xA9E0 && point < 0xAA00) || (point >= 0xAA60 && point < 0xAA80) ||
           (point >= 0x111E0 && point < 0x11200) || (point >= 0x11FC0 && point < 0x12000);
}

/// Qt 6.4 tears a flag apart that directly follows a pictograph.
bool isMisreadByQt(const QString &text) {
    static const QList<char32_t> pictographs{0xA9, 0x2764, 0x1F44D, 0x1F467, 0x1F468, 0x1F469, 0x1F600};
    char32_t previous = 0;
    for (const uint point : text.toUcs4()) {
        if (point >= 0x1F1E6 && point <= 0x1F1FF && pictographs.contains(previous))
            return true;
        previous = point;
    }
    return false;
}

using Pool = QList<QString>;

Pool range(char32_t first, char32_t last) {
    Pool pool;
    for (char32_t point = first; point <= last; ++point)
        pool.append(textOf(point));
    return pool;
}

const QList<Pool> pools{
    range(0x20, 0x7E),
    range(0x20, 0x7E),
    {u"\r\n"_s, u"\r"_s, u"\n"_s, u"\t"_s, u"\u0085"_s, u"\u2028"_s, u"\u200b"_s},
    range(0x300, 0x36F),
    range(0x600, 0x605) + Pool{u"\U000110BD"_s},
    range(0x1F1E6, 0x1F1FF),
    {u"\u200d"_s, u"\ufe0f"_s, u"\U0001F3FD"_s, u"\u20e3"_s},
    {u"\u00a9"_s, u"\u2764"_s, u"\U0001F468"_s, u"\U0001F469"_s, u"\U0001F600"_s},
    {u"\U0001F468\u200d\U0001F469\u200d\U0001F467"_s, u"\U0001F44D\U0001F3FD"_s, u"\u2764\ufe0f"_s},
    range(0x1100, 0x1112) + range(0x1161, 0x1175) + range(0x11A8, 0x11C2) + range(0xAC00, 0xAC1D),
    range(0x410, 0x44F) + range(0x5D0, 0x5EA) + range(0x620, 0x655),
    range(0x4E00, 0x4E20) + range(0x3041, 0x309A) + range(0x20000, 0x20010),
    {QString(QChar(0xD800)), QString(QChar(0xDBFF)), QString(QChar(0xDC00)), QString(QChar(0xDFFF))},
};

QString generatedText(std::mt19937 &random, unsigned longest) {
    const auto pick = [&random](const auto &list) {
        return list[static_cast<qsizetype>(random() % list.size())];
    };
    QList<Pool> chosen;
    for (auto count = 1 + random() % 4; count > 0; --count)
        chosen.append(pick(pools));
    QString text;
    for (auto count = random() % longest; count > 0; --count)
        text += pick(pick(chosen));
    return text;
}

void expectAsByQt(const QString &text) {
    const QList<qsizetype> beginnings = beginningsByQt(text);
    ASSERT_EQ(characterCount(text), beginnings.size()) << codePointsOf(text);
    for (qsizetype count = 0; count <= beginnings.size(); ++count) {
        const qsizetype end = count < beginnings.size() ? beginnings[count] : text.size();
        ASSERT_EQ(firstCharacters(text, count).size(), end) << count << " of " << codePointsOf(text);
    }
}

} // namespace

TEST(Characters, asciiCountsByTheLetter) {
    EXPECT_EQ(characterCount(u""), 0);
    EXPECT_EQ(characterCount(QStringView()), 0);
    EXPECT_EQ(characterCount(u"a"), 1);
    EXPECT_EQ(characterCount(u"hello, world\t\n"), 14);
    EXPECT_EQ(characterCount(QString(1000003, u'x')), 1000003);
}

TEST(Characters, aCarriageReturnAndItsLineFeedAreOne) {
    EXPECT_EQ(characterCount(u"\r\n"), 1);
    EXPECT_EQ(characterCount(u"a\r\nb"), 3);
    EXPECT_EQ(characterCount(u"\n\r"), 2);
    EXPECT_EQ(characterCount(u"\r\r\n\n"), 3);
    EXPECT_EQ(characterCount(u"é\r\né"), 3);
    for (qsizetype before = 0; before < 70; ++before)
        ASSERT_EQ(characterCount(QString(before, u'x') + u"\r\n"_s), before + 1);
}

TEST(Characters, aLetterWithItsAccentsIsOne) {
    EXPECT_EQ(characterCount(u"e\u0301"), 1);
    EXPECT_EQ(characterCount(u"abce\u0301\u0302d"), 5);
    EXPECT_EQ(characterCount(u"\u0301"), 1);
    EXPECT_EQ(characterCount(u"\r\n\u0301"), 2);
}

TEST(Characters, aFlagIsOneWhereverItStands) {
    const QString flag = u"\U0001F1E9\U0001F1EA"_s;
    EXPECT_EQ(characterCount(flag), 1);
    EXPECT_EQ(characterCount(flag + flag), 2);
    EXPECT_EQ(characterCount(flag + u"\U0001F1E9"_s), 2);
    EXPECT_EQ(characterCount(u"a"_s + flag + u"b"_s), 3);
    EXPECT_EQ(characterCount(u"\U0001F468"_s + flag), 2);
    EXPECT_EQ(characterCount(u"\u2764"_s + flag + flag), 3);
}

TEST(Characters, aFamilyJoinedIntoOnePictureIsOne) {
    EXPECT_EQ(characterCount(u"\U0001F468\u200d\U0001F469\u200d\U0001F467"), 1);
    EXPECT_EQ(characterCount(u"\U0001F44D\U0001F3FD"), 1);
    EXPECT_EQ(characterCount(u"\u2764\ufe0f\u200d\U0001F525"), 1);
    EXPECT_EQ(characterCount(u"a\u200d\U0001F469"), 2);
    EXPECT_EQ(characterCount(u"\U0001F468\u200d\u200d\U0001F469"), 2);
    EXPECT_EQ(characterCount(u"1\ufe0f\u20e3"), 1);
}

TEST(Characters, aSyllableOfHangulIsOneComposedOrNot) {
    EXPECT_EQ(characterCount(u"\u1100\u1161\u11a8"), 1);
    EXPECT_EQ(characterCount(u"\uac00\u11a8"), 1);
    EXPECT_EQ(characterCount(u"\uac01\u1161"), 2);
    EXPECT_EQ(characterCount(u"한국어"), 3);
}

TEST(Characters, aPrependedSignBelongsToWhatFollows) {
    EXPECT_EQ(characterCount(u"\u0600a"), 1);
    EXPECT_EQ(characterCount(u"\u0600ab"), 2);
    EXPECT_EQ(characterCount(u"\u0600\r\n"), 2);
}

TEST(Characters, generatedTextsCountAsByQtsFinder) {
    std::mt19937 random(11);
    int compared = 0;
    while (compared < 20000) {
        const QString text = generatedText(random, 12);
        if (isMisreadByQt(text))
            continue;
        expectAsByQt(text);
        ASSERT_FALSE(HasFatalFailure());
        ++compared;
    }
}

TEST(Characters, longRunsOfAsciiAmongOthersCountAsByQtsFinder) {
    std::mt19937 random(12);
    int compared = 0;
    while (compared < 300) {
        QString text;
        for (int part = 0; part < 5; ++part)
            text += QString(static_cast<qsizetype>(random() % 100), u'x') + generatedText(random, 6);
        if (isMisreadByQt(text))
            continue;
        expectAsByQt(text);
        ASSERT_FALSE(HasFatalFailure());
        ++compared;
    }
}

TEST(Characters, everyCodePointJoinsItsNeighboursAsByQtsFinder) {
    const QStringList neighbours{u"a"_s, u"\u0301"_s, u"\u0600"_s, u"\u1161"_s, u"\u11a8"_s, u"\U0001F1E6"_s};
    const auto check = [&neighbours](char32_t point) {
        for (const QString &each : neighbours) {
            for (const QString &text : {textOf(point) + each, each + textOf(point)})
                ASSERT_EQ(characterCount(text), beginningsByQt(text).size()) << codePointsOf(text);
        }
    };
    for (char32_t point = 0; point < 0xE1000; point = point == 0x1FFFF ? 0xE0000 : point + 1) {
        if (!isTailoredByQt(point) && !QChar::isSurrogate(point))
            check(point);
        ASSERT_FALSE(HasFatalFailure());
    }
}

TEST(Characters, difficultTextsOfManyScriptsCountAsTheirCorpusTells) {
    QFile corpus(QStringLiteral(CHARACTERS_CORPUS));
    ASSERT_TRUE(corpus.open(QIODevice::ReadOnly));
    int lines = 0;
    while (!corpus.atEnd()) {
        const QList<QByteArray> sides = corpus.readLine().trimmed().split(':');
        QString text;
        for (const QByteArray &point : sides.value(1).split(' '))
            text += point.isEmpty() ? QString() : textOf(point.toUInt(nullptr, 16));
        EXPECT_EQ(characterCount(text), sides.value(0).toInt()) << sides.value(1).toStdString();
        ++lines;
    }
    EXPECT_EQ(lines, 2000);
}

TEST(Characters, theFirstCharactersEndBetweenTwo) {
    EXPECT_EQ(firstCharacters(u"abc", 2), u"ab"_s);
    EXPECT_EQ(firstCharacters(u"abc", 3), u"abc"_s);
    EXPECT_EQ(firstCharacters(u"abc", 4), u"abc"_s);
    EXPECT_EQ(firstCharacters(u"ae\u0301\u0302b", 2), u"ae\u0301\u0302"_s);
    EXPECT_EQ(firstCharacters(u"a\r\nb", 2), u"a\r\n"_s);
    EXPECT_EQ(firstCharacters(u"\U0001F1E9\U0001F1EA\U0001F1E9\U0001F1EA", 1), u"\U0001F1E9\U0001F1EA"_s);
}

TEST(Characters, noCharactersOrFewerThanNoneAreAnEmptyText) {
    EXPECT_EQ(firstCharacters(u"abc", 0), u""_s);
    EXPECT_EQ(firstCharacters(u"abc", -1), u""_s);
    EXPECT_EQ(firstCharacters(u"", -1), u""_s);
    EXPECT_EQ(firstCharacters(u"", 5), u""_s);
}
