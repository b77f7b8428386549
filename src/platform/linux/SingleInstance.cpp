#include "platform/SingleInstance.h"

#include "platform/linux/BusPlace.h"
#include "platform/linux/SocketPlace.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

// Longer than a program needs that is asked while it quits: its successor then takes the place.
constexpr std::chrono::seconds longestWait(5);

// A window system takes a token in one message of at most 4096 bytes, and hangs up on a longer one.
constexpr qsizetype longestToken = 1000;

/// The variable as this process was started with it: the window system's library takes such variables
/// out of the environment.
QString startVariable(const QByteArray &name) {
    QFile file(u"/proc/self/environ"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &variable : file.readAll().split('\0')) {
        if (variable.startsWith(name + '='))
            return QString::fromLocal8Bit(variable.sliced(name.size() + 1));
    }
    return {};
}

/// The token, if it can be one.
QString checked(const QString &token) {
    const bool isPrintable =
        std::all_of(token.begin(), token.end(), [](QChar character) { return character.isPrint(); });
    return isPrintable && token.size() <= longestToken ? token : QString();
}

} // namespace

SingleInstance::SingleInstance(QObject *parent) : QObject(parent) {}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim() {
    const StartTokens tokens{checked(startVariable("XDG_ACTIVATION_TOKEN")),
                             checked(startVariable("DESKTOP_STARTUP_ID"))};
    const QDeadlineTimer deadline(longestWait);
    const auto isFirst = [&](std::unique_ptr<InstancePlace> place) -> std::optional<bool> {
        const InstancePlace::Claim result = place->claim(tokens, deadline);
        if (result == InstancePlace::Claim::nowhere)
            return std::nullopt;
        if (result == InstancePlace::Claim::taken)
            return false;
        connect(place.get(), &InstancePlace::activated, this,
                [this](const QString &token) { Q_EMIT activationRequested(checked(token)); });
        m_place = std::move(place);
        return true;
    };
    const std::optional<bool> onBus = isFirst(std::make_unique<BusPlace>());
    return onBus ? *onBus : isFirst(std::make_unique<SocketPlace>()).value_or(true);
}
