#include "platform/ReducedMotion.h"

#include "platform/linux/Bus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// The settings portal (XDG Desktop Portal, org.freedesktop.portal.Settings). "reduced-motion" is the
// standard key; desktops that don't have it yet pass GNOME's own "enable-animations" through.
constexpr auto service = "org.freedesktop.portal.Desktop"_L1;
constexpr auto path = "/org/freedesktop/portal/desktop"_L1;
constexpr auto interface = "org.freedesktop.portal.Settings"_L1;
constexpr auto standardGroup = "org.freedesktop.appearance"_L1;
constexpr auto standardKey = "reduced-motion"_L1;
constexpr auto gnomeGroup = "org.gnome.desktop.interface"_L1;
constexpr auto gnomeKey = "enable-animations"_L1;

/// The value inside a reply, which the portal wraps twice.
QVariant unwrapped(QVariant value) {
    while (value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

/// The portal's answers.
class ReducedMotion::Desktop : public QObject {
    Q_OBJECT

public:
    explicit Desktop(ReducedMotion *owner) : m_owner(owner), m_bus(sessionBus()) {
        m_bus.connect(service, path, interface, u"SettingChanged"_s, this,
                      SLOT(settingChanged(QString, QString, QDBusVariant)));
        read(standardGroup, standardKey, [this] { read(gnomeGroup, gnomeKey, [] {}); });
    }

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value) {
        take(group, key, unwrapped(value.variant()));
    }

private:
    void read(const QString &group, const QString &key, const std::function<void()> &orElse) {
        QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, u"Read"_s);
        call.setArguments({group, key});
        auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [=, this] {
            const QDBusPendingReply<QDBusVariant> reply = *watcher;
            watcher->deleteLater();
            if (reply.isError())
                orElse();
            else
                take(group, key, unwrapped(reply.value().variant()));
        });
    }

    void take(const QString &group, const QString &key, const QVariant &value) {
        if (group == standardGroup && key == standardKey) {
            m_hasStandardKey = true;
            m_owner->setIsOn(value.toUInt() == 1);
        } else if (group == gnomeGroup && key == gnomeKey && !m_hasStandardKey) {
            m_owner->setIsOn(!value.toBool());
        }
    }

    ReducedMotion *m_owner;
    QDBusConnection m_bus;
    bool m_hasStandardKey = false;
};

ReducedMotion::ReducedMotion(QObject *parent) : QObject(parent) {}

ReducedMotion::~ReducedMotion() = default;

void ReducedMotion::watch() {
    if (!m_desktop && !sessionBusAddress().isEmpty())
        m_desktop = std::make_unique<Desktop>(this);
}

void ReducedMotion::setIsOn(bool isOn) {
    if (std::exchange(m_isOn, isOn) != isOn)
        Q_EMIT isOnChanged();
}

#include "ReducedMotion.moc"
