#include "Models/ConfigurationCoding.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

AppConfiguration fullRecord() {
    AppConfiguration record;
    record.id = QUuid(u"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40"_s);
    record.configuredURL = WebAddress::parse(u"https://Mail.example.com/a?b=c"_s);
    record.appName = u"My \"Mail\" 📬\n"_s;
    record.iconSource = IconSource::favicon;
    record.lastVisitedURL = WebAddress::parse(u"https://mail.example.com/inbox"_s);
    record.runnerVersion = u"1.2.3"_s;
    record.lastUpdated = Timestamp{786961234.123456};
    record.customUserAgent = u"Agent/1"_s;
    record.allowedHosts = {u"a.example"_s, u"b.example"_s};
    record.badgeEnabled = false;
    record.customCSS = u"body { color: red }"_s;
    record.customJS = u"alert(1)"_s;
    record.jsInjectionTime = JSInjectionTime::documentStart;
    record.themeColor = u"#1E90FF"_s;
    record.themeOpacity = 0.75;
    record.themeBorderEnabled = true;
    record.isDevMode = true;
    record.sortOrder = -9223372036854775807LL - 1;
    return record;
}

bool decodes(const char* json) {
    return decodeConfiguration(json).has_value();
}

}  // namespace

TEST(ConfigurationCoding, writes_every_key_in_the_order_of_the_fields) {
    EXPECT_EQ(*encodeConfigurations({fullRecord()}), QByteArray(
        R"([{"id":"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40","configuredURL":"https://Mail.example.com/a?b=c",)"
        R"("appName":"My \"Mail\" 📬\n","iconSource":"favicon","lastVisitedURL":"https://mail.example.com/inbox",)"
        R"("runnerVersion":"1.2.3","lastUpdated":786961234.123456,"customUserAgent":"Agent/1",)"
        R"("allowedHosts":["a.example","b.example"],"badgeEnabled":false,"customCSS":"body { color: red }",)"
        R"j("customJS":"alert(1)","jsInjectionTime":"documentStart","themeColor":"#1E90FF","themeOpacity":0.75,)j"
        R"("themeBorderEnabled":true,"isDevMode":true,"sortOrder":-9223372036854775808}])"));
}

TEST(ConfigurationCoding, leaves_absent_fields_out_and_writes_the_others_always) {
    AppConfiguration record;
    record.id = QUuid(u"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40"_s);
    record.lastUpdated = Timestamp{1.5};
    EXPECT_EQ(*encodeConfigurations({record}), QByteArray(
        R"([{"id":"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40","iconSource":"default","lastUpdated":1.5,)"
        R"("allowedHosts":[],"badgeEnabled":true,"jsInjectionTime":"documentEnd","themeBorderEnabled":false,)"
        R"("isDevMode":false}])"));
}

TEST(ConfigurationCoding, sorts_keys_when_asked_to_write_prettily) {
    AppConfiguration record;
    record.id = QUuid(u"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40"_s);
    record.lastUpdated = Timestamp{1.5};
    EXPECT_EQ(*encodeConfigurations({record}, JsonStyle::prettySortedKeys), QByteArray(
        "[\n  {\n    \"allowedHosts\": [],\n    \"badgeEnabled\": true,\n    \"iconSource\": \"default\",\n"
        "    \"id\": \"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40\",\n    \"isDevMode\": false,\n"
        "    \"jsInjectionTime\": \"documentEnd\",\n    \"lastUpdated\": 1.5,\n    \"themeBorderEnabled\": false\n"
        "  }\n]"));
}

TEST(ConfigurationCoding, gives_back_the_same_value_in_every_field) {
    const auto decoded = decodeConfigurations(*encodeConfigurations({fullRecord(), AppConfiguration()}));
    ASSERT_TRUE(decoded) << decoded.error().reason.toStdString();
    ASSERT_EQ(decoded->size(), 2U);
    EXPECT_EQ((*decoded)[0], fullRecord());
}

TEST(ConfigurationCoding, fills_an_empty_object_with_the_values_of_a_new_record) {
    const auto first = decodeConfiguration("{}");
    const auto second = decodeConfiguration("{}");
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->id, second->id);
    EXPECT_NEAR(first->lastUpdated.secondsSinceReference, Timestamp::now().secondsSinceReference, 5);
    AppConfiguration expected;
    expected.id = first->id;
    expected.lastUpdated = first->lastUpdated;
    EXPECT_EQ(*first, expected);
}

TEST(ConfigurationCoding, takes_null_for_a_missing_key) {
    const auto record = decodeConfiguration(R"({"id":null,"appName":null,"badgeEnabled":null,"allowedHosts":null,
        "iconSource":null,"lastUpdated":null,"sortOrder":null,"configuredURL":null,"themeOpacity":null})");
    ASSERT_TRUE(record);
    EXPECT_TRUE(record->badgeEnabled);
    EXPECT_FALSE(record->appName || record->configuredURL || record->sortOrder);
}

TEST(ConfigurationCoding, refuses_a_text_that_is_no_icon_source) {
    EXPECT_FALSE(decodes(R"({"iconSource":"emoji"})"));
    EXPECT_FALSE(decodes(R"({"jsInjectionTime":"never"})"));
}

TEST(ConfigurationCoding, refuses_values_of_the_wrong_type) {
    for (const char* json :
         {R"({"id":7})", R"({"id":"abc"})", R"({"id":"{3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40}"})",
          R"({"configuredURL":5})", R"({"configuredURL":""})", R"({"appName":true})", R"({"lastUpdated":"now"})",
          R"({"allowedHosts":"a"})", R"({"allowedHosts":[1]})", R"({"badgeEnabled":1})", R"({"themeOpacity":"0.5"})",
          R"({"sortOrder":1.5})", R"({"sortOrder":9223372036854775808})", R"({"sortOrder":1e30})", R"([])", "7", ""})
        EXPECT_FALSE(decodes(json)) << json;
}

TEST(ConfigurationCoding, accepts_a_whole_number_in_any_form_as_sort_order) {
    EXPECT_EQ(decodeConfiguration(R"({"sortOrder":3.0})")->sortOrder, 3);
}

TEST(ConfigurationCoding, accepts_an_id_in_lower_case_and_ignores_unknown_keys) {
    const auto record = decodeConfiguration(R"({"id":"3f2a9c01-5d0f-4c51-9a57-3e1f6b1d2a40","later":[1,{}]})");
    ASSERT_TRUE(record);
    EXPECT_EQ(canonicalText(record->id), u"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40"_s);
}

TEST(ConfigurationCoding, fails_the_whole_list_for_one_bad_record) {
    EXPECT_FALSE(decodeConfigurations(R"([{}, {"badgeEnabled":"yes"}])"));
}

TEST(ConfigurationCoding, survives_hostile_bytes) {
    EXPECT_FALSE(decodeConfigurations(QByteArray(1'000'000, '[')));
    EXPECT_FALSE(decodeConfigurations(QByteArray("[{\"appName\":\"\xFF\xFE\"}]")));
    EXPECT_FALSE(decodeConfigurations(QByteArray("\0\0\0", 3)));
    EXPECT_FALSE(decodeConfigurations(QByteArray("[{\"a\":") + QByteArray(500'000, '{')));
    EXPECT_TRUE(decodeConfigurations(QByteArray("[{\"appName\":\"") + QByteArray(10'000'000, 'x') + "\"}]"));
}

TEST(ConfigurationCoding, encodes_nothing_when_a_number_has_no_json_form) {
    AppConfiguration record;
    record.themeOpacity = NAN;
    EXPECT_FALSE(encodeConfigurations({record}));
    record.themeOpacity.reset();
    record.lastUpdated.secondsSinceReference = INFINITY;
    EXPECT_FALSE(encodeConfigurations({record}));
}

TEST(ConfigurationCoding, writes_broken_text_as_valid_utf8) {
    AppConfiguration record;
    record.appName = QString(QChar(0xD800)) + u"x"_s;
    const auto bytes = encodeConfigurations({record});
    ASSERT_TRUE(bytes);
    EXPECT_TRUE(decodeConfigurations(*bytes));
}

}  // namespace wrapio
