#include "RunnerCore/HostName.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(HostName, AnEntryMayBeAHostAnAddressOrAWildcard) {
    EXPECT_EQ(hostOfEntry("Example.COM"), "example.com");
    EXPECT_EQ(hostOfEntry("  login.example.com \n"), "login.example.com");
    EXPECT_EQ(hostOfEntry("*.example.com"), "example.com");
    EXPECT_EQ(hostOfEntry("https://login.example.com/path?q"), "login.example.com");
    EXPECT_EQ(hostOfEntry("localhost:3000"), "localhost");
    EXPECT_EQ(hostOfEntry("[::1]:80"), "::1");
    EXPECT_EQ(hostOfEntry("bücher.example"), "bücher.example");
}

TEST(HostName, AnEntryWithoutAHostIsNone) {
    for (const char* entry : {"", "   ", "https://", "a b", "exa\nmple.com", "*", "*.", "a<b"})
        EXPECT_FALSE(hostOfEntry(entry) && *hostOfEntry(entry) != "*") << entry;
    EXPECT_FALSE(hostOfEntry(std::string(100'000, 'a')));
    EXPECT_FALSE(hostOfEntry(std::string(254, 'a')));
}

TEST(HostName, SubdomainsLieWithinAName) {
    EXPECT_TRUE(isHostWithin("example.com", "example.com"));
    EXPECT_TRUE(isHostWithin("a.b.example.com", "example.com"));
    EXPECT_FALSE(isHostWithin("badexample.com", "example.com"));
    EXPECT_FALSE(isHostWithin("example.com", "a.example.com"));
}

TEST(HostName, NothingLiesUnderOneLabelOrANumber) {
    EXPECT_FALSE(isHostWithin("example.com", "com"));
    EXPECT_TRUE(isHostWithin("localhost", "localhost"));
    EXPECT_FALSE(isHostWithin("1.10.0.0.1", "10.0.0.1"));
}

}  // namespace
}  // namespace wrapio
