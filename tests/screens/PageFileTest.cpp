#include "screens/PageFile.h"

#include "screens/Screen.h"
#include "support/Await.h"

#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

const PageDocument document{QUuid::createUuid(), u"a/b:c"_s, u"text"_s, QDateTime::currentDateTimeUtc(),
                            QDateTime::currentDateTimeUtc()};

class SavePageAs : public ::testing::Test {
protected:
    SavePageAs() { window.show(); }

    /// The dialog that asks for the place; null if there is none.
    QFileDialog *dialog() const { return window.findChild<QFileDialog *>(); }

    /// Saves a page with that title as a PDF.
    void save(const QString &title) {
        PageDocument page = document;
        page.title = title;
        savePageAs(&window, page, PageFileKind::pdf, 640);
    }

    /// What the person does with the dialog: goes to the folder, and keeps the name.
    void acceptIn(const QString &folderPath) {
        const QString name = dialog()->selectedFiles().value(0).section(u'/', -1);
        dialog()->setDirectory(folderPath);
        dialog()->selectFile(name);
        static_cast<QDialog *>(dialog())->accept();
        EXPECT_TRUE(eventually([this] { return !dialog(); }));
    }

    QByteArray written(const QString &name) const {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    QWidget window;
};

} // namespace

TEST(PageFileName, itIsTheTitleWithoutSignsOfPaths) {
    EXPECT_EQ(pageFileName(u"a/b:c"_s, PageFileKind::pdf), u"a-b-c.pdf"_s);
    EXPECT_EQ(pageFileName(u"Tea"_s, PageFileKind::png), u"Tea.png"_s);
    EXPECT_EQ(pageFileName(QString(), PageFileKind::pdf), u"Page.pdf"_s);
    EXPECT_EQ(pageFileName(u"//"_s, PageFileKind::pdf), u"--.pdf"_s);
}

TEST(PageFileName, itIsNoLongerThanAFileSystemTakes) {
    const QString family = u"👨‍👩‍👧‍👦"_s;
    const QString syllable = u"कि"_s;
    EXPECT_EQ(pageFileName(family.repeated(60), PageFileKind::pdf), family.repeated(251 / 25) + u".pdf"_s);
    EXPECT_EQ(pageFileName(syllable.repeated(60), PageFileKind::png), syllable.repeated(251 / 6) + u".png"_s);
    EXPECT_EQ(pageFileName(QString(251, u'a'), PageFileKind::pdf), QString(251, u'a') + u".pdf"_s);
    EXPECT_EQ(pageFileName(QString(300'000, u'a'), PageFileKind::pdf), QString(251, u'a') + u".pdf"_s);
    EXPECT_EQ(pageFileName(u"e"_s + QString(300, QChar(0x301)), PageFileKind::pdf), u"Page.pdf"_s)
        << "not even one character fits";
}

TEST_F(SavePageAs, quotationMarksDoNotSplitTheName) {
    for (const auto &[title, name] :
         {std::pair(u"The \"best\" tea"_s, u"The 'best' tea.pdf"_s), std::pair(u"\"\""_s, u"''.pdf"_s)}) {
        save(title);
        EXPECT_EQ(dialog()->selectedFiles().size(), 1);
        acceptIn(folder.path());
        EXPECT_TRUE(written(name).startsWith("%PDF")) << title.toStdString();
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(SavePageAs, aTitleThatIsTooLongForANameIsWrittenAllTheSame) {
    const QString title = u"कि"_s.repeated(60);
    save(title);
    acceptIn(folder.path());
    EXPECT_TRUE(written(pageFileName(title, PageFileKind::pdf)).startsWith("%PDF"));
}

TEST_F(SavePageAs, itBeginsWhereTheLastFileWent) {
    savePageAs(&window, document, PageFileKind::pdf, 640);
    acceptIn(folder.path());
    savePageAs(&window, document, PageFileKind::pdf, 640);
    EXPECT_EQ(dialog()->directory(), QDir(folder.path()));
}

TEST_F(SavePageAs, itBeginsWithTheDocumentsAndNeverInTheWorkingFolder) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QDir wanted(QDir(documents).exists() ? documents : QDir::homePath());
    ASSERT_NE(wanted, QDir::current());
    // As at the start of the program, whatever dialogs there were before.
    QFileDialog().setDirectory(QDir::current());
    savePageAs(&window, document, PageFileKind::pdf, 640);
    EXPECT_EQ(dialog()->directory(), wanted);
}

TEST_F(SavePageAs, thePersonIsAskedForThePlaceOfAFileWithThatName) {
    savePageAs(&window, document, PageFileKind::pdf, 640);
    ASSERT_TRUE(dialog());
    EXPECT_EQ(dialog()->acceptMode(), QFileDialog::AcceptSave);
    EXPECT_TRUE(dialog()->isModal());
    EXPECT_TRUE(dialog()->selectedFiles().value(0).endsWith(u"/a-b-c.pdf"_s));
    EXPECT_EQ(dialog()->nameFilters(), QStringList{u"PDF (*.pdf)"_s});
}

TEST_F(SavePageAs, aPdfIsWritten) {
    savePageAs(&window, document, PageFileKind::pdf, 640);
    acceptIn(folder.path());
    EXPECT_TRUE(written(u"a-b-c.pdf"_s).startsWith("%PDF"));
    EXPECT_TRUE(written(u"a-b-c.pdf"_s).contains("/MediaBox[0 0 640 "));
}

TEST_F(SavePageAs, anImageIsWrittenTwiceAsLarge) {
    savePageAs(&window, document, PageFileKind::png, 680);
    acceptIn(folder.path());
    EXPECT_EQ(QImage::fromData(written(u"a-b-c.png"_s), "png").width(), 1360);
}

TEST_F(SavePageAs, aFileThatStandsIsWrittenOver) {
    QFile file(folder.filePath(u"a-b-c.pdf"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(QByteArray(1'000'000, 'x')) > 0);
    file.close();
    savePageAs(&window, document, PageFileKind::pdf, 640);
    Q_EMIT dialog()->fileSelected(file.fileName());
    EXPECT_TRUE(written(u"a-b-c.pdf"_s).endsWith("%%EOF\n"));
}

TEST_F(SavePageAs, aDeclinedDialogWritesNothing) {
    savePageAs(&window, document, PageFileKind::pdf, 640);
    dialog()->reject();
    EXPECT_TRUE(eventually([this] { return !dialog(); }));
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(SavePageAs, aPlaceThatCannotBeWrittenSaysNothing) {
    savePageAs(&window, document, PageFileKind::pdf, 640);
    Q_EMIT dialog()->fileSelected(folder.filePath(u"missing/a.pdf"_s));
    Q_EMIT dialog()->fileSelected(folder.path());
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}
