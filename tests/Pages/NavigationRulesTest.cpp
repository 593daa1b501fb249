#include "Views/Pages/NavigationRules.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

WebAddress at(const QString& text) {
    return *WebAddress::parse(text);
}

}  // namespace

TEST(NavigationRules, list_the_schemes_of_both_views_in_their_order) {
    EXPECT_EQ(webSchemes(), (QStringList{u"http"_s, u"https"_s}));
    EXPECT_EQ(internalSchemes(),
              (QStringList{u"http"_s, u"https"_s, u"about"_s, u"blob"_s, u"data"_s, u"javascript"_s}));
}

TEST(NavigationRules, name_a_common_browser_as_the_user_agent) {
    EXPECT_EQ(browserUserAgent(),
              u"Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36 (KHTML, like Gecko) "
              "Chrome/120.0.0.0 Safari/537.36"_s);
}

TEST(NavigationRules, take_hosts_with_the_same_last_two_labels_for_one_site) {
    EXPECT_TRUE(sameRootDomain(u"mail.example.com"_s, u"docs.example.com"_s));
    EXPECT_TRUE(sameRootDomain(u"example.com"_s, u"docs.example.com"_s));
    EXPECT_TRUE(sameRootDomain(u"one.co.uk"_s, u"other.co.uk"_s));
    EXPECT_FALSE(sameRootDomain(u"example.com"_s, u"example.org"_s));
    EXPECT_FALSE(sameRootDomain(u"Example.com"_s, u"example.com"_s));
}

TEST(NavigationRules, never_find_a_root_domain_in_a_host_of_one_label) {
    EXPECT_FALSE(sameRootDomain(u"server"_s, u"server"_s));
    EXPECT_FALSE(sameRootDomain(u"server"_s, u"www.server"_s));
    EXPECT_FALSE(isExternalLink(at(u"http://server/"_s), u"server"_s, std::nullopt));
    EXPECT_TRUE(isExternalLink(at(u"http://server/"_s), u"other"_s, u"third"_s));
}

TEST(NavigationRules, keep_an_address_without_a_host_inside) {
    EXPECT_FALSE(isExternalLink(at(u"about:blank"_s), u"example.com"_s, u"example.com"_s));
    EXPECT_FALSE(isExternalLink(at(u"about:blank"_s), std::nullopt, std::nullopt));
}

TEST(NavigationRules, keep_a_link_inside_that_matches_the_page_or_the_configured_site) {
    const WebAddress link = at(u"https://docs.example.com/"_s);
    EXPECT_FALSE(isExternalLink(link, u"docs.example.com"_s, std::nullopt));
    EXPECT_FALSE(isExternalLink(link, u"mail.example.com"_s, std::nullopt));
    EXPECT_FALSE(isExternalLink(link, u"elsewhere.org"_s, u"www.example.com"_s));
    EXPECT_FALSE(isExternalLink(link, std::nullopt, u"docs.example.com"_s));
}

TEST(NavigationRules, send_a_link_out_that_matches_neither) {
    const WebAddress link = at(u"https://elsewhere.org/"_s);
    EXPECT_TRUE(isExternalLink(link, u"mail.example.com"_s, u"www.example.com"_s));
    EXPECT_TRUE(isExternalLink(link, u"mail.example.com"_s, std::nullopt));
    EXPECT_TRUE(isExternalLink(link, std::nullopt, std::nullopt));
}

TEST(NavigationRules, keep_a_plain_view_on_its_site) {
    const std::optional<QString> site = u"www.example.com"_s;
    EXPECT_EQ(plainNavigation(at(u"https://www.example.com/a"_s), site), PlainNavigation::allow);
    EXPECT_EQ(plainNavigation(at(u"HTTP://docs.example.com/a"_s), site), PlainNavigation::allow);
    EXPECT_EQ(plainNavigation(at(u"https://elsewhere.org/"_s), site), PlainNavigation::leaveSite);
    EXPECT_EQ(plainNavigation(at(u"https://www.example.com/"_s), std::nullopt), PlainNavigation::leaveSite);
}

TEST(NavigationRules, hand_every_other_scheme_of_a_plain_view_to_the_system) {
    for (const QString& text : {u"mailto:a@example.com"_s, u"data:text/plain,a"_s, u"blob:https://www.example.com/1"_s,
                                u"about:blank"_s, u"ftp://www.example.com/"_s})
        EXPECT_EQ(plainNavigation(at(text), u"www.example.com"_s), PlainNavigation::handToSystem) << text.toStdString();
}

TEST(NavigationRules, judge_an_address_without_a_host_by_whether_a_site_is_configured) {
    EXPECT_EQ(plainNavigation(at(u"page"_s), std::nullopt), PlainNavigation::allow);
    EXPECT_EQ(plainNavigation(at(u"page"_s), u"www.example.com"_s), PlainNavigation::leaveSite);
}

}  // namespace wrapio
