#include "Views/Pages/BrowserModel.h"

#include "Pages/PageFixture.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class BrowserModelTest : public PageFixture {
protected:
    BrowserModelTest() {
        configure(u"https://www.example.com/"_s);
        model = std::make_unique<BrowserModel>(services(), address(u"https://www.example.com/"_s), false);
        model->attach(view);
        scheduler.runPending();
    }

    void fail() {
        view.navigation->didFailProvisionalNavigation({urlErrorDomain, -105, u"No such host."_s});
        scheduler.runPending();
    }

    DiagnosticsCapture output;
    std::unique_ptr<BrowserModel> model;
};

}  // namespace

TEST_F(BrowserModelTest, shows_where_the_page_is) {
    EXPECT_EQ(model->address(), u"https://www.example.com/"_s);
    view.show(u"https://docs.example.com/a"_s);
    EXPECT_EQ(model->address(), u"https://docs.example.com/a"_s);
}

TEST_F(BrowserModelTest, mirrors_the_state_of_the_page) {
    view.back = view.forward = view.loading = true;
    view.pageTitle = u"Mail"_s;
    view.progress = 0.25;
    for (const auto* changed : {&view.backs, &view.forwards, &view.loadings, &view.titles, &view.progresses})
        changed->notify();
    scheduler.runPending();
    EXPECT_TRUE(model->canGoBack());
    EXPECT_TRUE(model->canGoForward());
    EXPECT_TRUE(model->isLoading());
    EXPECT_EQ(model->pageTitle(), u"Mail"_s);
    EXPECT_EQ(model->loadProgress(), 0.25);
}

TEST_F(BrowserModelTest, moves_the_page) {
    model->goBack();
    model->goForward();
    model->reload();
    model->stop();
    EXPECT_EQ(view.log, (QStringList{u"back"_s, u"forward"_s, u"reload"_s, u"stop"_s}));
}

TEST_F(BrowserModelTest, goes_to_a_typed_address_whatever_its_site) {
    EXPECT_TRUE(model->open(u"elsewhere.org/a"_s));
    EXPECT_EQ(view.requests.back().address.absoluteString(), u"https://elsewhere.org/a"_s);
}

TEST_F(BrowserModelTest, refuses_what_is_no_acceptable_address) {
    for (const QString& text : {u""_s, u"localhost:3000"_s, u"javascript:alert(1)"_s})
        EXPECT_FALSE(model->open(text)) << text.toStdString();
    EXPECT_EQ(view.requests.size(), 1U);
}

TEST_F(BrowserModelTest, goes_to_a_local_address_in_developer_mode) {
    model = std::make_unique<BrowserModel>(services(), address(u"http://localhost:3000/"_s), true);
    FakePlatformWebView other;
    model->attach(other);
    scheduler.runPending();
    EXPECT_TRUE(model->open(u"localhost:4000"_s));
    model.reset();
    EXPECT_FALSE(other.navigation);
}

TEST_F(BrowserModelTest, loads_the_address_that_failed_once_more) {
    view.show(u"https://www.example.com/away"_s);
    fail();
    EXPECT_TRUE(model->showError());
    EXPECT_EQ(model->errorMessage(), u"No such host."_s);
    EXPECT_EQ(model->errorAddress(), u"https://www.example.com/away"_s);
    model->retry();
    EXPECT_FALSE(model->showError());
    EXPECT_EQ(view.requests.back().address.absoluteString(), u"https://www.example.com/away"_s);
}

TEST_F(BrowserModelTest, reloads_when_the_address_that_failed_is_not_known) {
    view.shown.reset();
    fail();
    EXPECT_EQ(model->errorAddress(), QString());
    model->retry();
    EXPECT_EQ(view.log, QStringList{u"reload"_s});
}

TEST_F(BrowserModelTest, opens_the_page_in_the_default_browser) {
    model->openInDefaultBrowser();
    EXPECT_EQ(workspace.log, QStringList{u"open https://www.example.com/"_s});
}

TEST_F(BrowserModelTest, shows_the_dialogs_of_a_page_one_after_another) {
    QStringList answers;
    view.ui->runJavaScriptAlertPanel(u"First"_s, [&answers] { answers << u"first"_s; });
    view.ui->runJavaScriptTextInputPanel(u"Second"_s, u"Ada"_s, [&answers](const std::optional<QString>& text) {
        answers << text.value_or(u"nothing"_s);
    });
    EXPECT_EQ(model->alert().toMap()[u"messageText"_s].toString(), u"First"_s);
    EXPECT_FALSE(model->alert().toMap()[u"hasField"_s].toBool());
    model->answerAlert(0, {});
    EXPECT_EQ(model->alert().toMap()[u"messageText"_s].toString(), u"Second"_s);
    EXPECT_EQ(model->alert().toMap()[u"field"_s].toString(), u"Ada"_s);
    EXPECT_EQ(model->alert().toMap()[u"buttons"_s].toStringList(), (QStringList{u"OK"_s, u"Cancel"_s}));
    model->answerAlert(0, u"Grace"_s);
    EXPECT_FALSE(model->alert().isValid());
    model->answerAlert(0, {});
    EXPECT_EQ(answers, (QStringList{u"first"_s, u"Grace"_s}));
}

TEST_F(BrowserModelTest, leaves_the_page_alone_once_it_is_gone) {
    view.titles.notify();
    model.reset();
    EXPECT_FALSE(view.navigation);
    EXPECT_FALSE(view.ui);
    scheduler.runPending();
    view.titles.notify();
    view.urls.notify();
    scheduler.runPending();
}

}  // namespace wrapio
