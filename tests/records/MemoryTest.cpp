#include "records/Memory.h"

#include "records/Folders.h"
#include "records/Samples.h"
#include "support/TemporaryApplicationFolder.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Memory, whatWasWrittenIsReadAgain) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    writeMemory(u"- Grüße\n- 世界"_s);
    EXPECT_EQ(readMemory(), u"- Grüße\n- 世界"_s);
    EXPECT_EQ(Samples::contentOf(memoryFile()), "- Gr\xc3\xbc\xc3\x9f"
                                                "e\n- \xe4\xb8\x96\xe7\x95\x8c");
    writeMemory(QString());
    EXPECT_EQ(readMemory(), QString());
}

TEST(Memory, writingCreatesTheApplicationFolder) {
    const TemporaryApplicationFolder folder;
    writeMemory(u"fact"_s);
    EXPECT_EQ(readMemory(), u"fact"_s);
}

TEST(Memory, noFileGivesAnEmptyString) {
    const TemporaryApplicationFolder folder;
    EXPECT_EQ(readMemory(), QString());
}

TEST(Memory, bytesThatAreNotUtf8GiveAnEmptyString) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    for (const char *bytes : {"fact \xff", "cut off \xe4\xb8"}) {
        Samples::putFile(memoryFile(), bytes);
        EXPECT_EQ(readMemory(), QString());
    }
}

TEST(Memory, aWriteTellsWhetherItSucceeded) {
    const TemporaryApplicationFolder folder;
    EXPECT_TRUE(writeMemory(u"fact"_s));
    QFile::remove(memoryFile());
    ASSERT_TRUE(QDir().mkpath(memoryFile() + u"/in the way"_s));
    EXPECT_FALSE(writeMemory(u"fact"_s));
}

TEST(Memory, aWriteThatFailsIsSwallowed) {
    const TemporaryApplicationFolder folder;
    Samples::putFile(applicationFolder(), "in the way");
    writeMemory(u"fact"_s);
    EXPECT_EQ(readMemory(), QString());
    EXPECT_EQ(Samples::contentOf(applicationFolder()), "in the way");
}

TEST(Memory, aFactBecomesALineOfItsOwn) {
    EXPECT_EQ(appendingMemoryFact(u"- one"_s, u"two"_s), u"- one\n- two"_s);
    EXPECT_EQ(appendingMemoryFact(u"- one\n- two"_s, u"three"_s), u"- one\n- two\n- three"_s);
}

TEST(Memory, theFirstFactStandsAlone) {
    EXPECT_EQ(appendingMemoryFact(u"  \n"_s, u" likes tea "_s), u"- likes tea"_s);
    EXPECT_EQ(appendingMemoryFact(QString(), u"likes tea"_s), u"- likes tea"_s);
}

TEST(Memory, bothEndsOfBothTextsAreTrimmed) {
    EXPECT_EQ(appendingMemoryFact(u"\n\t\u00a0- one \r\n\n"_s, u"\u2003two\u2028\n"_s), u"- one\n- two"_s);
    EXPECT_EQ(appendingMemoryFact(u"a\n\nb"_s, u"c\nd"_s), u"a\n\nb\n- c\nd"_s);
}
