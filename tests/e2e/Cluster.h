#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>
#include <vector>

/// A model on several machines, each of them a process on the loopback: llama.cpp's server, which keeps no
/// layer to itself, and workers among which it deals them out. All end with this object.
class Cluster {
public:
    static constexpr const char *apiKey = "a key of the office";

    ~Cluster();

    /// Starts that many workers and then the server with the demo model, and waits until it takes requests.
    /// False if that doesn't come about; output() may tell why.
    bool start(int workers);

    /// Starts what has ended, each at its old address, as the services of those machines would, and waits as
    /// start() does.
    bool startAnew();

    /// Where the server answers.
    QUrl url() const;

    /// How often a worker has computed its layers so far: once a token, once or more a prompt.
    qsizetype computations(int worker) const;

    /// Pulls a worker's plug, and waits until it is gone.
    void killWorker(int worker);

    /// What the server printed.
    QByteArray output() { return m_server.readAll(); }

private:
    /// Starts the worker of that number at its address.
    bool startWorker(int number);
    bool startServer();

    QString logFile(qsizetype worker) const { return m_logs.filePath(QString::number(worker)); }

    const QTemporaryDir m_logs;
    QList<quint16> m_workerPorts;
    std::vector<std::unique_ptr<QProcess>> m_workers;
    QProcess m_server;
    quint16 m_port = 0;
};
