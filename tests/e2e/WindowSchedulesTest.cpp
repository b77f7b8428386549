#include "e2e/TopLevelWindow.h"
#include "e2e/WindowFixture.h"
#include "platform/AtomicFile.h"
#include "records/ChatStore.h"
#include "records/Coder.h"
#include "schedules/Agents.h"
#include "schedules/ScheduleStore.h"
#include "support/EnvironmentVariable.h"
#include "support/NotificationService.h"
#include "support/RecordingCommand.h"

#include <QFileInfo>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// The window of scheduled runs, with a stand-in for the command that the system's jobs are handed to.
class WindowSchedules : public WindowFixture {
protected:
    void openWindow() {
        ASSERT_TRUE(focusTopLevelWindow(program.pid()));
        ASSERT_TRUE(window().typeWithControl(','));
        ASSERT_TRUE(window().waitFor(u"Scheduled runs"_s, AccessibleRole::listItem));
        ASSERT_TRUE(window().press(u"Scheduled runs"_s, AccessibleRole::listItem));
        ASSERT_TRUE(window().waitFor(u"Manage scheduled runs…"_s, AccessibleRole::pushButton));
        ASSERT_TRUE(window().press(u"Manage scheduled runs…"_s));
        ASSERT_TRUE(window().waitFor(u"New"_s, AccessibleRole::pushButton));
    }

    void press(const QString &word, AccessibleRole role = AccessibleRole::pushButton) {
        ASSERT_TRUE(window().waitFor(word, role)) << word.toStdString();
        ASSERT_TRUE(window().press(word, role)) << word.toStdString();
    }

    bool lists(const QString &name) { return window().waitFor(name, AccessibleRole::listItem); }

    /// Waits until the only schedule on the disk is as `isRight` wants it.
    template<typename Condition>
    static bool isOnDisk(Condition isRight) {
        return eventually([&] {
            const QList<Schedule> all = loadSchedules();
            return all.size() == 1 && isRight(all.first());
        });
    }

    /// How often a timer has been handed to the system.
    qsizetype timersStarted() const {
        const QList<QStringList> calls = systemctl.calls();
        return std::count_if(calls.begin(), calls.end(),
                             [](const QStringList &call) { return call.contains(u"enable"_s); });
    }

    RecordingCommand systemctl{u"systemctl"_s};
    EnvironmentVariable path{"PATH",
                             QFileInfo(systemctl.path()).path().toLocal8Bit() + ':' + qgetenv("PATH")};
};

} // namespace

TEST_F(WindowSchedules, aScheduleIsMadeChangedTurnedOffKeptAndDeleted) {
    startProgram();
    openWindow();
    press(u"New"_s);
    ASSERT_TRUE(window().waitFor(u"Prompt"_s, AccessibleRole::text));
    ASSERT_TRUE(window().setText(u"Name"_s, u"Morning"_s));
    ASSERT_TRUE(window().setText(u"Prompt"_s, u"What is new?"_s));
    press(u"Run even when Ostrelin is closed"_s, AccessibleRole::checkBox);
    press(u"Save"_s);
    ASSERT_TRUE(lists(u"Morning"_s));
    ASSERT_TRUE(isOnDisk([](const Schedule &each) {
        return each.title == u"Morning"_s && each.prompt == u"What is new?"_s && each.runInBackground &&
               each.enabled && each.hour == 9;
    }));
    const QUuid id = loadSchedules().first().id;
    EXPECT_TRUE(eventually([this] { return timersStarted() == 1; }));
    EXPECT_TRUE(systemctl.calls().last().last().contains(agentLabel(id)));
    const QString unit = u"/systemd/user/%1.service"_s.arg(agentLabel(id));
    const auto service = readFile(program.configurationFolder() + unit);
    const QFileInfo executable(QStringLiteral(PROGRAM_PATH));
    const QString command = u"\"%1\" \"--run-schedule\" \"%2\"\n"_s;
    EXPECT_TRUE(QString::fromUtf8(service.value_or(QByteArray()))
                    .contains(command.arg(executable.canonicalFilePath(), encodeUuid(id))));

    press(u"Edit"_s);
    ASSERT_TRUE(window().waitFor(u"Name"_s, AccessibleRole::text));
    EXPECT_EQ(window().text(u"Name"_s), u"Morning"_s);
    ASSERT_TRUE(window().setText(u"Name"_s, u"Dawn"_s));
    press(u"Save"_s);
    ASSERT_TRUE(lists(u"Dawn"_s));
    EXPECT_TRUE(eventually([this] { return timersStarted() == 2; }));

    press(u"Dawn"_s, AccessibleRole::checkBox);
    ASSERT_TRUE(isOnDisk([](const Schedule &each) { return !each.enabled; }));
    EXPECT_FALSE(window().isChosen(u"Dawn"_s, AccessibleRole::checkBox));

    program.signal(SIGTERM);
    ASSERT_TRUE(program.waitForEnd());
    startProgram();
    openWindow();
    ASSERT_TRUE(lists(u"Dawn"_s));
    EXPECT_FALSE(window().isChosen(u"Dawn"_s, AccessibleRole::checkBox));
    EXPECT_EQ(timersStarted(), 2) << "a disabled one is handed to nobody";

    press(u"Edit"_s);
    press(u"Delete"_s);
    ASSERT_TRUE(window().waitUntilGone(u"Dawn"_s, AccessibleRole::listItem));
    EXPECT_TRUE(loadSchedules().isEmpty());
    EXPECT_TRUE(window().waitFor(u"No scheduled runs yet."_s, AccessibleRole::label));
}

TEST_F(WindowSchedules, oneThatIsRunByHandIsAChatAndTheDesktopTellsOfIt) {
    const Schedule disabled{.id = QUuid::createUuid(), .title = u"Morning"_s, .prompt = u"Hello!"_s};
    saveSchedules({disabled});
    const NotificationService service(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
    startProgram();
    openWindow();
    press(u"Run now"_s);
    ASSERT_TRUE(eventually([&] { return service.shown().size() == 1; }, 60'000));
    EXPECT_EQ(service.shown().first().title, u"Morning"_s);
    EXPECT_EQ(service.shown().first().body, u"Your scheduled run is ready."_s);
    const Conversation chat = savedChat();
    EXPECT_EQ(chat.title, u"Morning"_s);
    ASSERT_EQ(chat.messages.size(), 2);
    EXPECT_EQ(chat.messages.first().content, u"Hello!"_s);
    EXPECT_FALSE(chat.messages.last().content.isEmpty());
    EXPECT_TRUE(isOnDisk([&](const Schedule &each) { return each.lastRun && each.lastChatId == chat.id; }));
}
