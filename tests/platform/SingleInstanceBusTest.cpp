#include "platform/InstanceSession.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

/// Another program of the session, that talks to the first.
class Caller {
public:
    explicit Caller(const QString &bus) : m_bus(QDBusConnection::connectToBus(bus, u"caller"_s)) {}
    ~Caller() { QDBusConnection::disconnectFromBus(u"caller"_s); }
    Caller(const Caller &) = delete;
    Caller &operator=(const Caller &) = delete;

    /// Whether the call was taken.
    bool call(const QString &method, const QVariantList &arguments,
              const QString &interface = u"org.freedesktop.Application"_s) const {
        QDBusMessage message = QDBusMessage::createMethodCall(
            u"com.quennarbel.ostrelin"_s, u"/com/quennarbel/ostrelin"_s, interface, method);
        message.setArguments(arguments);
        return m_bus.call(message, QDBus::BlockWithGui).type() == QDBusMessage::ReplyMessage;
    }

private:
    QDBusConnection m_bus;
};

class SingleInstanceBusTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(first->becomesFirst()); }

    Session session{Desktop::withBus};
    std::unique_ptr<Start> first = session.start();
    Caller caller{session.bus().address()};
};

QVariantMap withToken(const QVariant &token) {
    return {{u"activation-token"_s, token}};
}

} // namespace

TEST_F(SingleInstanceBusTest, theDesktopCanActivateIt) {
    EXPECT_TRUE(caller.call(u"Activate"_s, {withToken(u"one"_s)}));
    EXPECT_TRUE(first->hears("activated one"));
    EXPECT_TRUE(caller.call(u"Activate"_s, {QVariantMap{{u"desktop-startup-id"_s, u"two"_s}}}));
    EXPECT_TRUE(first->hears("activated two"));
    EXPECT_TRUE(caller.call(u"Activate"_s, {QVariantMap()}));
    EXPECT_TRUE(first->hears("activated "));
}

TEST_F(SingleInstanceBusTest, filesAndActionsOnlyShowIt) {
    EXPECT_TRUE(caller.call(u"Open"_s, {QStringList{u"file:///x"_s}, withToken(u"file"_s)}));
    EXPECT_TRUE(first->hears("activated file"));
    EXPECT_TRUE(
        caller.call(u"ActivateAction"_s, {u"new-chat"_s, QVariantList{1, u"x"_s}, withToken(u"act"_s)}));
    EXPECT_TRUE(first->hears("activated act"));
    EXPECT_TRUE(caller.call(u"ActivateAction"_s, {u"new-chat"_s, QVariantList(), withToken(u"none"_s)}));
    EXPECT_TRUE(first->hears("activated none"));
}

TEST_F(SingleInstanceBusTest, aTokenOfAnyContentDoesNoHarm) {
    const QVariantMap nested{{u"a"_s, QVariantList{QVariantMap{{u"b"_s, QVariantList{u"deep"_s}}}}}};
    const QList<QVariant> contents{QString(3'000'000, u'x'),
                                   QString(u'\u0007'),
                                   42,
                                   1.5,
                                   true,
                                   QStringList{u"a"_s},
                                   QVariantList{1, u"x"_s},
                                   nested,
                                   QByteArray("\0\xff", 2)};
    for (const QVariant &content : contents)
        EXPECT_TRUE(caller.call(u"Activate"_s, {withToken(content)})) << content.typeName();
    EXPECT_TRUE(eventually([&] { return first->lines().size() == 1 + contents.size(); }));
    EXPECT_TRUE(first->isRunning());
}

TEST_F(SingleInstanceBusTest, callsOfTheWrongFormAreRefused) {
    EXPECT_FALSE(caller.call(u"Activate"_s, {}));
    EXPECT_FALSE(caller.call(u"Activate"_s, {u"text"_s}));
    EXPECT_FALSE(caller.call(u"Open"_s, {withToken(u"x"_s)}));
    EXPECT_FALSE(caller.call(u"ActivateAction"_s, {1, 2, 3}));
    EXPECT_FALSE(caller.call(u"Quit"_s, {}));
    EXPECT_FALSE(caller.call(u"activated"_s, {u"x"_s}));
    EXPECT_FALSE(caller.call(u"deleteLater"_s, {}, QString()));
    EXPECT_TRUE(caller.call(u"Activate"_s, {withToken(u"still here"_s)}));
    EXPECT_TRUE(first->hears("activated still here"));
    EXPECT_EQ(first->lines().size(), 2);
}

TEST_F(SingleInstanceBusTest, aBusThatDiesLeavesItRunning) {
    session.bus().die();
    letPass(300);
    EXPECT_TRUE(first->isRunning());
    EXPECT_EQ(first->lines().size(), 1);
}
