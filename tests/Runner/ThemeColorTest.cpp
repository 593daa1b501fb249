#include "RunnerCore/ThemeColor.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

constexpr Color white{255, 255, 255, 1.0};
constexpr Color black{0, 0, 0, 1.0};

TEST(ThemeColor, SixDigitsReadAlikeWithAndWithoutMark) {
    const Color blue{0x1E, 0x90, 0xFF, 1.0};
    EXPECT_EQ(parseHexColor("#1E90FF"), blue);
    EXPECT_EQ(parseHexColor("1E90FF"), blue);
    EXPECT_EQ(parseHexColor("  #1e90ff\n"), blue);
}

TEST(ThemeColor, EightDigitsEndInTheOpacity) {
    const auto color = parseHexColor("1E90FF80");
    ASSERT_TRUE(color);
    EXPECT_NEAR(color->opacity, 0.5, 0.01);
    EXPECT_EQ(hexText(*color), "#1E90FF");
}

TEST(ThemeColor, OtherTextsAreNoColours) {
    for (const char* text : {"", "#", "FFF", "GG0000", "-1E90F", "+1E90F", "1E90FF8", "1E 90F", "#1E90FFFFF"})
        EXPECT_FALSE(parseHexColor(text)) << text;
    EXPECT_FALSE(parseHexColor(std::string(10'000'000, '#')));
}

TEST(ThemeColor, BlendingMovesFromTheBaseToTheTop) {
    EXPECT_EQ(blend(black, white, 0.0), white);
    EXPECT_EQ(blend(black, white, 1.0), black);
    EXPECT_EQ(blend(black, white, 0.5), (Color{128, 128, 128, 1.0}));
    EXPECT_EQ(blend({0, 0, 0, 0.5}, white, 0.5), (Color{191, 191, 191, 1.0}));
}

TEST(ThemeColor, ContrastFollowsTheGuidelines) {
    EXPECT_NEAR(contrastRatio(black, white), 21.0, 0.01);
    EXPECT_NEAR(contrastRatio(white, black), 21.0, 0.01);
    EXPECT_NEAR(contrastRatio(white, white), 1.0, 0.001);
    EXPECT_NEAR(contrastRatio({0x77, 0x77, 0x77, 1.0}, white), 4.48, 0.01);
}

TEST(ThemeColor, TextIsLegibleOnEveryColour) {
    for (int red = 0; red < 256; red += 5)
        for (int green = 0; green < 256; green += 5)
            for (int blue = 0; blue < 256; blue += 5) {
                const Color background{static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
                                       static_cast<std::uint8_t>(blue), 1.0};
                ASSERT_GE(contrastRatio(legibleText(background), background), legibleContrast) << hexText(background);
            }
}

TEST(ThemeColor, TextIsDarkOnYellowAndLightOnNavy) {
    EXPECT_LT(legibleText({0xFF, 0xD6, 0x0A, 1.0}).red, 80);
    EXPECT_GT(legibleText({0x00, 0x00, 0x80, 1.0}).red, 200);
}

}  // namespace
}  // namespace wrapio
