#include "Design/ColorHex.h"

#include "Design/ColorTools.h"

#include <gtest/gtest.h>

#include <limits>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QColor dodger(0x1E, 0x90, 0xFF);

}  // namespace

TEST(ColorFromHex, is_the_same_with_and_without_the_sign_in_either_case_and_with_blanks_around) {
    EXPECT_EQ(colorFromHex(u"#1E90FF"_s), dodger);
    EXPECT_EQ(colorFromHex(u"1E90FF"_s), dodger);
    EXPECT_EQ(colorFromHex(u" \t#1e90ff \n"_s), dodger);
}

TEST(ColorFromHex, drops_every_sign_wherever_it_stands) {
    EXPECT_EQ(colorFromHex(u"##1E#90FF#"_s), dodger);
}

TEST(ColorFromHex, reads_the_opacity_from_the_last_two_of_eight_digits) {
    const auto color = colorFromHex(u"1E90FF80"_s);
    ASSERT_TRUE(color);
    EXPECT_EQ(color->red(), 0x1E);
    EXPECT_EQ(color->green(), 0x90);
    EXPECT_EQ(color->blue(), 0xFF);
    EXPECT_NEAR(color->alphaF(), 128.0F / 255.0F, 0.001F);
    EXPECT_FLOAT_EQ(colorFromHex(u"1E90FF"_s)->alphaF(), 1.0F);
}

TEST(ColorFromHex, is_nothing_for_any_other_length) {
    for (const auto& text : {u""_s, u"#"_s, u"F"_s, u"FFF"_s, u"FFFFF"_s, u"FFFFFFF"_s, u"FFFFFFFFF"_s})
        EXPECT_FALSE(colorFromHex(text)) << text.toStdString();
}

TEST(ColorFromHex, is_nothing_for_characters_that_are_no_hexadecimal_digits) {
    for (const auto& text : {u"GG0000"_s, u"12 456"_s, u"-12345"_s, u"+12345"_s, u"1E90F\u0663"_s, u"1E90F\uFF26"_s})
        EXPECT_FALSE(colorFromHex(text)) << text.toStdString();
}

TEST(ToHex, leaves_the_opacity_out) {
    EXPECT_EQ(toHex(*colorFromHex(u"1E90FF80"_s)), u"#1E90FF"_s);
}

TEST(ToHex, writes_six_upper_case_digits_with_leading_zeros) {
    EXPECT_EQ(toHex(QColor(0, 10, 171)), u"#000AAB"_s);
    EXPECT_EQ(toHex(QColor(Qt::white)), u"#FFFFFF"_s);
}

TEST(ToHex, rounds_to_the_nearest_byte) {
    EXPECT_EQ(toHex(QColor::fromRgbF(0.5F, 0.499F, 0.0F)), u"#807F00"_s);
}

TEST(ToHex, converts_other_ways_of_telling_a_colour) {
    EXPECT_EQ(toHex(QColor::fromHsv(120, 255, 255)), u"#00FF00"_s);
}

TEST(ToHex, is_nothing_for_what_sRGB_cannot_express) {
    EXPECT_FALSE(toHex(QColor()));
    EXPECT_FALSE(toHex(QColor::fromRgbF(1.2F, 0.0F, 0.0F)));
    EXPECT_FALSE(toHex(QColor::fromRgbF(0.5F, -0.2F, 0.0F)));
}

TEST(ToHex, gives_back_every_text_that_was_read) {
    for (int value = 0; value < 256; ++value) {
        const QString text = u"#%1%2%3"_s.arg(value, 2, 16, QChar(u'0'))
                                 .arg(255 - value, 2, 16, QChar(u'0'))
                                 .arg(value / 2, 2, 16, QChar(u'0'));
        EXPECT_EQ(toHex(*colorFromHex(text)), text.toUpper());
    }
}

TEST(ColorTools, tell_bindings_that_there_is_no_colour) {
    const ColorTools tools;
    EXPECT_FALSE(tools.fromHex(u"FFF"_s).isValid());
    EXPECT_EQ(tools.fromHex(u"#1E90FF"_s).value<QColor>(), dodger);
    EXPECT_EQ(tools.toHex(QColor()), QString());
}

TEST(ColorTools, give_one_name_one_colour_whatever_its_case) {
    const ColorTools tools;
    EXPECT_EQ(tools.tileColor(u"Mail"_s), tools.tileColor(u"mAIL"_s));
    EXPECT_NE(tools.tileColor(u"Mail"_s), tools.tileColor(u"Calendar"_s));
}

}  // namespace wrapio
