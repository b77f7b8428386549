#include "platform/KeepAwake.h"

#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>

#include <memory>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// The system's login service, as far as it hands out inhibitors: real descriptors, whose end it sees.
class Login : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    enum class Manner { answers, waits, refuses };

    explicit Login(const QString &bus, Manner manner = Manner::answers)
        : m_manner(manner),
          m_bus(QDBusConnection::connectToBus(bus, "login "_L1 + bus)) {
        EXPECT_TRUE(
            m_bus.registerObject(u"/org/freedesktop/login1"_s, this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_bus.registerService(u"org.freedesktop.login1"_s));
    }
    ~Login() override {
        for (const int end : m_ends)
            ::close(end);
        // The connection ends with its bus.
        m_bus.unregisterObject(u"/org/freedesktop/login1"_s);
    }

    /// Sends the answers that wait.
    void answer() {
        for (const QDBusMessage &call : std::exchange(m_waiting, {}))
            m_bus.send(call.createReply(QVariant::fromValue(makeInhibitor())));
    }

    const QList<QStringList> &calls() const { return m_calls; }
    qsizetype given() const { return static_cast<qsizetype>(m_ends.size()); }

    /// Whether somebody still has the descriptor of that inhibitor.
    bool isHeld(qsizetype index = 0) const {
        pollfd end{m_ends.at(static_cast<size_t>(index)), 0, 0};
        return ::poll(&end, 1, 0) == 0;
    }

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &who, const QString &why,
                                    const QString &mode) {
        m_calls.append({what, who, why, mode});
        if (m_manner == Manner::answers)
            return makeInhibitor();
        if (m_manner == Manner::refuses) {
            sendErrorReply(QDBusError::AccessDenied, u"not you"_s);
        } else {
            setDelayedReply(true);
            m_waiting.append(message());
        }
        return {};
    }

private:
    QDBusUnixFileDescriptor makeInhibitor() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        m_ends.push_back(ends[0]);
        QDBusUnixFileDescriptor given;
        given.giveFileDescriptor(ends[1]);
        return given;
    }

    Manner m_manner;
    QDBusConnection m_bus;
    QList<QStringList> m_calls;
    QList<QDBusMessage> m_waiting;
    std::vector<int> m_ends;
};

class KeepAwakeTest : public ::testing::Test {
protected:
    PrivateBus bus;
    EnvironmentVariable address{"DBUS_SYSTEM_BUS_ADDRESS", bus.address().toUtf8()};
};

} // namespace

TEST_F(KeepAwakeTest, theMachineIsHeldAwakeAsLongAsTheTokenLives) {
    const Login login(bus.address());
    {
        const KeepAwake token(u"Downloading a model"_s);
        ASSERT_TRUE(eventually([&] { return login.given() == 1; }));
        letPass(50);
        EXPECT_TRUE(login.isHeld());
    }
    EXPECT_TRUE(eventually([&] { return !login.isHeld(); }));
    EXPECT_EQ(login.calls(),
              (QList<QStringList>{{u"idle:sleep"_s, u"Ostrelin"_s, u"Downloading a model"_s, u"block"_s}}));
}

TEST_F(KeepAwakeTest, eachTokenHoldsItsOwn) {
    const Login login(bus.address());
    auto first = std::make_unique<KeepAwake>(u"one"_s);
    ASSERT_TRUE(eventually([&] { return login.given() == 1; }));
    auto second = std::make_unique<KeepAwake>(u"two"_s);
    ASSERT_TRUE(eventually([&] { return login.given() == 2; }));
    first.reset();
    EXPECT_TRUE(eventually([&] { return !login.isHeld(0); }));
    EXPECT_TRUE(login.isHeld(1));
    second.reset();
    EXPECT_TRUE(eventually([&] { return !login.isHeld(1); }));
}

TEST_F(KeepAwakeTest, aTokenThatGoesBeforeItsAnswerComesHoldsNothing) {
    Login login(bus.address(), Login::Manner::waits);
    auto token = std::make_unique<KeepAwake>(u"short"_s);
    ASSERT_TRUE(eventually([&] { return login.calls().size() == 1; }));
    token.reset();
    login.answer();
    ASSERT_EQ(login.given(), 1);
    EXPECT_TRUE(eventually([&] { return !login.isHeld(); }));
}

TEST_F(KeepAwakeTest, aLateAnswerHoldsAllTheSame) {
    Login login(bus.address(), Login::Manner::waits);
    auto token = std::make_unique<KeepAwake>(u"long"_s);
    ASSERT_TRUE(eventually([&] { return login.calls().size() == 1; }));
    letPass(50);
    login.answer();
    letPass(50);
    EXPECT_TRUE(login.isHeld());
    token.reset();
    EXPECT_TRUE(eventually([&] { return !login.isHeld(); }));
}

TEST_F(KeepAwakeTest, aRefusalIsSilent) {
    const Login login(bus.address(), Login::Manner::refuses);
    {
        const KeepAwake token(u"please"_s);
        ASSERT_TRUE(eventually([&] { return login.calls().size() == 1; }));
        letPass(50);
    }
    EXPECT_EQ(login.given(), 0);
}

TEST_F(KeepAwakeTest, aBusWithoutALoginServiceIsSilent) {
    const KeepAwake token(u"nobody hears it"_s);
    letPass(50);
}

TEST_F(KeepAwakeTest, aBusThatDiesTakesNothingAlong) {
    auto login = std::make_unique<Login>(bus.address());
    auto token = std::make_unique<KeepAwake>(u"one"_s);
    ASSERT_TRUE(eventually([&] { return login->given() == 1; }));
    letPass(200);
    bus.die();
    letPass(50);
    EXPECT_TRUE(login->isHeld());
    token.reset();
    EXPECT_TRUE(eventually([&] { return !login->isHeld(); }));
    const KeepAwake unheard(u"two"_s);
}

TEST_F(KeepAwakeTest, aBusThatComesBackIsFound) {
    { const KeepAwake before(u"one"_s); }
    bus.die();
    bus.start();
    const Login login(bus.address());
    const auto isGiven = [&] {
        const KeepAwake token(u"two"_s);
        return eventually([&] { return login.given() > 0; }, 200);
    };
    EXPECT_TRUE(eventually(isGiven));
}

TEST(KeepAwake, withoutASystemBusNothingHappens) {
    for (const char *address : {"unix:path=/nowhere/bus", "nonsense", "autolaunch:"}) {
        const EnvironmentVariable variable("DBUS_SYSTEM_BUS_ADDRESS", address);
        const KeepAwake token(u"in vain"_s);
    }
}

#include "KeepAwakeTest.moc"
