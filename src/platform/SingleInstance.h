#pragma once

#include <QObject>
#include <QString>

#include <memory>

class InstancePlace;

/// Makes the interactive program the only one in a person's session. Main thread only.
///
/// On a desktop the first one owns a name on the session bus and can be activated there by whoever wants
/// to see it; elsewhere a socket in the person's runtime folder does the same. The place is given up
/// when this object goes, and by the system when the process dies: let it outlive everything that a next
/// start would disturb.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(QObject *parent = nullptr);
    ~SingleInstance() override;

    /// True if this process is the first, or if the system offers no way to find out. False if another one
    /// runs: it has been asked to show itself, and this one should end. Waits at most five seconds for one
    /// that doesn't answer. Called once, with an application object.
    bool claim();

Q_SIGNALS:
    /// Somebody wants to see the program. The token is what the window system wants in exchange for the
    /// focus (the XDG activation token of Wayland, the startup id of X11); empty if there is none.
    void activationRequested(const QString &activationToken);

private:
    std::unique_ptr<InstancePlace> m_place;
};
