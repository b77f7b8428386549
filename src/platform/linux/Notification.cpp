#include "platform/Notification.h"

#include "platform/WaitPoint.h"
#include "platform/linux/Bus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds longestWait(5);

// The name of the program's desktop file, by which a desktop knows its icon and its settings.
const QString desktopFile = u"com.quennarbel.ostrelin"_s;

/// Desktop Notifications Specification, "org.freedesktop.Notifications.Notify"; the sound is one of the Sound
/// Naming Specification.
QDBusMessage notifyCall(const QString &title, const QString &body) {
    constexpr uint replacingNone = 0;
    constexpr int untilTheDesktopsOwnTime = -1;
    const QVariantMap hints{{u"desktop-entry"_s, desktopFile}, {u"sound-name"_s, u"message-new-instant"_s}};
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                                       u"/org/freedesktop/Notifications"_s,
                                                       u"org.freedesktop.Notifications"_s, u"Notify"_s);
    call.setArguments({u"Ostrelin"_s, replacingNone, desktopFile, title, body, QStringList(), hints,
                       untilTheDesktopsOwnTime});
    return call;
}

} // namespace

void askToNotify() {
    // A desktop shows them unasked, and the person turns them off in its settings.
}

Task<> postNotification(QString title, QString body, std::stop_token stop) {
    const QDBusConnection bus = sessionBus();
    if (!bus.isConnected())
        co_return;
    WaitPoint end;
    const auto wake = [&end] { end.wake(); };
    const QDBusPendingCallWatcher answer(bus.asyncCall(notifyCall(title, body)));
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &answer, wake);
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, wake);
    timer.start(longestWait);
    const std::stop_callback wakeOnStop(stop, wake);
    co_await end.wait();
}
