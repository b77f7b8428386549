#include "platform/Machine.h"

#include "support/EnvironmentVariable.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QSysInfo>

#include <cstdlib>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(PhysicalMemory, itIsWhatTheKernelCallsTheTotal) {
    QFile file(u"/proc/meminfo"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto total =
        QRegularExpression(u"MemTotal:\\s+(\\d+) kB"_s).match(QString::fromLatin1(file.readAll()));
    ASSERT_TRUE(total.hasMatch());
    EXPECT_EQ(physicalMemory(), total.captured(1).toULongLong() * 1024);
}

TEST(Processor, thisBuildRunsOnItAsItIs) {
    EXPECT_TRUE(runsNatively());
    EXPECT_FALSE(isTranslated());
}

TEST(FreeDisk, itIsWhatThePersonMayStillWrite) {
    const QStorageInfo volume(QDir::homePath());
    const qint64 free = freeDisk();
    EXPECT_GT(free, 0);
    // Others write at the same time.
    EXPECT_LT(std::abs(free - volume.bytesAvailable()), volume.bytesTotal() / 10);
}

TEST(FreeDisk, aHomeThatIsNotThereHasNone) {
    const EnvironmentVariable home("HOME", "/nowhere/at/all");
    EXPECT_EQ(freeDisk(), 0);
}

TEST(SystemVersion, itIsTheBeginningOfTheKernelsRelease) {
    const QList<qint64> version = systemVersion();
    ASSERT_GE(version.size(), 2);
    const QString release = QSysInfo::kernelVersion();
    EXPECT_TRUE(release.startsWith(u"%1.%2"_s.arg(version.at(0)).arg(version.at(1))))
        << release.toStdString();
    EXPECT_LE(version.size(), 3);
}
