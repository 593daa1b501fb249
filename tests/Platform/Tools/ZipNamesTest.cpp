#include "Platform/Linux/ZipNames.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace std::string_literals;

namespace {

TEST(ZipNamesTest, OrdinaryNamesBecomeTheirElements) {
    EXPECT_EQ(zipPath("icons/a.png"), (ZipPath{"icons", "a.png"}));
    EXPECT_EQ(zipPath("icons/"), (ZipPath{"icons"}));
    EXPECT_EQ(zipPath("./a/./b"), (ZipPath{"a", "b"}));
    EXPECT_EQ(zipPath("./"), ZipPath{});
    EXPECT_EQ(zipPath("größe 🎈/..x/x..").value().size(), 3U);
}

TEST(ZipNamesTest, NamesThatCouldLeadElsewhereAreRefused) {
    for (const std::string& name : {""s, "/a"s, "//a"s, ".."s, "../a"s, "a/../b"s, "a/.."s, "a//b"s, "a\\b"s, "..\\a"s,
                                    "a\0b"s, "a\nb"s, "a\x7F"s, "\xFF"s, "a\xC0\xAF"s, "\xED\xA0\x80"s,
                                    std::string(256, 'a'), std::string(5000, 'a'), std::string(4096, '/')})
        EXPECT_FALSE(zipPath(name).has_value()) << name;
    std::string deep;
    for (int i = 0; i < 100; ++i)
        deep += "a/";
    EXPECT_FALSE(zipPath(deep).has_value());
}

TEST(ZipNamesTest, MessagesShowNamesWithoutTheirControls) {
    EXPECT_FALSE(zipPath("a\nb\x1B[31m").error().message.contains(QChar(0x1B)));
    EXPECT_LT(zipPath(std::string(5000, 'a')).error().message.size(), 300);
}

TEST(ZipNamesTest, WhatAnotherPlatformAddsIsKnown) {
    EXPECT_TRUE(isPlatformExtra({"__MACOSX", "a"}));
    EXPECT_TRUE(isPlatformExtra({"icons", "._a.png"}));
    EXPECT_FALSE(isPlatformExtra({"a", "__MACOSX"}));
    EXPECT_FALSE(isPlatformExtra({"a", ".b"}));
    EXPECT_FALSE(isPlatformExtra({}));
}

TEST(ZipNamesTest, APathIsAdmittedOnce) {
    ZipPathGuard guard;
    EXPECT_TRUE(guard.admit({"a", "b"}, false));
    EXPECT_TRUE(guard.admit({"a", "c"}, false));
    EXPECT_FALSE(guard.admit({"a", "b"}, false));
}

TEST(ZipNamesTest, AFolderMayBeNamedBeforeOrAfterWhatItHolds) {
    ZipPathGuard guard;
    EXPECT_TRUE(guard.admit({"a", "b"}, false));
    EXPECT_TRUE(guard.admit({"a"}, true));
    EXPECT_TRUE(guard.admit({"a", "c"}, false));
    EXPECT_FALSE(guard.admit({"a"}, true));
}

TEST(ZipNamesTest, PathsThatDifferInCaseOrCompositionOnlyAreOne) {
    ZipPathGuard guard;
    EXPECT_TRUE(guard.admit({"Icons", "a"}, false));
    EXPECT_FALSE(guard.admit({"icons", "b"}, false));
    EXPECT_TRUE(guard.admit({"caf\u00E9"}, false));
    EXPECT_FALSE(guard.admit({"cafe\u0301"}, false));
    EXPECT_TRUE(guard.admit({"GR\u00D6\u039BE"}, false));
    EXPECT_FALSE(guard.admit({"gr\u00F6\u03BBe"}, false));
}

TEST(ZipNamesTest, AFileCannotBeAFolderToo) {
    ZipPathGuard guard;
    EXPECT_TRUE(guard.admit({"a"}, false));
    EXPECT_FALSE(guard.admit({"a", "b"}, false));
    EXPECT_TRUE(guard.admit({"c", "d"}, false));
    EXPECT_FALSE(guard.admit({"c"}, false));
}

}  // namespace

}  // namespace wrapio
