#include "e2e/AccessibleNotices.h"

#include <QDBusVariant>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr uint notification = 101; // AtspiRole
const QString accessible = u"org.a11y.atspi.Accessible"_s;

} // namespace

AccessibleNotices::AccessibleNotices(const QDBusConnection &bus, const QString &service)
    : m_bus(bus),
      m_service(service) {
    m_bus.connect(service, {}, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s, this,
                  SLOT(takeChange(QDBusMessage)));
    // A program tells only what somebody has asked for.
    QDBusMessage wish =
        QDBusMessage::createMethodCall(u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry"_s,
                                       u"org.a11y.atspi.Registry"_s, u"RegisterEvent"_s);
    wish.setArguments({u"object:state-changed:showing"_s, QStringList(), QString()});
    m_bus.call(wish);
}

bool AccessibleNotices::waitFor(const QString &notice, int milliseconds) {
    return QTest::qWaitFor([&] { return m_notices.contains(notice); }, milliseconds);
}

void AccessibleNotices::takeChange(const QDBusMessage &message) {
    const QVariantList change = message.arguments();
    const bool begins = change.value(0) == u"showing"_s && change.value(1).toInt() == 1;
    if (begins && ask(message.path(), accessible, u"GetRole"_s).toUInt() == notification)
        m_notices.append(
            ask(message.path(), u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {accessible, u"Name"_s})
                .value<QDBusVariant>()
                .variant()
                .toString());
}

QVariant AccessibleNotices::ask(const QString &path, const QString &interface, const QString &method,
                                const QVariantList &arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(m_service, path, interface, method);
    question.setArguments(arguments);
    return m_bus.call(question).arguments().value(0);
}
