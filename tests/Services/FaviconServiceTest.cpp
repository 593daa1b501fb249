#include "Services/FaviconService.h"

#include "Fakes/FakeHttpClient.h"
#include "Fakes/TestImages.h"
#include "Services/ServiceFixture.h"

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QUuid id(u"{0b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a40}"_s);
const QUuid otherId(u"{1b7c57e2-5d0f-4c51-9a57-3e1f6b1d2a41}"_s);
const QString idText = u"0B7C57E2-5D0F-4C51-9A57-3E1F6B1D2A40"_s;

class FaviconServiceTest : public ServiceFixture {
protected:
    FakeHttpClient http;
    FaviconService favicons{http, files, directories};
    std::vector<std::optional<QImage>> results;

    std::optional<QImage> fetch(const QString& address) {
        const std::size_t before = results.size();
        start(address);
        http.deliverAll();
        EXPECT_EQ(results.size(), before + 1);
        return results.back();
    }
    void start(const QString& address) {
        favicons.fetchFavicon(*WebAddress::parse(address),
                              [this](const std::optional<QImage>& image) { results.push_back(image); });
    }
    QStringList requested() const {
        QStringList addresses;
        for (const HttpRequest& request : http.requests)
            addresses << request.url;
        return addresses;
    }
    static HttpResponse icon(int width, int height) {
        return {200, u"image/png"_s, fileOf(plainImage(width, height), "png")};
    }
    QString folder() const { return *directories.applicationSupport + u"/Wrapio"_s; }
    QString file() const { return folder() + u'/' + idText + u".png"_s; }
    QString legacyFile() const { return folder() + u"/app-icon.png"_s; }
    void putLegacyFile(const QByteArray& bytes) {
        ASSERT_TRUE(temporary.createDirectories(folder()));
        ASSERT_TRUE(temporary.write(legacyFile(), bytes));
    }
};

TEST_F(FaviconServiceTest, TriesThePathsOfTheSiteAndThenTheLookupService) {
    EXPECT_FALSE(fetch(u"https://www.example.com:8443/mail?a=b#c"_s));
    EXPECT_EQ(requested(), (QStringList{u"https://www.example.com/apple-touch-icon.png"_s,
                                        u"https://www.example.com/apple-touch-icon-precomposed.png"_s,
                                        u"https://www.example.com/apple-touch-icon-180x180.png"_s,
                                        u"https://www.example.com/favicon.ico"_s,
                                        u"https://www.google.com/s2/favicons?domain=www.example.com&sz=128"_s}));
}

TEST_F(FaviconServiceTest, EveryRequestHasItsFixedValues) {
    EXPECT_FALSE(fetch(u"https://example.com"_s));
    ASSERT_EQ(http.requests.size(), 5U);
    const std::vector<std::pair<QByteArray, QByteArray>> headers = {
        {"User-Agent", "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/537.36"}};
    for (const HttpRequest& request : http.requests) {
        EXPECT_EQ(request.headers, headers);
        EXPECT_DOUBLE_EQ(request.timeoutSeconds, 10);
        EXPECT_EQ(request.maximumBytes, 16 * 1024 * 1024);
        EXPECT_EQ(request.maximumRedirects, 5);
    }
}

TEST_F(FaviconServiceTest, AsksOneAddressAfterTheOther) {
    start(u"https://example.com"_s);
    EXPECT_EQ(http.requests.size(), 1U);
    http.deliver();
    EXPECT_EQ(http.requests.size(), 2U);
    EXPECT_TRUE(results.empty());
}

TEST_F(FaviconServiceTest, TheFirstImageIsTheResult) {
    http.responses[u"http://example.com/apple-touch-icon-precomposed.png"_s] = icon(180, 180);
    http.responses[u"http://example.com/favicon.ico"_s] = icon(32, 32);
    const auto image = fetch(u"http://example.com/"_s);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(180, 180));
    EXPECT_EQ(http.requests.size(), 2U);
}

TEST_F(FaviconServiceTest, TheLookupServiceIsTheLastResort) {
    http.responses[u"https://www.google.com/s2/favicons?domain=example.com&sz=128"_s] = icon(128, 128);
    EXPECT_EQ(fetch(u"https://example.com"_s)->size(), QSize(128, 128));
}

TEST_F(FaviconServiceTest, AnAddressWithoutAHostIsNeverAsked) {
    EXPECT_FALSE(fetch(u"file:///etc/hosts"_s));
    EXPECT_FALSE(fetch(u"about:blank"_s));
    EXPECT_TRUE(http.requests.empty());
}

TEST_F(FaviconServiceTest, AnAddressWithoutASchemeIsAskedSecurely) {
    EXPECT_FALSE(fetch(u"//example.com/a"_s));
    EXPECT_EQ(requested().first(), u"https://example.com/apple-touch-icon.png"_s);
}

TEST_F(FaviconServiceTest, AnAddressOfVersionSixKeepsItsBrackets) {
    EXPECT_FALSE(fetch(u"http://[::1]:8080/"_s));
    EXPECT_EQ(requested().first(), u"http://[::1]/apple-touch-icon.png"_s);
}

TEST_F(FaviconServiceTest, AHostStaysAsItWasTyped) {
    EXPECT_FALSE(fetch(u"https://Bücher.Example/"_s));
    EXPECT_EQ(requested().first(), u"https://Bücher.Example/apple-touch-icon.png"_s);
    EXPECT_EQ(requested().last(), u"https://www.google.com/s2/favicons?domain=Bücher.Example&sz=128"_s);
}

TEST_F(FaviconServiceTest, SkipsAPageInPlaceOfAnIcon) {
    const QByteArray png = fileOf(plainImage(64, 64), "png");
    http.responses[u"https://example.com/apple-touch-icon.png"_s] = {200, u"text/html; charset=utf-8"_s, png};
    http.responses[u"https://example.com/apple-touch-icon-precomposed.png"_s] = {200, u"text/html"_s, "<html></html>"};
    http.responses[u"https://example.com/apple-touch-icon-180x180.png"_s] = icon(180, 180);
    EXPECT_EQ(fetch(u"https://example.com"_s)->size(), QSize(180, 180));
}

struct Answer {
    const char* name;
    HttpResponse response;
    bool isAccepted;
};
class FaviconAnswerTest : public FaviconServiceTest, public testing::WithParamInterface<Answer> {};

TEST_P(FaviconAnswerTest, IsJudged) {
    http.responses[u"https://example.com/apple-touch-icon.png"_s] = GetParam().response;
    EXPECT_EQ(fetch(u"https://example.com"_s).has_value(), GetParam().isAccepted);
}

QByteArray png(int width, int height) {
    return fileOf(plainImage(width, height), "png");
}

INSTANTIATE_TEST_SUITE_P(Answers, FaviconAnswerTest,
                         testing::Values(Answer{"SixteenPixelsAreEnough", {200, u"image/png"_s, png(16, 16)}, true},
                                         Answer{"FifteenPixelsAreNot", {200, u"image/png"_s, png(15, 15)}, false},
                                         Answer{"ATooSmallWidthIsNot", {200, u"image/png"_s, png(15, 64)}, false},
                                         Answer{"ATooSmallHeightIsNot", {200, u"image/png"_s, png(64, 15)}, false},
                                         Answer{"NoTypeIsFine", {200, std::nullopt, png(16, 16)}, true},
                                         Answer{"AnIconTypeIsFine", {200, u"application/x-icon"_s, png(16, 16)}, true},
                                         Answer{"TheTypeIsComparedByCase", {200, u"IMAGE/PNG"_s, png(16, 16)}, false},
                                         Answer{"AnEmptyTypeIsRefused", {200, u""_s, png(16, 16)}, false},
                                         Answer{"TheLastSuccessIsOne", {299, u"image/png"_s, png(16, 16)}, true},
                                         Answer{"ARedirectionIsNone", {300, u"image/png"_s, png(16, 16)}, false},
                                         Answer{"AnInformationIsNone", {199, u"image/png"_s, png(16, 16)}, false},
                                         Answer{"AMissingPageIsNone", {404, u"image/png"_s, png(16, 16)}, false},
                                         Answer{
                                             "WhatCannotBeDecodedIsNone", {200, u"image/png"_s, "no picture"}, false},
                                         Answer{"AnEmptyBodyIsNone", {200, u"image/png"_s, {}}, false}),
                         [](const auto& parameter) { return parameter.param.name; });

TEST_F(FaviconServiceTest, SeveralSearchesDoNotDisturbEachOther) {
    http.responses[u"https://a.example/favicon.ico"_s] = icon(20, 20);
    http.responses[u"https://b.example/apple-touch-icon.png"_s] = icon(30, 30);
    start(u"https://a.example"_s);
    start(u"https://b.example"_s);
    http.deliverAll();
    ASSERT_EQ(results.size(), 2U);
    EXPECT_EQ(results[0]->width(), 30);
    EXPECT_EQ(results[1]->width(), 20);
}

TEST_F(FaviconServiceTest, SavesAnIconUnderTheId) {
    EXPECT_EQ(favicons.saveIcon(plainImage(40, 30), id), file());
    EXPECT_EQ(favicons.loadSavedIcon(id)->size(), QSize(40, 30));
    EXPECT_TRUE(temporary.read(file(), 1 << 20)->startsWith("\x89PNG"));
}

TEST_F(FaviconServiceTest, SavesNoIconThatIsNone) {
    EXPECT_FALSE(favicons.saveIcon(QImage(), id));
    EXPECT_FALSE(temporary.exists(file()));
}

TEST_F(FaviconServiceTest, TellsWhyAnIconWasNotSaved) {
    failWhere(u"replace"_s, u".png"_s, ENOSPC);
    DiagnosticsCapture output;
    EXPECT_FALSE(favicons.saveIcon(plainImage(40, 30), id));
    EXPECT_EQ(output.lines(), QStringList(u"[FaviconService] Failed to save icon: Could not write %1: "
                                          u"No space left on device"_s.arg(file())));
}

TEST_F(FaviconServiceTest, AFailedSaveKeepsAnOlderIconThatIsStillWhole) {
    ASSERT_TRUE(favicons.saveIcon(plainImage(40, 30), id));
    failWhere(u"replace"_s, u".png"_s);
    EXPECT_FALSE(favicons.saveIcon(plainImage(20, 20), id));
    EXPECT_EQ(favicons.loadSavedIcon(id)->size(), QSize(40, 30));
}

TEST_F(FaviconServiceTest, WithoutApplicationSupportThereAreNoSavedIcons) {
    Directories none = directories;
    none.applicationSupport.reset();
    FaviconService homeless(http, files, none);
    EXPECT_FALSE(homeless.saveIcon(plainImage(40, 30), id));
    EXPECT_FALSE(homeless.loadSavedIcon(id));
    homeless.deleteSavedIcon(id);
    EXPECT_TRUE(files.log.isEmpty());
}

TEST_F(FaviconServiceTest, AnAppWithoutAnIconHasNone) {
    EXPECT_FALSE(favicons.loadSavedIcon(id));
    EXPECT_TRUE(temporary.exists(folder()));
}

TEST_F(FaviconServiceTest, ABrokenIconIsNothingEvenWhenThereIsALegacyIcon) {
    putLegacyFile(png(64, 64));
    ASSERT_TRUE(temporary.write(file(), "broken"));
    EXPECT_FALSE(favicons.loadSavedIcon(id));
    EXPECT_TRUE(temporary.exists(legacyFile()));
}

TEST_F(FaviconServiceTest, ALegacyIconGoesToTheFirstWhoAsks) {
    putLegacyFile(png(64, 64));
    DiagnosticsCapture output;
    const auto image = favicons.loadSavedIcon(id);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(64, 64));
    EXPECT_EQ(output.lines(), QStringList(u"[FaviconService] Found legacy icon, migrating to "_s + idText));
    EXPECT_TRUE(temporary.exists(file()));
    EXPECT_FALSE(temporary.exists(legacyFile()));
    EXPECT_FALSE(favicons.loadSavedIcon(otherId));
    EXPECT_TRUE(favicons.loadSavedIcon(id));
}

TEST_F(FaviconServiceTest, APeekLeavesALegacyIconWhereItIs) {
    putLegacyFile(png(64, 64));
    EXPECT_FALSE(favicons.peekSavedIcon(id));
    EXPECT_TRUE(temporary.exists(legacyFile()));
    ASSERT_TRUE(favicons.saveIcon(plainImage(20, 20), id));
    EXPECT_EQ(favicons.peekSavedIcon(id).value_or(QImage()).size(), QSize(20, 20));
}

TEST_F(FaviconServiceTest, ALegacyIconThatCannotBeReadStays) {
    putLegacyFile("broken");
    EXPECT_FALSE(favicons.loadSavedIcon(id));
    EXPECT_TRUE(temporary.exists(legacyFile()));
}

TEST_F(FaviconServiceTest, ALegacyIconThatCannotBeRemovedIsStillReturned) {
    putLegacyFile(png(64, 64));
    failWhere(u"remove"_s, u"app-icon.png"_s);
    EXPECT_TRUE(favicons.loadSavedIcon(id));
    EXPECT_TRUE(temporary.exists(file()));
}

TEST_F(FaviconServiceTest, DeletesASavedIconAndIgnoresThatThereIsNone) {
    ASSERT_TRUE(favicons.saveIcon(plainImage(40, 30), id));
    favicons.deleteSavedIcon(id);
    EXPECT_FALSE(temporary.exists(file()));
    DiagnosticsCapture output;
    favicons.deleteSavedIcon(id);
    EXPECT_TRUE(output.lines().isEmpty());
}

TEST_F(FaviconServiceTest, KnowsWhetherThereIsAnIconToLoad) {
    EXPECT_FALSE(favicons.hasSavedIcon(id));
    favicons.saveIcon(plainImage(32, 32), id);
    EXPECT_TRUE(favicons.hasSavedIcon(id));
    favicons.deleteSavedIcon(id);
    EXPECT_FALSE(favicons.hasSavedIcon(id));
}

TEST_F(FaviconServiceTest, CountsTheLegacyIconAsOneThatCanBeLoaded) {
    putLegacyFile(png(64, 64));
    EXPECT_TRUE(favicons.hasSavedIcon(id));
    EXPECT_TRUE(favicons.loadSavedIcon(id));
}

TEST_F(FaviconServiceTest, CountsEveryChangeOfASavedIcon) {
    EXPECT_EQ(favicons.iconRevision(id), 0U);
    favicons.saveIcon(plainImage(32, 32), id);
    EXPECT_EQ(favicons.iconRevision(id), 1U);
    favicons.deleteSavedIcon(id);
    EXPECT_EQ(favicons.iconRevision(id), 2U);
    EXPECT_EQ(favicons.iconRevision(QUuid::createUuid()), 0U);
}

}  // namespace
}  // namespace wrapio
