#include "platform/MemoryPressure.h"

#include "support/Await.h"

#include <QFile>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

TEST(MemoryPressure, isWatchedWhereTheKernelTellsOfIt) {
    if (!QFile(u"/proc/pressure/memory"_s).open(QIODevice::ReadWrite))
        EXPECT_FALSE(MemoryPressure().isWatching());
    else if (!MemoryPressure().isWatching())
        GTEST_SKIP() << "MEMORY PRESSURE WASN'T WATCHED: this kernel keeps it for the administrator";
}

TEST(MemoryPressure, aMachineThatIsWellHasNone) {
    MemoryPressure one;
    MemoryPressure two;
    const QSignalSpy critical(&one, &MemoryPressure::critical);
    letPass(200);
    EXPECT_EQ(critical.count(), 0);
    EXPECT_EQ(one.isWatching(), two.isWatching());
}
