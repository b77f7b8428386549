#include "platform/ServiceCommand.h"

#include "platform/ChildProcess.h"

#include <future>

ServiceCommand::ServiceCommand(const QString &path, std::chrono::milliseconds patience)
    : m_path(path),
      m_patience(patience) {}

void ServiceCommand::run(const QStringList &arguments) {
    if (!m_answers)
        return;
    std::promise<void> end;
    try {
        const ChildProcess child({.executable = m_path,
                                  .arguments = arguments,
                                  .environment = QProcessEnvironment::systemEnvironment(),
                                  .onOutput = {},
                                  .onError = {},
                                  .onExit = [&end] { end.set_value(); }});
        m_answers = end.get_future().wait_for(m_patience) == std::future_status::ready;
    } catch (const LaunchError &) {
        // A system without it.
    }
}
