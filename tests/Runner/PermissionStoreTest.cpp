#include "RunnerCore/PermissionStore.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

const std::string site = "https://example.com";

TEST(PermissionStore, RemembersAnswersForEachOrigin) {
    PermissionStore store;
    EXPECT_EQ(store.decision(site, {Permission::Camera}), std::nullopt);
    store.remember(site, {Permission::Camera}, true);
    EXPECT_EQ(store.decision(site, {Permission::Camera}), true);
    EXPECT_EQ(store.decision("http://example.com", {Permission::Camera}), std::nullopt);
    EXPECT_EQ(store.decision(site, {Permission::Microphone}), std::nullopt);
}

TEST(PermissionStore, AllOfSeveralMustBeAllowedAndOneIsEnoughToForbid) {
    PermissionStore store;
    const std::vector<Permission> both{Permission::Camera, Permission::Microphone};
    store.remember(site, {Permission::Camera}, true);
    EXPECT_EQ(store.decision(site, both), std::nullopt);
    store.remember(site, {Permission::Microphone}, false);
    EXPECT_EQ(store.decision(site, both), false);
    store.remember(site, both, true);
    EXPECT_EQ(store.decision(site, both), true);
}

TEST(PermissionStore, WhatIsForgottenIsAskedAgain) {
    PermissionStore store;
    store.remember(site, {Permission::Location, Permission::Camera}, false);
    store.forget(site, Permission::Location);
    EXPECT_EQ(store.decision(site, {Permission::Location}), std::nullopt);
    EXPECT_EQ(store.entries().size(), 1U);
    store.clear();
    EXPECT_TRUE(store.entries().empty());
}

TEST(PermissionStore, ComesBackAsItWasWritten) {
    PermissionStore store;
    store.remember(site, {Permission::Notifications}, true);
    store.remember("http://[::1]:8080", {Permission::Clipboard}, false);
    EXPECT_EQ(PermissionStore::parse(store.text()).text(), store.text());
    EXPECT_EQ(PermissionStore::parse(store.text()).decision("http://[::1]:8080", {Permission::Clipboard}), false);
}

TEST(PermissionStore, DamagedLinesAllowNothing) {
    for (const char* text : {"", "https://a\tcamera\n", "https://a\tcamera\tALLOW\n", "https://a\tnothing\tallow\n",
                             "file:///\tcamera\tallow\n", "https://a/path\tcamera\tallow\n", "\t\t\n\xFF\xFE"})
        EXPECT_TRUE(PermissionStore::parse(text).entries().empty()) << text;
}

TEST(PermissionStore, OriginsAreSchemeHostAndPort) {
    EXPECT_EQ(originOf("HTTPS://User@Example.COM:8443/path?x"), "https://example.com:8443");
    EXPECT_EQ(originOf("https://example.com/"), "https://example.com");
    EXPECT_EQ(originOf("file:///etc"), std::nullopt);
    EXPECT_EQ(originOf("about:blank"), std::nullopt);
}

}  // namespace
}  // namespace wrapio
