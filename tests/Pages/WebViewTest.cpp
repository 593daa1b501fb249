#include "Views/Pages/WebView.h"

#include "Pages/PageFixture.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class WebViewTest : public PageFixture {
protected:
    WebViewTest() { configure(u"https://www.example.com/"_s); }

    /// A view that keeps what it is told.
    [[nodiscard]] WebView recording() {
        return {.url = address(u"https://www.example.com/start"_s),
                .canGoBack = std::function([this](const bool& value) { told << u"back %1"_s.arg(value); }),
                .canGoForward = std::function([this](const bool& value) { told << u"forward %1"_s.arg(value); }),
                .isLoading = std::function([this](const bool& value) { told << u"loading %1"_s.arg(value); }),
                .pageTitle = std::function([this](const QString& value) { told << u"title "_s + value; }),
                .onExternalLink = [this](const WebAddress& link) { told << u"external "_s + link.absoluteString(); },
                .onNavigate = [this](const WebAddress& page) { told << u"at "_s + page.absoluteString(); }};
    }

    void make(const WebView& value) {
        coordinator = value.makeCoordinator(services());
        value.makeView(view, *coordinator);
    }

    [[nodiscard]] QStringList opened() const { return workspace.log; }

    QStringList told;
    std::shared_ptr<WebView::Coordinator> coordinator;
};

}  // namespace

TEST_F(WebViewTest, sets_the_view_up_and_loads_the_address_with_a_minute_to_answer) {
    make(recording());
    EXPECT_TRUE(view.fullScreen);
    EXPECT_TRUE(view.gestures);
    EXPECT_EQ(view.navigation, coordinator.get());
    EXPECT_FALSE(view.ui);
    EXPECT_EQ(view.userAgent, QString());
    ASSERT_EQ(view.requests.size(), 1U);
    EXPECT_EQ(view.requests[0].address.absoluteString(), u"https://www.example.com/start"_s);
    EXPECT_EQ(view.requests[0].timeoutSeconds, 60);
    EXPECT_EQ(view.requests[0].cachePolicy, CachePolicy::useProtocolCachePolicy);
}

TEST_F(WebViewTest, mirrors_the_page_in_a_later_turn) {
    make(recording());
    view.back = true;
    view.backs.notify();
    view.forward = true;
    view.forwards.notify();
    view.loading = true;
    view.loadings.notify();
    view.pageTitle = u"Mail"_s;
    view.titles.notify();
    EXPECT_TRUE(told.isEmpty());
    scheduler.runPending();
    EXPECT_EQ(told, (QStringList{u"back 1"_s, u"forward 1"_s, u"loading 1"_s, u"title Mail"_s}));
}

TEST_F(WebViewTest, ends_its_observations_with_the_coordinator) {
    make(recording());
    coordinator.reset();
    view.titles.notify();
    scheduler.runPending();
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(WebViewTest, never_undoes_moving_about_the_site_when_it_is_updated) {
    const WebView value = recording();
    make(value);
    view.show(u"https://www.example.com/elsewhere"_s);
    value.updateView(view);
    EXPECT_EQ(view.requests.size(), 1U);
}

TEST_F(WebViewTest, loads_anew_when_the_host_is_another_one) {
    WebView value = recording();
    make(value);
    value.url = address(u"https://docs.example.com/"_s);
    value.updateView(view);
    ASSERT_EQ(view.requests.size(), 2U);
    EXPECT_EQ(view.requests[1].address.absoluteString(), u"https://docs.example.com/"_s);
    EXPECT_EQ(view.requests[1].timeoutSeconds, 60);
}

TEST_F(WebViewTest, loads_anew_when_only_one_of_both_has_a_host_and_not_when_neither_has) {
    WebView value = recording();
    make(value);
    value.url = address(u"about:blank"_s);
    value.updateView(view);
    EXPECT_EQ(view.requests.size(), 2U);
    value.updateView(view);
    EXPECT_EQ(view.requests.size(), 2U);
    view.shown.reset();
    value.updateView(view);
    EXPECT_EQ(view.requests.size(), 2U);
    value.url = address(u"https://www.example.com/"_s);
    value.updateView(view);
    EXPECT_EQ(view.requests.size(), 3U);
}

TEST_F(WebViewTest, cancels_a_request_without_an_address) {
    make(recording());
    EXPECT_EQ(coordinator->decidePolicy({}), NavigationPolicy::cancel);
    EXPECT_TRUE(opened().isEmpty());
}

TEST_F(WebViewTest, stays_on_the_configured_site_whoever_asks) {
    make(recording());
    for (const auto type : {NavigationType::linkActivated, NavigationType::formSubmitted, NavigationType::backForward,
                            NavigationType::reload, NavigationType::formResubmitted, NavigationType::other}) {
        EXPECT_EQ(view.asks(u"https://docs.example.com/"_s, type), NavigationPolicy::allow);
        EXPECT_EQ(view.asks(u"https://elsewhere.org/"_s, type), NavigationPolicy::cancel);
    }
}

TEST_F(WebViewTest, tells_of_an_external_link_and_hands_it_to_the_default_browser) {
    make(recording());
    EXPECT_EQ(view.asks(u"https://elsewhere.org/a"_s, NavigationType::linkActivated), NavigationPolicy::cancel);
    EXPECT_EQ(told, QStringList{u"external https://elsewhere.org/a"_s});
    EXPECT_EQ(opened(), QStringList{u"open https://elsewhere.org/a"_s});
}

TEST_F(WebViewTest, hands_an_external_link_over_when_nobody_wants_to_be_told) {
    make({.url = address(u"https://www.example.com/"_s)});
    EXPECT_EQ(view.asks(u"https://elsewhere.org/a"_s), NavigationPolicy::cancel);
    EXPECT_EQ(opened(), QStringList{u"open https://elsewhere.org/a"_s});
}

TEST_F(WebViewTest, hands_what_is_no_web_address_to_the_system_without_telling) {
    make(recording());
    for (const QString& link : {u"mailto:a@example.com"_s, u"data:text/plain,a"_s, u"about:blank"_s}) {
        EXPECT_EQ(view.asks(link), NavigationPolicy::cancel);
        EXPECT_EQ(workspace.log.last(), u"open "_s + link);
    }
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(WebViewTest, treats_every_host_as_external_while_no_site_is_configured) {
    store->reset();
    make(recording());
    EXPECT_EQ(view.asks(u"https://www.example.com/"_s), NavigationPolicy::cancel);
    EXPECT_EQ(opened(), QStringList{u"open https://www.example.com/"_s});
    EXPECT_EQ(view.asks(u"page"_s), NavigationPolicy::allow);
}

TEST_F(WebViewTest, tells_of_a_finished_navigation_when_there_is_an_address) {
    make(recording());
    view.shown.reset();
    view.navigation->didFinish();
    EXPECT_TRUE(told.isEmpty());
    view.show(u"https://www.example.com/page"_s);
    view.navigation->didFinish();
    EXPECT_EQ(told, QStringList{u"at https://www.example.com/page"_s});
}

TEST_F(WebViewTest, only_tells_of_failures_in_diagnostics) {
    make(recording());
    DiagnosticsCapture output;
    view.navigation->didFail({urlErrorDomain, -1005, u"The connection was lost."_s});
    view.navigation->didFailProvisionalNavigation({urlErrorDomain, -1004, u"No connection."_s});
    EXPECT_EQ(output.lines(),
              (QStringList{u"Navigation failed: The connection was lost. (NSURLErrorDomain -1005)"_s,
                           u"Provisional navigation failed: No connection. (NSURLErrorDomain -1004)"_s}));
    scheduler.runPending();
    EXPECT_TRUE(told.isEmpty());
}

}  // namespace wrapio
