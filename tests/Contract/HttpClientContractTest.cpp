// What every HTTP client does, whether its web is real or made up.

#include "Fakes/FakeHttpClient.h"
#include "Fakes/PrintQt.h"
#include "Platform/Linux/QtHttpClient.h"
#include "Platform/System/LoopbackServer.h"
#include "Platform/System/Waiting.h"

#include <gtest/gtest.h>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;
using Result = tl::expected<HttpResponse, HttpError>;

struct MadeUpWeb {
    void answer(const QString& path, int status, const QString& type, const QByteArray& body) {
        client.responses[url(path)] = {status, type, body};
    }
    [[nodiscard]] static QString url(const QString& path) { return u"http://example.com"_s + path; }
    [[nodiscard]] static QString deadUrl() { return u"http://nobody.example/"_s; }
    template <typename Condition>
    bool wait(Condition condition) {
        client.deliverAll();
        return condition();
    }
    FakeHttpClient client;
};

struct RealWeb {
    RealWeb() { EXPECT_TRUE(dead.listen(QHostAddress::LocalHost)); }
    void answer(const QString& path, int status, const QString& type, const QByteArray& body) {
        server.answer(path.toUtf8(), QByteArray::number(status) + " Words", "Content-Type: " + type.toUtf8() + "\r\n",
                      body);
    }
    [[nodiscard]] QString url(const QString& path) const { return server.url(path); }
    [[nodiscard]] QString deadUrl() {
        const quint16 port = dead.serverPort();
        dead.close();
        return u"http://127.0.0.1:%1/"_s.arg(port);
    }
    template <typename Condition>
    bool wait(Condition condition) {
        return waitUntil(condition);
    }
    LoopbackServer server;
    QTcpServer dead;
    QtHttpClient client;
};

template <typename Web>
struct HttpClientContract : testing::Test {
    /// Asks without waiting; the answers come into `results` in any order.
    void ask(const QString& url) {
        client.get(HttpRequest{url, {}}, [this, url](Result result) { results.emplace_back(url, std::move(result)); });
    }
    [[nodiscard]] bool waitFor(std::size_t count) {
        return web.wait([this, count] { return results.size() >= count; });
    }

    Web web;
    HttpClient& client = web.client;
    std::vector<std::pair<QString, Result>> results;
};

using Webs = testing::Types<MadeUpWeb, RealWeb>;
TYPED_TEST_SUITE(HttpClientContract, Webs);

TYPED_TEST(HttpClientContract, AResponseComesLaterWithStatusTypeAndBody) {
    this->web.answer(u"/a"_s, 200, u"text/html"_s, "<html>");
    this->ask(this->web.url(u"/a"_s));
    EXPECT_TRUE(this->results.empty());
    ASSERT_TRUE(this->waitFor(1));
    const Result& result = this->results.front().second;
    ASSERT_TRUE(result);
    EXPECT_EQ(result->status, 200);
    EXPECT_EQ(result->contentType, u"text/html"_s);
    EXPECT_EQ(result->body, "<html>");
}

TYPED_TEST(HttpClientContract, AStatusThatTellsOfAFailureIsAResponse) {
    this->web.answer(u"/a"_s, 404, u"text/plain"_s, "gone");
    this->ask(this->web.url(u"/a"_s));
    ASSERT_TRUE(this->waitFor(1));
    ASSERT_TRUE(this->results.front().second);
    EXPECT_EQ(this->results.front().second->status, 404);
}

TYPED_TEST(HttpClientContract, AServerThatIsNotThereIsAFailureInWords) {
    this->ask(this->web.deadUrl());
    EXPECT_TRUE(this->results.empty());
    ASSERT_TRUE(this->waitFor(1));
    ASSERT_FALSE(this->results.front().second);
    EXPECT_FALSE(this->results.front().second.error().description().isEmpty());
}

TYPED_TEST(HttpClientContract, EveryRequestCompletesOnce) {
    this->web.answer(u"/a"_s, 200, u"text/plain"_s, "a");
    this->web.answer(u"/b"_s, 500, u"text/plain"_s, "b");
    for (int i = 0; i < 4; ++i) {
        this->ask(this->web.url(u"/a"_s));
        this->ask(this->web.url(u"/b"_s));
    }
    ASSERT_TRUE(this->waitFor(8));
    int right = 0;
    for (const auto& [url, result] : this->results) {
        if (result && result->body == (url.endsWith(u"/a") ? "a" : "b"))
            ++right;
    }
    EXPECT_EQ(right, 8);
    EXPECT_EQ(this->results.size(), 8U);
}

}  // namespace
}  // namespace wrapio
