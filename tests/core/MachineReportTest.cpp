#include "core/MachineReport.h"

#include "platform/Machine.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// An engine that prints a list of devices, or whatever else it is told.
class Engine {
public:
    explicit Engine(const QByteArray &printed) {
        QFile script(m_folder.filePath(u"llama-server"_s));
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\ncat <<'END'\n" + printed + "\nEND\n");
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

private:
    QTemporaryDir m_folder;
    EnvironmentVariable m_named{"OSTRELIN_LLAMA_SERVER", m_folder.filePath(u"llama-server"_s).toLocal8Bit()};
};

MachineReport measure() {
    return await(measureMachine({}));
}

} // namespace

TEST(ByteCount, decimalDigitsWithOrWithoutAPlus) {
    EXPECT_EQ(byteCount(u"16000000000"_s), 16'000'000'000u);
    EXPECT_EQ(byteCount(u"+7"_s), 7u);
    EXPECT_EQ(byteCount(u"0"_s), 0u);
    EXPECT_EQ(byteCount(u"18446744073709551615"_s), 18446744073709551615u);
}

TEST(ByteCount, everythingElseIsNothing) {
    for (const QString &text : {u""_s, u"+"_s, u"-1"_s, u"++1"_s, u" 1"_s, u"1 "_s, u"0x10"_s, u"1.5"_s,
                                u"1e9"_s, u"18446744073709551616"_s, u"٣"_s})
        EXPECT_FALSE(byteCount(text)) << text.toStdString();
}

TEST(ProcessorBudget, aThirdOfTheMemoryAndSixGigabytesAtMost) {
    EXPECT_EQ(processorBudget(9'000'000'000), 3'000'000'000u);
    EXPECT_EQ(processorBudget(18'000'000'000), 6'000'000'000u);
    EXPECT_EQ(processorBudget(64'000'000'000), 6'000'000'000u);
    EXPECT_EQ(processorBudget(0), 0u);
}

TEST(MeasureMachine, aMachineWithoutADeviceIsMeasuredByItsMemory) {
    const Engine engine("Available devices:");
    const MachineReport report = measure();
    EXPECT_GT(report.totalRAM, 500'000'000u);
    EXPECT_EQ(report.totalRAM, physicalMemory());
    EXPECT_EQ(report.gpuBudget, processorBudget(report.totalRAM));
    EXPECT_TRUE(report.isAppleSilicon);
    EXPECT_FALSE(report.isRosetta);
    EXPECT_GT(report.freeDisk, 0);
}

TEST(MeasureMachine, theEngineTellsWhatItsDevicesHold) {
    const Engine engine("Available devices:\n  CUDA0: Some card (8192 MiB, 8000 MiB free)\n"
                        "  CUDA1: A larger card (16384 MiB, 16000 MiB free)");
    EXPECT_EQ(measure().gpuBudget, 16384ull << 20);
}

TEST(MeasureMachine, withoutAnEngineTheMemoryCountsAlone) {
    const EnvironmentVariable nowhere("OSTRELIN_LLAMA_SERVER", "/nonexistent");
    EXPECT_EQ(measure().gpuBudget, processorBudget(physicalMemory()));
}

TEST(MeasureMachine, overridesStandAboveWhatIsMeasured) {
    const Engine engine("Available devices:\n  CUDA0: Some card (8192 MiB, 8000 MiB free)");
    const EnvironmentVariable ram("OSTRELIN_TOTALRAM", "+32000000000");
    const EnvironmentVariable gpu("OSTRELIN_GPUBUDGET", "24000000000");
    EXPECT_EQ(measure().totalRAM, 32'000'000'000u);
    EXPECT_EQ(measure().gpuBudget, 24'000'000'000u);
}

TEST(MeasureMachine, anOverrideThatIsNoNumberIsIgnored) {
    const Engine engine("Available devices:\n  CUDA0: Some card (8192 MiB, 8000 MiB free)");
    const EnvironmentVariable ram("OSTRELIN_TOTALRAM", "lots");
    const EnvironmentVariable gpu("OSTRELIN_GPUBUDGET", "");
    EXPECT_EQ(measure().totalRAM, physicalMemory());
    EXPECT_EQ(measure().gpuBudget, 8192ull << 20);
}

TEST(MachineReport, beforeTheFirstMeasurementItIsAPlaceholder) {
    EXPECT_EQ(MachineReport(),
              (MachineReport{
                  .isAppleSilicon = true, .isRosetta = false, .totalRAM = 0, .gpuBudget = 0, .freeDisk = 0}));
}
