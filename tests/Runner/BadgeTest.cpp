#include "RunnerCore/Badge.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(Badge, ShowsTheCountOfTheTitle) {
    BadgeState badge(true);
    badge.setTitle("(5) Inbox");
    EXPECT_EQ(badge.shown(), (Badge{5, false}));
    EXPECT_EQ(badge.titleOf("Mail"), "(5) Mail");
    badge.setTitle("Inbox");
    EXPECT_EQ(badge.shown(), Badge{});
    EXPECT_EQ(badge.titleOf("Mail"), "Mail");
}

TEST(Badge, OfThePageWinsOverTheTitle) {
    BadgeState badge(true);
    badge.setTitle("(5) Inbox");
    badge.setByPage("7");
    EXPECT_EQ(badge.shown().count, 7);
    badge.setByPage("clear");
    EXPECT_EQ(badge.shown(), Badge{});
}

TEST(Badge, OfZeroIsNone) {
    BadgeState badge(true);
    badge.setTitle("(0) Inbox");
    EXPECT_EQ(badge.shown(), Badge{});
    badge.setByPage("0");
    EXPECT_EQ(badge.shown(), Badge{});
}

TEST(Badge, WithoutANumberIsADot) {
    BadgeState badge(true);
    badge.setByPage("flag");
    EXPECT_EQ(badge.shown(), (Badge{std::nullopt, true}));
    EXPECT_EQ(badge.titleOf("Mail"), "• Mail");
}

TEST(Badge, IgnoresWhatIsNoCount) {
    BadgeState badge(true);
    badge.setByPage("3");
    for (const char* text : {"", "-1", "1e9", "99999999999999999999", "7 ", "<b>", "NaN"}) {
        badge.setByPage(text);
        EXPECT_EQ(badge.shown().count, 3) << text;
    }
}

TEST(Badge, OfHugeCountsIsCapped) {
    BadgeState badge(true);
    badge.setByPage("2000000000");
    EXPECT_EQ(badge.shown().count, 9'999'999);
}

TEST(Badge, ThatIsSwitchedOffShowsNothing) {
    BadgeState badge(false);
    badge.setTitle("(5) Inbox");
    badge.setByPage("7");
    EXPECT_EQ(badge.shown(), Badge{});
    EXPECT_EQ(badge.titleOf("Mail"), "Mail");
}

}  // namespace
}  // namespace wrapio
