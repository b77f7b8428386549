#include "engine/DownloadMeter.h"

#include <QList>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

class DownloadMeterTest : public ::testing::Test {
protected:
    DownloadMeter::Moment now{1000h};
    QList<DownloadProgress> told;
    DownloadMeter meter{[this] { return now; },
                        [this](const DownloadProgress &progress) { told.append(progress); }};
};

} // namespace

TEST_F(DownloadMeterTest, theFirstBytesAreToldAtOnce) {
    meter.start(0, 100);
    meter.add(1);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.first(), (DownloadProgress{1, 100, 0, false}));
}

TEST_F(DownloadMeterTest, afterALongIdleTimeBytesAreToldAtOnce) {
    meter.start(0, 100);
    meter.add(1);
    now += 1h;
    meter.start(1, 100);
    meter.add(1);
    EXPECT_EQ(told.size(), 2);
}

TEST_F(DownloadMeterTest, bytesAreToldNoMoreThanFourTimesASecond) {
    meter.start(0, 10'000);
    for (int millisecond = 0; millisecond < 1000; ++millisecond) {
        meter.add(1);
        now += 1ms;
    }
    EXPECT_EQ(told.size(), 4);
    EXPECT_EQ(told.at(1).received, 251);
}

TEST_F(DownloadMeterTest, aQuarterOfASecondIsEnough) {
    meter.start(0, 100);
    meter.add(1);
    now += 249ms;
    meter.add(1);
    EXPECT_EQ(told.size(), 1);
    now += 1ms;
    meter.add(1);
    EXPECT_EQ(told.size(), 2);
}

TEST_F(DownloadMeterTest, aNewStartDoesNotEndTheQuietTime) {
    meter.start(0, 100);
    meter.add(1);
    meter.start(1, 100);
    meter.add(1);
    EXPECT_EQ(told.size(), 1);
}

TEST_F(DownloadMeterTest, whatIsToldUnaskedForEndsNoQuietTimeAndBeginsNone) {
    meter.start(0, 100);
    meter.tell();
    meter.add(1);
    EXPECT_EQ(told.size(), 2);
    meter.tell();
    meter.tellChecking(5, 100);
    EXPECT_EQ(told.size(), 4);
}

TEST_F(DownloadMeterTest, speedCountsTheBytesSinceTheStartAlone) {
    meter.start(1'000'000, 2'000'000);
    now += 2s;
    meter.add(5'000);
    EXPECT_EQ(told.last(), (DownloadProgress{1'005'000, 2'000'000, 2'500, false}));
}

TEST_F(DownloadMeterTest, inTheFirstFifthOfASecondThereIsNoSpeed) {
    meter.start(0, 1000);
    now += 200ms;
    meter.add(100);
    EXPECT_EQ(told.last().bytesPerSecond, 0);
    now += 50ms;
    meter.tell();
    EXPECT_EQ(told.last().bytesPerSecond, 400);
}

TEST_F(DownloadMeterTest, aCheckIsToldWithWhatIsThere) {
    meter.tellChecking(40, 100);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.first(), (DownloadProgress{40, 100, 0, true}));
}
