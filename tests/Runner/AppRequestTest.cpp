#include "RunnerCore/AppRequest.h"

#include "Runner/PlistText.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

std::string sourceOf(const std::string& text) {
    const auto request = parseAppRequest(text, test::scheme);
    return request ? std::get<ImportSessionRequest>(*request).source : "refused: " + request.error();
}

TEST(AppRequest, AnImportRequestWithoutASourceIsAccepted) {
    EXPECT_EQ(sourceOf(test::scheme + "://import-session"), "");
    EXPECT_EQ(sourceOf(test::scheme + "://import-session/"), "");
    EXPECT_EQ(sourceOf(test::scheme + "://import-session?"), "");
    EXPECT_EQ(sourceOf(test::scheme + "://import-session?source"), "");
}

TEST(AppRequest, TheSourceIsDecoded) {
    EXPECT_EQ(sourceOf(test::scheme + "://import-session?source=My%20Browser%20%C3%BC"), "My Browser ü");
    EXPECT_EQ(sourceOf(test::scheme + "://import-session?a=1&source=x&source=y"), "x");
}

TEST(AppRequest, BrokenEscapesStayAsTheyAre) {
    EXPECT_EQ(sourceOf(test::scheme + "://import-session?source=100%"), "100%");
    EXPECT_EQ(sourceOf(test::scheme + "://import-session?source=%zz%4"), "%zz%4");
}

TEST(AppRequest, ASourceIsCleanedOfControlsAndCutToALength) {
    EXPECT_EQ(sourceOf(test::scheme + "://import-session?source=a%00%0Ab%E2%80%AEc%FF"), "a bc");
    EXPECT_LE(sourceOf(test::scheme + "://import-session?source=" + std::string(5000, 'x')).size(), 104U);
}

TEST(AppRequest, SchemeAndHostAreReadInAnyCase) {
    EXPECT_EQ(sourceOf("WRAPIO-0B7C57E2-5D0F-4C51-9A57-3E1F6B1D2A40://Import-Session?source=x"), "x");
}

TEST(AppRequest, AnotherAppsSchemeIsRefused) {
    EXPECT_FALSE(parseAppRequest("wrapio-00000000-0000-0000-0000-000000000000://import-session", test::scheme));
    EXPECT_FALSE(parseAppRequest("wrapio://import-session", test::scheme));
    EXPECT_FALSE(parseAppRequest("://import-session", ""));
}

TEST(AppRequest, AnUnknownRequestIsRefused) {
    EXPECT_FALSE(parseAppRequest(test::scheme + "://delete-everything", test::scheme));
    EXPECT_FALSE(parseAppRequest(test::scheme + "://import-session/x", test::scheme));
    EXPECT_FALSE(parseAppRequest(test::scheme + ":import-session", test::scheme));
}

TEST(AppRequest, WebAddressesArePassedOn) {
    EXPECT_EQ(parseAppRequest("HTTPS://example.com/a?b", test::scheme),
              AppRequest(AddressRequest{"HTTPS://example.com/a?b"}));
}

TEST(AppRequest, OtherTextsAreRefusedWithOneLine) {
    for (const std::string text : {"", "foo", "--help", "file:///etc/passwd", "ftp://x", "a\nb://c", "\xff://x"}) {
        const auto request = parseAppRequest(text, test::scheme);
        ASSERT_FALSE(request) << text;
        EXPECT_EQ(request.error().find('\n'), std::string::npos);
    }
    EXPECT_FALSE(parseAppRequest("https://" + std::string(100'000, 'a'), test::scheme));
}

}  // namespace
}  // namespace wrapio
