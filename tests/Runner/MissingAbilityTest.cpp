#include "RunnerCore/MissingAbility.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(MissingAbility, IsToldOnceAndNotAgainAfterARestart) {
    ToldAbilities told;
    EXPECT_TRUE(told.tell(MissingAbility::Calls));
    EXPECT_FALSE(told.tell(MissingAbility::Calls));
    ToldAbilities later = ToldAbilities::parse(told.text());
    EXPECT_FALSE(later.tell(MissingAbility::Calls));
    EXPECT_TRUE(later.tell(MissingAbility::Push));
}

TEST(MissingAbility, IsNamedByKnownWordsOnly) {
    EXPECT_EQ(missingAbilityOf("drm"), MissingAbility::ProtectedMedia);
    for (const char* text : {"", "DRM", "calls ", "x"})
        EXPECT_EQ(missingAbilityOf(text), std::nullopt) << text;
    EXPECT_EQ(ToldAbilities::parse("junk\n\n\xFF").text(), "");
}

TEST(MissingAbility, IsSaidInPlainWords) {
    EXPECT_NE(missingAbilityText(MissingAbility::Calls).find("Calls do not work"), std::string::npos);
    EXPECT_NE(missingAbilityText(MissingAbility::ProtectedMedia).find("DRM"), std::string::npos);
    EXPECT_NE(missingAbilityText(MissingAbility::Push).find("push"), std::string::npos);
}

}  // namespace
}  // namespace wrapio
