#include "RunnerCore/BundleLocation.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(BundleLocation, TheBundleIsThreeFoldersUp) {
    const auto location =
        bundleOfExecutable("/home/a/Applications/Wrapio Apps/My Mail.app/Contents/Linux/WrapioRunner");
    ASSERT_TRUE(location);
    EXPECT_EQ(location->root, "/home/a/Applications/Wrapio Apps/My Mail.app");
    EXPECT_EQ(location->infoPlist, "/home/a/Applications/Wrapio Apps/My Mail.app/Contents/Info.plist");
    EXPECT_EQ(location->config, "/home/a/Applications/Wrapio Apps/My Mail.app/Contents/Resources/config.json");
}

TEST(BundleLocation, AReplacedExecutableStillNamesItsBundle) {
    const auto location = bundleOfExecutable("/x/A.app/Contents/Linux/WrapioRunner (deleted)");
    ASSERT_TRUE(location);
    EXPECT_EQ(location->root, "/x/A.app");
}

TEST(BundleLocation, AProgramOutsideOfABundleHasNone) {
    for (const char* path :
         {"", "WrapioRunner", "/usr/bin/WrapioRunner", "/x/A.app/Contents/MacOS/WrapioRunner",
          "/x/A/Contents/Linux/WrapioRunner", "/x/A.app/Other/Linux/WrapioRunner", "A.app/Contents/Linux/WrapioRunner"})
        EXPECT_FALSE(bundleOfExecutable(path)) << path;
}

}  // namespace
}  // namespace wrapio
