#include "core/AppState.h"
#include "engine/EngineProcessBox.h"
#include "platform/Clock.h"
#include "platform/Mailbox.h"
#include "platform/TerminationSignals.h"
#include "screens/HouseStyle.h"
#include "screens/MainWindow.h"

#include <QApplication>

using namespace Qt::StringLiterals;

int main(int argc, char **argv) {
    QApplication::setApplicationName(u"Ostrelin"_s);
    QApplication::setOrganizationName(u"Ostrelin"_s);
    QApplication::setDesktopFileName(u"com.quennarbel.ostrelin"_s);
    QApplication::setApplicationVersion(QStringLiteral(OSTRELIN_VERSION));
    QApplication::setStyle(new HouseStyle);
    QApplication application(argc, argv);
    Mailbox::main();

    AppState app(EngineProcessBox::shared(), Clock::system());
    onTerminationSignal([] { QApplication::quit(); });
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &app, &AppState::shutDown);
    MainWindow window(app, Clock::system());
    window.show();
    return QApplication::exec();
}
