#include "platform/TerminationSignals.h"

#include "support/Await.h"

#include <csignal>

namespace {

void expectQuitAfter(int signal) {
    int quits = 0;
    onTerminationSignal([&] { ++quits; });
    std::raise(signal);
    EXPECT_EQ(quits, 0) << "not inside the handler";
    EXPECT_TRUE(eventually([&] { return quits == 1; }));
}

} // namespace

TEST(TerminationSignals, aRequestToTerminateGoesTheOrdinaryRoad) {
    expectQuitAfter(SIGTERM);
}

TEST(TerminationSignals, anInterruptGoesTheOrdinaryRoad) {
    expectQuitAfter(SIGINT);
}

TEST(TerminationSignals, aHangUpGoesTheOrdinaryRoad) {
    expectQuitAfter(SIGHUP);
}

TEST(TerminationSignals, aSecondRequestEndsTheProgramAtOnce) {
    EXPECT_EXIT(
        {
            onTerminationSignal([] {});
            std::raise(SIGTERM);
            std::raise(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "");
}
