#include "core/MachineReport.h"

#include "engine/EngineDevices.h"
#include "engine/EngineLaunch.h"
#include "platform/Bundle.h"
#include "platform/Machine.h"
#include "records/Options.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

std::optional<quint64> overridden(const QString &name) {
    const std::optional<QString> text = optionValue(name);
    return text ? byteCount(*text) : std::nullopt;
}

Task<quint64> measureBudget(quint64 totalRAM, std::stop_token stop) {
    const auto binary = findServerBinary(QProcessEnvironment::systemEnvironment(), mainBundleFolder());
    std::optional<quint64> device;
    if (binary)
        device = co_await largestDeviceMemory(*binary, stop);
    co_return device.value_or(processorBudget(totalRAM));
}

} // namespace

std::optional<quint64> byteCount(const QString &text) {
    const QString digits = text.startsWith(u'+') ? text.sliced(1) : text;
    const bool isPlain =
        std::all_of(digits.begin(), digits.end(), [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
    bool fits = false;
    const quint64 number = digits.toULongLong(&fits);
    return isPlain && fits ? std::optional(number) : std::nullopt;
}

quint64 processorBudget(quint64 totalRAM) {
    constexpr quint64 share = 3;
    constexpr quint64 most = 6'000'000'000;
    return std::min(totalRAM / share, most);
}

Task<MachineReport> measureMachine(std::stop_token stop) {
    MachineReport report;
    report.totalRAM = overridden(u"totalRAM"_s).value_or(physicalMemory());
    if (const auto budget = overridden(u"gpuBudget"_s))
        report.gpuBudget = *budget;
    else
        report.gpuBudget = co_await measureBudget(report.totalRAM, stop);
    report.isAppleSilicon = runsNatively();
    report.isRosetta = isTranslated();
    report.freeDisk = freeDisk();
    co_return report;
}
