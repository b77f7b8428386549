#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QString>

/// What a desktop hands to a program that it starts, for the exchange against the focus.
struct StartTokens {
    QString activationToken; ///< XDG_ACTIVATION_TOKEN
    QString startupId;       ///< DESKTOP_STARTUP_ID
};

/// A place that only one process of a session can hold, and through which the others can reach it; an
/// inside of SingleInstance. Destroying it gives the place up.
class InstancePlace : public QObject {
    Q_OBJECT

public:
    enum class Claim {
        ours,    ///< the place is held until this object goes
        taken,   ///< another process holds it; it was asked to show itself, if it could be reached
        nowhere, ///< this machine has no such place
    };

    /// Tries to hold the place, and asks whoever holds it to show itself. A holder that dies meanwhile
    /// is succeeded, one that doesn't answer is waited for until the deadline.
    virtual Claim claim(const StartTokens &tokens, QDeadlineTimer deadline) = 0;

Q_SIGNALS:
    /// Another process wants this one to show itself. What came from it is of any length and content.
    void activated(const QString &token);
};
