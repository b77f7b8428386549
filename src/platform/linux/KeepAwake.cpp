#include "platform/KeepAwake.h"

#include "platform/linux/Bus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>

using namespace Qt::StringLiterals;

// An inhibitor lock of org.freedesktop.login1 (systemd's inhibitor locks): it lasts until the last copy of
// the descriptor in the answer is closed.

namespace {

QDBusPendingCall inhibit(const QString &reason) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
                                       u"org.freedesktop.login1.Manager"_s, u"Inhibit"_s);
    call.setArguments({u"idle:sleep"_s, u"Ostrelin"_s, reason, u"block"_s});
    return systemBus().asyncCall(call);
}

} // namespace

/// The answer, which holds the descriptor. Letting go of it before it has come gives up the descriptor too.
class KeepAwake::Inhibitor {
public:
    explicit Inhibitor(const QString &reason) : m_answer(inhibit(reason)) {}

private:
    QDBusPendingCall m_answer;
};

KeepAwake::KeepAwake(const QString &reason) : m_inhibitor(std::make_unique<Inhibitor>(reason)) {}

KeepAwake::~KeepAwake() = default;
