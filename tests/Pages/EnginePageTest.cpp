#include "Views/Pages/EnginePage.h"

#include "Fakes/ManualScheduler.h"
#include "Fakes/PrintQt.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// Has the engine's properties and operations, and shows nothing.
class EngineObject : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void reload() { log << u"reload"_s; }
    void stop() { log << u"stop"_s; }
    void goBack() { log << u"back"_s; }
    void goForward() { log << u"forward"_s; }

public:
    QStringList log;
};

class RecordingDelegate final : public NavigationDelegate, public PageUIDelegate {
public:
    NavigationPolicy decidePolicy(const NavigationAction& action) override {
        asked = action;
        return policy;
    }
    void didFinish() override { log << u"finished"_s; }
    void didFail(const PageError& error) override { log << u"failed %1"_s.arg(error.code); }
    void didFailProvisionalNavigation(const PageError& error) override {
        log << u"failed at first %1 %2"_s.arg(error.code).arg(error.localizedDescription);
    }
    void webContentProcessDidTerminate() override { log << u"terminated"_s; }
    void createWebView(const std::optional<WebAddress>& address) override {
        log << u"window "_s + (address ? address->absoluteString() : u"of nothing"_s);
    }
    void runJavaScriptAlertPanel(const QString& message, std::function<void()> completion) override {
        log << u"alert "_s + message;
        completion();
    }
    void runJavaScriptConfirmPanel(const QString& message, std::function<void(bool)> completion) override {
        log << u"confirm "_s + message;
        completion(false);
    }
    void runJavaScriptTextInputPanel(const QString& prompt, const std::optional<QString>& text,
                                     std::function<void(std::optional<QString>)> completion) override {
        log << u"prompt "_s + prompt;
        completion(text.value_or(QString()) + u"!"_s);
    }

    NavigationPolicy policy = NavigationPolicy::allow;
    NavigationAction asked;
    QStringList log;
};

class EnginePageTest : public testing::Test {
protected:
    EnginePageTest() {
        page.setView(&engine);
        page.setNavigationDelegate(&delegate);
        page.setUIDelegate(&delegate);
    }

    void load() {
        page.load({.address = *WebAddress::parse(u"https://example.com/"_s)});
        engine.setProperty("loading", true);
        tell(EnginePage::Load::Started);
    }

    void tell(EnginePage::Load load, int code = 0, const QString& text = {}) {
        if (load != EnginePage::Load::Started)
            engine.setProperty("loading", false);
        page.loadChanged(static_cast<int>(load), code, text);
    }

    ManualScheduler scheduler;
    EngineObject engine;
    RecordingDelegate delegate;
    EnginePage page{scheduler};
};

}  // namespace

TEST_F(EnginePageTest, reads_the_state_of_the_engine) {
    EXPECT_FALSE(page.url());
    engine.setProperty("url", QUrl(u"https://example.com/ä"_s));
    engine.setProperty("canGoBack", true);
    engine.setProperty("canGoForward", true);
    engine.setProperty("loading", true);
    engine.setProperty("title", u"Title"_s);
    engine.setProperty("loadProgress", 40);
    EXPECT_EQ(page.url()->absoluteString(), u"https://example.com/%C3%A4"_s);
    EXPECT_TRUE(page.canGoBack());
    EXPECT_TRUE(page.canGoForward());
    EXPECT_TRUE(page.isLoading());
    EXPECT_EQ(page.title(), u"Title"_s);
    EXPECT_DOUBLE_EQ(page.estimatedProgress(), 0.4);
}

TEST_F(EnginePageTest, is_empty_once_the_view_of_the_engine_is_gone) {
    page.setView(nullptr);
    EXPECT_FALSE(page.url());
    EXPECT_FALSE(page.isLoading());
    page.reload();
    load();
    EXPECT_TRUE(engine.log.isEmpty());
}

TEST_F(EnginePageTest, carries_operations_to_the_engine) {
    load();
    EXPECT_EQ(engine.property("url").toUrl(), QUrl(u"https://example.com/"_s));
    page.reload();
    page.stopLoading();
    page.goBack();
    page.goForward();
    EXPECT_EQ(engine.log, (QStringList{u"reload"_s, u"stop"_s, u"back"_s, u"forward"_s}));
}

TEST_F(EnginePageTest, tells_each_observer_of_its_own_value) {
    QStringList changed;
    std::vector<Subscription> all;
    all.push_back(page.observeUrl([&changed] { changed << u"url"_s; }));
    all.push_back(page.observeCanGoBack([&changed] { changed << u"back"_s; }));
    all.push_back(page.observeCanGoForward([&changed] { changed << u"forward"_s; }));
    all.push_back(page.observeIsLoading([&changed] { changed << u"loading"_s; }));
    all.push_back(page.observeTitle([&changed] { changed << u"title"_s; }));
    all.push_back(page.observeEstimatedProgress([&changed] { changed << u"progress"_s; }));
    for (const auto value : {EnginePage::Value::Url, EnginePage::Value::CanGoBack, EnginePage::Value::CanGoForward,
                             EnginePage::Value::Title, EnginePage::Value::EstimatedProgress})
        page.valueChanged(value);
    tell(EnginePage::Load::Started);
    EXPECT_EQ(changed, (QStringList{u"url"_s, u"back"_s, u"forward"_s, u"title"_s, u"progress"_s, u"loading"_s}));
}

TEST_F(EnginePageTest, asks_the_delegate_where_the_engine_may_go) {
    const QUrl url(u"https://example.com/a"_s);
    EXPECT_TRUE(page.mayNavigate(url, static_cast<int>(EnginePage::Navigation::LinkClicked)));
    EXPECT_EQ(delegate.asked.type, NavigationType::linkActivated);
    EXPECT_EQ(delegate.asked.address->absoluteString(), u"https://example.com/a"_s);
    delegate.policy = NavigationPolicy::cancel;
    EXPECT_FALSE(page.mayNavigate(url, static_cast<int>(EnginePage::Navigation::Redirect)));
    EXPECT_EQ(delegate.asked.type, NavigationType::other);
    const std::vector<std::pair<EnginePage::Navigation, NavigationType>> kinds = {
        {EnginePage::Navigation::Typed, NavigationType::other},
        {EnginePage::Navigation::FormSubmitted, NavigationType::formSubmitted},
        {EnginePage::Navigation::BackForward, NavigationType::backForward},
        {EnginePage::Navigation::Reload, NavigationType::reload},
        {EnginePage::Navigation::Other, NavigationType::other}};
    for (const auto& [navigation, type] : kinds) {
        static_cast<void>(page.mayNavigate(url, static_cast<int>(navigation)));
        EXPECT_EQ(delegate.asked.type, type);
    }
    static_cast<void>(page.mayNavigate(QUrl(), 0));
    EXPECT_FALSE(delegate.asked.address);
}

TEST_F(EnginePageTest, tells_how_a_load_has_ended) {
    tell(EnginePage::Load::Succeeded);
    tell(EnginePage::Load::Stopped);
    tell(EnginePage::Load::Failed, -3, u"aborted"_s);
    tell(EnginePage::Load::Failed, -2, u"Odd"_s);
    EXPECT_EQ(delegate.log, (QStringList{u"finished"_s, u"failed -999"_s, u"failed at first -999 cancelled"_s,
                                         u"failed at first -2 Odd"_s}));
}

TEST_F(EnginePageTest, takes_the_server_s_own_page_about_an_error_for_a_page) {
    tell(EnginePage::Load::Failed, 404, u"Not Found"_s);
    EXPECT_EQ(delegate.log, QStringList{u"finished"_s});
}

TEST_F(EnginePageTest, gives_up_when_nothing_arrives_for_a_minute) {
    load();
    scheduler.advance(59);
    page.valueChanged(EnginePage::Value::EstimatedProgress);
    scheduler.advance(59);
    EXPECT_TRUE(delegate.log.isEmpty());
    scheduler.advance(1);
    EXPECT_EQ(engine.log, QStringList{u"stop"_s});
    EXPECT_EQ(delegate.log, QStringList{u"failed at first -1001 The request timed out."_s});
    // That the engine has stopped is no news.
    tell(EnginePage::Load::Stopped);
    EXPECT_EQ(delegate.log.size(), 1);
}

TEST_F(EnginePageTest, waits_no_longer_once_a_load_has_ended) {
    load();
    tell(EnginePage::Load::Succeeded);
    EXPECT_EQ(scheduler.timers(), 0U);
}

TEST_F(EnginePageTest, tells_of_a_crash_when_the_engine_has_come_to_rest) {
    page.processTerminated();
    EXPECT_TRUE(delegate.log.isEmpty());
    scheduler.runPending();
    EXPECT_EQ(delegate.log, QStringList{u"terminated"_s});
}

TEST_F(EnginePageTest, passes_on_what_a_page_asks_for) {
    QSignalSpy answers(&page, &EnginePage::dialogAnswered);
    page.newWindowRequested(QUrl(u"https://example.com/pop"_s));
    page.newWindowRequested(QUrl());
    page.dialogRequested(1, static_cast<int>(EnginePage::Dialog::Alert), u"A"_s, {});
    page.dialogRequested(2, static_cast<int>(EnginePage::Dialog::Confirm), u"B"_s, {});
    page.dialogRequested(3, static_cast<int>(EnginePage::Dialog::Prompt), u"C"_s, u"text"_s);
    page.dialogRequested(4, static_cast<int>(EnginePage::Dialog::BeforeUnload), u"D"_s, {});
    EXPECT_EQ(delegate.log, (QStringList{u"window https://example.com/pop"_s, u"window of nothing"_s, u"alert A"_s,
                                         u"confirm B"_s, u"prompt C"_s}));
    ASSERT_EQ(answers.count(), 4);
    EXPECT_EQ(answers[0], (QVariantList{1, true, QString()}));
    EXPECT_EQ(answers[1], (QVariantList{2, false, QString()}));
    EXPECT_EQ(answers[2], (QVariantList{3, true, u"text!"_s}));
    EXPECT_EQ(answers[3], (QVariantList{4, true, QString()}));
}

TEST_F(EnginePageTest, answers_dialogs_for_a_page_that_nobody_looks_after) {
    page.setUIDelegate(nullptr);
    QSignalSpy answers(&page, &EnginePage::dialogAnswered);
    page.dialogRequested(1, static_cast<int>(EnginePage::Dialog::Confirm), u"B"_s, {});
    ASSERT_EQ(answers.count(), 1);
    EXPECT_EQ(answers[0], (QVariantList{1, false, QString()}));
}

TEST_F(EnginePageTest, keeps_its_settings_for_the_view) {
    QSignalSpy changes(&page, &EnginePage::settingsChanged);
    page.setCustomUserAgent(u"Agent"_s);
    page.setElementFullScreenEnabled(true);
    page.setAllowsBackForwardNavigationGestures(true);
    EXPECT_EQ(page.customUserAgent(), u"Agent"_s);
    EXPECT_TRUE(page.isFullScreenEnabled());
    EXPECT_TRUE(page.allowsGestures());
    EXPECT_EQ(changes.count(), 3);
}

}  // namespace wrapio

#include "EnginePageTest.moc"
