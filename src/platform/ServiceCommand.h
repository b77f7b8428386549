#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

/// The command by which a system's keeper of services is told what to do; for the insides of this room. What
/// it prints and how it ends isn't looked at.
class ServiceCommand {
public:
    /// The executable at `path`, with so much patience for each run of it.
    explicit ServiceCommand(const QString &path,
                            std::chrono::milliseconds patience = std::chrono::seconds(10));

    /// Runs it and waits for its end. One that takes longer is killed, and no further one is run. Any thread.
    void run(const QStringList &arguments);

private:
    const QString m_path;
    const std::chrono::milliseconds m_patience;
    bool m_answers = true;
};
