#pragma once

#include "core/UpdateInfo.h"
#include "platform/TaskHandle.h"

#include <QObject>

#include <functional>

class Clock;

/// What is known of a newer release.
struct UpdateStatus {
    enum class State {
        idle,      ///< nothing has been asked, or nobody wants to know any more
        checking,  ///< a request is under way
        failed,    ///< no answer, or none that can be read
        upToDate,  ///< nothing newer, or nothing that this system may run
        available, ///< a newer release that this system may run
    };

    State state = State::idle;
    UpdateInfo info; ///< with `available`

    bool operator==(const UpdateStatus &) const = default;
};

/// Asks for a newer release twice a day, and whenever a person wants to know. While the program is offline it
/// asks nothing. It never updates anything. Main thread only.
class UpdateChecker : public QObject {
    Q_OBJECT

public:
#ifndef Q_MOC_RUN
    /// `isOffline` is asked before each check. `clock` must outlive this object.
    UpdateChecker(Clock &clock, std::function<bool()> isOffline, QObject *parent = nullptr);

    /// The same for another release than this program's, on another version of the system.
    UpdateChecker(Clock &clock, std::function<bool()> isOffline, const ProgramVersion &running,
                  const QList<qint64> &systemVersion, QObject *parent = nullptr);
#endif

    const UpdateStatus &status() const {
        return m_status;
    }

    /// The newer release; nothing unless one is known.
    std::optional<UpdateInfo> availableInfo() const;

    /// Checks in 20 seconds and every 12 hours after that. Another call begins anew.
    void start();

    /// Checks no more by itself, and ends a check that is under way.
    void stop();

    /// Checks now and returns at once; the status tells what comes of it. An earlier check is over.
    void check();

    /// For the moment at which the program goes offline: forgets a newer release, and ends a check that is
    /// under way. Checks that are due later find that it is offline.
    void clearAvailable();

Q_SIGNALS:
    void statusChanged();

private:
#ifndef Q_MOC_RUN
    Task<> checkForEver(std::stop_token stop);
    Task<> ask(std::stop_token stop);
#endif
    void cancelCheck();
    void setStatus(const UpdateStatus &status);

    Clock &m_clock;
#ifndef Q_MOC_RUN
    const std::function<bool()> m_isOffline;
#endif
    const ProgramVersion m_running;
    const QList<qint64> m_systemVersion;
    UpdateStatus m_status;
    TaskHandle m_loop;
    TaskHandle m_check;
};
