#include "Models/WebAddress.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

TEST(WebAddress, keeps_its_text_as_it_was_typed) {
    const auto address = WebAddress::parse(u"HTTPS://Bücher.Example:8080/A?b=%20#c"_s);
    ASSERT_TRUE(address);
    EXPECT_EQ(address->absoluteString(), u"HTTPS://Bücher.Example:8080/A?b=%20#c"_s);
    EXPECT_EQ(address->scheme(), u"HTTPS"_s);
    EXPECT_EQ(address->host(), u"Bücher.Example"_s);
    EXPECT_EQ(address->port(), 8080);
}

TEST(WebAddress, is_nothing_for_a_text_that_is_no_address) {
    EXPECT_FALSE(WebAddress::parse(u""_s));
    EXPECT_FALSE(WebAddress::parse(u"https://a b"_s));
}

}  // namespace wrapio
