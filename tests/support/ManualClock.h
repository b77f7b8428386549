#pragma once

#include "platform/Clock.h"
#include "platform/WaitPoint.h"

#include <list>
#include <memory>

/// A clock that stands still until it is told. A sleep ends when advance() has passed its end; in the
/// skipping mode it ends at once and takes the clock along.
class ManualClock : public Clock {
public:
    enum class Sleep { untilAdvanced, skipped };

    explicit ManualClock(Sleep mode = Sleep::untilAdvanced) : m_mode(mode) {}

    QDateTime now() const override { return m_start.addMSecs(m_elapsed.count()); }
    std::chrono::milliseconds elapsed() const override { return m_elapsed; }

    Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) override {
        auto sleeper = std::make_shared<Sleeper>(m_elapsed + duration);
        if (m_mode == Sleep::skipped) {
            m_elapsed += duration;
            sleeper->end.wake();
        } else {
            m_sleepers.push_back(sleeper);
        }
        const std::stop_callback wakeOnStop(stop, [sleeper] { sleeper->end.wake(); });
        co_await sleeper->end.wait();
    }

    /// Moves the time on, and wakes whose sleep is over.
    void advance(std::chrono::milliseconds duration) {
        m_elapsed += duration;
        m_sleepers.remove_if([this](const std::shared_ptr<Sleeper> &sleeper) {
            if (sleeper->until > m_elapsed)
                return false;
            sleeper->end.wake();
            return true;
        });
    }

    void set(const QDateTime &now) { m_start = now.addMSecs(-m_elapsed.count()); }
    bool hasSleepers() const { return !m_sleepers.empty(); }

private:
    struct Sleeper {
        explicit Sleeper(std::chrono::milliseconds deadline) : until(deadline) {}
        std::chrono::milliseconds until;
        WaitPoint end;
    };

    Sleep m_mode;
    QDateTime m_start{QDate(2026, 11, 15), QTime(13, 18, 58), Qt::UTC};
    std::chrono::milliseconds m_elapsed{0};
    std::list<std::shared_ptr<Sleeper>> m_sleepers;
};
