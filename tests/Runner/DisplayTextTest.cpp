#include "RunnerCore/DisplayText.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

TEST(DisplayText, OrdinaryTextStaysAsItIs) {
    EXPECT_EQ(displayText("Größe 漢字 😀", 50), "Größe 漢字 😀");
}

TEST(DisplayText, LinesAreJoinedAndControlsLeftOut) {
    EXPECT_EQ(displayText("  a\nb\tc\x01\x7f  ", 50), "a b c");
    EXPECT_EQ(displayText(std::string_view("a\0b", 3), 50), "ab");
    EXPECT_EQ(displayText("txt\u202Egpj", 50), "txtgpj");
}

TEST(DisplayText, BytesThatAreNoUtf8AreLeftOut) {
    EXPECT_EQ(displayText("a\xff\xc0\x80z", 50), "az");
}

TEST(DisplayText, LongTextIsCutByCharactersNotBytes) {
    EXPECT_EQ(displayText("äöüß", 3), "äöü…");
    EXPECT_EQ(displayText("äöü", 3), "äöü");
}

TEST(DisplayText, TextThatIsCutHasNoWhiteSpaceAtItsEndsEither) {
    EXPECT_EQ(displayText("\xff abcdef", 4), "abc…");
    EXPECT_EQ(displayText("abc  def", 4), "abc…");
}

}  // namespace
}  // namespace wrapio
