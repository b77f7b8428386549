#include "tokens/RunningProgram.h"

#include "engine/EngineProcessBox.h"
#include "platform/Clock.h"
#include "records/Folders.h"
#include "support/Await.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>

#include <stdexcept>

RunningProgram::RunningProgram(const InstalledModel &model)
    : m_app(EngineProcessBox::shared(), Clock::system()),
      m_window(m_app, Clock::system()) {
    ensureFolders();
    QFile(modelsFolder() + u'/' + model.filename).open(QIODevice::WriteOnly);
    Settings settings;
    settings.installed = model;
    settings.didFinishWelcome = true;
    saveSettings(settings);
}

void RunningProgram::use(const QUrl &engine, const QString &key) {
    qputenv("OSTRELIN_ENGINE_URL", engine.toEncoded());
    qputenv("OSTRELIN_API_KEY", key.toUtf8());
    m_window.show();
    if (std::exchange(m_hasStarted, true))
        m_app.resolveModel();
    const auto isReady = [&] {
        return m_app.engineURL() == engine && std::holds_alternative<phase::Ready>(m_app.phase());
    };
    if (!eventually(isReady))
        throw std::runtime_error("the program didn't get ready");
}

void RunningProgram::setVisible(bool isVisible) {
    m_window.setVisible(isVisible);
    QCoreApplication::processEvents();
}

double RunningProgram::secondsOfReply(const QString &question) {
    ChatController &chat = m_app.chat();
    chat.newChat();
    QEventLoop loop;
    QElapsedTimer timer;
    qint64 end = 0;
    // What follows the reply, such as finding a title, isn't part of it.
    QObject::connect(&chat, &ChatController::streamingIDChanged, &loop, [&] {
        if (!chat.streamingID())
            end = timer.nsecsElapsed();
    });
    QObject::connect(&chat, &ChatController::isGeneratingChanged, &loop, [&] {
        if (!chat.isGenerating())
            loop.quit();
    });
    timer.start();
    chat.send(question);
    // A reply that is there at once ends within the call.
    if (chat.isGenerating())
        loop.exec();
    return static_cast<double>(end) / 1e9;
}

QString RunningProgram::reply() {
    return m_app.chat().conversation()->messages.last().content;
}
