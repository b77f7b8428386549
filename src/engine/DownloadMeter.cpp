#include "engine/DownloadMeter.h"

#include <algorithm>

namespace {

constexpr std::chrono::milliseconds quietTime{250};
constexpr std::chrono::milliseconds shortestMeasure{200};

} // namespace

void DownloadMeter::tellChecking(qint64 existing, qint64 total) const {
    m_report({.received = existing, .total = total, .bytesPerSecond = 0, .isCheckingPartial = true});
}

void DownloadMeter::start(qint64 existing, qint64 total) {
    m_received = existing;
    m_atStart = existing;
    m_total = total;
    m_startedAt = m_now();
}

void DownloadMeter::add(qint64 count) {
    m_received += count;
    const Moment now = m_now();
    if (m_lastTold && now - *m_lastTold < quietTime)
        return;
    m_lastTold = now;
    tell();
}

void DownloadMeter::tell() const {
    m_report({.received = m_received,
              .total = m_total,
              .bytesPerSecond = bytesPerSecond(),
              .isCheckingPartial = false});
}

double DownloadMeter::bytesPerSecond() const {
    const std::chrono::duration<double> elapsed = m_now() - m_startedAt;
    if (elapsed <= shortestMeasure)
        return 0;
    return static_cast<double>(std::max<qint64>(m_received - m_atStart, 0)) / elapsed.count();
}
