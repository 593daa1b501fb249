#include "RunnerCore/BundleInfo.h"

#include "Runner/PlistText.h"

#include <gtest/gtest.h>
#include <plist/plist.h>

namespace wrapio {
namespace {

using test::identifier;
using test::plist;
using test::schemeMember;
using test::textMember;

TEST(BundleInfo, TheIdentityOfAGeneratedAppIsRead) {
    const auto info = decodeInfoPlist(test::goodPlist());
    ASSERT_TRUE(info);
    EXPECT_EQ(info->desktopId, identifier);
    EXPECT_EQ(info->urlScheme, test::scheme);
    EXPECT_EQ(info->recordId, test::recordId);
    EXPECT_EQ(info->version, "1.2.3");
}

TEST(BundleInfo, AnElementThatBeginsWithADigitIsMadeValid) {
    const auto info = decodeInfoPlist(
        plist(textMember("CFBundleIdentifier", "com.wrapio.generated.1mail-0b7c57e2") + schemeMember(test::scheme)));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->desktopId, "com.wrapio.generated._1mail-0b7c57e2");
}

TEST(BundleInfo, AnEmptyNamePartIsAccepted) {
    EXPECT_TRUE(decodeInfoPlist(
        plist(textMember("CFBundleIdentifier", "com.wrapio.generated.-3f2a9c01") + schemeMember(test::scheme))));
}

TEST(BundleInfo, ASchemeInUpperCaseCounts) {
    const auto info = decodeInfoPlist(plist(textMember("CFBundleIdentifier", identifier) +
                                            schemeMember("WRAPIO-0B7C57E2-5D0F-4C51-9A57-3E1F6B1D2A40")));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->urlScheme, test::scheme);
}

TEST(BundleInfo, AnIdentifierThatNoBusWouldTakeIsRefused) {
    for (const std::string bad : {"", "nodots", "com..x", "com.wrapio.ä", "com.wrapio.a b", ".com.x", "com.x."}) {
        EXPECT_FALSE(decodeInfoPlist(plist(textMember("CFBundleIdentifier", bad) + schemeMember(test::scheme)))) << bad;
    }
    EXPECT_FALSE(decodeInfoPlist(
        plist(textMember("CFBundleIdentifier", "com." + std::string(300, 'a')) + schemeMember(test::scheme))));
}

TEST(BundleInfo, AMissingOrForeignSchemeIsRefused) {
    const std::string name = textMember("CFBundleIdentifier", identifier);
    EXPECT_FALSE(decodeInfoPlist(plist(name)));
    for (const std::string bad :
         {"", "https", "wrapio-", "wrapio-../../../../etc", "wrapio-0b7c57e2",
          "wrapio-0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a4g", "wrapio-0b7c57e2+5d0f-4c51-9a57-3e1f6b1d2a40"})
        EXPECT_FALSE(decodeInfoPlist(plist(name + schemeMember(bad)))) << bad;
}

TEST(BundleInfo, MembersOfTheWrongTypeAreRefusedWithoutACrash) {
    EXPECT_FALSE(decodeInfoPlist(plist("<key>CFBundleIdentifier</key><integer>7</integer>")));
    const std::string name = textMember("CFBundleIdentifier", identifier);
    EXPECT_FALSE(decodeInfoPlist(plist(name + textMember("CFBundleURLTypes", "x"))));
    EXPECT_FALSE(decodeInfoPlist(plist(name + "<key>CFBundleURLTypes</key><array><string>x</string></array>")));
    EXPECT_FALSE(decodeInfoPlist(
        plist(name + "<key>CFBundleURLTypes</key><array><dict><key>CFBundleURLSchemes</key><true/></dict></array>")));
}

TEST(BundleInfo, WhatIsNoPropertyListIsRefused) {
    for (const std::string& bytes : {std::string(), std::string("x"), std::string("<plist"), std::string(500, '\0'),
                                     std::string("bplist00"), "bplist00" + std::string(100, '\xff'),
                                     std::string("<?xml version=\"1.0\"?><plist version=\"1.0\"><array/></plist>")})
        EXPECT_FALSE(decodeInfoPlist(bytes)) << bytes;
}

TEST(BundleInfo, ABinaryListReadsLikeAnXmlOne) {
    plist_t root = nullptr;
    const std::string xml = test::goodPlist();
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &root);
    char* bytes = nullptr;
    std::uint32_t size = 0;
    plist_to_bin(root, &bytes, &size);
    const auto info = decodeInfoPlist({bytes, size});
    plist_free(root);
    std::free(bytes);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->recordId, test::recordId);
}

TEST(BundleInfo, DeepNestingIsRefusedRatherThanFollowed) {
    std::string open;
    for (int i = 0; i < 30'000; ++i)
        open += "<array>";
    const auto info = decodeInfoPlist(plist("<key>x</key>" + open));
    ASSERT_FALSE(info);
    EXPECT_TRUE(std::holds_alternative<InfoPlistMalformed>(info.error()));
}

/// A binary list whose every array holds only the next one.
std::string nestedBinaryList(std::size_t depth) {
    std::string bytes = "bplist00";
    std::string offsets;
    for (std::size_t i = 0; i < depth; ++i) {
        const std::size_t offset = bytes.size();
        offsets += static_cast<char>(offset >> 8);
        offsets += static_cast<char>(offset & 0xFF);
        bytes += '\xA1';
        bytes += static_cast<char>((i + 1) >> 8);
        bytes += static_cast<char>((i + 1) & 0xFF);
    }
    const std::size_t last = bytes.size();
    offsets += static_cast<char>(last >> 8);
    offsets += static_cast<char>(last & 0xFF);
    bytes += '\x08';
    const std::size_t table = bytes.size();
    bytes += offsets;
    bytes += std::string(6, '\0') + "\x02\x02";
    for (const std::size_t number : {depth + 1, std::size_t{0}, table})
        for (int shift = 56; shift >= 0; shift -= 8)
            bytes += static_cast<char>(number >> shift & 0xFF);
    return bytes;
}

TEST(BundleInfo, DeepNestingInABinaryListDoesNotOverflowTheStack) {
    EXPECT_FALSE(decodeInfoPlist(nestedBinaryList(3'000)));
    EXPECT_FALSE(decodeInfoPlist(nestedBinaryList(10'000)));
}

}  // namespace
}  // namespace wrapio
