#pragma once

#include "platform/ServiceCommand.h"
#include "platform/UserJobs.h"

/// Jobs as timers of the person's service manager (systemd.timer(5)): two units each, handed over by
/// `systemctl --user`.
class UserTimers : public UserJobs {
public:
    /// The units lie in `folder`; the command is at the path `systemctl`.
    UserTimers(const QString &folder, const QString &systemctl);

    void bootOut(const QString &label) override;
    void bootstrap(const UserJob &job) override;

private:
    const QString m_folder;
    ServiceCommand m_systemctl;
};
