#include "Utilities/StringSanitizer.h"

#include "Utilities/BundleNames.h"

#include <gtest/gtest.h>

namespace wrapio {

TEST(StringSanitizer, deletes_forbidden_characters_and_keeps_dots_without_traversal_prevention) {
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("a/b:c?.app", false), "abc.app");
}

TEST(StringSanitizer, deletes_dots_too_with_traversal_prevention) {
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("a/b:c?.app", true), "abcapp");
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("../../etc", true), "etc");
}

TEST(StringSanitizer, deletes_every_one_of_the_ten_characters) {
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("1:2/3\\4?5%6*7|8\"9<0>", false), "1234567890");
}

TEST(StringSanitizer, deletes_newlines_controls_and_format_characters) {
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("a\nb\r\nc\td\x01"
                                                   "e\x7f",
                                                   false),
              "abcde");
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("a\u0085b\u2028c\u2029d", false), "abcd");
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("evil\u202Egpj.exe\u200D", false), "evilgpj.exe");
    EXPECT_EQ(StringSanitizer::sanitizeForFilename(std::string_view("a\0b", 3), false), "ab");
}

TEST(StringSanitizer, trims_white_space_of_every_kind_from_both_ends_only) {
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("  \u3000My  Mail\u00A0 ", false), "My  Mail");
}

TEST(StringSanitizer, may_leave_nothing) {
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("///", false), "");
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("", true), "");
}

TEST(StringSanitizer, keeps_emoji_and_other_scripts_and_drops_broken_bytes) {
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("\xF0\x9F\x93\xAC Почта", true), "\xF0\x9F\x93\xAC Почта");
    EXPECT_EQ(StringSanitizer::sanitizeForFilename("a\xFF\xC0\xAF\xED\xA0\x80z", true), "az");
}

TEST(StringSanitizer, has_no_length_limit) {
    EXPECT_EQ(StringSanitizer::sanitizeForFilename(std::string(300, 'x'), true).size(), 300U);
}

TEST(BundleNames, give_one_place_for_an_ordinary_name) {
    EXPECT_EQ(launchedBundleName("My Mail!"), "My Mail!.app");
    EXPECT_EQ(cataloguedBundleName("My Mail!"), "My Mail!.app");
    EXPECT_EQ(generatedBundleName("My Mail!"), "My Mail!.app");
    EXPECT_TRUE(bundleNamesAgree("My Mail!"));
}

TEST(BundleNames, give_underscores_only_for_a_launched_name_of_separators_only) {
    EXPECT_EQ(launchedBundleName("//"), "__.app");
    EXPECT_EQ(launchedBundleName("Mail: Work/Home"), "Mail_ Work_Home.app");
}

TEST(BundleNames, differ_for_dots_separators_and_outer_blanks) {
    for (const char* name : {"Mail 2.0", "a/b", "a:b", " Mail", "Mail ", "a\nb", "//", "", "."})
        EXPECT_FALSE(bundleNamesAgree(name)) << name;
}

TEST(BundleNames, fit_a_file_name_of_255_bytes) {
    EXPECT_TRUE(bundleNameFits(std::string(251, 'h')));
    EXPECT_FALSE(bundleNameFits(std::string(252, 'h')));
}

TEST(BundleNames, are_cut_between_two_characters_when_they_are_too_long) {
    EXPECT_EQ(fittingDisplayName(std::string(251, 'h')), std::string(251, 'h'));
    EXPECT_EQ(fittingDisplayName(std::string(300, 'h')), std::string(251, 'h'));
    std::string ships;
    for (int i = 0; i < 100; ++i)
        ships += "\U0001F6A2";
    EXPECT_EQ(fittingDisplayName(ships), ships.substr(0, 248));
    EXPECT_EQ(fittingDisplayName(std::string(250, 'h') + "  tail"), std::string(250, 'h'));
}

TEST(BundleNames, agree_on_the_safe_form_of_a_name) {
    EXPECT_EQ(safeDisplayName(" a/b.c\n"), "abc");
    EXPECT_TRUE(bundleNamesAgree(safeDisplayName("Mail: Work/Home 2.0")));
}

}  // namespace wrapio
