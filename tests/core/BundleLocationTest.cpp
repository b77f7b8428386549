#include "core/BundleLocation.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool isTemporary(const QString &folder) {
    return isInTemporaryLocation(folder, u"/home/ada"_s);
}

} // namespace

TEST(BundleLocation, aVolumeIsTemporaryWhereverItStands) {
    EXPECT_TRUE(isTemporary(u"/Volumes/Ostrelin/Ostrelin.app"_s));
    EXPECT_TRUE(isTemporary(u"/mnt/Volumes/disk"_s));
    EXPECT_FALSE(isTemporary(u"/mnt/Volumes"_s));
}

TEST(BundleLocation, aPlaceThatTheSystemMadeUpIsTemporary) {
    EXPECT_TRUE(isTemporary(u"/private/var/folders/x/AppTranslocation/y/d/Ostrelin.app"_s));
}

TEST(BundleLocation, theDownloadsOfThePersonAreTemporary) {
    EXPECT_TRUE(isTemporary(u"/home/ada/Downloads"_s));
    EXPECT_TRUE(isTemporary(u"/home/ada/Downloads/ostrelin/build"_s));
    EXPECT_FALSE(isTemporary(u"/home/bob/Downloads/ostrelin"_s));
    EXPECT_FALSE(isTemporary(u"/srv/home/ada/Downloads"_s));
}

TEST(BundleLocation, everyOtherPlaceIsFine) {
    EXPECT_FALSE(isTemporary(u"/home/ada/src/ostrelin/build"_s));
    EXPECT_FALSE(isTemporary(u"/usr/lib/ostrelin"_s));
}
