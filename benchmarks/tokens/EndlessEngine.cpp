#include "tokens/EndlessEngine.h"

#include "engine/EngineLaunch.h"
#include "figures/ProcessorTime.h"
#include "platform/LoopbackPort.h"
#include "support/Await.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

EndlessEngine::EndlessEngine(const QString &server, const QString &model, int contextLength)
    : m_port(freeLoopbackPort().value_or(0)),
      m_key(randomAPIKey()) {
    m_process.setProcessEnvironment(serverEnvironment(QProcessEnvironment::systemEnvironment()));
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.start(server, serverArguments(model, m_port, m_key, contextLength, 0) << u"--ignore-eos"_s);
    while (m_process.state() != QProcess::NotRunning) {
        if (await(healthStatus(m_port, m_key, {})) == 200)
            return;
        letPass(50);
    }
    throw std::runtime_error("the engine didn't start");
}

EndlessEngine::~EndlessEngine() {
    m_process.kill();
    m_process.waitForFinished();
}

double EndlessEngine::processorSeconds() const {
    return processorSecondsOf(m_process.processId());
}
