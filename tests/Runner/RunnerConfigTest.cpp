#include "RunnerCore/RunnerConfig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace wrapio {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string with(const std::string& members) {
    return R"({"url":"https://example.com/","name":"A")" + (members.empty() ? "" : "," + members) + "}";
}

RunnerConfig decoded(const std::string& text) {
    auto config = decodeConfig(text);
    EXPECT_TRUE(config) << text;
    return config.value_or(RunnerConfig());
}

TEST(RunnerConfig, EveryKeyIsRead) {
    const RunnerConfig config = decoded(R"json({
        "url" : "https://mail.Example.com/inbox", "name" : "Mail", "userAgent" : "UA/1",
        "allowedHosts" : ["login.example.org"], "runnerVersion" : "1.0.0", "badgeEnabled" : false,
        "customCSS" : "a{}", "customJS" : "b()", "jsInjectionTime" : "documentStart",
        "themeColor" : "#1E90FF", "themeOpacity" : 0.5, "themeBorderEnabled" : true, "isDevMode" : true
    })json");
    EXPECT_EQ(config.url, "https://mail.Example.com/inbox");
    EXPECT_EQ(config.host, "mail.example.com");
    EXPECT_EQ(config.name, "Mail");
    EXPECT_EQ(config.userAgent, "UA/1");
    EXPECT_THAT(config.allowedHosts, ElementsAre("login.example.org"));
    EXPECT_FALSE(config.badgeEnabled);
    EXPECT_EQ(config.customCss, "a{}");
    EXPECT_EQ(config.customJs, "b()");
    EXPECT_EQ(config.scriptTime, ScriptTime::DocumentStart);
    EXPECT_EQ(config.theme.color, (Color{0x1E, 0x90, 0xFF, 1.0}));
    EXPECT_EQ(config.theme.opacity, 0.5);
    EXPECT_TRUE(config.theme.hasBorder);
    EXPECT_TRUE(config.isDevMode);
    EXPECT_THAT(config.warnings, IsEmpty());
}

TEST(RunnerConfig, AbsentAndNullKeysTakeTheirDefaults) {
    for (const std::string& text :
         {with(""), with(R"("badgeEnabled":null,"allowedHosts":null,"customJS":null,"themeOpacity":null)")}) {
        const RunnerConfig config = decoded(text);
        EXPECT_FALSE(config.userAgent);
        EXPECT_THAT(config.allowedHosts, IsEmpty());
        EXPECT_TRUE(config.badgeEnabled);
        EXPECT_EQ(config.scriptTime, ScriptTime::DocumentEnd);
        EXPECT_FALSE(config.theme.color);
        EXPECT_EQ(config.theme.opacity, 1.0);
        EXPECT_FALSE(config.theme.hasBorder);
        EXPECT_FALSE(config.isDevMode);
        EXPECT_THAT(config.warnings, IsEmpty());
    }
}

TEST(RunnerConfig, ValuesOfTheWrongTypeAreLeftOutWithAWarningEach) {
    const RunnerConfig config = decoded(
        with(R"("userAgent":1,"allowedHosts":"x","badgeEnabled":"no","customCSS":[],"customJS":{},"themeColor":7,)"
             R"("themeOpacity":"x","themeBorderEnabled":1,"isDevMode":"yes","jsInjectionTime":true)"));
    EXPECT_EQ(config.warnings.size(), 10U);
    EXPECT_TRUE(config.badgeEnabled);
    EXPECT_FALSE(config.isDevMode);
    EXPECT_EQ(config.customCss, "");
    EXPECT_THAT(config.allowedHosts, IsEmpty());
}

TEST(RunnerConfig, TheLastOfEqualKeysWins) {
    EXPECT_EQ(decoded(R"({"url":"https://a.com/","url":"https://b.com/"})").host, "b.com");
    EXPECT_TRUE(decoded(with(R"("badgeEnabled":false,"badgeEnabled":null)")).badgeEnabled);
}

TEST(RunnerConfig, UnknownAndNestedMembersDoNotLeakIntoKnownOnes) {
    const RunnerConfig config =
        decoded(with(R"("x":{"isDevMode":true,"url":"https://evil.com"},"y":[[1,{"z":["q"]}]])"));
    EXPECT_FALSE(config.isDevMode);
    EXPECT_EQ(config.host, "example.com");
}

TEST(RunnerConfig, OnlyTextsOfAListCount) {
    EXPECT_THAT(decoded(with(R"("allowedHosts":["a.com",1,null,["b.com"],{"c":"d.com"},"e.com"])")).allowedHosts,
                ElementsAre("a.com", "e.com"));
}

TEST(RunnerConfig, WhatIsNoJsonObjectIsRefused) {
    for (const std::string text : {"", "x", "[]", "1", "\"x\"", "null", "{", "{\"url\":\"https://a.com\"", "\xff\xfe",
                                   "{\"url\":\"https://a.com\"} x", "{\"url\":\"\xff\"}", "{\"a\":1e999}"}) {
        const auto config = decodeConfig(text);
        ASSERT_FALSE(config) << text;
        EXPECT_TRUE(std::holds_alternative<ConfigMalformed>(config.error())) << text;
    }
}

TEST(RunnerConfig, DeepNestingIsRefused) {
    const auto arrays = decodeConfig("{\"url\":" + std::string(1'000'000, '['));
    ASSERT_FALSE(arrays);
    EXPECT_THAT(std::get<ConfigMalformed>(arrays.error()).reason, HasSubstr("nested too deeply"));
    EXPECT_FALSE(decodeConfig(std::string(1'000'000, '[')));
    std::string objects;
    for (int i = 0; i < 100'000; ++i)
        objects += "{\"a\":";
    EXPECT_FALSE(decodeConfig(objects));
}

TEST(RunnerConfig, AnAddressThatCannotBeShownIsRefused) {
    for (const std::string address : {"", "ftp://x.com", "file:///etc/passwd", "javascript:alert(1)", "https://",
                                      "example.com", "about:blank", "https://a b.com/", "wrapio://create"}) {
        const auto config = decodeConfig("{\"url\":\"" + address + "\"}");
        ASSERT_FALSE(config) << address;
        EXPECT_TRUE(std::holds_alternative<AddressUnusable>(config.error())) << address;
    }
    EXPECT_FALSE(decodeConfig(R"({"url":7})"));
    EXPECT_FALSE(decodeConfig(R"({"name":"A"})"));
    EXPECT_FALSE(decodeConfig(R"({"url":"https://a.com/\u0000"})"));
    EXPECT_FALSE(decodeConfig("{\"url\":\"https://a.com/" + std::string(10'000'000, 'x') + "\"}"));
}

TEST(RunnerConfig, LocalAddressesNeedDeveloperMode) {
    for (const std::string host : {"localhost:3000", "127.0.0.1:8080", "192.168.1.20", "printer.local", "[::1]:80"}) {
        EXPECT_FALSE(decodeConfig("{\"url\":\"http://" + host + "\"}")) << host;
        EXPECT_TRUE(decodeConfig("{\"url\":\"http://" + host + "\",\"isDevMode\":true}")) << host;
    }
}

TEST(RunnerConfig, AnAddressKeepsTheTextAsItWasTyped) {
    EXPECT_EQ(decoded(R"({"url":" HTTPS://Bücher.Example/Weg?q=ü "})").url, "HTTPS://Bücher.Example/Weg?q=ü");
}

TEST(RunnerConfig, ANameIsCleanedAndNeverEmpty) {
    EXPECT_EQ(decoded(R"({"url":"https://a.com/","name":"  My\u0000\n Mail\u202e "})").name, "My  Mail");
    EXPECT_EQ(decoded(R"({"url":"https://a.com/","name":"\u0007\n"})").name, "a.com");
    EXPECT_EQ(decoded(R"({"url":"https://a.com/"})").name, "a.com");
    EXPECT_LT(decoded("{\"url\":\"https://a.com/\",\"name\":\"" + std::string(10'000'000, 'x') + "\"}").name.size(),
              300U);
}

TEST(RunnerConfig, AUserAgentThatWouldAddHeadersIsLeftOut) {
    for (const std::string agent : {"a\\r\\nX-Evil: 1", "a\\nb", "\\u0000", "ü", "a\\u007f"}) {
        const RunnerConfig config = decoded(with("\"userAgent\":\"" + agent + "\""));
        EXPECT_FALSE(config.userAgent) << agent;
        EXPECT_EQ(config.warnings.size(), 1U) << agent;
    }
    EXPECT_FALSE(decoded(with("\"userAgent\":\"" + std::string(5000, 'a') + "\"")).userAgent);
    EXPECT_FALSE(decoded(with("\"userAgent\":\"\"")).userAgent);
}

TEST(RunnerConfig, HostsThatAreNoneAreLeftOut) {
    const RunnerConfig config = decoded(with(R"("allowedHosts":["ok.com","","a b","https://x.org/y"])"));
    EXPECT_THAT(config.allowedHosts, ElementsAre("ok.com", "x.org"));
    EXPECT_EQ(config.warnings.size(), 2U);
}

TEST(RunnerConfig, ABadColourIsIgnored) {
    for (const std::string color : {"red", "#FFF", "#GG0000", "url(x)", "#1E90FF}*{", "0x1E90"}) {
        const RunnerConfig config = decoded(with("\"themeColor\":\"" + color + "\""));
        EXPECT_FALSE(config.theme.color) << color;
        EXPECT_EQ(config.warnings.size(), 1U) << color;
    }
    EXPECT_THAT(decoded(with("\"themeColor\":\"\"")).warnings, IsEmpty());
}

TEST(RunnerConfig, AnOpacityOutsideOfItsRangeIsClamped) {
    EXPECT_EQ(decoded(with("\"themeOpacity\":7")).theme.opacity, 1.0);
    EXPECT_EQ(decoded(with("\"themeOpacity\":-0.5")).theme.opacity, 0.0);
    EXPECT_EQ(decoded(with("\"themeOpacity\":1")).theme.opacity, 1.0);
    EXPECT_EQ(decoded(with("\"themeOpacity\":0.1")).theme.opacity, 0.1);
}

TEST(RunnerConfig, LargeScriptsAreKeptWhole) {
    const std::string css(10'000'000, 'x');
    EXPECT_EQ(decoded(with("\"customCSS\":\"" + css + "\"")).customCss, css);
}

TEST(RunnerConfig, ScriptsLoseTheCharacterThatWouldEndThemEarly) {
    EXPECT_EQ(decoded(with(R"("customJS":"a\u0000b","customCSS":"c\u0000d")")).customJs, "ab");
}

TEST(RunnerConfig, AnUnknownInjectionTimeMeansTheEnd) {
    const RunnerConfig config = decoded(with(R"("customJS":"x","jsInjectionTime":"later")"));
    EXPECT_EQ(config.scriptTime, ScriptTime::DocumentEnd);
    EXPECT_EQ(config.warnings.size(), 1U);
}

}  // namespace
}  // namespace wrapio
