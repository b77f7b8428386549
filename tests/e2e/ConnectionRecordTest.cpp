#include "e2e/ConnectionRecord.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Runs those lines of Python, and gives what was written down of them.
QStringList recorded(const QString &lines) {
    const ConnectionRecord record;
    QProcess python;
    python.start(u"python3"_s, {u"-c"_s, u"import socket, subprocess\n"_s + lines});
    EXPECT_TRUE(python.waitForFinished());
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    return record.destinations();
}

} // namespace

TEST(ConnectionRecord, aConnectionIsWrittenDownThoughNobodyTakesIt) {
    EXPECT_EQ(recorded(u"socket.socket().connect_ex(('127.0.0.1', 9))"_s), QStringList{u"127.0.0.1:9"_s});
    EXPECT_EQ(recorded(u"socket.socket(socket.AF_INET6).connect_ex(('::1', 9))"_s), QStringList{u"::1:9"_s});
}

TEST(ConnectionRecord, aMessageWithoutAConnectionIsWrittenDown) {
    EXPECT_EQ(recorded(u"s = socket.socket(type=socket.SOCK_DGRAM)\n"
                       "s.sendto(b'one', ('127.0.0.1', 9))\n"
                       "s.sendmsg([b'two'], [], 0, ('127.0.0.1', 10))"_s),
              (QStringList{u"127.0.0.1:9"_s, u"127.0.0.1:10"_s}));
}

TEST(ConnectionRecord, aNameThatIsLookedUpIsWrittenDown) {
    EXPECT_EQ(recorded(u"try: socket.getaddrinfo('nowhere.invalid', 80)\n"
                       "except OSError: pass"_s),
              QStringList{u"nowhere.invalid"_s});
}

TEST(ConnectionRecord, whatAnotherProgramOpensOnItsBehalfIsWrittenDown) {
    EXPECT_EQ(recorded(u"subprocess.run(['python3', '-c', 'import socket; "
                       "socket.socket().connect_ex((\"127.0.0.1\", 9))'])"_s),
              QStringList{u"127.0.0.1:9"_s});
}

TEST(ConnectionRecord, whatStaysInTheMachineIsNone) {
    EXPECT_EQ(recorded(u"a, b = socket.socketpair()\n"
                       "a.sendmsg([b'one'])\n"
                       "socket.socket(socket.AF_UNIX).connect_ex('/nowhere')"_s),
              QStringList());
}
