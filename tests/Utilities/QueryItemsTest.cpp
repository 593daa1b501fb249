#include "Utilities/QueryItems.h"

#include <gtest/gtest.h>

namespace wrapio {

using Items = std::vector<QueryItem>;

TEST(QueryItems, splits_at_ampersands_and_at_the_first_equals_sign) {
    EXPECT_EQ(queryItems("a=1&b=2=3&c"), (Items{{"a", "1"}, {"b", "2=3"}, {"c", std::nullopt}}));
    EXPECT_EQ(queryItems(""), (Items{{"", std::nullopt}}));
    EXPECT_EQ(queryItems("a=&=b"), (Items{{"a", ""}, {"", "b"}}));
}

TEST(QueryItems, decodes_percent_escapes_in_names_and_values_and_leaves_the_plus_sign) {
    EXPECT_EQ(queryItems("n%C3%A4me=a%26b%3Dc+d%2B"), (Items{{"näme", "a&b=c+d+"}}));
}

TEST(QueryItems, has_no_value_for_an_escape_that_does_not_decode) {
    for (const char* const query : {"a=%", "a=%4", "a=%zz", "a=%+1", "a=%-1", "a=% 1", "a=%FF", "a=%C3"})
        EXPECT_EQ(queryItems(query), (Items{{"a", std::nullopt}})) << query;
    EXPECT_EQ(queryItems("%zz=1&b=2"), (Items{{"b", "2"}}));
}

TEST(QueryItems, takes_the_first_item_of_a_name_even_when_it_has_no_value) {
    const Items items = queryItems("url&url=second&URL=third");
    EXPECT_EQ(firstValue(items, "url"), std::nullopt);
    EXPECT_EQ(firstValue(items, "URL"), "third");
    EXPECT_EQ(firstValue(items, "Url"), std::nullopt);
}

TEST(QueryItems, decodes_every_byte_that_makes_up_utf8) {
    EXPECT_EQ(percentDecoded("%F0%9F%8C%8D%00"), std::string("\xF0\x9F\x8C\x8D\0", 5));
    EXPECT_EQ(percentDecoded("%ed%a0%80"), std::nullopt) << "a surrogate";
}

}  // namespace wrapio
