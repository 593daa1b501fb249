#include "RunnerCore/ThemeStyleSheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wrapio {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr Color base{0xF6, 0xF5, 0xF4, 1.0};
constexpr Color accent{0x35, 0x84, 0xE4, 1.0};
constexpr Color purple{0x7A, 0x1F, 0xA2, 1.0};

TEST(ThemeStyleSheet, NoThemeLeavesTheDesktopsLook) {
    EXPECT_EQ(themeStyleSheet({}, base, accent), "");
    EXPECT_EQ(themeStyleSheet({std::nullopt, 0.5, false}, base, accent), "");
}

TEST(ThemeStyleSheet, TheTitleBarTakesTheColour) {
    const std::string sheet = themeStyleSheet({purple, 1.0, false}, base, accent);
    EXPECT_THAT(sheet, HasSubstr("background: #7A1FA2"));
    EXPECT_THAT(sheet, Not(HasSubstr("app-frame")));
}

TEST(ThemeStyleSheet, OpacityMixesTheColourIntoTheTitleBar) {
    EXPECT_THAT(themeStyleSheet({purple, 0.5, false}, base, accent),
                HasSubstr("background: " + hexText(blend(purple, base, 0.5))));
    EXPECT_THAT(themeStyleSheet({purple, 0.0, false}, base, accent), HasSubstr("background: #F6F5F4"));
}

TEST(ThemeStyleSheet, TheOutlineIsInTheFullColour) {
    EXPECT_THAT(themeStyleSheet({purple, 0.2, true}, base, accent), HasSubstr("2px solid #7A1FA2"));
}

TEST(ThemeStyleSheet, AnOutlineWithoutAColourTakesTheAccent) {
    const std::string sheet = themeStyleSheet({std::nullopt, 1.0, true}, base, accent);
    EXPECT_THAT(sheet, HasSubstr("2px solid #3584E4"));
    EXPECT_THAT(sheet, Not(HasSubstr("color: inherit")));
}

}  // namespace
}  // namespace wrapio
