#include "engine/EngineBuild.h"

#include "platform/AtomicFile.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(EngineBuild, itStandsInAFileOfTheProgram) {
    const QTemporaryDir resources;
    writeAtomically(resources.filePath(u"engine-build.txt"_s), "0123456789abcdef0123456789abcdef01234567\n");
    EXPECT_EQ(engineBuild(resources.path()), u"0123456789abcdef0123456789abcdef01234567"_s);
}

TEST(EngineBuild, withoutTheFileItIsUnknown) {
    EXPECT_EQ(engineBuild(u"/nowhere"_s), QString());
}
