#include "engine/EngineDevices.h"

#include "platform/Processes.h"
#include "support/Await.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 mebibyte = 1'048'576;

/// A program in the engine's place, written as a shell script. It leaves its process id behind.
class Engine {
public:
    explicit Engine(const QByteArray &script) {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\necho $$ > '" + QFile::encodeName(m_folder.filePath(u"pid"_s)) + "'\n" +
                   script);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString path() const { return m_folder.filePath(u"llama-server"_s); }

    /// 0 as long as it hasn't begun.
    qint64 pid() const {
        QFile file(m_folder.filePath(u"pid"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    }

    bool isGone() const { return pid() > 0 && processPath(pid()).isEmpty(); }

private:
    QTemporaryDir m_folder;
};

std::optional<quint64> ask(const Engine &engine, std::chrono::milliseconds limit = std::chrono::seconds(30)) {
    return await(largestDeviceMemory(engine.path(), limit, {}));
}

} // namespace

TEST(ParseDeviceList, aDeviceHasItsTotalMemory) {
    EXPECT_EQ(parseDeviceList("Available devices:\n"
                              "  CUDA0: NVIDIA GeForce RTX 3090 (24124 MiB, 23841 MiB free)\n"),
              24124 * mebibyte);
    EXPECT_EQ(parseDeviceList("Available devices:\n"
                              "  Metal: Apple M2 Pro (21845 MiB, 21845 MiB free)\n"),
              21845 * mebibyte);
    EXPECT_EQ(parseDeviceList("Available devices:\n"
                              "  MTL0: Apple M4 Max (110100 MiB, 110100 MiB free)\n"),
              110100 * mebibyte);
    EXPECT_EQ(parseDeviceList("Available devices:\n"
                              "  ROCm0: AMD Radeon RX 7900 XTX (24560 MiB, 24480 MiB free)\n"),
              24560 * mebibyte);
    EXPECT_EQ(parseDeviceList("Available devices:\n"
                              "  SYCL0: Intel(R) Arc(TM) A770 Graphics (15473 MiB, 15473 MiB free)\n"),
              15473 * mebibyte);
}

TEST(ParseDeviceList, aDescriptionMayHaveParenthesesAndColons) {
    EXPECT_EQ(
        parseDeviceList("Available devices:\n"
                        "  Vulkan0: AMD Radeon 780M: Graphics (RADV PHOENIX) (16028 MiB, 15210 MiB free)\n"),
        16028 * mebibyte);
    EXPECT_EQ(parseDeviceList("Available devices:\n"
                              "  X0: Card (99 MiB, 98 MiB free) (16 MiB, 15 MiB free)\n"),
              16 * mebibyte);
}

TEST(ParseDeviceList, ofSeveralDevicesTheLargestCounts) {
    EXPECT_EQ(parseDeviceList("ggml_vulkan: Found 2 Vulkan devices:\n"
                              "load_backend: loaded CUDA backend from /usr/lib/libggml-cuda.so\n"
                              "Available devices:\n"
                              "  CUDA0: NVIDIA GeForce GTX 1650 (3903 MiB, 3500 MiB free)\n"
                              "  CUDA1: NVIDIA RTX A6000 (48541 MiB, 48000 MiB free)\n"
                              "  Vulkan0: llvmpipe (LLVM 15.0.6, 256 bits) (7950 MiB, 7950 MiB free)\n"),
              48541 * mebibyte);
}

TEST(ParseDeviceList, anAcceleratorWithoutMemoryIsNoDevice) {
    EXPECT_FALSE(parseDeviceList("Available devices:\n  BLAS: OpenBLAS (0 MiB, 0 MiB free)\n"));
    EXPECT_EQ(parseDeviceList("Available devices:\n"
                              "  BLAS: OpenBLAS (0 MiB, 0 MiB free)\n"
                              "  Vulkan0: Intel(R) UHD Graphics (7842 MiB, 7000 MiB free)\n"),
              7842 * mebibyte);
}

TEST(ParseDeviceList, anEmptyListHasNone) {
    EXPECT_FALSE(parseDeviceList("Available devices:\n  (none)\n"));
    EXPECT_FALSE(parseDeviceList("Available devices:\n"));
    EXPECT_FALSE(parseDeviceList("Available devices:"));
}

TEST(ParseDeviceList, whatIsNoListHasNone) {
    EXPECT_FALSE(parseDeviceList(""));
    EXPECT_FALSE(parseDeviceList("error: invalid argument: --list-devices\n"));
    EXPECT_FALSE(parseDeviceList("  CUDA0: no heading (10 MiB, 10 MiB free)\n"));
    EXPECT_FALSE(parseDeviceList(QByteArray("\0\xff\xfe\n\n(((((MiB\0", 14)));
    EXPECT_FALSE(parseDeviceList("Available devices:\n"
                                 "CUDA0: not set in (10 MiB, 10 MiB free)\n"
                                 "  CUDA0: (10 GiB, 10 GiB free)\n"
                                 "  CUDA0: x (-10 MiB, 10 MiB free)\n"
                                 "  CUDA0: x (1e3 MiB, 10 MiB free)\n"
                                 "  CUDA0: x (10 MiB, 10 MiB free) and more\n"
                                 "  CUDA0 (10 MiB, 10 MiB free)\n"));
}

TEST(ParseDeviceList, linesMayEndAsOnOtherSystems) {
    EXPECT_EQ(parseDeviceList("Available devices:\r\n  CUDA0: x (10 MiB, 9 MiB free)\r\n"), 10 * mebibyte);
}

TEST(ParseDeviceList, moreThanAMachineCanCountIsNoDevice) {
    EXPECT_EQ(parseDeviceList("Available devices:\n  A0: x (17592186044415 MiB, 1 MiB free)\n"),
              17592186044415 * mebibyte);
    EXPECT_FALSE(parseDeviceList("Available devices:\n  A0: x (17592186044416 MiB, 1 MiB free)\n"));
    EXPECT_EQ(parseDeviceList("Available devices:\n"
                              "  A0: x (99999999999999999999999 MiB, 1 MiB free)\n"
                              "  A1: x (8 MiB, 1 MiB free)\n"),
              8 * mebibyte);
}

TEST(LargestDeviceMemory, theEngineIsAskedForItsDevices) {
    const Engine engine("[ \"$*\" = --list-devices ] || exit 1\n"
                        "echo 'ggml_cuda_init: found 1 CUDA devices' >&2\n"
                        "echo 'Available devices:'\n"
                        "echo '  CUDA0: NVIDIA GeForce RTX 3090 (24124 MiB, 23841 MiB free)'\n");
    EXPECT_EQ(ask(engine), 24124 * mebibyte);
    EXPECT_TRUE(engine.isGone());
}

TEST(LargestDeviceMemory, anEngineThatOnlyFailsHasNone) {
    const Engine engine("echo 'error: unknown argument' >&2; exit 1\n");
    EXPECT_FALSE(ask(engine));
}

TEST(LargestDeviceMemory, aProgramThatCannotBeRunHasNone) {
    EXPECT_FALSE(await(largestDeviceMemory(u"/nowhere/llama-server"_s, {})));
    EXPECT_FALSE(await(largestDeviceMemory(QString(), {})));
    const QTemporaryDir folder;
    EXPECT_FALSE(await(largestDeviceMemory(folder.path(), {})));
}

TEST(LargestDeviceMemory, anEngineThatTakesTooLongIsEnded) {
    const Engine engine("trap '' TERM\n"
                        "echo 'Available devices:'\n"
                        "echo '  CUDA0: x (10 MiB, 9 MiB free)'\n"
                        "while :; do sleep 0.1; done\n");
    EXPECT_FALSE(ask(engine, std::chrono::seconds(1)));
    EXPECT_TRUE(engine.isGone());
}

TEST(LargestDeviceMemory, aStopEndsTheEngine) {
    const Engine engine("exec sleep 60\n");
    std::stop_source stop;
    bool ended = false;
    const auto run = [](Task<std::optional<quint64>> task, bool *done) -> Task<> {
        EXPECT_FALSE(co_await task);
        *done = true;
    };
    run(largestDeviceMemory(engine.path(), std::chrono::seconds(60), stop.get_token()), &ended);
    ASSERT_TRUE(eventually([&] { return engine.pid() > 0; }));
    EXPECT_FALSE(ended);
    stop.request_stop();
    EXPECT_TRUE(eventually([&] { return ended; }));
    EXPECT_TRUE(engine.isGone());
}

TEST(LargestDeviceMemory, afterAStopNothingIsStarted) {
    const Engine engine("exit 0\n");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_FALSE(await(largestDeviceMemory(engine.path(), stop.get_token())));
    EXPECT_EQ(engine.pid(), 0);
}

TEST(LargestDeviceMemory, anEngineThatPrintsWithoutEndIsNotWaitedFor) {
    const Engine engine("exec yes 'Available devices:'\n");
    EXPECT_FALSE(ask(engine, std::chrono::seconds(1)));
    EXPECT_TRUE(engine.isGone());
}
