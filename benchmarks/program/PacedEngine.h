#pragma once

#include <QList>
#include <QString>

#include <atomic>
#include <chrono>
#include <thread>

/// An engine that streams the same reply to every request: its head at once, a silence, and then one token an
/// interval, on the dot. A page from anywhere may read it. It serves one request after the other, on a thread
/// of its own.
class PacedEngine {
public:
    PacedEngine(const QList<QString> &tokens, std::chrono::nanoseconds interval,
                std::chrono::nanoseconds silence = {}, const QString &head = {});
    ~PacedEngine();
    PacedEngine(const PacedEngine &) = delete;
    PacedEngine &operator=(const PacedEngine &) = delete;

    QString url() const { return QStringLiteral("http://127.0.0.1:%1").arg(m_port); }

    /// How many requests have come, how many replies have begun with their tokens, and how many have been
    /// sent to their end.
    int asked() const { return m_asked; }
    int begun() const { return m_begun; }
    int sent() const { return m_sent; }

    /// How long the last reply took, from its first token.
    std::chrono::nanoseconds duration() const { return m_duration.load(); }

private:
    void serve();
    void reply(int connection);

    const QList<QByteArray> m_chunks;
    const std::chrono::nanoseconds m_interval;
    const std::chrono::nanoseconds m_silence;
    const QByteArray m_head;
    int m_listener;
    quint16 m_port = 0;
    std::atomic<int> m_asked = 0;
    std::atomic<int> m_begun = 0;
    std::atomic<int> m_sent = 0;
    std::atomic<std::chrono::nanoseconds> m_duration{};
    std::thread m_thread;
};
