#pragma once

#include "platform/Task.h"

#include <QByteArrayView>
#include <QString>

#include <chrono>
#include <optional>

/// Which accelerators the engine sees, in its own words: what `llama-server --list-devices` prints.

/// The memory, in bytes, of the device that has most of it. Devices without memory of their own don't
/// count; nothing if none is left, or the text is no such list. Any thread.
///
/// The list, as llama.cpp's common/arg.cpp prints it, is a line "Available devices:" and then a line for
/// each device but the processor: "  NAME: DESCRIPTION (TOTAL MiB, FREE MiB free)".
std::optional<quint64> parseDeviceList(QByteArrayView printed);

#ifndef Q_MOC_RUN
/// Asks the engine at `serverBinary`, for five seconds at most. Nothing if it has no device, doesn't
/// answer in time or can't be run, or once `stop` is requested; the child is gone in every case. Main
/// thread, which isn't kept waiting.
Task<std::optional<quint64>> largestDeviceMemory(QString serverBinary, std::stop_token stop);

/// The same with another limit of time.
Task<std::optional<quint64>> largestDeviceMemory(QString serverBinary, std::chrono::milliseconds limit,
                                                 std::stop_token stop);
#endif
