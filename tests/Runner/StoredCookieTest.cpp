#include "RunnerCore/StoredCookie.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(StoredCookie, ComesBackAsItWasWritten) {
    const std::vector<StoredCookie> cookies{
        {".example.com", "/", "name", "value", 0, true, true, SameSite::Strict},
        {"a", "/x", "tab\tand%", "line\nbreak\x01\xFF", 1'700'000'000, false, false, SameSite::Unset}};
    EXPECT_EQ(parseCookies(cookiesText(cookies)), cookies);
}

TEST(StoredCookie, DamagedLinesAreLeftOut) {
    EXPECT_TRUE(parseCookies("").empty());
    EXPECT_TRUE(parseCookies("a\tb\n\n\t\t\t\t\t\t\t\n").empty());
    EXPECT_TRUE(parseCookies("a\t/\tn\tv\t-1\t0\t0\t0\n").empty());
    EXPECT_TRUE(parseCookies("a\t/\tn\tv\t0\t0\t0\t9\n").empty());
    EXPECT_TRUE(parseCookies("a\t/\tn\tv\tx\t0\t0\t0\n").empty());
    EXPECT_EQ(parseCookies("junk\na\t/\tn\tv\t0\t0\t0\t0\nmore").size(), 1U);
}

TEST(StoredCookie, EscapesThatAreNoneStayAsTheyAre) {
    const auto cookies = parseCookies("a\t/\t%4\t%zz%41\t0\t0\t0\t0");
    ASSERT_EQ(cookies.size(), 1U);
    EXPECT_EQ(cookies.front().name, "%4");
    EXPECT_EQ(cookies.front().value, "%zzA");
}

TEST(StoredCookie, BelongsToASiteByWholeLabels) {
    EXPECT_TRUE(cookieBelongsTo("example.com", "example.com"));
    EXPECT_TRUE(cookieBelongsTo(".Mail.Example.com", "example.com"));
    EXPECT_FALSE(cookieBelongsTo("badexample.com", "example.com"));
    EXPECT_FALSE(cookieBelongsTo(".com", "example.com"));
    EXPECT_FALSE(cookieBelongsTo("1.127.0.0.1", "127.0.0.1"));
    EXPECT_FALSE(cookieBelongsTo("example.com", ""));
}

}  // namespace
}  // namespace wrapio
