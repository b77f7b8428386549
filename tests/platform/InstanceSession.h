#pragma once

#include "platform/ChildProcess.h"
#include "support/Await.h"
#include "support/PrivateBus.h"

#include <QList>
#include <QTemporaryDir>

#include <csignal>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

/// A start of the program in a process of its own, which lives no longer than this object.
class Start {
public:
    explicit Start(const QProcessEnvironment &environment)
        : m_process({.executable = QStringLiteral(INSTANCE_STARTER),
                     .arguments = {},
                     .environment = environment,
                     .onOutput =
                         [printed = m_printed](QByteArrayView piece) {
                             const std::lock_guard guard(printed->lock);
                             printed->text += piece;
                         },
                     .onError = {},
                     .onExit = {}}) {}

    /// The lines so far.
    QList<QByteArray> lines() const {
        const std::lock_guard guard(m_printed->lock);
        QList<QByteArray> all = m_printed->text.split('\n');
        all.removeLast();
        return all;
    }

    bool isFirst() const { return lines().value(0) == "first"; }
    bool isSecond() const { return lines().value(0) == "second"; }
    bool isRunning() const { return m_process.isRunning(); }
    bool becomesFirst() const {
        return eventually([&] { return isFirst(); }, longestWait);
    }
    bool endsAsSecond() const {
        return eventually([&] { return isSecond() && !isRunning(); }, longestWait);
    }
    bool hears(const QByteArray &line) const {
        return eventually([&] { return lines().contains(line); }, longestWait);
    }
    void signal(int number) const { ::kill(static_cast<pid_t>(m_process.processIdentifier()), number); }

private:
    static constexpr int longestWait = 30'000;

    struct Printed {
        std::mutex lock;
        QByteArray text;
    };

    std::shared_ptr<Printed> m_printed = std::make_shared<Printed>();
    ChildProcess m_process;
};

enum class Desktop { withBus, without };

/// A person's session: a runtime folder, with a bus or without.
class Session {
public:
    explicit Session(Desktop desktop) {
        m_environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name :
             {QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("XDG_ACTIVATION_TOKEN"),
              QStringLiteral("DESKTOP_STARTUP_ID")})
            m_environment.remove(name);
        m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime());
        if (desktop == Desktop::withBus)
            m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_bus.emplace().address());
    }

    QString runtime() const { return m_runtime.path(); }
    PrivateBus &bus() { return *m_bus; }

    std::unique_ptr<Start> start(const QList<std::pair<QString, QString>> &variables = {}) const {
        QProcessEnvironment environment = m_environment;
        for (const auto &[name, value] : variables)
            environment.insert(name, value);
        return std::make_unique<Start>(environment);
    }

private:
    QTemporaryDir m_runtime;
    std::optional<PrivateBus> m_bus;
    QProcessEnvironment m_environment;
};
