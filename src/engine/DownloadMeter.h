#pragma once

#include "engine/DownloadProgress.h"

#include <chrono>
#include <functional>
#include <optional>

/// Counts the bytes of a download and tells how far it is, at most four times a second while bytes come.
/// One thread at a time.
class DownloadMeter {
public:
    using Moment = std::chrono::steady_clock::time_point;
    using Report = std::function<void(const DownloadProgress &)>;

    DownloadMeter(std::function<Moment()> now, Report report)
        : m_now(std::move(now)),
          m_report(std::move(report)) {}

    /// Tells that `existing` bytes of `total` are there and are being checked.
    void tellChecking(qint64 existing, qint64 total) const;

    /// Bytes are about to come, after the `existing` ones; from now on speed is measured.
    void start(qint64 existing, qint64 total);

    /// That many more are on the disk. Tells it, unless a call of this kind has told something a moment ago.
    void add(qint64 count);

    void tell() const;

    /// Bytes of the file so far, and those of them that were there at the start.
    qint64 received() const { return m_received; }
    qint64 atStart() const { return m_atStart; }

private:
    double bytesPerSecond() const;

    std::function<Moment()> m_now;
    Report m_report;
    qint64 m_received = 0;
    qint64 m_atStart = 0;
    qint64 m_total = 0;
    Moment m_startedAt;
    std::optional<Moment> m_lastTold;
};
