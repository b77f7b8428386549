#include "engine/EngineManager.h"

#include "engine/EngineLaunch.h"
#include "engine/EngineProcessBox.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/LoopbackPort.h"
#include "platform/Mailbox.h"
#include "records/Options.h"

#include <QPointer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using State = EngineStatus::State;

EngineManager::EngineManager(EngineProcessBox &box, Clock &clock, QObject *parent)
    : QObject(parent),
      m_box(box),
      m_clock(clock),
      m_logs(std::make_shared<RingBuffer>()) {}

EngineManager::~EngineManager() = default;

Task<> EngineManager::start(QString modelPath, qint64 contextLength, std::stop_token stop) {
    const auto environment = QProcessEnvironment::systemEnvironment();
    const QUrl given(environment.value(u"OSTRELIN_ENGINE_URL"_s));
    if (given.isValid() && !given.isEmpty()) {
        setApiKey(environment.value(u"OSTRELIN_API_KEY"_s));
        setBaseURL(given);
        setStatus({State::ready, {}});
        co_return;
    }
    this->stop();
    const QPointer self(this);
    int launches = m_launches + 1;
    try {
        try {
            co_await launch(modelPath, contextLength, stop);
            co_return;
        } catch (const EngineError &error) {
            if (error.kind() == EngineError::Kind::missingBinary)
                throw;
        } catch (const Cancelled &) {
            throw;
        } catch (...) {
            // Whatever it was, the second attempt may do better.
        }
        this->stop();
        launches = m_launches + 1;
        co_await launch(modelPath, contextLength, stop);
    } catch (const Cancelled &) {
        // Nobody waits for the server any more, so it must not stay behind. But another start may have put
        // its own in the place already.
        if (self && self->m_launches == launches)
            self->stop();
        throw;
    }
}

void EngineManager::stop() {
    m_healthTask.cancel();
    m_box.terminate();
    setStatus({State::stopped, {}});
    setBaseURL(std::nullopt);
}

Task<> EngineManager::launch(QString modelPath, qint64 contextLength, std::stop_token stop) {
    if (stop.stop_requested())
        throw Cancelled();
    const auto binary = findServerBinary(QProcessEnvironment::systemEnvironment(), mainBundleFolder());
    if (!binary)
        throw EngineError(EngineError::Kind::missingBinary);
    const auto port = freeLoopbackPort();
    if (!port)
        throw EngineError(EngineError::Kind::port);
    const QString key = randomAPIKey();
    setApiKey(key);
    setBaseURL(QUrl(u"http://127.0.0.1:%1"_s.arg(*port)));
    setStatus({State::starting, {}});

    const qint64 budget = reasoningBudget(optionValue(u"reasoning-budget"_s));
    startChild(*binary, serverArguments(modelPath, *port, key, contextLength, budget));
    co_await waitForHealth(*port, key, stop);
    setStatus({State::ready, {}});
    m_healthTask.start([&](std::stop_token monitorStop) { return monitor(*port, key, monitorStop); });
}

void EngineManager::startChild(const QString &binary, const QStringList &arguments) {
    // One splitter a stream, so that half a line of one doesn't mix with the other.
    const auto toLogs = [logs = m_logs] {
        return [logs, splitter = std::make_shared<LineSplitter>()](QByteArrayView piece) {
            splitter->feed(piece, *logs);
        };
    };
    const auto tellExit = [self = QPointer(this), launch = ++m_launches] {
        Mailbox::main().post([self, launch] {
            if (self && self->m_launches == launch)
                self->unexpectedExit();
        });
    };
    try {
        m_box.launch({.executable = binary,
                      .arguments = arguments,
                      .environment = serverEnvironment(QProcessEnvironment::systemEnvironment()),
                      .onOutput = toLogs(),
                      .onError = toLogs(),
                      .onExit = tellExit});
    } catch (const LaunchError &error) {
        throw EngineError(EngineError::Kind::exited, QString::fromLocal8Bit(error.what()));
    }
    m_box.writePidFile();
}

Task<> EngineManager::waitForHealth(quint16 port, QString key, std::stop_token stop) {
    const auto deadline = m_clock.elapsed() + 120s;
    while (true) {
        // Whoever destroys this object requests the stop first, so it is asked before anything else.
        if (stop.stop_requested())
            throw Cancelled();
        if (m_clock.elapsed() > deadline)
            throw EngineError(EngineError::Kind::timeout);
        if (!m_box.isRunning())
            throw EngineError(EngineError::Kind::exited, recentLogTail());
        const int status = co_await healthStatus(port, key, stop);
        if (stop.stop_requested())
            throw Cancelled();
        if (status == 200)
            co_return;
        if (status == 503)
            setStatus({State::loading, {}});
        co_await m_clock.sleep(500ms, stop);
    }
}

Task<> EngineManager::monitor(quint16 port, QString key, std::stop_token stop) {
    Clock &clock = m_clock;
    while (true) {
        co_await clock.sleep(2s, stop);
        const int status = co_await healthStatus(port, key, stop);
        if (stop.stop_requested())
            co_return;
        if (status == 200)
            setStatus({State::ready, {}});
    }
}

void EngineManager::unexpectedExit() {
    m_healthTask.cancel();
    if (m_box.expectsExit() || m_status.state != State::ready)
        return;
    const QString tail = recentLogTail();
    setStatus(EngineStatus::failed(tail.isEmpty() ? u"Ostrelin couldn't start."_s : tail));
}

QString EngineManager::recentLogTail() const {
    constexpr qsizetype lines = 8;
    QStringList kept = m_logs->snapshot().join(u'\n').split(u'\n', Qt::SkipEmptyParts);
    return kept.mid(std::max<qsizetype>(0, kept.size() - lines)).join(u'\n');
}

void EngineManager::setStatus(const EngineStatus &status) {
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}

void EngineManager::setBaseURL(const std::optional<QUrl> &url) {
    if (m_baseURL == url)
        return;
    m_baseURL = url;
    Q_EMIT baseURLChanged();
}

void EngineManager::setApiKey(const QString &key) {
    if (m_apiKey == key)
        return;
    m_apiKey = key;
    Q_EMIT apiKeyChanged();
}
