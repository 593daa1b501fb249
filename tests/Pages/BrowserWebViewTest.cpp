#include "Views/Pages/BrowserWebView.h"

#include "Pages/PageFixture.h"
#include "Views/Pages/NavigationRules.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Keeps the alerts until a test answers them.
class FakePageDialogs final : public PageDialogs {
public:
    void run(const PageAlert& alert, Answer answer) override {
        alerts.push_back(alert);
        answers.push_back(std::move(answer));
    }

    std::vector<PageAlert> alerts;
    std::vector<Answer> answers;
};

class BrowserWebViewTest : public PageFixture {
protected:
    BrowserWebViewTest() {
        configure(u"https://www.example.com/"_s);
        value = {.url = address(u"https://www.example.com/start"_s),
                 .webView = std::function([this](PlatformWebView* const& made) { handedOver = made; }),
                 .canGoBack = std::function([this](const bool& now) { told << u"back %1"_s.arg(now); }),
                 .canGoForward = std::function([this](const bool& now) { told << u"forward %1"_s.arg(now); }),
                 .isLoading = std::function([this](const bool& now) { told << u"loading %1"_s.arg(now); }),
                 .pageTitle = std::function([this](const QString& now) { told << u"title "_s + now; }),
                 .loadProgress = std::function([this](const double& now) { told << u"progress %1"_s.arg(now); }),
                 .showError = std::function([this](const bool& now) { showError = now; }),
                 .errorMessage = std::function([this](const std::optional<QString>& now) { errorMessage = now; }),
                 .errorURL = std::function([this](const std::optional<WebAddress>& now) { errorURL = now; })};
        coordinator = value.makeCoordinator(services(), dialogs);
        value.makeView(view, *coordinator, scheduler);
    }

    QStringList told;
    PlatformWebView* handedOver = nullptr;
    std::optional<bool> showError;
    std::optional<QString> errorMessage;
    std::optional<WebAddress> errorURL;
    FakePageDialogs dialogs;
    DiagnosticsCapture output;
    BrowserWebView value{.url = address(u"about:blank"_s)};
    std::shared_ptr<BrowserWebView::Coordinator> coordinator;
};

}  // namespace

TEST_F(BrowserWebViewTest, sets_the_view_up_as_a_desktop_browser_and_loads_the_address) {
    EXPECT_TRUE(view.fullScreen);
    EXPECT_TRUE(view.gestures);
    EXPECT_EQ(view.navigation, coordinator.get());
    EXPECT_EQ(view.ui, coordinator.get());
    EXPECT_EQ(view.userAgent, browserUserAgent());
    ASSERT_EQ(view.requests.size(), 1U);
    EXPECT_EQ(view.requests[0].address.absoluteString(), u"https://www.example.com/start"_s);
    EXPECT_EQ(view.requests[0].timeoutSeconds, 60);
    EXPECT_EQ(output.lines(), QStringList{u"[BrowserWebView] Loading URL: https://www.example.com/start"_s});
}

TEST_F(BrowserWebViewTest, hands_the_view_to_its_owner_in_a_later_turn) {
    EXPECT_FALSE(handedOver);
    scheduler.runPending();
    EXPECT_EQ(handedOver, &view);
}

TEST_F(BrowserWebViewTest, mirrors_the_page_in_a_later_turn) {
    view.back = view.forward = view.loading = true;
    view.pageTitle = u"Mail"_s;
    view.progress = 0.5;
    for (const auto* changed : {&view.backs, &view.forwards, &view.loadings, &view.titles, &view.progresses})
        changed->notify();
    EXPECT_TRUE(told.isEmpty());
    scheduler.runPending();
    EXPECT_EQ(told, (QStringList{u"back 1"_s, u"forward 1"_s, u"loading 1"_s, u"title Mail"_s, u"progress 0.5"_s}));
}

TEST_F(BrowserWebViewTest, cancels_a_request_without_an_address) {
    EXPECT_EQ(coordinator->decidePolicy({}), NavigationPolicy::cancel);
    EXPECT_TRUE(workspace.log.isEmpty());
}

TEST_F(BrowserWebViewTest, hands_foreign_schemes_to_the_system) {
    EXPECT_EQ(view.asks(u"MailTo:a@example.com"_s), NavigationPolicy::cancel);
    EXPECT_EQ(workspace.log, QStringList{u"open MailTo:a@example.com"_s});
    EXPECT_EQ(output.lines().last(), u"[Navigation] Opening external scheme: mailto"_s);
}

TEST_F(BrowserWebViewTest, keeps_data_blobs_and_blank_frames_inside) {
    for (const QString& text : {u"data:text/plain,a"_s, u"blob:https://elsewhere.org/1"_s, u"about:blank"_s,
                                u"javascript:void(0)"_s, u"DATA:text/plain,a"_s})
        EXPECT_EQ(view.asks(text), NavigationPolicy::allow) << text.toStdString();
    EXPECT_TRUE(workspace.log.isEmpty());
}

TEST_F(BrowserWebViewTest, keeps_an_address_without_a_scheme_inside_unless_it_is_an_external_link) {
    EXPECT_EQ(view.asks(u"page"_s, NavigationType::linkActivated), NavigationPolicy::allow);
    EXPECT_EQ(view.asks(u"//elsewhere.org/page"_s, NavigationType::linkActivated), NavigationPolicy::cancel);
}

TEST_F(BrowserWebViewTest, keeps_a_clicked_link_to_another_subdomain_inside) {
    EXPECT_EQ(view.asks(u"https://docs.example.com/"_s, NavigationType::linkActivated), NavigationPolicy::allow);
    EXPECT_TRUE(workspace.log.isEmpty());
}

TEST_F(BrowserWebViewTest, sends_a_clicked_link_to_another_domain_to_the_default_browser) {
    EXPECT_EQ(view.asks(u"https://elsewhere.org/a"_s, NavigationType::linkActivated), NavigationPolicy::cancel);
    EXPECT_EQ(workspace.log, QStringList{u"open https://elsewhere.org/a"_s});
    EXPECT_EQ(output.lines().last(), u"[Navigation] Opening external link: elsewhere.org"_s);
}

TEST_F(BrowserWebViewTest, keeps_the_same_address_inside_when_it_was_not_clicked) {
    for (const auto type : {NavigationType::other, NavigationType::formSubmitted, NavigationType::backForward,
                            NavigationType::reload, NavigationType::formResubmitted})
        EXPECT_EQ(view.asks(u"https://elsewhere.org/a"_s, type), NavigationPolicy::allow);
    EXPECT_TRUE(workspace.log.isEmpty());
}

TEST_F(BrowserWebViewTest, keeps_a_clicked_link_inside_that_leads_on_from_the_page_or_back_to_the_site) {
    view.show(u"https://elsewhere.org/a"_s);
    EXPECT_EQ(view.asks(u"https://www.elsewhere.org/b"_s, NavigationType::linkActivated), NavigationPolicy::allow);
    EXPECT_EQ(view.asks(u"https://docs.example.com/"_s, NavigationType::linkActivated), NavigationPolicy::allow);
    EXPECT_EQ(view.asks(u"https://third.net/"_s, NavigationType::linkActivated), NavigationPolicy::cancel);
}

TEST_F(BrowserWebViewTest, remembers_the_page_that_was_loaded_and_forgets_the_error) {
    view.show(u"https://www.example.com/inbox"_s);
    view.navigation->didFinish();
    EXPECT_EQ(store->configuration().lastVisitedURL->absoluteString(), u"https://www.example.com/inbox"_s);
    EXPECT_EQ(output.lines().last(), u"[Navigation] Page loaded: https://www.example.com/inbox"_s);
    EXPECT_FALSE(showError);
    scheduler.runPending();
    EXPECT_EQ(showError, false);
    EXPECT_FALSE(errorMessage);
}

TEST_F(BrowserWebViewTest, remembers_nothing_of_a_page_without_an_address) {
    view.shown.reset();
    view.navigation->didFinish();
    EXPECT_FALSE(store->configuration().lastVisitedURL);
    EXPECT_EQ(output.lines().last(), u"[Navigation] Page loaded: unknown"_s);
}

TEST_F(BrowserWebViewTest, shows_no_error_for_a_load_that_a_newer_one_has_cancelled) {
    view.navigation->didFail({urlErrorDomain, -999, u"cancelled"_s});
    view.navigation->didFailProvisionalNavigation({urlErrorDomain, -999, u"cancelled"_s});
    scheduler.runPending();
    EXPECT_FALSE(showError);
    EXPECT_EQ(output.lines().mid(1),
              (QStringList{u"[Navigation] Failed: cancelled (NSURLErrorDomain -999)"_s,
                           u"[Navigation] Provisional failed: cancelled (NSURLErrorDomain -999)"_s}));
}

TEST_F(BrowserWebViewTest, shows_every_other_error_with_the_address_that_failed) {
    view.show(u"https://www.example.com/away"_s);
    view.navigation->didFailProvisionalNavigation({urlErrorDomain, -1004, u"No connection."_s});
    EXPECT_FALSE(showError);
    scheduler.runPending();
    EXPECT_EQ(showError, true);
    EXPECT_EQ(errorMessage, u"No connection."_s);
    EXPECT_EQ(errorURL->absoluteString(), u"https://www.example.com/away"_s);
}

TEST_F(BrowserWebViewTest, shows_an_error_of_another_domain_even_with_the_code_of_a_cancelled_load) {
    view.navigation->didFail({u"WebKitErrorDomain"_s, -999, u"Odd."_s});
    scheduler.runPending();
    EXPECT_EQ(showError, true);
}

TEST_F(BrowserWebViewTest, reloads_a_page_whose_process_has_crashed) {
    view.navigation->webContentProcessDidTerminate();
    EXPECT_EQ(view.log, QStringList{u"reload"_s});
    EXPECT_EQ(output.lines().last(), u"[WebView] Content process terminated - reloading..."_s);
}

TEST_F(BrowserWebViewTest, opens_pop_ups_in_the_default_browser_and_never_makes_a_second_view) {
    view.ui->createWebView(address(u"https://www.example.com/pop"_s));
    EXPECT_EQ(workspace.log, QStringList{u"open https://www.example.com/pop"_s});
    EXPECT_EQ(output.lines().last(), u"[Popup] Opening in browser: https://www.example.com/pop"_s);
    view.ui->createWebView(std::nullopt);
    EXPECT_EQ(workspace.log.size(), 1);
    EXPECT_EQ(view.requests.size(), 1U);
}

TEST_F(BrowserWebViewTest, shows_an_alert_and_goes_on_when_it_has_closed) {
    bool isDone = false;
    view.ui->runJavaScriptAlertPanel(u"Saved."_s, [&isDone] { isDone = true; });
    EXPECT_EQ(dialogs.alerts[0].messageText, u"Saved."_s);
    EXPECT_EQ(dialogs.alerts[0].buttons, QStringList{u"OK"_s});
    EXPECT_FALSE(dialogs.alerts[0].field);
    EXPECT_FALSE(isDone);
    dialogs.answers[0](0, {});
    EXPECT_TRUE(isDone);
}

TEST_F(BrowserWebViewTest, confirms_with_the_first_button_only) {
    std::vector<bool> results;
    for (const int button : {0, 1}) {
        view.ui->runJavaScriptConfirmPanel(u"Leave?"_s, [&results](bool result) { results.push_back(result); });
        EXPECT_EQ(dialogs.alerts.back().buttons, (QStringList{u"OK"_s, u"Cancel"_s}));
        dialogs.answers.back()(button, {});
    }
    EXPECT_EQ(results, (std::vector<bool>{true, false}));
}

TEST_F(BrowserWebViewTest, answers_a_prompt_with_its_text_or_with_nothing) {
    std::vector<std::optional<QString>> results;
    const auto keep = [&results](const std::optional<QString>& result) { results.push_back(result); };
    view.ui->runJavaScriptTextInputPanel(u"Name?"_s, u"Ada"_s, keep);
    EXPECT_EQ(dialogs.alerts.back().field, u"Ada"_s);
    EXPECT_EQ(dialogs.alerts.back().buttons, (QStringList{u"OK"_s, u"Cancel"_s}));
    dialogs.answers.back()(0, u"Grace"_s);
    view.ui->runJavaScriptTextInputPanel(u"Name?"_s, std::nullopt, keep);
    EXPECT_EQ(dialogs.alerts.back().field, QString());
    dialogs.answers.back()(1, u"Grace"_s);
    EXPECT_EQ(results, (std::vector<std::optional<QString>>{u"Grace"_s, std::nullopt}));
}

}  // namespace wrapio
