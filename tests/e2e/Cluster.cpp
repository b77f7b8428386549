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
        if (!startWorker())
            return false;
    }
    m_port = freeLoopbackPort().value();
    QStringList arguments = serverArguments(demoModelPath(), m_port, QLatin1StringView(apiKey), 8192, 256);
    arguments << u"--rpc"_s << m_workerAddresses.join(u',');
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    m_server.start(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"), arguments);
    return eventually([this] { return await(healthStatus(m_port, {}, {})) == 200; }, 30'000);
}

bool Cluster::startWorker() {
    const quint16 port = freeLoopbackPort().value();
    m_workerAddresses.append(u"127.0.0.1:%1"_s.arg(port));
    m_workers.push_back(std::make_unique<QProcess>());
    QProcess &worker = *m_workers.back();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"GGML_RPC_DEBUG"_s, u"1"_s);
    worker.setProcessEnvironment(environment);
    worker.setStandardOutputFile(QProcess::nullDevice());
    worker.setStandardErrorFile(logFile(m_workerAddresses.size() - 1));
    worker.start(QStringLiteral(WORKER_PATH), {u"--port"_s, QString::number(port), u"--threads"_s, u"1"_s});
    return worker.waitForStarted() && eventually([&] { return listens(port); });
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
