#include "core/UpdateChecker.h"

#include "support/Await.h"
#include "support/EnvironmentVariable.h"
#include "support/ManualClock.h"
#include "support/ScriptedEngine.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using State = UpdateStatus::State;

/// Release 1.2 (39) on a system 6.1.0, and a server of versions.
class UpdateCheckerTest : public ::testing::Test {
protected:
    static Script telling(const QByteArray &version) {
        return Script(200).raw(R"({"version": ")" + version + R"("})");
    }

    /// A check from its first step to its verdict.
    State verdict(const Script &script) {
        server.answer(script);
        checker.check();
        EXPECT_TRUE(eventually([this] { return checker.status().state != State::checking; }));
        return checker.status().state;
    }

    bool isAsked(int times) {
        return eventually([&] { return server.requests().size() == times; });
    }

    ScriptedEngine server;
    EnvironmentVariable address{"OSTRELIN_VERSIONURL", server.url().toEncoded() + "/version.json"};
    ManualClock clock;
    bool isOffline = false;
    UpdateChecker checker{clock, [this] { return isOffline; }, {u"1.2.0"_s, 39}, {6, 1, 0}};
};

} // namespace

TEST_F(UpdateCheckerTest, nothingIsKnownAtFirst) {
    EXPECT_EQ(checker.status().state, State::idle);
    EXPECT_FALSE(checker.availableInfo());
}

TEST_F(UpdateCheckerTest, aNewerReleaseIsAvailable) {
    EXPECT_EQ(verdict(telling("1.3")), State::available);
    ASSERT_TRUE(checker.availableInfo());
    EXPECT_EQ(checker.availableInfo()->version, u"1.3"_s);
}

TEST_F(UpdateCheckerTest, anotherBuildOfTheSameReleaseIsAvailable) {
    EXPECT_EQ(verdict(Script(200).raw(R"({"version": "1.2", "build": 40})")), State::available);
}

TEST_F(UpdateCheckerTest, theSameAndAnOlderReleaseAreUpToDate) {
    EXPECT_EQ(verdict(telling("1.2")), State::upToDate);
    EXPECT_EQ(verdict(telling("0.9")), State::upToDate);
    EXPECT_FALSE(checker.availableInfo());
}

TEST_F(UpdateCheckerTest, aReleaseThatThisSystemMayNotRunIsNone) {
    EXPECT_EQ(verdict(Script(200).raw(R"({"version": "9", "minimumSystemVersion": "99"})")), State::upToDate);
    EXPECT_EQ(verdict(Script(200).raw(R"({"version": "9", "minimumSystemVersion": "6.1"})")),
              State::available);
}

TEST_F(UpdateCheckerTest, whatCannotBeReadHasFailed) {
    EXPECT_EQ(verdict(Script(204)), State::failed);
    EXPECT_EQ(verdict(Script(200).raw(R"({"build": 5})")), State::failed);
    EXPECT_EQ(verdict(Script::hangUp()), State::failed);
    EXPECT_EQ(verdict(telling("1.3")), State::available) << "the next check tries again";
    EXPECT_EQ(verdict(Script(500)), State::failed);
    EXPECT_FALSE(checker.availableInfo()) << "what was known is forgotten";
}

TEST_F(UpdateCheckerTest, eachChangeIsToldOnce) {
    const QSignalSpy changes(&checker, &UpdateChecker::statusChanged);
    verdict(telling("1.3"));
    EXPECT_EQ(changes.size(), 2) << "checking, available";
    checker.clearAvailable();
    checker.clearAvailable();
    EXPECT_EQ(changes.size(), 3);
}

TEST_F(UpdateCheckerTest, offlineNothingIsAsked) {
    verdict(telling("1.3"));
    isOffline = true;
    checker.check();
    EXPECT_EQ(checker.status().state, State::idle);
    letPass(100);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(UpdateCheckerTest, goingOfflineForgetsAnUpdateAndNothingElse) {
    verdict(telling("1.3"));
    checker.clearAvailable();
    EXPECT_EQ(checker.status().state, State::idle);
    verdict(telling("1.2"));
    checker.clearAvailable();
    EXPECT_EQ(checker.status().state, State::upToDate);
    verdict(Script(500));
    checker.clearAvailable();
    EXPECT_EQ(checker.status().state, State::failed);
}

TEST_F(UpdateCheckerTest, goingOfflineEndsACheckAtOnce) {
    server.answer(Script(200).hold().raw(R"({"version": "9"})"));
    checker.check();
    EXPECT_EQ(checker.status().state, State::checking);
    ASSERT_TRUE(eventually([this] { return server.openConnections() == 1; }));
    isOffline = true;
    checker.clearAvailable();
    EXPECT_EQ(checker.status().state, State::idle);
    EXPECT_TRUE(eventually([this] { return server.openConnections() == 0; }));
    server.goOn();
    letPass(100);
    EXPECT_EQ(checker.status().state, State::idle);
}

TEST_F(UpdateCheckerTest, aLaterCheckDecides) {
    server.answer(Script(200).hold().raw(R"({"version": "9"})"));
    checker.check();
    ASSERT_TRUE(isAsked(1));
    EXPECT_EQ(verdict(telling("1.2")), State::upToDate);
    server.goOn();
    letPass(100);
    EXPECT_EQ(checker.status().state, State::upToDate);
}

TEST_F(UpdateCheckerTest, theFirstCheckComesAfterTwentySecondsAndThenTwoADay) {
    server.answer(telling("1.3"));
    checker.start();
    clock.advance(19'999ms);
    letPass(50);
    EXPECT_TRUE(server.requests().isEmpty());
    clock.advance(1ms);
    ASSERT_TRUE(isAsked(1));
    ASSERT_TRUE(eventually([this] { return checker.availableInfo().has_value(); }));
    clock.advance(12h - 1ms);
    letPass(50);
    EXPECT_EQ(server.requests().size(), 1);
    clock.advance(1ms);
    ASSERT_TRUE(isAsked(2));
    clock.advance(12h);
    ASSERT_TRUE(isAsked(3));
}

TEST_F(UpdateCheckerTest, anotherStartBeginsAnew) {
    server.answer(telling("1.3"));
    checker.start();
    clock.advance(15s);
    checker.start();
    clock.advance(15s);
    letPass(50);
    EXPECT_TRUE(server.requests().isEmpty());
    clock.advance(5s);
    ASSERT_TRUE(isAsked(1));
}

TEST_F(UpdateCheckerTest, theLoopGoesOnWhileTheProgramIsOffline) {
    server.answer(telling("1.3"));
    isOffline = true;
    checker.start();
    clock.advance(20s);
    letPass(50);
    EXPECT_TRUE(server.requests().isEmpty());
    isOffline = false;
    clock.advance(12h);
    ASSERT_TRUE(isAsked(1));
}

TEST_F(UpdateCheckerTest, onceStoppedItAsksNoMore) {
    server.answer(telling("1.3"));
    checker.start();
    checker.stop();
    clock.advance(24h);
    letPass(50);
    EXPECT_TRUE(server.requests().isEmpty());
    EXPECT_EQ(checker.status().state, State::idle);
}

TEST_F(UpdateCheckerTest, itsEndEndsARequest) {
    server.answer(Script(200).hold());
    auto other = std::make_unique<UpdateChecker>(clock, [] { return false; });
    other->start();
    clock.advance(20s);
    ASSERT_TRUE(eventually([this] { return server.openConnections() == 1; }));
    other.reset();
    EXPECT_TRUE(eventually([this] { return server.openConnections() == 0; }));
    clock.advance(12h);
    letPass(50);
    EXPECT_EQ(server.requests().size(), 1);
}

TEST(ProgramVersionTest, itIsMadeOfNumbers) {
    EXPECT_GE(parseVersion(programVersion().version).size(), 2);
    EXPECT_GE(programVersion().build, 1);
}
