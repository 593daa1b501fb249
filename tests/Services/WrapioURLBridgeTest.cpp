#include "Services/WrapioURLBridge.h"

#include "Fakes/PrintQt.h"

#include <QUrl>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

std::optional<WrapioCreateRequest> create(const QString& url) {
    return WrapioURLBridge::parseCreateRequest(url);
}

std::optional<WrapioImportSessionRequest> import(const QString& url) {
    return WrapioURLBridge::parseImportSessionRequest(url);
}

WebAddress address(const QString& text) {
    return *WebAddress::parse(text);
}

}  // namespace

TEST(WrapioURLBridge, reads_a_create_request_with_its_title) {
    EXPECT_EQ(create(u"wrapio://create?url=https%3A%2F%2Fmail.example.com%2Fa%3Fb%3Dc%26d&title=My%20Mail"_s),
              (WrapioCreateRequest{address(u"https://mail.example.com/a?b=c&d"_s), u"My Mail"_s}));
}

TEST(WrapioURLBridge, reads_a_create_request_without_a_title) {
    EXPECT_EQ(create(u"wrapio://create?url=http://example.com"_s),
              (WrapioCreateRequest{address(u"http://example.com"_s), std::nullopt}));
}

TEST(WrapioURLBridge, reads_an_import_session_request_with_and_without_its_source) {
    EXPECT_EQ(import(u"wrapio://import-session?url=https://example.com&source=Some%20Browser"_s),
              (WrapioImportSessionRequest{address(u"https://example.com"_s), u"Some Browser"_s}));
    EXPECT_EQ(import(u"wrapio://import-session?url=https://example.com"_s),
              (WrapioImportSessionRequest{address(u"https://example.com"_s), std::nullopt}));
}

TEST(WrapioURLBridge, reads_scheme_and_host_in_capitals) {
    EXPECT_TRUE(create(u"WRAPIO://CREATE?url=https://example.com"_s));
    EXPECT_TRUE(import(u"Wrapio://Import-Session?url=https://example.com"_s));
    EXPECT_TRUE(create(u"wrapio://create?url=HTTPS://example.com"_s));
}

TEST(WrapioURLBridge, does_not_take_an_item_named_URL_in_capitals_for_url) {
    EXPECT_FALSE(create(u"wrapio://create?URL=https://example.com"_s));
    EXPECT_FALSE(import(u"wrapio://import-session?Url=https://example.com"_s));
}

TEST(WrapioURLBridge, refuses_an_ftp_or_file_site_in_both_forms) {
    for (const QString& site : {u"ftp://example.com"_s, u"file:///etc/passwd"_s, u"javascript:alert(1)"_s,
                                u"example.com"_s, u"wrapio://create"_s}) {
        const QString url = u"wrapio://create?url="_s + QString::fromLatin1(QUrl::toPercentEncoding(site));
        EXPECT_FALSE(create(url)) << site.toStdString();
        EXPECT_FALSE(import(url)) << site.toStdString();
    }
}

TEST(WrapioURLBridge, ignores_a_source_item_of_a_create_request) {
    EXPECT_EQ(create(u"wrapio://create?source=B&url=https://example.com&title=T"_s),
              (WrapioCreateRequest{address(u"https://example.com"_s), u"T"_s}));
    EXPECT_FALSE(import(u"wrapio://create?source=B&url=https://example.com"_s));
}

TEST(WrapioURLBridge, reads_nothing_without_a_url_item_or_from_one_that_does_not_parse) {
    for (const QString& query : {u""_s, u"?"_s, u"?title=T"_s, u"?url"_s, u"?url="_s, u"?url=%"_s, u"?url=%FF"_s,
                                 u"?url=https://a b"_s, u"?url=https://[::1"_s, u"?url=https://a%00b"_s})
        EXPECT_FALSE(create(u"wrapio://create"_s + query)) << query.toStdString();
}

TEST(WrapioURLBridge, looks_at_the_first_url_item_only) {
    EXPECT_EQ(create(u"wrapio://create?url=https://one.example&url=https://two.example"_s)->url,
              address(u"https://one.example"_s));
    EXPECT_FALSE(create(u"wrapio://create?url=ftp://one.example&url=https://two.example"_s));
}

TEST(WrapioURLBridge, reads_nothing_of_other_schemes_and_hosts) {
    for (const QString& url :
         {u"wrapi://create?url=https://e.example"_s, u"https://create?url=https://e.example"_s,
          u"wrapio://delete?url=https://e.example"_s, u"wrapio:create?url=https://e.example"_s,
          u"wrapio:///create?url=https://e.example"_s, u"wrapio-1://create?url=https://e.example"_s, u""_s, u"wrapio"_s,
          u"create?url=https://e.example"_s}) {
        EXPECT_FALSE(create(url)) << url.toStdString();
        EXPECT_FALSE(import(url)) << url.toStdString();
    }
}

TEST(WrapioURLBridge, keeps_the_site_as_it_was_given) {
    EXPECT_EQ(create(u"wrapio://create?url=HTTPS://B%C3%BCcher.Example/%2541"_s)->url.absoluteString(),
              u"HTTPS://Bücher.Example/%41"_s);
}

TEST(WrapioURLBridge, keeps_a_plus_sign) {
    EXPECT_EQ(create(u"wrapio://create?url=https://example.com/a+b&title=C%2B%2B+D"_s),
              (WrapioCreateRequest{address(u"https://example.com/a+b"_s), u"C+++D"_s}));
}

TEST(WrapioURLBridge, trims_white_space_and_line_breaks_off_a_title) {
    EXPECT_EQ(create(u"wrapio://create?url=https://e.example&title=%20%0A%C2%A0Two%20words%0D%0A"_s)->title,
              u"Two words"_s);
}

TEST(WrapioURLBridge, takes_a_title_of_white_space_for_none) {
    EXPECT_EQ(create(u"wrapio://create?url=https://e.example&title=%20%0A"_s)->title, std::nullopt);
    EXPECT_EQ(create(u"wrapio://create?url=https://e.example&title"_s)->title, std::nullopt);
    EXPECT_EQ(import(u"wrapio://import-session?url=https://e.example&source="_s)->source, std::nullopt);
}

TEST(WrapioURLBridge, hands_every_pending_request_out_once) {
    const WrapioCreateRequest request{address(u"https://e.example"_s), u"T"_s};
    WrapioURLBridge::setPending(request);
    EXPECT_EQ(WrapioURLBridge::takePendingImportSessionRequest(), std::nullopt);
    EXPECT_EQ(WrapioURLBridge::takePendingCreateRequest(), request);
    EXPECT_EQ(WrapioURLBridge::takePendingCreateRequest(), std::nullopt);
}

TEST(WrapioURLBridge, replaces_a_request_that_nobody_has_taken) {
    WrapioURLBridge::setPending(WrapioImportSessionRequest{address(u"https://one.example"_s), std::nullopt});
    WrapioURLBridge::setPending(WrapioImportSessionRequest{address(u"https://two.example"_s), u"B"_s});
    EXPECT_EQ(WrapioURLBridge::takePendingImportSessionRequest()->url, address(u"https://two.example"_s));
    EXPECT_EQ(WrapioURLBridge::takePendingImportSessionRequest(), std::nullopt);
}

}  // namespace wrapio
