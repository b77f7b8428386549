#include "platform/Notification.h"

#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/NotificationService.h"
#include "support/PrivateBus.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using Manner = NotificationService::Manner;

namespace {

class NotificationTest : public ::testing::Test {
protected:
    PrivateBus bus;
    EnvironmentVariable address{"DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8()};
};

/// Whether the task has ended.
Task<> tell(Task<> task, std::shared_ptr<bool> ended) {
    co_await task;
    *ended = true;
}

} // namespace

TEST_F(NotificationTest, theDesktopGetsBothTextsAndASound) {
    const NotificationService service(bus.address());
    await(postNotification(u"Morning"_s, u"Your scheduled run is ready."_s, {}));
    ASSERT_EQ(service.shown().size(), 1);
    const NotificationService::Shown &shown = service.shown().first();
    EXPECT_EQ(shown.application, u"Ostrelin"_s);
    EXPECT_EQ(shown.title, u"Morning"_s);
    EXPECT_EQ(shown.body, u"Your scheduled run is ready."_s);
    EXPECT_FALSE(shown.hints.value(u"sound-name"_s).toString().isEmpty());
    EXPECT_EQ(shown.hints.value(u"desktop-entry"_s), u"com.quennarbel.ostrelin"_s);
    EXPECT_EQ(shown.replaces, 0U);
}

TEST_F(NotificationTest, eachIsOneOfItsOwn) {
    const NotificationService service(bus.address());
    for (int count = 0; count < 3; ++count)
        await(postNotification(u"Morning"_s, u"Your scheduled run is ready."_s, {}));
    EXPECT_EQ(service.shown().size(), 3);
}

TEST_F(NotificationTest, anyTitleGetsThere) {
    const NotificationService service(bus.address());
    const QString lone(QChar(0xD800));
    for (const QString &title :
         {QString(), u"<b>Grüße</b> & 日本 🎉"_s, u"a\nb\tc"_s, u"x"_s.repeated(100'000), lone, u"\uFFFE"_s}) {
        await(postNotification(title, u"body"_s, {}));
        const QString expected = title == lone ? u"?"_s : title;
        EXPECT_EQ(service.shown().last().title, expected) << title.left(20).toStdString();
    }
}

TEST_F(NotificationTest, aRefusalIsSilent) {
    const NotificationService service(bus.address(), Manner::refuses);
    await(postNotification(u"Morning"_s, u"body"_s, {}));
    EXPECT_EQ(service.shown().size(), 1);
}

TEST_F(NotificationTest, aBusOnWhichNobodyShowsAnythingIsSilent) {
    await(postNotification(u"Morning"_s, u"body"_s, {}));
}

TEST_F(NotificationTest, aDesktopThatDoesNotAnswerIsNotWaitedForInTheCall) {
    const NotificationService service(bus.address(), Manner::waits);
    const auto ended = std::make_shared<bool>(false);
    std::stop_source stop;
    tell(postNotification(u"Morning"_s, u"body"_s, stop.get_token()), ended);
    ASSERT_TRUE(eventually([&] { return service.shown().size() == 1; }));
    letPass(50);
    EXPECT_FALSE(*ended);
    stop.request_stop();
    EXPECT_TRUE(eventually([&] { return *ended; }));
}

TEST_F(NotificationTest, aDesktopThatNeverAnswersIsWaitedForAWhile) {
    const NotificationService service(bus.address(), Manner::waits);
    await(postNotification(u"Morning"_s, u"body"_s, {}));
    EXPECT_EQ(service.shown().size(), 1);
}

TEST_F(NotificationTest, aBusThatDiesIsNotWaitedFor) {
    const auto ended = std::make_shared<bool>(false);
    {
        const NotificationService service(bus.address(), Manner::waits);
        tell(postNotification(u"Morning"_s, u"body"_s, {}), ended);
        ASSERT_TRUE(eventually([&] { return service.shown().size() == 1; }));
        bus.die();
    }
    EXPECT_TRUE(eventually([&] { return *ended; }, 4000));
}

TEST(Notification, withoutABusNothingHappensAndNoneIsStarted) {
    const QTemporaryDir runtime;
    const EnvironmentVariable folder("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    for (const char *value : {"", "unix:path=/nowhere/bus", "autolaunch:", "nonsense"}) {
        const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", value);
        const auto ended = std::make_shared<bool>(false);
        tell(postNotification(u"Morning"_s, u"body"_s, {}), ended);
        EXPECT_TRUE(*ended) << value;
    }
    EXPECT_TRUE(QDir(runtime.path()).isEmpty());
}
