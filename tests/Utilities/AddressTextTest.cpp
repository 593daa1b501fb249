#include "Utilities/AddressText.h"

#include <gtest/gtest.h>

namespace wrapio {

TEST(AddressText, splits_a_full_address) {
    const auto parts = parseAddress("HTTPS://user:pw@Mail.Example.com:8443/a b/c?q=1#top");
    ASSERT_TRUE(parts);
    EXPECT_EQ(parts->scheme, "HTTPS");
    EXPECT_EQ(parts->host, "Mail.Example.com");
    EXPECT_EQ(parts->port, 8443);
    EXPECT_EQ(parts->path, "/a b/c");
    EXPECT_EQ(parts->query, "q=1");
    EXPECT_EQ(parts->fragment, "top");
}

TEST(AddressText, gives_hosts_without_brackets) {
    const auto parts = parseAddress("http://[::1]:3000/");
    ASSERT_TRUE(parts);
    EXPECT_EQ(parts->host, "::1");
    EXPECT_EQ(parts->port, 3000);
}

TEST(AddressText, takes_international_names_as_they_are) {
    EXPECT_EQ(parseAddress("https://bücher.example/ä")->host, "bücher.example");
}

TEST(AddressText, finds_no_host_where_there_is_none) {
    for (const char* text : {"mailto:a@b.c", "file:///etc/passwd", "about:blank", "a/b", "https:///x"}) {
        const auto parts = parseAddress(text);
        ASSERT_TRUE(parts) << text;
        EXPECT_FALSE(parts->host) << text;
    }
}

TEST(AddressText, accepts_an_empty_port) {
    const auto parts = parseAddress("http://a.b:/");
    ASSERT_TRUE(parts);
    EXPECT_FALSE(parts->port);
}

TEST(AddressText, refuses_what_is_no_address) {
    for (const char* text : {"", "https://a b.com", "https://a.b:99999", "https://a.b:x", "https://[::1", "https://[]",
                             "https://[::1]x", "https://a<b>.com", "https://a\\b.com", "https://a.b/\n", "https://\xFF"})
        EXPECT_FALSE(parseAddress(text)) << text;
}

}  // namespace wrapio
