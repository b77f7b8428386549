#include "engine/DownloadError.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Kind = DownloadError::Kind;

TEST(DownloadError, everyKindHasItsSentence) {
    EXPECT_EQ(DownloadError::http(404).description(), u"The download failed (HTTP 404)."_s);
    EXPECT_EQ(DownloadError::http(0).description(), u"The download failed (HTTP 0)."_s);
    EXPECT_EQ(DownloadError::message(u"As it stands"_s).description(), u"As it stands"_s);
    EXPECT_EQ(DownloadError(Kind::paused).description(), u"Download paused."_s);
    EXPECT_EQ(DownloadError(Kind::offline).description(),
              u"The download paused because the connection dropped. It will resume from where it stopped."_s);
    EXPECT_EQ(DownloadError(Kind::diskFull).description(),
              u"This Mac ran out of space during the download."_s);
    EXPECT_EQ(DownloadError(Kind::hashMismatch).description(),
              u"The download didn't match its checksum. Ostrelin will start it again."_s);
}

TEST(DownloadError, whatIsTheDescriptionInUtf8) {
    EXPECT_STREQ(DownloadError::message(u"größer"_s).what(), "größer");
    EXPECT_STREQ(DownloadError(Kind::paused).what(), "Download paused.");
}

TEST(DownloadError, kindAndStatusAreKept) {
    EXPECT_EQ(DownloadError::http(503).kind(), Kind::http);
    EXPECT_EQ(DownloadError::http(503).httpStatus(), 503);
    EXPECT_EQ(DownloadError::message({}).kind(), Kind::message);
    EXPECT_EQ(DownloadError(Kind::offline).kind(), Kind::offline);
    EXPECT_EQ(DownloadError(Kind::offline).httpStatus(), 0);
}
