#include "Fakes/DiagnosticsCapture.h"
#include "Fakes/PrintQt.h"
#include "Models/AppTemplate.h"
#include "Models/ConfigurationManager.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

QString normalized(const QString& text, bool isDevMode = false) {
    const auto address = ConfigurationManager::normalizeURL(text, isDevMode);
    return address ? address->absoluteString() : u"nothing"_s;
}

}  // namespace

TEST(WebAddressRules, trim_spaces_and_a_trailing_newline) {
    EXPECT_EQ(normalized(u"  https://example.com/a \n"_s), u"https://example.com/a"_s);
}

TEST(WebAddressRules, keep_a_scheme_in_upper_case) {
    EXPECT_EQ(normalized(u"HTTPS://Example.com"_s), u"HTTPS://Example.com"_s);
    EXPECT_EQ(normalized(u"HtTp://Example.com"_s), u"HtTp://Example.com"_s);
}

TEST(WebAddressRules, put_https_before_a_bare_name_and_http_in_developer_mode) {
    EXPECT_EQ(normalized(u"example.com"_s), u"https://example.com"_s);
    EXPECT_EQ(normalized(u"example.com"_s, true), u"http://example.com"_s);
}

TEST(WebAddressRules, accept_localhost_in_developer_mode_only) {
    DiagnosticsCapture capture;
    EXPECT_EQ(normalized(u"localhost:3000"_s), u"nothing"_s);
    EXPECT_EQ(normalized(u"localhost:3000"_s, true), u"http://localhost:3000"_s);
    EXPECT_EQ(capture.lines(), QStringList());
}

TEST(WebAddressRules, refuse_private_addresses_with_a_line) {
    for (const QString& host : {u"192.168.1.20"_s, u"10.0.0.1"_s, u"172.20.0.5"_s, u"169.254.3.3"_s,
                                u"printer.local"_s, u"127.0.0.1"_s}) {
        DiagnosticsCapture capture;
        EXPECT_EQ(normalized(host), u"nothing"_s);
        EXPECT_EQ(capture.lines(), QStringList(u"⚠️ Blocked internal/private URL: "_s + host));
        EXPECT_EQ(normalized(host + u":8080/a"_s, true), u"http://"_s + host + u":8080/a"_s);
    }
}

TEST(WebAddressRules, accept_addresses_next_to_private_ranges) {
    EXPECT_EQ(normalized(u"172.32.0.1"_s), u"https://172.32.0.1"_s);
    EXPECT_EQ(normalized(u"192.169.0.1"_s), u"https://192.169.0.1"_s);
}

TEST(WebAddressRules, accept_nothing_of_an_empty_or_blank_text_in_both_modes) {
    for (const QString& text : {u""_s, u"   "_s, u"\n\t \u3000"_s}) {
        EXPECT_EQ(normalized(text), u"nothing"_s);
        EXPECT_EQ(normalized(text, true), u"nothing"_s);
    }
}

TEST(WebAddressRules, judge_other_schemes_as_a_whole) {
    EXPECT_EQ(normalized(u"ftp://host"_s), u"nothing"_s);
    EXPECT_EQ(normalized(u"javascript:alert(1)"_s), u"nothing"_s);
    EXPECT_EQ(normalized(u"file:///etc/passwd"_s), u"nothing"_s);
}

TEST(WebAddressRules, refuse_what_does_not_parse_or_has_no_host) {
    for (const QString& text : {u"https://"_s, u"https:///a"_s, u"https://a b.com"_s, u"exa mple.com"_s,
                                u"https://example.com:port"_s, u"https://[::1"_s})
        EXPECT_EQ(normalized(text), u"nothing"_s) << text.toStdString();
}

TEST(WebAddressRules, accept_the_address_of_the_developer_template_with_developer_mode_only) {
    const QString url = AppTemplate::devTemplates().front().url;
    EXPECT_EQ(normalized(url), u"nothing"_s);
    EXPECT_EQ(normalized(url, true), u"http://localhost:3000"_s);
}

TEST(WebAddressRules, accept_the_addresses_of_the_popular_templates) {
    for (const AppTemplate& offered : AppTemplate::popular())
        EXPECT_EQ(normalized(offered.url, offered.isDevMode), offered.url);
}

}  // namespace wrapio
