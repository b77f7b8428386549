#include "core/AppState.h"
#include "core/ProcessRole.h"
#include "core/ProgramVersion.h"
#include "engine/EngineProcessBox.h"
#include "platform/AtomicFile.h"
#include "platform/Clock.h"
#include "platform/FolderLock.h"
#include "platform/Mailbox.h"
#include "platform/SingleInstance.h"
#include "platform/TaskHandle.h"
#include "platform/TerminationSignals.h"
#include "records/Folders.h"
#include "schedules/HeadlessRun.h"
#include "screens/HouseStyle.h"
#include "screens/MainWindow.h"

#include <QApplication>
#include <QFileInfo>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

void nameApplication() {
    QCoreApplication::setApplicationName(u"Ostrelin"_s);
    QCoreApplication::setOrganizationName(u"Ostrelin"_s);
    QCoreApplication::setApplicationVersion(programVersion().version);
}

/// The folder that everything is kept beside: the application folder itself may be deleted and made anew.
QString dataFolder() {
    QString folder = QFileInfo(applicationFolder()).path();
    try {
        ensureFolder(folder);
    } catch (const FileError &) {
        // The start tells the person that nothing can be kept.
    }
    return folder;
}

Task<> runThenQuit(QUuid schedule, std::stop_token stop) {
    // By the event loop, which may not be there yet.
    const auto quit = qScopeGuard([] { Mailbox::main().post(&QCoreApplication::quit); });
    co_await runHeadlessSchedule(schedule, {}, stop);
}

/// The run of one scheduled prompt: without a screen, and without a window even where there is one. Whoever
/// started it learns nothing of how it went; the person does.
int runHeadless(int argc, char **argv, const QUuid &schedule) {
    const QCoreApplication application(argc, argv);
    TaskHandle run;
    onTerminationSignal([&run] { run.cancel(); });
    run.start([&](std::stop_token stop) { return runThenQuit(schedule, stop); });
    QCoreApplication::exec();
    EngineProcessBox::shared().terminate();
    return EXIT_SUCCESS;
}

int runInteractive(int argc, char **argv) {
    QGuiApplication::setDesktopFileName(u"com.quennarbel.ostrelin"_s);
    QApplication::setStyle(new HouseStyle);
    QApplication application(argc, argv);

    // A second program would end the first one's engine.
    SingleInstance instance;
    if (!instance.claim())
        return EXIT_SUCCESS;
    // Not even from another session of the person's.
    const FolderLock lock(dataFolder());
    if (!lock.isHeld()) {
        qCritical("Ostrelin is running in another session already.");
        return EXIT_FAILURE;
    }

    AppState app(EngineProcessBox::shared(), Clock::system());
    onTerminationSignal([] { QApplication::quit(); });
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &app, &AppState::shutDown);
    MainWindow window(app, Clock::system());
    QObject::connect(&instance, &SingleInstance::activationRequested, &window, &MainWindow::comeToFront);
    window.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv) {
    nameApplication();
    const std::optional<QUuid> schedule = headlessScheduleID();
    return schedule ? runHeadless(argc, argv, *schedule) : runInteractive(argc, argv);
}
