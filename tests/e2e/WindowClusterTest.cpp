#include "e2e/Cluster.h"
#include "e2e/WindowFixture.h"
#include "support/Await.h"
#include "support/EnvironmentVariable.h"

#include <QFileInfo>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr int workers = 2;

/// The program as a client of a model on several machines, which has no model of its own.
class WindowCluster : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_TRUE(QFileInfo(QStringLiteral(WORKER_PATH)).isExecutable())
            << "no " WORKER_PATH "; scripts/engine with --workers brings it";
        ASSERT_TRUE(cluster.start(workers)) << cluster.output().toStdString();
        m_address.emplace("OSTRELIN_ENGINE_URL", cluster.url().toEncoded());
        startProgram();
        ASSERT_EQ(program.enginePid(), 0) << "an engine of the program's own";
    }

    /// Sends, and waits for the end of the reply.
    QString replyTo(const QString &text) {
        const qsizetype place = window().said(u"Ostrelin"_s).size();
        send(text);
        EXPECT_TRUE(eventually([&] { return !window().said(u"Ostrelin"_s).value(place).isEmpty(); }, 30'000));
        EXPECT_TRUE(program.waitForReply());
        return window().said(u"Ostrelin"_s).value(place);
    }

    Cluster cluster;

private:
    const EnvironmentVariable m_key{"OSTRELIN_API_KEY", Cluster::apiKey};
    const EnvironmentVariable m_model{"OSTRELIN_MODEL_PATH", "/dev/null"};
    std::optional<EnvironmentVariable> m_address;
};

const QString failed = u"Ostrelin couldn't complete that reply."_s;

class WindowClusterLoss : public WindowCluster, public ::testing::WithParamInterface<int> {};

} // namespace

TEST_F(WindowCluster, eachMachineWorksForTheReply) {
    const QList<qsizetype> before{cluster.computations(0), cluster.computations(1)};
    const QString reply = replyTo(u"Hello!"_s);
    EXPECT_NE(reply, failed) << cluster.output().toStdString();
    for (int worker = 0; worker < workers; ++worker) {
        const qsizetype computations = cluster.computations(worker) - before.at(worker);
        EXPECT_GT(computations, reply.count(u' '))
            << "worker " << worker << " computed less than a token a word";
    }
}

TEST_P(WindowClusterLoss, whenAMachineIsLostTheReplyFailsInAWordAndTheProgramGoesOn) {
    cluster.killWorker(GetParam());
    EXPECT_EQ(replyTo(u"Hello!"_s), failed);
    EXPECT_TRUE(window().shows(u"Send message"_s, AccessibleRole::pushButton));
    EXPECT_EQ(savedChat().messages.last().content, failed);
}

TEST_F(WindowCluster, afterALossItAnswersAgainOnceTheServerIsStartedAnew) {
    cluster.killWorker(0);
    EXPECT_EQ(replyTo(u"Hello!"_s), failed);
    EXPECT_EQ(replyTo(u"Hello!"_s), failed) << "the server has ended";
    ASSERT_TRUE(cluster.startAnew()) << cluster.output().toStdString();
    EXPECT_NE(replyTo(u"Hello!"_s), failed);
}

INSTANTIATE_TEST_SUITE_P(EachWorker, WindowClusterLoss, ::testing::Range(0, workers));
