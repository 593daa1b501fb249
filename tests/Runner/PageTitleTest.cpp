#include "RunnerCore/PageTitle.h"

#include <gtest/gtest.h>

#include <string>

namespace wrapio {
namespace {

TEST(PageTitle, ALeadingNumberInBracketsIsACount) {
    EXPECT_EQ(unreadCountOfTitle("(3) Inbox"), 3);
    EXPECT_EQ(unreadCountOfTitle("  [12] News"), 12);
    EXPECT_EQ(unreadCountOfTitle("(99+) Feed"), 99);
    EXPECT_EQ(unreadCountOfTitle("(2024) Feed"), 2024);
    EXPECT_EQ(unreadCountOfTitle("(0) Feed"), 0);
}

TEST(PageTitle, ALaterNumberIsACountUnlessItMayBeAYear) {
    EXPECT_EQ(unreadCountOfTitle("Inbox (7) - Mail"), 7);
    EXPECT_EQ(unreadCountOfTitle("Inbox (1,234) - Mail"), 1234);
    EXPECT_EQ(unreadCountOfTitle("Metropolis (1927)"), std::nullopt);
    EXPECT_EQ(unreadCountOfTitle("Metropolis (1927) (4)"), 4);
}

TEST(PageTitle, OtherBracketsAreNone) {
    for (const char* title : {"", "Inbox", "()", "(", "(x)", "(3", "(3]", "(-3)", "(3 new)", "(+)", "(,3)", "(3+4)"})
        EXPECT_EQ(unreadCountOfTitle(title), std::nullopt) << title;
}

TEST(PageTitle, AnAbsurdNumberIsNone) {
    EXPECT_EQ(unreadCountOfTitle("(" + std::string(100'000, '9') + ")"), std::nullopt);
    EXPECT_EQ(unreadCountOfTitle(std::string(100'000, '(')), std::nullopt);
}

}  // namespace
}  // namespace wrapio
