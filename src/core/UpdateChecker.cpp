#include "core/UpdateChecker.h"

#include "platform/Clock.h"
#include "platform/Machine.h"

using namespace std::chrono_literals;

namespace {

constexpr auto firstCheckDelay = 20s;
constexpr auto repeatInterval = 12h;

} // namespace

UpdateChecker::UpdateChecker(Clock &clock, std::function<bool()> isOffline, QObject *parent)
    : UpdateChecker(clock, std::move(isOffline), programVersion(), systemVersion(), parent) {}

UpdateChecker::UpdateChecker(Clock &clock, std::function<bool()> isOffline, const ProgramVersion &running,
                             const QList<qint64> &systemVersion, QObject *parent)
    : QObject(parent),
      m_clock(clock),
      m_isOffline(std::move(isOffline)),
      m_running(running),
      m_systemVersion(systemVersion) {}

std::optional<UpdateInfo> UpdateChecker::availableInfo() const {
    return m_status.state == UpdateStatus::State::available ? std::optional(m_status.info) : std::nullopt;
}

void UpdateChecker::start() {
    m_loop.start([this](std::stop_token stop) { return checkForEver(stop); });
}

void UpdateChecker::stop() {
    m_loop.cancel();
    cancelCheck();
}

Task<> UpdateChecker::checkForEver(std::stop_token stop) {
    co_await m_clock.sleep(firstCheckDelay, stop);
    while (!stop.stop_requested()) {
        check();
        co_await m_clock.sleep(repeatInterval, stop);
    }
}

void UpdateChecker::check() {
    if (m_isOffline()) {
        m_check.cancel();
        setStatus({});
        return;
    }
    setStatus({.state = UpdateStatus::State::checking});
    m_check.start([this](std::stop_token stop) { return ask(stop); });
}

Task<> UpdateChecker::ask(std::stop_token stop) {
    const std::optional<UpdateInfo> info = co_await fetchUpdateInfo(versionURL(), stop);
    if (stop.stop_requested())
        co_return;
    if (!info)
        setStatus({.state = UpdateStatus::State::failed});
    else if (isNewer(*info, m_running) && systemAllows(*info, m_systemVersion))
        setStatus({UpdateStatus::State::available, *info});
    else
        setStatus({.state = UpdateStatus::State::upToDate});
}

void UpdateChecker::clearAvailable() {
    cancelCheck();
    if (m_status.state == UpdateStatus::State::available)
        setStatus({});
}

void UpdateChecker::cancelCheck() {
    m_check.cancel();
    if (m_status.state == UpdateStatus::State::checking)
        setStatus({});
}

void UpdateChecker::setStatus(const UpdateStatus &status) {
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}
