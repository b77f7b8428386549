#include "platform/Descriptor.h"
#include "platform/InstanceSession.h"

#include <QDir>
#include <QFile>

#include <cstring>
#include <vector>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString socketName = u"com.quennarbel.ostrelin.socket"_s;
const QString lockName = u"com.quennarbel.ostrelin.lock"_s;

class SingleInstanceSocketTest : public ::testing::Test {
protected:
    QString path(const QString &name) const { return session.runtime() + u'/' + name; }

    mode_t modeOf(const QString &name) const {
        struct stat status {};
        EXPECT_EQ(::lstat(QFile::encodeName(path(name)).constData(), &status), 0) << name.toStdString();
        return status.st_mode & 07777;
    }

    /// Knocks with one packet; -1 if nobody is there, else the open socket.
    int knock(const QByteArray &packet) const {
        Descriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path(socketName));
        std::memcpy(address.sun_path, name.constData(), static_cast<size_t>(name.size()));
        if (::connect(socket.number(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
            return -1;
        if (!packet.isNull())
            ::send(socket.number(), packet.constData(), static_cast<size_t>(packet.size()), MSG_NOSIGNAL);
        return socket.release();
    }

    Session session{Desktop::without};
};

} // namespace

TEST_F(SingleInstanceSocketTest, itsFilesAreForThePersonAloneAndNotToBeTidiedAway) {
    const auto first = session.start();
    ASSERT_TRUE(first->becomesFirst());
    EXPECT_EQ(modeOf(socketName), S_ISVTX | S_IRUSR | S_IWUSR);
    EXPECT_EQ(modeOf(lockName), S_ISVTX | S_IRUSR | S_IWUSR);
}

TEST_F(SingleInstanceSocketTest, visitorsOfAnyKindDoNoHarm) {
    const auto first = session.start();
    ASSERT_TRUE(first->becomesFirst());
    std::vector<std::unique_ptr<Descriptor>> visitors;
    for (const QByteArray &packet :
         {QByteArray(), QByteArray(""), QByteArray("nonsense"), QByteArray("activate"),
          QByteArray("\0\0\0", 3), QByteArray(100'000, 'x')})
        visitors.push_back(std::make_unique<Descriptor>(knock(packet)));
    Descriptor(knock("nonsense")).close();
    Descriptor(knock("activate left at once")).close();
    visitors.push_back(std::make_unique<Descriptor>(knock("activate \xff\xfe\a")));
    visitors.push_back(std::make_unique<Descriptor>(knock("activate " + QByteArray(100'000, 'x'))));
    EXPECT_TRUE(first->hears("activated left at once"));
    EXPECT_TRUE(session.start()->endsAsSecond());
    EXPECT_TRUE(first->isRunning());
    const QList<QByteArray> lines = first->lines();
    for (const QByteArray &line : lines.mid(1))
        EXPECT_TRUE(line == "activated " || line == "activated left at once") << line.constData();
}

TEST_F(SingleInstanceSocketTest, aFullHouseOfSilentVisitorsKeepsNobodyOut) {
    const auto first = session.start();
    ASSERT_TRUE(first->becomesFirst());
    std::vector<std::unique_ptr<Descriptor>> visitors;
    for (int count = 0; count < 100; ++count)
        visitors.push_back(std::make_unique<Descriptor>(knock({})));
    EXPECT_TRUE(session.start()->endsAsSecond());
    EXPECT_TRUE(first->hears("activated "));
}

TEST_F(SingleInstanceSocketTest, filesThatLieAboutInTheWayAreNoHolder) {
    ASSERT_TRUE(QFile(path(socketName)).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QFile(path(lockName)).open(QIODevice::WriteOnly));
    const auto first = session.start();
    EXPECT_TRUE(first->becomesFirst());
    EXPECT_TRUE(session.start()->endsAsSecond());
    EXPECT_TRUE(first->hears("activated "));
}

TEST_F(SingleInstanceSocketTest, aRuntimeFolderWithALongPathWillDo) {
    const QString folder = session.runtime() + u'/' + QString(200, u'd');
    ASSERT_TRUE(QDir().mkdir(folder));
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QList<std::pair<QString, QString>> there{{u"XDG_RUNTIME_DIR"_s, folder}};
    const auto first = session.start(there);
    ASSERT_TRUE(first->becomesFirst());
    EXPECT_TRUE(session.start(there)->endsAsSecond());
    EXPECT_TRUE(first->hears("activated "));
}
