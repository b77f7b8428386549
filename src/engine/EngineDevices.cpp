#include "engine/EngineDevices.h"

#include "engine/EngineLaunch.h"
#include "platform/ChildProcess.h"
#include "platform/WaitPoint.h"

#include <QRegularExpression>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 mebibyte = 1'048'576;
constexpr qsizetype longestList = 65'536; ///< bytes; a list of a hundred devices has a tenth of it
constexpr qsizetype longestLine = 1024;

/// The bytes of the device that a line tells of; 0 if it tells of none, or of more than there can be.
quint64 deviceMemory(const QByteArray &line) {
    // A description may have parentheses too: the memory is in the last ones.
    static const QRegularExpression device(u"^  \\S.*: .*\\((\\d+) MiB, \\d+ MiB free\\)\\s*$"_s);
    if (line.size() > longestLine)
        return 0;
    const QRegularExpressionMatch match = device.match(QString::fromUtf8(line));
    bool fits = false;
    const quint64 mebibytes = match.captured(1).toULongLong(&fits);
    return fits && mebibytes <= std::numeric_limits<quint64>::max() / mebibyte ? mebibytes * mebibyte : 0;
}

} // namespace

std::optional<quint64> parseDeviceList(QByteArrayView printed) {
    bool isInList = false;
    quint64 largest = 0;
    for (const QByteArray &line : printed.toByteArray().split('\n')) {
        if (isInList)
            largest = std::max(largest, deviceMemory(line));
        isInList |= line.trimmed() == "Available devices:";
    }
    return largest > 0 ? std::optional(largest) : std::nullopt;
}

Task<std::optional<quint64>> largestDeviceMemory(QString serverBinary, std::stop_token stop) {
    return largestDeviceMemory(std::move(serverBinary), std::chrono::seconds(5), std::move(stop));
}

Task<std::optional<quint64>> largestDeviceMemory(QString serverBinary, std::chrono::milliseconds limit,
                                                 std::stop_token stop) {
    if (stop.stop_requested())
        co_return std::nullopt;
    WaitPoint end;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&end] { end.wake(); });
    const std::stop_callback wakeOnStop(stop, [&end] { end.wake(); });
    QByteArray printed;
    std::atomic<bool> exited = false;
    std::optional<ChildProcess> child;
    try {
        child.emplace(ChildProcess::Launch{
            .executable = serverBinary,
            .arguments = {u"--list-devices"_s},
            .environment = serverEnvironment(QProcessEnvironment::systemEnvironment()),
            .onOutput =
                [&printed](QByteArrayView piece) {
                    printed += piece.first(std::min(piece.size(), longestList - printed.size()));
                },
            .onError = {},
            .onExit =
                [&exited, &end] {
                    exited = true;
                    end.wake();
                }});
    } catch (const LaunchError &) {
        co_return std::nullopt;
    }
    timer.start(limit);
    co_await end.wait();
    const bool isAnswered = exited && !stop.stop_requested();
    child.reset();
    co_return isAnswered ? parseDeviceList(printed) : std::nullopt;
}
