#pragma once

#include "platform/Task.h"

#include <QString>

#include <optional>

/// What was measured of the machine, as far as a model cares. The start values stand for a machine that
/// hasn't been measured.
struct MachineReport {
    bool isAppleSilicon = true; ///< this build runs natively on a processor that it was made for
    bool isRosetta = false;     ///< it is translated for another processor
    quint64 totalRAM = 0;       ///< bytes
    quint64 gpuBudget = 0;      ///< bytes that a model may use
    qint64 freeDisk = 0;        ///< bytes on the home volume

    bool operator==(const MachineReport &) const = default;
};

/// An override of a byte count: decimal digits, "+" before them or not. Nothing for every other text, and
/// for a number that 64 bits can't hold.
std::optional<quint64> byteCount(const QString &text);

/// What a machine lets a model use where the engine sees no device of its own: a third of the memory, and
/// at most 6 GB, since a larger model is too slow to chat with on the processor.
quint64 processorBudget(quint64 totalRAM);

#ifndef Q_MOC_RUN
/// Measures the machine; the overrides `totalRAM` and `gpuBudget` stand above what is measured. Waits for
/// the engine's list of devices, five seconds at most. Main thread.
Task<MachineReport> measureMachine(std::stop_token stop);
#endif
