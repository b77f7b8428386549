#include "pages/PageStore.h"

#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/Samples.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using Samples::moment;

namespace {

PageDocument page(const QUuid &id, const QString &title, qint64 seconds = 0) {
    return {id, title, u"# "_s + title, moment(), moment(seconds)};
}

class PageStoreTest : public ::testing::Test {
protected:
    PageStoreTest() { ensurePagesFolder(); }

    static QString place(const QString &name) { return pagesFolder() + u'/' + name; }

    /// Puts bytes into the folder under a name.
    static void put(const QString &name, const QByteArray &bytes) { Samples::putFile(place(name), bytes); }

    static QStringList filesOnDisk() {
        return QDir(pagesFolder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    static QStringList titles() {
        QStringList titles;
        for (const PageSummary &summary : listPages())
            titles.append(summary.title);
        return titles;
    }

    const TemporaryApplicationFolder m_folder;
};

} // namespace

TEST_F(PageStoreTest, aSavedPageIsLoadedAsItWas) {
    const PageDocument saved{Samples::firstId, u"Grüße, 世界 🌍"_s, u"# \"T\"\n\\ \t\u2028"_s, moment(1),
                             moment(2)};
    savePage(saved);
    EXPECT_EQ(loadPage(Samples::firstId), saved);
    EXPECT_EQ(listPages(), (QList<PageSummary>{{saved.id, saved.title, saved.updatedAt}}));
    EXPECT_EQ(filesOnDisk(), QStringList{u"5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11.json"_s});
}

TEST_F(PageStoreTest, theFileHoldsFiveKeysInOrder) {
    savePage(page(Samples::firstId, u"Tea"_s, 60));
    EXPECT_EQ(Samples::contentOf(pageFile(Samples::firstId)), R"({
    "createdAt": "2026-11-15T13:18:58Z",
    "id": "5F0C1B9E-6F0A-4A53-9D3E-0C6A8F1F2B11",
    "markdown": "# Tea",
    "title": "Tea",
    "updatedAt": "2026-11-15T13:19:58Z"
}
)");
}

TEST_F(PageStoreTest, aSaveMakesTheFolderAndReplacesAPageOfTheSameId) {
    QDir(pagesFolder()).removeRecursively();
    savePage(page(Samples::firstId, u"old"_s));
    savePage(page(Samples::firstId, u"new"_s));
    savePage(page(Samples::secondId, u"other"_s, -1));
    EXPECT_EQ(titles(), (QStringList{u"new"_s, u"other"_s}));
}

TEST_F(PageStoreTest, withoutAFolderThereAreNoPages) {
    QDir(pagesFolder()).removeRecursively();
    EXPECT_EQ(listPages(), QList<PageSummary>());
    EXPECT_EQ(loadPage(Samples::firstId), std::nullopt);
    deletePage(Samples::firstId);
    EXPECT_FALSE(QFileInfo::exists(pagesFolder()));
}

TEST_F(PageStoreTest, theNewestPageIsFirst) {
    for (const int seconds : {10, 30, 20})
        savePage(page(QUuid::createUuid(), QString::number(seconds), seconds));
    EXPECT_EQ(titles(), (QStringList{u"30"_s, u"20"_s, u"10"_s}));
}

TEST_F(PageStoreTest, pagesOfTheSameDateKeepTheOrderOfTheFolder) {
    for (int index = 0; index < 50; ++index)
        savePage(page(QUuid::createUuid(), QString::number(index)));
    QStringList expected;
    QDirIterator entries(pagesFolder(), QDir::Files);
    while (entries.hasNext())
        expected.append(decodeRecord<PageDocument>(Samples::contentOf(entries.next())).title);
    EXPECT_EQ(titles(), expected);
}

TEST_F(PageStoreTest, whatIsNoPageIsPassedOverAndStays) {
    const QByteArray good = encodeRecord(page(Samples::firstId, u"good"_s));
    put(u"good.json"_s, good);
    for (const QString &name : {u"notes.txt"_s, u"x.JSON"_s, u".json"_s, u"json"_s, u"x.json.bak"_s})
        put(name, good);
    put(u"broken.json"_s, good.chopped(3));
    put(u"empty.json"_s, {});
    put(u"list.json"_s, "[]");
    put(u"undated.json"_s, QByteArray(good).replace("updatedAt", "updated"));
    put(u"otherDate.json"_s, QByteArray(good).replace("2026-11-15T", "15 November 2026 "));
    put(u"otherId.json"_s, QByteArray(good).replace("5F0C1B9E", "XXXXXXXX"));
    put(u"number.json"_s, QByteArray(good).replace("\"good\"", "7"));
    const QStringList before = filesOnDisk();
    EXPECT_EQ(titles(), QStringList{u"good"_s});
    EXPECT_EQ(filesOnDisk(), before);
}

TEST_F(PageStoreTest, hiddenAndForeignlyNamedPagesAreListed) {
    put(u".hidden.json"_s, encodeRecord(page(Samples::firstId, u"hidden"_s)));
    put(u"index.json"_s, encodeRecord(page(Samples::secondId, u"index"_s, -1)));
    EXPECT_EQ(titles(), (QStringList{u"hidden"_s, u"index"_s}));
}

TEST_F(PageStoreTest, aPageUnderAnotherNameIsListedButNeitherOpenedNorDeleted) {
    put(u"other.json"_s, encodeRecord(page(Samples::firstId, u"other"_s)));
    EXPECT_EQ(listPages().size(), 1);
    EXPECT_EQ(loadPage(Samples::firstId), std::nullopt);
    deletePage(Samples::firstId);
    EXPECT_EQ(listPages().size(), 1);
}

TEST_F(PageStoreTest, aDeletedPageIsGoneAndADamagedOneToo) {
    savePage(page(Samples::firstId, u"one"_s));
    savePage(page(Samples::secondId, u"two"_s));
    deletePage(Samples::firstId);
    deletePage(Samples::firstId);
    EXPECT_EQ(titles(), QStringList{u"two"_s});
    Samples::putFile(pageFile(Samples::secondId), "oops");
    EXPECT_EQ(loadPage(Samples::secondId), std::nullopt);
    deletePage(Samples::secondId);
    EXPECT_EQ(filesOnDisk(), QStringList());
}

TEST_F(PageStoreTest, whatIsNoFileNeitherHangsNorShows) {
    QDir(pagesFolder()).mkdir(u"folder.json"_s);
    QFile::link(place(u"nowhere"_s), place(u"dangling.json"_s));
    QFile::link(place(u"loop.json"_s), place(u"loop.json"_s));
    QFile::link(u"/dev/zero"_s, place(u"endless.json"_s));
    ASSERT_EQ(::mkfifo(QFile::encodeName(place(u"pipe.json"_s)).constData(), 0600), 0);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pageFile(Samples::firstId)).constData(), 0600), 0);
    EXPECT_EQ(filesOnDisk().size(), 6);
    EXPECT_EQ(listPages(), QList<PageSummary>());
    EXPECT_EQ(loadPage(Samples::firstId), std::nullopt);
}

TEST_F(PageStoreTest, aFileBeyondAllMeasureIsReadNoFurtherThanAPageCanReach) {
    QFile file(pageFile(Samples::firstId));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(encodeRecord(page(Samples::firstId, u"huge"_s)).chopped(2));
    ASSERT_TRUE(file.resize(qint64(8) << 30));
    file.close();
    EXPECT_EQ(listPages(), QList<PageSummary>());
    EXPECT_EQ(loadPage(Samples::firstId), std::nullopt);
}

TEST_F(PageStoreTest, aDeeplyNestedFileIsNoPage) {
    put(u"deep.json"_s, QByteArray(5'000'000, '['));
    put(u"deepKey.json"_s, QByteArray("{\"a\":").repeated(1'000'000));
    EXPECT_EQ(listPages(), QList<PageSummary>());
}

TEST_F(PageStoreTest, aSaveThatFailsSaysNothing) {
    QDir(pagesFolder()).removeRecursively();
    Samples::putFile(pagesFolder(), "a file in the folder's place");
    savePage(page(Samples::firstId, u"lost"_s));
    EXPECT_EQ(Samples::contentOf(pagesFolder()), "a file in the folder's place");
    PageDocument undated = page(Samples::firstId, u"undated"_s);
    undated.updatedAt = {};
    savePage(undated);
    EXPECT_EQ(listPages(), QList<PageSummary>());
}
