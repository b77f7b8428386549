#include "conversation/Attachments.h"

#include "records/Characters.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

const QString marker = u"\n\n…(truncated)"_s;

class AttachmentsTest : public ::testing::Test {
protected:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QString fileOf(const QByteArray &bytes, const QString &name = u"notes.txt"_s) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return file.fileName();
    }

    /// The text of a file of those bytes; "nothing" if it makes no attachment.
    QString textOf(const QByteArray &bytes, const QString &name = u"notes.txt"_s) const {
        const std::optional<Attachment> attachment = importAttachment(fileOf(bytes, name));
        return attachment ? attachment->text : u"nothing"_s;
    }

    const QTemporaryDir m_folder;
};

} // namespace

TEST_F(AttachmentsTest, aFileIsItsNameAndItsText) {
    const QString file = fileOf("one\ntwo", u"Ein Brief – 1.v2.TXT"_s);
    const std::optional<Attachment> attachment = importAttachment(file);
    ASSERT_TRUE(attachment);
    EXPECT_EQ(attachment->name, u"Ein Brief – 1.v2.TXT"_s);
    EXPECT_EQ(attachment->text, u"one\ntwo"_s);
    EXPECT_FALSE(attachment->id.isNull());
    EXPECT_NE(attachment->id, importAttachment(file)->id);
}

TEST_F(AttachmentsTest, aNameTellsAFileOfText) {
    for (const char *suffix :
         {"txt", "rtf", "json", "jsonl", "ipynb", "xml",  "svg", "xhtml", "xsl", "xsd", "plist", "html",
          "csv", "tsv", "md",   "yaml",  "cpp",   "dart", "vb",  "py",    "csh", "ksh", "YML"})
        EXPECT_TRUE(isAttachable(path(u"any thing."_s + QLatin1StringView(suffix)))) << suffix;
    for (const char *name : {"a.png", "a.pdf", "a.docx", "a.txt.gz", "atxt", ".txt"})
        EXPECT_FALSE(isAttachable(path(QString::fromLatin1(name)))) << name;
}

TEST_F(AttachmentsTest, whereTheNameHasNoSuffixItsStartTells) {
    for (const char *name : {"Makefile", "LICENSE", ".gitignore", ".env"})
        EXPECT_TRUE(isAttachable(fileOf("all:\n\techo \xC3\xA4\x1B[0m\r\n\f", QString::fromLatin1(name))))
            << name;
    EXPECT_TRUE(isAttachable(fileOf(QByteArray("\xFF\xFEh\0i\0", 6), u"utf16"_s)));
    EXPECT_TRUE(isAttachable(fileOf("\xE9t\xE9", u"latin1"_s)));
    EXPECT_TRUE(isAttachable(fileOf(QByteArray(4095, 'a') + "\xC3\xA4", u"cut"_s)))
        << "in the midst of a character";
    EXPECT_FALSE(isAttachable(fileOf(QByteArray("\x7F"
                                                "ELF\x02\x01\x01\0\0",
                                                9),
                                     u"program"_s)));
    EXPECT_FALSE(isAttachable(fileOf(QByteArray("a\0b", 3), u".data"_s)));
    EXPECT_FALSE(isAttachable(fileOf({}, u"empty"_s)));
    EXPECT_FALSE(isAttachable(path(u"missing"_s)));
    EXPECT_FALSE(isAttachable(path({}))) << "a folder";
}

TEST_F(AttachmentsTest, whiteSpaceAtTheEndsGoes) {
    EXPECT_EQ(textOf("\r\n \t one\n\n two \xC2\xA0\xE2\x80\xA8\n"), u"one\n\n two"_s);
}

TEST_F(AttachmentsTest, aFileWithoutTextIsNoAttachment) {
    for (const char *bytes : {"", "\n", " \r\n\t\n", "\xEF\xBB\xBF", "\xEF\xBB\xBF \n", "\xFF\xFE"})
        EXPECT_FALSE(importAttachment(fileOf(bytes)));
    EXPECT_FALSE(importAttachment(fileOf("{\\rtf1 \\par\\par}", u"a.rtf"_s)));
}

TEST_F(AttachmentsTest, whatIsNotUtf8IsLatin1) {
    EXPECT_EQ(textOf("caf\xC3\xA9"), u"café"_s);
    EXPECT_EQ(textOf("caf\xE9"), u"café"_s);
    EXPECT_EQ(textOf("caf\xC3\xA9 caf\xE9"), u"cafÃ© café"_s);
    EXPECT_EQ(textOf("\xED\xA0\x80"), u"\u00ED\u00A0\u0080"_s);
    EXPECT_EQ(textOf(QByteArray("a\0b", 3)), u"a\0b"_s);
}

TEST_F(AttachmentsTest, aByteOrderMarkTellsTheEncoding) {
    const QByteArray utf8Mark = "\xEF\xBB\xBF";
    EXPECT_EQ(textOf(utf8Mark + "caf\xC3\xA9"), u"café"_s);
    EXPECT_EQ(textOf(utf8Mark + "caf\xE9!"), u"caf\uFFFD!"_s);
    EXPECT_EQ(textOf(utf8Mark + "caf\xC3"), u"caf"_s);
    EXPECT_EQ(textOf(QByteArray("\xFF\xFE\x61\x00\xE9\x00", 6)), u"aé"_s);
    EXPECT_EQ(textOf(QByteArray("\xFE\xFF\x00\x61\x00\xE9", 6)), u"aé"_s);
    EXPECT_EQ(textOf(QByteArray("\xFF\xFE\x00\x00\x61\x00\x00\x00", 8)), u"a"_s);
}

TEST_F(AttachmentsTest, aTextOfTheLargestLengthIsKeptWhole) {
    const QByteArray text(maxAttachmentCharacters, 'x');
    EXPECT_EQ(textOf(text), QString::fromLatin1(text));
    EXPECT_EQ(textOf("\n" + text + "\n"), QString::fromLatin1(text));
    EXPECT_EQ(textOf(text + 'y'), QString::fromLatin1(text) + marker);
}

TEST_F(AttachmentsTest, lengthIsCountedInCharactersAsAReaderDoes) {
    const QString flag = u"🇳🇿"_s;
    const QString text = flag.repeated(maxAttachmentCharacters);
    EXPECT_EQ(textOf(text.toUtf8()), text);
    EXPECT_EQ(textOf((text + u"é"_s).toUtf8()), text + marker);
    const QByteArray lines = QByteArray("\r\n").repeated(maxAttachmentCharacters);
    EXPECT_EQ(textOf('a' + lines + 'b'), QString::fromLatin1('a' + lines.chopped(2)) + marker);
}

TEST_F(AttachmentsTest, onlyTheBeginningOfALargeFileIsRead) {
    const QByteArray blanks(maxAttachmentBytes, ' ');
    EXPECT_EQ(textOf(blanks.chopped(1) + "ab" + QByteArray(3'000'000, 'c')), u"a"_s);
    EXPECT_EQ(textOf(blanks + QByteArray(3'000'000, 'c')), u"nothing"_s);
}

TEST_F(AttachmentsTest, aCharacterThatIsCutOffMakesItLatin1) {
    const QByteArray text = "\xC3\xA9" + QByteArray(maxAttachmentBytes - 3, ' ') + "\xC3\xA9";
    EXPECT_EQ(textOf(text),
              u"Ã©"_s + QString(maxAttachmentBytes - 3, u' ').first(maxAttachmentCharacters - 2) + marker);
}

TEST_F(AttachmentsTest, aHugeFileIsReadLikeAnyOther) {
    const QString file = fileOf("a");
    ASSERT_TRUE(QFile::resize(file, 50'000'000'000));
    EXPECT_EQ(characterCount(importAttachment(file)->text), maxAttachmentCharacters + characterCount(marker));
}

TEST_F(AttachmentsTest, aRichTextIsItsPlainText) {
    for (const QString &name : {u"a.rtf"_s, u"a.RTF"_s, u"a.b.Rtf"_s})
        EXPECT_EQ(textOf("{\\rtf1 {\\b caf\\'e9}\\par}", name), u"café"_s);
    EXPECT_EQ(textOf("{\\rtf1 a}", u"a.txt"_s), u"{\\rtf1 a}"_s);
    EXPECT_EQ(textOf("{\\rtf1 a}", u"rtf"_s), u"{\\rtf1 a}"_s);
}

TEST_F(AttachmentsTest, aRichTextThatIsNoneIsTakenAsItStands) {
    EXPECT_EQ(textOf("no {\\rtf1} caf\xC3\xA9", u"a.rtf"_s), u"no {\\rtf1} café"_s);
    EXPECT_EQ(textOf("caf\xE9", u"a.rtf"_s), u"café"_s);
}

TEST_F(AttachmentsTest, aLargeRichTextGivesWhatIsReadOfIt) {
    const QByteArray start = "{\\rtf1 a{\\*\\b ";
    const QByteArray text = start + QByteArray(maxAttachmentBytes - start.size() - 3, 'x') + "}b\\u8212?c}";
    EXPECT_EQ(textOf(text, u"a.rtf"_s), u"ab"_s);
}

TEST_F(AttachmentsTest, whatIsNoFileIsNoAttachmentAndHoldsNothingUp) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"pipe.txt"_s)).constData(), 0600), 0);
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"folder.txt"_s));
    ASSERT_TRUE(QFile::link(path(u"nowhere"_s), path(u"broken.txt"_s)));
    ASSERT_TRUE(QFile::link(path(u"round.txt"_s), path(u"round.txt"_s)));
    for (const QString &name :
         {u"pipe.txt"_s, u"folder.txt"_s, u"broken.txt"_s, u"round.txt"_s, u"none.txt"_s, u""_s})
        EXPECT_FALSE(importAttachment(path(name))) << name.toStdString();
    EXPECT_FALSE(importAttachment(u"/dev/zero"_s));
    EXPECT_FALSE(importAttachment(QString()));
}

TEST_F(AttachmentsTest, aLinkHasTheTextOfItsFileAndItsOwnName) {
    ASSERT_TRUE(QFile::link(fileOf("text"), path(u"link.md"_s)));
    EXPECT_EQ(importAttachment(path(u"link.md"_s))->name, u"link.md"_s);
}

TEST_F(AttachmentsTest, aDialogOffersEveryKindOfTextOnce) {
    const QStringList &patterns = attachmentNamePatterns();
    for (const char *suffix :
         {"txt", "rtf", "json", "xml", "html", "csv", "tsv", "cpp", "md", "markdown", "mdx", "yaml", "yml"})
        EXPECT_TRUE(patterns.contains(u"*."_s + QString::fromLatin1(suffix))) << suffix;
    EXPECT_EQ(QSet<QString>(patterns.begin(), patterns.end()).size(), patterns.size());
    EXPECT_TRUE(patterns.filter(QRegularExpression(u"^\\*\\.[a-z0-9]+$"_s)).size() == patterns.size());
}
