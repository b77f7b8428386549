#pragma once

#include "engine/EngineStatus.h"
#include "platform/TaskHandle.h"
#include "records/LineSplitter.h"
#include "records/RingBuffer.h"

#include <QObject>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class Clock;
class EngineProcessBox;

/// Runs llama-server, llama.cpp's inference server, as a child process and tells when it takes
/// requests. The server listens on the loopback alone, on a port chosen at each start, behind a key
/// made at each start. Main thread only.
class EngineManager : public QObject {
    Q_OBJECT

public:
    /// `box` holds the child and must outlive this object, as must `clock`.
    EngineManager(EngineProcessBox &box, Clock &clock, QObject *parent = nullptr);
    ~EngineManager() override;

    const EngineStatus &status() const { return m_status; }

    /// Where the server answers, without a trailing slash; nothing while there is none.
    const std::optional<QUrl> &baseURL() const { return m_baseURL; }

    /// The bearer token of the server; empty if it wants none.
    const QString &apiKey() const { return m_apiKey; }

    /// What the server printed last, both streams.
    std::shared_ptr<RingBuffer> logs() const { return m_logs; }

#ifndef Q_MOC_RUN
    /// Starts the server with a model file and a context of that many tokens, and returns when it is
    /// ready. A server that doesn't get there is started a second time; then EngineError is thrown, or
    /// Cancelled once `stop` is requested. With OSTRELIN_ENGINE_URL set, that server is used instead and
    /// nothing is started.
    Task<> start(QString modelPath, qint64 contextLength, std::stop_token stop);
#endif

    /// Ends the server and waits for that, up to three seconds.
    void stop();

Q_SIGNALS:
    void statusChanged();
    void baseURLChanged();
    void apiKeyChanged();

private:
#ifndef Q_MOC_RUN
    Task<> launch(QString modelPath, qint64 contextLength, std::stop_token stop);
    Task<> waitForHealth(quint16 port, QString key, std::stop_token stop);
    Task<> monitor(quint16 port, QString key, std::stop_token stop);
#endif
    void startChild(const QString &binary, const QStringList &arguments);
    void unexpectedExit();
    QString recentLogTail() const;
    void setStatus(const EngineStatus &status);
    void setBaseURL(const std::optional<QUrl> &url);
    void setApiKey(const QString &key);

    EngineProcessBox &m_box;
    Clock &m_clock;
    EngineStatus m_status;
    std::optional<QUrl> m_baseURL;
    QString m_apiKey;
    std::shared_ptr<RingBuffer> m_logs;
    TaskHandle m_healthTask;
    int m_launches = 0; ///< tells the exit of the present child from that of one before
};
