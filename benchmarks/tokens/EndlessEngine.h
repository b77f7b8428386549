#pragma once

#include <QByteArray>
#include <QProcess>
#include <QUrl>

/// The real engine with the demo model, started as the program starts it, but for two things: it never
/// ends a reply by itself, and its context is small; so every reply is exactly as long as the context.
class EndlessEngine {
public:
    /// Starts it and waits until it takes requests. Throws std::runtime_error if it never does.
    EndlessEngine(const QString &server, const QString &model, int contextLength);
    ~EndlessEngine();
    EndlessEngine(const EndlessEngine &) = delete;
    EndlessEngine &operator=(const EndlessEngine &) = delete;

    quint16 port() const { return m_port; }
    QUrl url() const { return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_port)); }
    QString key() const { return m_key; }

    /// What the engine has used of processors so far. Throws std::runtime_error if it has ended.
    double processorSeconds() const;

private:
    quint16 m_port;
    QString m_key;
    QProcess m_process;
};
