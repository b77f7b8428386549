#include "e2e/Cluster.h"

#include "engine/EngineLaunch.h"
#include "platform/AtomicFile.h"
#include "platform/LoopbackPort.h"
#include "support/Await.h"
#include "support/DemoModel.h"

#include <QTcpSocket>

using namespace Qt::StringLiterals;

namespace {

void end(QProcess &process) {
    process.kill();
    process.waitForFinished();
}

bool listens(quint16 port) {
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, port);
    return socket.waitForConnected();
}

} // namespace

Cluster::~Cluster() {
    end(m_server);
    for (const auto &worker : m_workers)
        end(*worker);
}

bool Cluster::start(int workers) {
    for (int worker = 0; worker < workers; ++worker) {
        m_workerPorts.append(freeLoopbackPort().value());
        m_workers.push_back(std::make_unique<QProcess>());
        if (!startWorker(worker))
            return false;
    }
    m_port = freeLoopbackPort().value();
    return startServer();
}

bool Cluster::startAnew() {
    for (int worker = 0; worker < m_workerPorts.size(); ++worker) {
        if (m_workers.at(worker)->state() == QProcess::NotRunning && !startWorker(worker))
            return false;
    }
    const bool hasEnded = m_server.state() == QProcess::NotRunning || m_server.waitForFinished();
    return hasEnded && startServer();
}

bool Cluster::startWorker(int number) {
    QProcess &worker = *m_workers.at(number);
    const quint16 port = m_workerPorts.at(number);
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"GGML_RPC_DEBUG"_s, u"1"_s);
    worker.setProcessEnvironment(environment);
    worker.setStandardOutputFile(QProcess::nullDevice());
    worker.setStandardErrorFile(logFile(number));
    worker.start(QStringLiteral(WORKER_PATH), {u"--port"_s, QString::number(port), u"--threads"_s, u"1"_s});
    return worker.waitForStarted() && eventually([&] { return listens(port); });
}

bool Cluster::startServer() {
    QStringList workers;
    for (const quint16 port : m_workerPorts)
        workers.append(u"127.0.0.1:%1"_s.arg(port));
    QStringList arguments = serverArguments(demoModelPath(), m_port, QLatin1StringView(apiKey), 8192, 256);
    arguments << u"--rpc"_s << workers.join(u',');
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    m_server.start(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"), arguments);
    return eventually([this] { return await(healthStatus(m_port, {}, {})) == 200; }, 30'000);
}

QUrl Cluster::url() const {
    return QUrl(u"http://127.0.0.1:%1"_s.arg(m_port));
}

qsizetype Cluster::computations(int worker) const {
    // "[graph_compute] device: 0", and "[graph_recompute] device: 0" for the same layers again.
    return readFile(logFile(worker)).value_or(QByteArray()).count("compute] device");
}

void Cluster::killWorker(int worker) {
    end(*m_workers.at(worker));
}
