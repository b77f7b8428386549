#include "e2e/ProcessStatus.h"
#include "e2e/RunningProgram.h"
#include "e2e/TopLevelWindow.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTest>

#include <iostream>
#include <stdexcept>

/// Tries the program out, as its first user would: starts it in an application folder of its own, leaves
/// the welcome screen, waits for the chat, presses the first suggestion, waits for the whole reply, takes
/// a picture of the window and closes it. Prints the reply and where the picture lies; the status is 0
/// only if all that went.
///
///   ostrelin-try <program> <picture.png>

using namespace Qt::StringLiterals;

namespace {

constexpr int startTimeout = 120'000;
constexpr int replyTimeout = 300'000;
const QString suggestion = u"Write a friendly note thanking a coworker for helping me hit a deadline."_s;

/// Why the attempt failed, in one sentence.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

void require(bool condition, const char *sentence) {
    if (!condition)
        throw Failure(sentence);
}

void waitForChat(RunningProgram &program) {
    AccessibleWindow &window = program.window();
    const auto welcomes = [&] { return window.shows(u"Get started"_s, AccessibleRole::pushButton); };
    require(QTest::qWaitFor([&] { return !isAlive(program.pid()) || welcomes(); }, startTimeout) &&
                window.press(u"Get started"_s),
            "the window showed no welcome within two minutes");
    const auto failed = [&] { return window.shows(u"Try again"_s, AccessibleRole::pushButton); };
    const auto ready = [&] { return window.shows(suggestion, AccessibleRole::pushButton); };
    const bool came =
        QTest::qWaitFor([&] { return !isAlive(program.pid()) || failed() || ready(); }, startTimeout);
    require(isAlive(program.pid()), "the program ended instead of showing its window");
    require(came, "the window showed no chat within two minutes");
    require(ready(), "the program couldn't start its engine");
}

QString askForReply(RunningProgram &program) {
    AccessibleWindow &window = program.window();
    require(window.press(suggestion), "the first suggestion couldn't be pressed");
    QStringList said;
    const bool answered = QTest::qWaitFor(
        [&] {
            said = window.said(u"Ostrelin"_s);
            return !said.value(0).isEmpty() && window.shows(u"Send message"_s, AccessibleRole::pushButton);
        },
        replyTimeout);
    require(answered, "no reply came within five minutes");
    // The last words may have come between the two questions above.
    const QString reply = window.said(u"Ostrelin"_s).value(0);
    require(reply != u"Ostrelin couldn't complete that reply."_s && reply != u"Ostrelin isn't ready yet."_s,
            "the engine gave no reply");
    return reply;
}

/// The window as it looks when nothing in it moves any more, or after three seconds.
void savePicture(const RunningProgram &program, const QString &path) {
    constexpr int pause = 150;
    constexpr int patience = 3000;
    const auto look = [&] {
        return QGuiApplication::primaryScreen()->grabWindow(topLevelWindow(program.pid())).toImage();
    };
    QElapsedTimer timer;
    timer.start();
    QImage before;
    QImage now = look();
    while (now != before && timer.elapsed() < patience) {
        QTest::qWait(pause);
        before = std::exchange(now, look());
    }
    require(!now.isNull() && now.save(path), "the picture of the window couldn't be saved");
}

void end(RunningProgram &program) {
    const qint64 engine = program.enginePid();
    require(engine > 0, "the program has no engine process");
    require(program.closeWindow(), "the window is gone");
    require(program.waitForEnd() && program.endedOrderly(),
            "the program didn't end when its window was closed");
    require(!isAlive(engine), "the program has left its engine behind");
}

void tryOut(const QString &executable, const QString &picture) {
    RunningProgram program(executable);
    require(program.start(), "the program couldn't be started");
    waitForChat(program);
    const QString reply = askForReply(program);
    savePicture(program, picture);
    end(program);
    std::cout << "You: " << suggestion.toStdString() << "\n\nOstrelin: " << reply.toStdString()
              << "\n\nThe window's picture: " << picture.toStdString() << std::endl;
}

} // namespace

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    QTemporaryDir folder;
    qputenv("XDG_DATA_HOME", folder.path().toLocal8Bit());
    // Several threads would wait for each other on a machine that is busy with something else.
    if (!qEnvironmentVariableIsSet("LLAMA_ARG_THREADS"))
        qputenv("LLAMA_ARG_THREADS", "1");
    try {
        require(arguments.size() == 3, "usage: ostrelin-try <program> <picture.png>");
        tryOut(arguments.at(1), arguments.at(2));
        return 0;
    } catch (const Failure &failure) {
        std::cerr << "ostrelin-try: " << failure.what() << std::endl;
        return 1;
    }
}
