#include "Utilities/ApplicationIdentity.h"

#include <gtest/gtest.h>

namespace wrapio {

TEST(ApplicationIdentity, leaves_an_identifier_without_leading_digits_as_it_is) {
    EXPECT_EQ(desktopId("com.wrapio.generated.my-mail-3f2a9c01"), "com.wrapio.generated.my-mail-3f2a9c01");
    EXPECT_EQ(desktopId("com.wrapio.generated.-3f2a9c01"), "com.wrapio.generated.-3f2a9c01");
}

TEST(ApplicationIdentity, puts_an_underscore_before_every_element_that_begins_with_a_digit) {
    EXPECT_EQ(desktopId("com.wrapio.generated.1mail-3f2a9c01"), "com.wrapio.generated._1mail-3f2a9c01");
    EXPECT_EQ(desktopId("1.2a.b3"), "_1._2a.b3");
}

TEST(ApplicationIdentity, gives_valid_ids_for_all_that_bundle_identifiers_can_hold) {
    EXPECT_TRUE(isValidDesktopId(desktopId("com.wrapio.generated.-3f2a9c01")));
    EXPECT_TRUE(isValidDesktopId(desktopId("com.wrapio.generated.1mail-3f2a9c01")));
}

TEST(ApplicationIdentity, refuses_ids_that_no_bus_takes) {
    for (const char* id : {"", "nodot", ".a.b", "a..b", "a.b.", "a.1b", "a.b c", "a.b+c", "a.\xC3\xA9"})
        EXPECT_FALSE(isValidDesktopId(id)) << id;
    EXPECT_FALSE(isValidDesktopId("a." + std::string(254, 'b')));
    EXPECT_TRUE(isValidDesktopId("a." + std::string(253, 'b')));
}

TEST(ApplicationIdentity, makes_the_url_scheme_of_an_app_in_lower_case) {
    EXPECT_EQ(appUrlScheme("0B7C57E2-5D0F-4C51-9A57-3E1F6B1D2A40"), "wrapio-0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a40");
}

}  // namespace wrapio
