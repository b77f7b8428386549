#include "core/AppStateFixture.h"
#include "core/ProcessRole.h"
#include "schedules/ScheduleStore.h"

#include <QProcess>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// The scheduler inside the application: when it runs, and what becomes of it.

namespace {

class AppStateScheduleTest : public AppStateFixture {
protected:
    AppStateScheduleTest() {
        hasModel(small);
        serveCatalog({small});
    }

    /// One that comes due with the next tick.
    Schedule dueSoon() const {
        return {.id = QUuid(u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s),
                .title = u"Morning"_s,
                .prompt = u"What is good today?"_s,
                .recurrence = ScheduleRecurrence::once,
                .onceDate = clock.now().addSecs(10),
                .enabled = true};
    }

    const ModelTier small = tier(u"small"_s, "the weights of a model");
};

} // namespace

TEST_F(AppStateScheduleTest, theSchedulerBeginsWhenTheChatIsThere) {
    saveSchedules({dueSoon()});
    EXPECT_TRUE(app->scheduler().schedules().isEmpty());
    bool beganTooSoon = true;
    QObject::connect(app.get(), &AppState::phaseChanged, app.get(), [&] {
        if (std::holds_alternative<phase::Starting>(app->phase()))
            beganTooSoon = !app->scheduler().schedules().isEmpty();
    });
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_FALSE(beganTooSoon);
    EXPECT_EQ(app->scheduler().schedules(), loadSchedules());
    EXPECT_TRUE(eventually([this] {
        const std::lock_guard guard(syncLock);
        return synced.size() == 1 && synced.first() == loadSchedules();
    }));
}

TEST_F(AppStateScheduleTest, whatComesDueRunsInTheChat) {
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    saveSchedules({dueSoon()});
    app->scheduler().reload();
    // The stand-in for the engine answers with nothing, and the chat has its words for that.
    ASSERT_TRUE(settles([this] { return !notified.isEmpty(); }));
    EXPECT_EQ(notified, QStringList{u"Morning: Your scheduled run is ready."_s});
    const Conversation &chat = *app->chat().conversation();
    EXPECT_EQ(chat.title, u"Morning"_s);
    EXPECT_EQ(chat.messages.first().content, u"What is good today?"_s);
    EXPECT_EQ(loadSchedules().first().lastChatId, chat.id);
}

TEST_F(AppStateScheduleTest, outsideOfTheReadyPhaseNothingRuns) {
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    app->deleteModel();
    network.answer(Script(500));
    ASSERT_TRUE(reaches<phase::Error>());
    saveSchedules({dueSoon()});
    app->scheduler().reload();
    app->scheduler().run(dueSoon());
    for (int tick = 0; tick < 4; ++tick) {
        clock.advance(30s);
        letPass(10);
    }
    EXPECT_TRUE(notified.isEmpty());
    EXPECT_FALSE(loadSchedules().first().lastRun);
}

TEST_F(AppStateScheduleTest, whenEverythingIsDeletedTheListStaysAndNothingRuns) {
    app->bootstrap();
    ASSERT_TRUE(reaches<phase::Ready>());
    saveSchedules({dueSoon()});
    app->deleteEverything();
    EXPECT_EQ(app->scheduler().schedules().size(), 1);
    EXPECT_TRUE(loadSchedules().isEmpty());
    for (int tick = 0; tick < 4; ++tick) {
        clock.advance(30s);
        letPass(10);
    }
    EXPECT_TRUE(notified.isEmpty());
    EXPECT_FALSE(QFile::exists(schedulesFile()));
    EXPECT_EQ(app->scheduler().schedules().size(), 1);
}

TEST_F(AppStateScheduleTest, inTheProcessOfAScheduledRunTheStartDoesNothing) {
    if (isHeadless()) {
        app->bootstrap();
        EXPECT_FALSE(eventually([this] { return !isIn<phase::Checking>(app->phase()); }, 1000));
        return;
    }
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(),
                {u"--gtest_filter=*.inTheProcessOfAScheduledRunTheStartDoesNothing"_s, u"--run-schedule"_s,
                 QUuid::createUuid().toString(QUuid::WithoutBraces)});
    ASSERT_TRUE(other.waitForFinished());
    EXPECT_EQ(other.exitCode(), 0) << other.readAll().toStdString();
}
