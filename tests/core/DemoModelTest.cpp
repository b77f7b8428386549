#include "core/DemoModel.h"

#include "platform/AtomicFile.h"
#include "records/IncrementalHasher.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(DemoModel, theFileIsTheOneThatItsDescriptionNames) {
    const DemoModel demo = demoModel(QStringLiteral(RESOURCES_FOLDER));
    ASSERT_TRUE(demo.tier);
    const QByteArray bytes = readFile(demo.path).value();
    EXPECT_EQ(bytes.size(), demo.tier->sizeBytes);
    IncrementalHasher hasher;
    hasher.update(bytes);
    EXPECT_EQ(hasher.hexDigest(), demo.tier->sha256);
    EXPECT_TRUE(demo.path.endsWith(demo.tier->filename));
    EXPECT_TRUE(demo.tier->supportsTools);
    EXPECT_EQ(demo.tier->contextLength, 4096);
    EXPECT_EQ(demo.tier->sampling.presencePenalty, 0);
}

TEST(DemoModel, withoutItsDescriptionThereIsNoTier) {
    const QTemporaryDir folder;
    EXPECT_FALSE(demoModel(folder.path()).tier);
    QDir(folder.path()).mkdir(u"demo"_s);
    writeAtomically(folder.filePath(u"demo/tier.json"_s), "oops");
    EXPECT_FALSE(demoModel(folder.path()).tier);
}
