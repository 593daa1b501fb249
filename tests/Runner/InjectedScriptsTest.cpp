#include "RunnerCore/InjectedScripts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace wrapio {
namespace {

using testing::HasSubstr;

TEST(InjectedScripts, ALiteralReadsBackAsTheSameText) {
    const std::string text = "a\"b\\c\n\r\t\x01 ü漢😀 </script> ${x} `\u2028\u2029";
    EXPECT_EQ(nlohmann::ordered_json::parse(scriptLiteral(text)).get<std::string>(), text);
}

TEST(InjectedScripts, LineSeparatorsAndControlsAreEscaped) {
    EXPECT_EQ(scriptLiteral("\u2028\u2029\n\x7f"), R"("\u2028\u2029\u000a\u007f")");
}

TEST(InjectedScripts, BytesThatAreNoUtf8AreLeftOut) {
    EXPECT_EQ(scriptLiteral("a\xff\xc3z"), "\"az\"");
}

TEST(InjectedScripts, AStyleSheetCannotBreakOutOfItsLiteral) {
    const std::string script = styleScript("\");alert(1);(\"");
    EXPECT_THAT(script, HasSubstr(R"(\");alert(1);(\")"));
}

}  // namespace
}  // namespace wrapio
