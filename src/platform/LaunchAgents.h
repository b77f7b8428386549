#pragma once

#include "platform/ServiceCommand.h"
#include "platform/UserJobs.h"

/// Jobs as launch agents of launchd: a property list each in `Library/LaunchAgents` of the home folder
/// (launchd.plist(5)), handed over by `launchctl`. Nothing in it needs that system but the running of the
/// command.
class LaunchAgents : public UserJobs {
public:
    explicit LaunchAgents(const QString &homeFolder,
                          const QString &launchctl = QStringLiteral("/bin/launchctl"));

    void bootOut(const QString &label) override;
    void bootstrap(const UserJob &job) override;

private:
    const QString m_folder;
    ServiceCommand m_launchctl;
};
