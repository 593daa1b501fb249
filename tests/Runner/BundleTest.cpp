#include "RunnerCore/Bundle.h"

#include "Runner/PlistText.h"
#include "Runner/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

class BundleOnDisk : public testing::Test {
protected:
    BundleOnDisk() {
        folder.write("A.app/Contents/Info.plist", test::goodPlist());
        folder.write("A.app/Contents/Resources/config.json", R"({"url":"https://example.com/","name":"A"})");
    }
    [[nodiscard]] BundleLocation location() const {
        return *bundleOfExecutable((folder.path() / "A.app/Contents/Linux/WrapioRunner").string());
    }
    test::TemporaryFolder folder;
};

TEST_F(BundleOnDisk, IdentityAndSettingsAreReadTogether) {
    const auto bundle = loadBundle(location());
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->info.recordId, test::recordId);
    EXPECT_EQ(bundle->config.name, "A");
}

TEST_F(BundleOnDisk, AMissingSettingsFileIsNamed) {
    std::filesystem::remove(location().config);
    const auto bundle = loadBundle(location());
    ASSERT_FALSE(bundle);
    EXPECT_EQ(std::get<FileMissing>(bundle.error()).path, location().config.string());
}

TEST_F(BundleOnDisk, AnOversizedSettingsFileIsNotRead) {
    std::filesystem::resize_file(location().config, largestConfig + 1);
    const auto bundle = loadBundle(location());
    ASSERT_FALSE(bundle);
    EXPECT_TRUE(std::holds_alternative<FileTooLarge>(bundle.error()));
}

TEST_F(BundleOnDisk, AnOversizedPropertyListIsNotRead) {
    std::filesystem::resize_file(location().infoPlist, largestInfoPlist + 1);
    const auto bundle = loadBundle(location());
    ASSERT_FALSE(bundle);
    EXPECT_TRUE(std::holds_alternative<FileTooLarge>(bundle.error()));
}

}  // namespace
}  // namespace wrapio
