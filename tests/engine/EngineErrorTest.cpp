#include "engine/EngineStatus.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Kind = EngineError::Kind;

TEST(EngineError, eachKindHasItsSentence) {
    EXPECT_EQ(
        EngineError(Kind::missingBinary).description(),
        u"The inference engine isn't in the app yet. On this Mac, run Scripts/build-llama, then build Ostrelin again."_s);
    EXPECT_EQ(EngineError(Kind::port).description(), u"Ostrelin couldn't open a local port."_s);
    EXPECT_EQ(EngineError(Kind::timeout).description(), u"Ostrelin took too long to wake up."_s);
}

TEST(EngineError, anExitIsToldInTheServersOwnWords) {
    EXPECT_EQ(EngineError(Kind::exited, u"no such model – Grüße"_s).description(),
              u"no such model – Grüße"_s);
    EXPECT_EQ(QString::fromUtf8(EngineError(Kind::exited, u"Grüße"_s).what()), u"Grüße"_s);
}

TEST(EngineError, anExitWithoutAWordHasASentenceAllTheSame) {
    EXPECT_EQ(EngineError(Kind::exited, QString()).description(), u"Ostrelin couldn't start."_s);
}

TEST(EngineStatus, failuresAreEqualByTheirText) {
    EXPECT_EQ(EngineStatus::failed(u"a"_s), EngineStatus::failed(u"a"_s));
    EXPECT_FALSE(EngineStatus::failed(u"a"_s) == EngineStatus::failed(u"b"_s));
    EXPECT_EQ(EngineStatus().state, EngineStatus::State::stopped);
}
