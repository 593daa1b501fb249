#include "RunnerCore/NavigationPolicy.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

constexpr NavigationCause click{true, true};
constexpr NavigationCause script{false, false};
constexpr NavigationCause scriptedClick{true, false};

NavigationPolicy mailPolicy() {
    return {"mail.example.com", {"login.partner.org"}, false};
}

TEST(NavigationPolicy, LinksWithinTheSiteAndItsRootDomainStay) {
    const auto policy = mailPolicy();
    EXPECT_EQ(policy.decideNavigation("https://mail.example.com/inbox", click), Verdict::Inside);
    EXPECT_EQ(policy.decideNavigation("http://calendar.example.com/", click), Verdict::Inside);
    EXPECT_EQ(policy.decideNavigation("HTTPS://MAIL.EXAMPLE.COM/", click), Verdict::Inside);
}

TEST(NavigationPolicy, LinksToAllowedHostsStay) {
    const auto policy = mailPolicy();
    EXPECT_EQ(policy.decideNavigation("https://login.partner.org/", click), Verdict::Inside);
    EXPECT_EQ(policy.decideNavigation("https://eu.login.partner.org/", click), Verdict::Inside);
    EXPECT_EQ(policy.decideNavigation("https://www.partner.org/", click), Verdict::HandOff);
}

TEST(NavigationPolicy, OtherLinksGoToTheBrowser) {
    const auto policy = mailPolicy();
    EXPECT_EQ(policy.decideNavigation("https://other.net/", click), Verdict::HandOff);
    EXPECT_EQ(policy.decideNavigation("https://mail.example.com.other.net/", scriptedClick), Verdict::HandOff);
    EXPECT_EQ(policy.decideNavigation("https://mail.example.com@other.net/", click), Verdict::HandOff);
}

TEST(NavigationPolicy, FramesOfOtherHostsLoadBecauseOnlyTheResponseTellsThemApart) {
    EXPECT_EQ(mailPolicy().decideNavigation("https://ads.other.net/frame", script), Verdict::Inside);
}

TEST(NavigationPolicy, AMainFrameOfAnotherHostGoesToTheBrowser) {
    const auto policy = mailPolicy();
    EXPECT_EQ(policy.decideMainResponse("https://other.net/"), Verdict::HandOff);
    EXPECT_EQ(policy.decideMainResponse("https://calendar.example.com/"), Verdict::Inside);
    EXPECT_EQ(policy.decideMainResponse("about:blank"), Verdict::Inside);
    EXPECT_EQ(policy.decideMainResponse("file:///etc/passwd"), Verdict::Refuse);
}

TEST(NavigationPolicy, WhatAPageMakesItselfStays) {
    const auto policy = mailPolicy();
    for (const char* address : {"about:blank", "blob:https://mail.example.com/1", "data:text/plain,x", "javascript:1"})
        EXPECT_EQ(policy.decideNavigation(address, script), Verdict::Inside) << address;
}

TEST(NavigationPolicy, OtherSchemesNeedAClick) {
    const auto policy = mailPolicy();
    EXPECT_EQ(policy.decideNavigation("mailto:a@b.c", click), Verdict::HandOff);
    EXPECT_EQ(policy.decideNavigation("tel:+1", {false, true}), Verdict::HandOff);
    EXPECT_EQ(policy.decideNavigation("mailto:a@b.c", script), Verdict::Refuse);
}

TEST(NavigationPolicy, NoPageMayOpenFilesOrAskAppsForTheirSessions) {
    const auto policy = mailPolicy();
    for (const char* address :
         {"file:///etc/passwd", "FILE:///x", "nonsense", "",
          "wrapio-0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a40://import-session", "WRAPIO-x://import-session"})
        EXPECT_EQ(policy.decideNavigation(address, click), Verdict::Refuse) << address;
}

TEST(NavigationPolicy, ANewWindowNeedsAClick) {
    const auto policy = mailPolicy();
    EXPECT_EQ(policy.decideNewWindow("https://other.net/", script), Verdict::Refuse);
    EXPECT_EQ(policy.decideNewWindow("https://other.net/", {false, true}), Verdict::HandOff);
    EXPECT_EQ(policy.decideNewWindow("https://mail.example.com/x", {false, true}), Verdict::Inside);
    EXPECT_EQ(policy.decideNewWindow("about:blank", click), Verdict::Refuse);
}

TEST(NavigationPolicy, AScriptMayOpenAWindowAfterAClickOnly) {
    const auto policy = mailPolicy();
    EXPECT_TRUE(policy.mayOpenWindow("https://login.other.net/", {false, true}));
    EXPECT_TRUE(policy.mayOpenWindow("about:blank", {false, true}));
    EXPECT_TRUE(policy.mayOpenWindow("", {false, true}));
    EXPECT_FALSE(policy.mayOpenWindow("https://login.other.net/", script));
    for (const char* address : {"file:///etc/passwd", "javascript:1", "wrapio-x://y", "mailto:a@b.c"})
        EXPECT_FALSE(policy.mayOpenWindow(address, {false, true})) << address;
}

TEST(NavigationPolicy, AWindowForSigningInMayShowEverySiteButNotThisMachine) {
    const auto policy = mailPolicy().forEverySite();
    EXPECT_EQ(policy.decideMainResponse("https://login.other.net/"), Verdict::Inside);
    EXPECT_EQ(policy.decideNavigation("https://login.other.net/", click), Verdict::Inside);
    EXPECT_EQ(policy.decideMainResponse("http://127.0.0.1:631/"), Verdict::HandOff);
    EXPECT_EQ(policy.decideNavigation("file:///etc/passwd", click), Verdict::Refuse);
}

TEST(NavigationPolicy, FilesMayComeFromEveryHostButNotFromThisMachine) {
    const auto policy = mailPolicy();
    EXPECT_TRUE(policy.mayDownload("https://files.other.net/a.zip"));
    EXPECT_TRUE(policy.mayDownload("blob:https://mail.example.com/1"));
    EXPECT_FALSE(policy.mayDownload("http://127.0.0.1/a.zip"));
    EXPECT_FALSE(policy.mayDownload("file:///etc/passwd"));
    EXPECT_TRUE(NavigationPolicy("localhost", {}, true).mayDownload("http://127.0.0.1/a.zip"));
}

TEST(NavigationPolicy, RequestsFromOutsideMustBelongToTheSite) {
    const auto policy = mailPolicy();
    EXPECT_EQ(policy.decideRequest("https://mail.example.com/x"), Verdict::Inside);
    EXPECT_EQ(policy.decideRequest("https://other.net/"), Verdict::Refuse);
    EXPECT_EQ(policy.decideRequest("javascript:alert(1)"), Verdict::Refuse);
    EXPECT_EQ(policy.decideRequest("https:///"), Verdict::Refuse);
}

TEST(NavigationPolicy, NumbersAndSingleLabelsShareNoRootDomain) {
    const NavigationPolicy local("127.0.0.1", {}, true);
    EXPECT_EQ(local.decideNavigation("http://127.0.0.1:9000/", click), Verdict::Inside);
    EXPECT_EQ(local.decideNavigation("http://10.0.0.1/", click), Verdict::HandOff);
    const NavigationPolicy machine("wiki", {}, true);
    EXPECT_EQ(machine.decideNavigation("http://wiki/", click), Verdict::Inside);
    EXPECT_EQ(machine.decideNavigation("http://wiki2/", click), Verdict::HandOff);
}

TEST(NavigationPolicy, LocalAddressesBelongOnlyInDeveloperMode) {
    const NavigationPolicy ordinary("mail.example.com", {"localhost", "192.168.1.5"}, false);
    EXPECT_EQ(ordinary.decideMainResponse("http://localhost:3000/"), Verdict::HandOff);
    EXPECT_EQ(ordinary.decideMainResponse("http://192.168.1.5/"), Verdict::HandOff);
    const NavigationPolicy developer("mail.example.com", {"localhost", "192.168.1.5"}, true);
    EXPECT_EQ(developer.decideMainResponse("http://localhost:3000/"), Verdict::Inside);
    EXPECT_EQ(developer.decideMainResponse("http://192.168.1.5/"), Verdict::Inside);
}

TEST(NavigationPolicy, WhereTheStartAddressRedirectsBelongsToTheSite) {
    auto policy = mailPolicy();
    policy.adopt("https://newname.net/home");
    EXPECT_EQ(policy.decideMainResponse("https://www.newname.net/"), Verdict::Inside);
    EXPECT_EQ(policy.decideMainResponse("https://mail.example.com/"), Verdict::Inside);
}

TEST(NavigationPolicy, ARedirectToThisMachineIsNotAdopted) {
    auto policy = mailPolicy();
    policy.adopt("http://127.0.0.1:631/");
    EXPECT_EQ(policy.decideMainResponse("http://127.0.0.1:631/"), Verdict::HandOff);
}

}  // namespace
}  // namespace wrapio
