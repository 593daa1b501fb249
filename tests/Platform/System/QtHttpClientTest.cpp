#include "Platform/Linux/QtHttpClient.h"

#include "Fakes/PrintQt.h"
#include "Platform/System/LoopbackServer.h"
#include "Platform/System/Waiting.h"

#include <gmock/gmock.h>

#include <chrono>
#include <optional>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using Result = tl::expected<HttpResponse, HttpError>;

struct QtHttpClientTest : testing::Test {
    void SetUp() override { ASSERT_TRUE(server.listens()); }

    Result get(const HttpRequest& request) {
        std::optional<Result> result;
        client.get(request, [&result](Result answer) {
            EXPECT_FALSE(result) << "completed twice";
            result = std::move(answer);
        });
        EXPECT_FALSE(result) << "completed before get() returned";
        EXPECT_TRUE(waitUntil([&result] { return result.has_value(); }));
        return result.value_or(tl::unexpected(HttpError{u"no completion"_s}));
    }
    Result get(const QString& path) { return get(HttpRequest{server.url(path), {}}); }
    QString failureOf(const HttpRequest& request) {
        const Result result = get(request);
        EXPECT_FALSE(result);
        return result ? QString() : result.error().description();
    }
    QString failureOf(const QString& path) { return failureOf(HttpRequest{server.url(path), {}}); }

    LoopbackServer server;
    QtHttpClient client;
};

TEST_F(QtHttpClientTest, APageComesWithItsStatusTypeAndBytes) {
    server.answer("/page", "200 OK", "Content-Type: text/html; charset=utf-8\r\n", QByteArray("<p>\0", 4));
    const Result result = get(u"/page"_s);
    ASSERT_TRUE(result) << result.error().description().toStdString();
    EXPECT_EQ(result->status, 200);
    EXPECT_EQ(result->contentType, u"text/html; charset=utf-8"_s);
    EXPECT_EQ(result->body, QByteArray("<p>\0", 4));
}

TEST_F(QtHttpClientTest, EveryStatusIsAResponse) {
    for (const int status : {204, 304, 401, 403, 404, 407, 410, 418, 429, 500, 503, 599}) {
        server.answer("/page", QByteArray::number(status) + " Words", {}, status == 204 || status == 304 ? "" : "text");
        const Result result = get(u"/page"_s);
        ASSERT_TRUE(result) << status << ' ' << result.error().description().toStdString();
        EXPECT_EQ(result->status, status);
        EXPECT_EQ(result->contentType, std::nullopt);
        EXPECT_EQ(result->body, status == 204 || status == 304 ? "" : "text") << status;
    }
}

TEST_F(QtHttpClientTest, HeadersAreSentAlongEveryRedirection) {
    server.answer("/a", "302 Found", "Location: /b\r\nSet-Cookie: kept=no\r\n", "");
    server.answer("/b", "200 OK", {}, "here");
    const Result result = get(HttpRequest{server.url(u"/a"_s), {{"User-Agent", "Test/1"}, {"Accept", "image/*"}}});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->body, "here");
    ASSERT_EQ(server.requests.size(), 2U);
    for (const QByteArray& request : server.requests) {
        EXPECT_THAT(request.toStdString(), HasSubstr("User-Agent: Test/1\r\n"));
        EXPECT_THAT(request.toStdString(), HasSubstr("Accept: image/*\r\n"));
        EXPECT_FALSE(request.contains("Cookie"));
    }
}

TEST_F(QtHttpClientTest, RedirectionsInALoopEnd) {
    server.answer("/a", "301 Moved", "Location: /b\r\n", "moved");
    server.answer("/b", "307 Moved", "Location: /a\r\n", "");
    HttpRequest request{server.url(u"/a"_s), {}};
    request.maximumRedirects = 4;
    EXPECT_EQ(failureOf(request), u"The address redirects too often"_s);
    EXPECT_EQ(server.requests.size(), 5U);
}

TEST_F(QtHttpClientTest, AsManyRedirectionsAsAllowedAreFollowed) {
    server.answer("/0", "303 See Other", "Location: /1\r\n", "");
    server.answer("/1", "308 Moved", "Location: " + server.url(u"/2"_s).toUtf8() + "\r\n", "");
    server.answer("/2", "200 OK", {}, "end");
    HttpRequest request{server.url(u"/0"_s), {}};
    request.maximumRedirects = 2;
    EXPECT_EQ(get(request)->body, "end");
    request.maximumRedirects = 1;
    EXPECT_EQ(failureOf(request), u"The address redirects too often"_s);
}

TEST_F(QtHttpClientTest, ARedirectionToAnotherKindOfAddressIsNotFollowed) {
    for (const char* const target : {"file:///etc/passwd", "ftp://127.0.0.1/x", "data:text/plain,x", "http:///x"}) {
        server.answer("/a", "302 Found", "Location: " + QByteArray(target) + "\r\n", "");
        EXPECT_THAT(failureOf(u"/a"_s).toStdString(), HasSubstr("is not one of the web")) << target;
    }
}

TEST_F(QtHttpClientTest, ARedirectionWithoutAPlaceIsAResponse) {
    server.answer("/a", "302 Found", {}, "text");
    const Result result = get(u"/a"_s);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->status, 302);
    EXPECT_EQ(result->body, "text");
}

TEST_F(QtHttpClientTest, AHugeTextOfARedirectionIsNotLoaded) {
    server.answer("/a", "302 Found", "Location: /b\r\n", QByteArray(17 * 1024 * 1024, 'x'));
    server.answer("/b", "200 OK", {}, "here");
    EXPECT_EQ(get(u"/a"_s)->body, "here");
    EXPECT_LT(server.bytesTaken, 8 * 1024 * 1024);
}

TEST_F(QtHttpClientTest, OnlyAddressesOfTheWebAreLoaded) {
    for (const auto& url : {u"file:///etc/hostname"_s, u"ftp://127.0.0.1/"_s, u"data:,x"_s, u"example.com"_s,
                            u"http://"_s, u"http://[::1"_s, QString(), u"qrc:/x"_s})
        EXPECT_THAT(failureOf(HttpRequest{url, {}}).toStdString(), HasSubstr("is not one of the web"));
}

TEST_F(QtHttpClientTest, ABodyOfExactlyTheLimitIsLoaded) {
    server.answer("/a", "200 OK", {}, QByteArray(1000, 'x'));
    HttpRequest request{server.url(u"/a"_s), {}};
    request.maximumBytes = 1000;
    EXPECT_EQ(get(request)->body.size(), 1000);
    request.maximumBytes = 999;
    EXPECT_EQ(failureOf(request), u"The response is too large"_s);
}

TEST_F(QtHttpClientTest, ABodyThatSaysThatItIsTooLargeIsNotLoaded) {
    server.answer("/a", "200 OK", {}, QByteArray(17 * 1024 * 1024, 'x'));
    EXPECT_EQ(failureOf(u"/a"_s), u"The response is too large"_s);
    EXPECT_LT(server.bytesTaken, 8 * 1024 * 1024);
}

TEST_F(QtHttpClientTest, ABodyThatTurnsOutTooLargeIsGivenUp) {
    LoopbackServer::Answer answer{{"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"}};
    const QByteArray chunk = "10000\r\n" + QByteArray(0x10000, 'x') + "\r\n";
    for (int i = 0; i < 17 * 16; ++i)
        answer.pieces.push_back(chunk);
    server.answer("/a", answer);
    HttpRequest request{server.url(u"/a"_s), {}};
    request.maximumBytes = 1024 * 1024;
    EXPECT_EQ(failureOf(request), u"The response is too large"_s);
    EXPECT_LT(server.bytesTaken, 12 * 1024 * 1024);
}

TEST_F(QtHttpClientTest, AChunkedBodyIsPutTogether) {
    server.answer("/a",
                  {{"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nHel", "lo\r\n", "1\r\n!\r\n0\r\n\r\n"}});
    EXPECT_EQ(get(u"/a"_s)->body, "Hello!");
}

TEST_F(QtHttpClientTest, ABodyMayEndWithTheConnection) {
    server.answer("/a", {{"HTTP/1.0 200 OK\r\n\r\n", "Hello"}});
    EXPECT_EQ(get(u"/a"_s)->body, "Hello");
}

/// 4 MiB of the letter "a", made small by the program gzip.
QByteArray compressedText() {
    QByteArray zlib = qCompress(QByteArray(4 * 1024 * 1024, 'a'), 9);
    // Behind Qt's own four bytes of length this is a zlib stream, which HTTP calls "deflate".
    return zlib.sliced(4);
}

TEST_F(QtHttpClientTest, TheLimitCountsWhatIsLeftAfterDecompression) {
    const QByteArray packed = compressedText();
    ASSERT_LT(packed.size(), 16 * 1024);
    server.answer("/a", "200 OK", "Content-Encoding: deflate\r\n", packed);
    HttpRequest request{server.url(u"/a"_s), {}};
    request.maximumBytes = 1024 * 1024;
    EXPECT_FALSE(failureOf(request).isEmpty());
    request.maximumBytes = 4 * 1024 * 1024;
    const Result whole = get(request);
    ASSERT_TRUE(whole) << whole.error().description().toStdString();
    EXPECT_EQ(whole->body, QByteArray(4 * 1024 * 1024, 'a'));
}

TEST_F(QtHttpClientTest, ABodyThatBreaksOffIsAFailure) {
    server.answer("/a", {{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nonly this"}});
    EXPECT_FALSE(failureOf(u"/a"_s).isEmpty());
    server.answer("/b", {{"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nff\r\nonly this"}});
    EXPECT_FALSE(failureOf(u"/b"_s).isEmpty());
}

TEST_F(QtHttpClientTest, MoreBytesThanAnnouncedAreLeftOut) {
    server.answer("/a", {{"HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\ntext and more"}});
    EXPECT_EQ(get(u"/a"_s)->body, "text");
}

TEST_F(QtHttpClientTest, AConnectionThatClosesWithoutAWordIsAFailure) {
    server.answer("/a", {{}});
    EXPECT_FALSE(failureOf(u"/a"_s).isEmpty());
}

TEST_F(QtHttpClientTest, WhatIsNoHttpIsAFailure) {
    server.answer("/a", {{"SSH-2.0-OpenSSH_9.2\r\n\r\n"}});
    EXPECT_FALSE(failureOf(u"/a"_s).isEmpty());
}

TEST_F(QtHttpClientTest, AServerThatIsNotThereIsAFailure) {
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    const quint16 port = closed.serverPort();
    closed.close();
    EXPECT_FALSE(failureOf(HttpRequest{u"http://127.0.0.1:%1/"_s.arg(port), {}}).isEmpty());
}

TEST_F(QtHttpClientTest, AServerThatNeverAnswersIsGivenUp) {
    server.answer("/a", {{}, false});
    HttpRequest request{server.url(u"/a"_s), {}};
    request.timeoutSeconds = 0.05;
    EXPECT_EQ(failureOf(request), u"The request timed out"_s);
}

TEST_F(QtHttpClientTest, TheTimeLimitCoversTheBodyToo) {
    server.answer("/a", {{"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n", "slow"}, false});
    HttpRequest request{server.url(u"/a"_s), {}};
    request.timeoutSeconds = 0.05;
    EXPECT_EQ(failureOf(request), u"The request timed out"_s);
}

TEST_F(QtHttpClientTest, AClientThatGoesAwayNeverCompletes) {
    server.answer("/a", {{}, false});
    bool completed = false;
    {
        QtHttpClient shortLived;
        shortLived.get(HttpRequest{server.url(u"/a"_s), {}}, [&completed](const Result&) { completed = true; });
        ASSERT_TRUE(waitUntil([this] { return server.requests.size() == 1; }));
    }
    server.answer("/b", "200 OK", {}, "");
    EXPECT_TRUE(get(u"/b"_s));
    EXPECT_FALSE(completed);
}

TEST_F(QtHttpClientTest, ACompletionMayMakeTheNextRequest) {
    server.answer("/a", "200 OK", {}, "first");
    server.answer("/b", "200 OK", {}, "second");
    QByteArray bodies;
    client.get(HttpRequest{server.url(u"/a"_s), {}}, [&](const Result& first) {
        bodies += first->body;
        client.get(HttpRequest{server.url(u"/b"_s), {}}, [&bodies](const Result& second) { bodies += second->body; });
    });
    EXPECT_TRUE(waitUntil([&bodies] { return bodies == "firstsecond"; }));
}

}  // namespace
}  // namespace wrapio
