#include "package/Command.h"
#include "package/Packages.h"
#include "platform/AtomicFile.h"

#include <QDirIterator>
#include <QImage>
#include <QRegularExpression>
#include <QSet>
#include <QtEndian>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace {

/// What the sources ask the command line and the environment for: the names of options, and whole variables.
QSet<QString> wordsOfSources() {
    static const QRegularExpression option(u"(?:optionValue|overridden)\\(u\"([\\w-]+)\""_s);
    static const QRegularExpression variable(u"u?\"(OSTRELIN_[A-Z_]+)\""_s);
    QSet<QString> words;
    QDirIterator files(QStringLiteral(SOURCE_TREE "/src"), {u"*.cpp"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString text = QString::fromUtf8(readFile(files.next()).value());
        for (const QRegularExpression &form : {option, variable}) {
            for (const QRegularExpressionMatch &match : form.globalMatch(text))
                words.insert(match.captured(1));
        }
    }
    words.remove(u"OSTRELIN_"_s);
    return words;
}

} // namespace

TEST(DesktopFile, isValid) {
    const QString file = QStringLiteral(SOURCE_TREE "/resources/package/com.quennarbel.ostrelin.desktop");
    EXPECT_EQ(outputOf(u"desktop-file-validate"_s, {file}), QByteArray());
}

TEST(Metainfo, isValid) {
    outputOf(u"appstreamcli"_s, {u"validate"_s, u"--no-net"_s, u"--strict"_s, u"--pedantic"_s,
                                 madeFile(u"com.quennarbel.ostrelin.metainfo.xml"_s)});
}

TEST(ManualPage, isWellFormed) {
    EXPECT_EQ(outputOf(u"mandoc"_s, {u"-T"_s, u"lint"_s, u"-W"_s, u"warning"_s, madeFile(u"ostrelin.1"_s)}),
              QByteArray());
}

TEST(ManualPage, tellsOfEveryOptionAndVariable) {
    const QSet<QString> words = wordsOfSources();
    EXPECT_TRUE(words.contains(u"gpuBudget"_s));
    EXPECT_TRUE(words.contains(u"OSTRELIN_MODEL_PATH"_s));
    const QString page = QString::fromUtf8(readFile(madeFile(u"ostrelin.1"_s)).value());
    for (const QString &word : words) {
        const QString line = word.startsWith(u"OSTRELIN_"_s) ? u".It Ev "_s + word : u".It Fl -"_s + word;
        EXPECT_TRUE(page.contains(line)) << word.toStdString();
    }
}

TEST(Icon, isThereInTheSizesOfTheTheme) {
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256, 512}) {
        const QImage picture(madeFile(u"%1.png"_s.arg(size)));
        EXPECT_EQ(picture.size(), QSize(size, size));
        EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0) << "its corners are round";
        EXPECT_EQ(picture.pixelColor(size / 2, size / 4).alpha(), 255);
    }
}

// The layout of an icns file: a type and a length, which counts itself, before the whole and before each
// entry.
TEST(Icon, ofTheBundleHasEverySizeAtBothScales) {
    const QByteArray file = readFile(madeFile(u"Ostrelin.icns"_s)).value();
    const auto length = [&](qsizetype place) {
        return qFromBigEndian<quint32>(file.constData() + place + 4);
    };
    ASSERT_TRUE(file.startsWith("icns"));
    ASSERT_EQ(length(0), file.size());
    QMap<QByteArray, int> sizes;
    for (qsizetype place = 8; place < file.size(); place += length(place)) {
        ASSERT_GT(length(place), 8u);
        const QImage picture = QImage::fromData(file.mid(place + 8, length(place) - 8), "PNG");
        EXPECT_EQ(picture.width(), picture.height());
        sizes.insert(file.mid(place, 4), picture.width());
    }
    EXPECT_EQ(sizes, (QMap<QByteArray, int>{{"icp4", 16},
                                            {"ic11", 32},
                                            {"icp5", 32},
                                            {"ic12", 64},
                                            {"ic07", 128},
                                            {"ic13", 256},
                                            {"ic08", 256},
                                            {"ic14", 512},
                                            {"ic09", 512},
                                            {"ic10", 1024}}));
}
