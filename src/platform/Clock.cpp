#include "platform/Clock.h"

#include "platform/WaitPoint.h"

#include <QTimer>

namespace {

class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }

    std::chrono::milliseconds elapsed() const override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }

    Task<> sleep(std::chrono::milliseconds duration, std::stop_token stop) override {
        WaitPoint end;
        QTimer timer;
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, &timer, [&end] { end.wake(); });
        const std::stop_callback wakeOnStop(stop, [&end] { end.wake(); });
        timer.start(duration);
        co_await end.wait();
    }
};

} // namespace

Clock &Clock::system() {
    static SystemClock clock;
    return clock;
}
