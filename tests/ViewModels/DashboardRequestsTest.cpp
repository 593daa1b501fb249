#include "DashboardFixture.h"

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using DashboardRequestsTest = DashboardFixture;

AppTemplate mailTemplate() {
    AppTemplate chosen;
    chosen.name = u"Web Mail"_s;
    chosen.url = u"webmail.example.com"_s;
    chosen.iconAssetName = u"template-mail"_s;
    return chosen;
}

WebAddress address(const QString& text) {
    return *WebAddress::parse(text);
}

WrapioCreateRequest createRequest(const QString& url, const std::optional<QString>& title = std::nullopt) {
    return {address(url), title};
}

WrapioImportSessionRequest sessionRequest(const QString& url, const std::optional<QString>& source = std::nullopt) {
    return {address(url), source};
}

}  // namespace

TEST_F(DashboardRequestsTest, makes_a_record_of_a_template_and_opens_the_editor_for_it) {
    makeDashboard({app(u"Mail"_s)});
    resources.images[u"template-mail"_s] = plainImage(32, 32, Qt::yellow);
    dashboard->createFromTemplate(mailTemplate());
    const AppConfiguration created = record(1);
    EXPECT_EQ(created.configuredURL->absoluteString(), u"https://webmail.example.com"_s);
    EXPECT_EQ(created.appName, u"Web Mail"_s);
    EXPECT_FALSE(created.isDevMode);
    EXPECT_EQ(created.iconSource, IconSource::favicon);
    EXPECT_EQ(favicons.loadSavedIcon(created.id)->pixelColor(0, 0), QColor(Qt::yellow));
    ASSERT_TRUE(dashboard->editingContext());
    EXPECT_EQ(dashboard->editingContext()->appId, created.id);
    EXPECT_EQ(dashboard->editingContext()->mode, ConfigurationMode::template_);
    EXPECT_EQ(dashboard->editor()->configuration().appNameInput(), u"Web Mail"_s);
    EXPECT_TRUE(dashboard->editor()->save()) << dashboard->editor()->errorData()->details().toStdString();
    EXPECT_TRUE(hasBundle(u"Web Mail.app"_s));
}

TEST_F(DashboardRequestsTest, takes_developer_mode_and_a_local_address_from_a_template) {
    makeDashboard();
    dashboard->createFromTemplate(u"localhost-dev"_s);
    EXPECT_EQ(record(0).configuredURL->absoluteString(), u"http://localhost:3000"_s);
    EXPECT_TRUE(record(0).isDevMode);
    EXPECT_EQ(record(0).iconSource, IconSource::default_);
    EXPECT_TRUE(dashboard->editor()->configuration().isValidURL());
}

TEST_F(DashboardRequestsTest, stores_no_address_that_is_not_acceptable) {
    makeDashboard();
    AppTemplate local = mailTemplate();
    local.url = u"localhost:3000"_s;
    dashboard->createFromTemplate(local);
    EXPECT_EQ(record(0).configuredURL, std::nullopt);
    EXPECT_EQ(record(0).appName, u"Web Mail"_s);
}

TEST_F(DashboardRequestsTest, leaves_no_record_icon_or_bundle_of_a_cancelled_template) {
    makeDashboard({app(u"Mail"_s), app(u"News"_s)});
    store->selectApp(record(1).id);
    resources.images[u"template-mail"_s] = plainImage(32, 32);
    dashboard->createFromTemplate(mailTemplate());
    const QUuid id = record(2).id;
    dashboard->editor()->cancel();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
    EXPECT_FALSE(favicons.loadSavedIcon(id));
    EXPECT_EQ(store->selectedAppId(), record(1).id);
    EXPECT_EQ(dashboard->editor(), nullptr);
}

TEST_F(DashboardRequestsTest, makes_a_record_of_a_request_and_opens_the_editor_with_its_values) {
    makeDashboard({app(u"Mail"_s)});
    dashboard->createFromURLRequest(createRequest(u"http://10.0.0.1/x"_s, u"  My Page \n"_s));
    const AppConfiguration created = record(1);
    EXPECT_EQ(store->selectedAppId(), created.id);
    EXPECT_EQ(created.configuredURL->absoluteString(), u"http://10.0.0.1/x"_s);
    EXPECT_EQ(created.appName, u"My Page"_s);
    ASSERT_TRUE(dashboard->editor());
    EXPECT_EQ(dashboard->editor()->configuration().urlInput(), u"http://10.0.0.1/x"_s);
    EXPECT_EQ(dashboard->editor()->configuration().appNameInput(), u"My Page"_s);
    EXPECT_EQ(dashboard->editor()->configuration().urlError(), u"Please enter a valid URL"_s);
    EXPECT_TRUE(dashboard->editor()->isNew());
    dashboard->editor()->cancel();
    EXPECT_EQ(names(), QStringList{u"Mail"_s});
}

TEST_F(DashboardRequestsTest, names_an_app_by_its_host_when_a_request_brings_no_title) {
    makeDashboard();
    for (const std::optional<QString>& title : {std::optional<QString>(), std::optional(u"  "_s)}) {
        dashboard->createFromURLRequest(createRequest(u"https://www.example.com/"_s, title));
        EXPECT_EQ(record(0).appName, std::nullopt);
        EXPECT_EQ(record(0).displayName(), u"Example"_s);
        dashboard->closeEditor();
        scheduler.runPending();
    }
}

TEST_F(DashboardRequestsTest, lets_the_latest_request_wait_while_another_app_is_being_edited) {
    makeDashboard({app(u"Mail"_s)});
    dashboard->editApp(record(0));
    dashboard->editor()->configuration().setAppNameInput(u"Typed"_s);
    dashboard->createFromURLRequest(createRequest(u"https://one.example/"_s));
    dashboard->createFromURLRequest(createRequest(u"https://two.example/"_s, u"Two"_s));
    EXPECT_EQ(dashboard->appCount(), 1);
    EXPECT_TRUE(dashboard->editor()->save());
    EXPECT_EQ(names(), QStringList{u"Typed"_s});
    scheduler.runPending();
    EXPECT_EQ(names(), (QStringList{u"Typed"_s, u"Two"_s}));
    ASSERT_TRUE(dashboard->editor());
    EXPECT_EQ(dashboard->editor()->configuration().urlInput(), u"https://two.example/"_s);
    dashboard->closeEditor();
    scheduler.runPending();
    EXPECT_EQ(dashboard->editor(), nullptr);
}

TEST_F(DashboardRequestsTest, forgets_a_waiting_request_when_it_goes_away) {
    makeDashboard({app(u"Mail"_s)});
    dashboard->editApp(record(0));
    dashboard->createFromURLRequest(createRequest(u"https://one.example/"_s));
    dashboard->closeEditor();
    dashboard.reset();
    scheduler.runPending();
    EXPECT_EQ(names(), QStringList{u"Mail"_s});
}

TEST_F(DashboardRequestsTest, finds_the_app_of_a_site_by_its_host) {
    makeDashboard({AppConfiguration(), app(u"Other"_s, u"https://notexample.com/"_s),
                   app(u"Site"_s, u"https://www.Example.com/start"_s), app(u"Later"_s, u"https://example.com/"_s)});
    struct Row {
        const char* description;
        QString url;
        QString expected;
    };
    const std::vector<Row> rows = {
        {"the same host", u"https://www.example.com"_s, u"Site"_s},
        {"without www", u"https://example.com/path"_s, u"Site"_s},
        {"in capitals", u"https://EXAMPLE.COM"_s, u"Site"_s},
        {"a subdomain of the record's host", u"https://mail.example.com"_s, u"Site"_s},
        {"the record's host is a subdomain", u"https://com"_s, u"Other"_s},
        {"a host that only ends alike", u"https://myexample.com"_s, QString()},
        {"another host", u"https://elsewhere.org"_s, QString()},
        {"no host", u"file:///x"_s, QString()},
        {"nothing but www", u"https://www."_s, QString()},
    };
    for (const Row& row : rows) {
        const auto found = dashboard->findConfiguration(sessionRequest(row.url));
        EXPECT_EQ(found ? found->displayName() : QString(), row.expected) << row.description;
    }
}

TEST_F(DashboardRequestsTest, shows_no_app_found_for_an_unknown_site) {
    makeDashboard({app(u"Mail"_s)});
    dashboard->importSessionFromURLRequest(sessionRequest(u"https://Unknown.example/"_s));
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_EQ(dashboard->errorData()->title, u"No App Found"_s);
    EXPECT_EQ(dashboard->errorData()->message,
              u"Create an Wrapio app for Unknown.example before importing a browser session."_s);
    EXPECT_FALSE(dashboard->errorData()->isRecoverable());
    EXPECT_EQ(dashboard->errorData()->details(), QString());
    dashboard->importSessionFromURLRequest(sessionRequest(u"file:///x"_s));
    EXPECT_EQ(dashboard->errorData()->message,
              u"Create an Wrapio app for this site before importing a browser session."_s);
}

TEST_F(DashboardRequestsTest, selects_the_app_and_opens_its_session_import) {
    makeDashboard({app(u"Mail"_s, u"https://mail.example.com"_s), app(u"News"_s, u"https://news.example.org"_s)});
    makeBundles();
    dashboard->importSessionFromURLRequest(sessionRequest(u"https://www.news.example.org"_s, u"firefox"_s));
    EXPECT_EQ(store->selectedAppId(), record(1).id);
    EXPECT_EQ(workspace.log.last(), u"open wrapio-"_s + idOf(1).toLower() + u"://import-session?source=firefox"_s);
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardRequestsTest, makes_a_missing_bundle_before_it_opens_the_session_import) {
    makeDashboard({app(u"News"_s, u"https://news.example.org"_s)});
    dashboard->importSessionFromURLRequest(sessionRequest(u"https://news.example.org"_s));
    EXPECT_TRUE(hasBundle(u"News.app"_s));
    EXPECT_EQ(workspace.log.filter(u"import-session"_s).size(), 1);
}

TEST_F(DashboardRequestsTest, tries_once_more_after_app_not_found_and_shows_what_remains) {
    // The generator drops the dots of this name, so that the app is never found where it is looked for.
    makeDashboard({app(u"v1.0"_s, u"https://news.example.org"_s)});
    workspace.openAnswers = {false, false, false, false};
    dashboard->importSessionFromURLRequest(sessionRequest(u"https://news.example.org"_s));
    EXPECT_EQ(workspace.log.filter(u"import-session"_s).size(), 4);
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_EQ(dashboard->errorData()->title, u"Launch Failed"_s);
    EXPECT_TRUE(dashboard->errorData()->error->as<AppLifecycleError>());
}

TEST_F(DashboardRequestsTest, succeeds_when_the_second_try_does) {
    makeDashboard({app(u"v1.0"_s, u"https://news.example.org"_s)});
    workspace.openAnswers = {false, false};
    dashboard->importSessionFromURLRequest(sessionRequest(u"https://news.example.org"_s));
    EXPECT_EQ(workspace.log.filter(u"import-session"_s).size(), 3);
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
}

TEST_F(DashboardRequestsTest, shows_any_other_failure_at_once) {
    makeDashboard({app(u"News"_s, u"https://news.example.org"_s)});
    failGeneration();
    dashboard->importSessionFromURLRequest(sessionRequest(u"https://news.example.org"_s));
    ASSERT_TRUE(dashboard->errorData());
    EXPECT_EQ(dashboard->errorData()->title, u"Launch Failed"_s);
    EXPECT_TRUE(dashboard->errorData()->error->as<FileError>());
    EXPECT_TRUE(workspace.log.filter(u"import-session"_s).empty());
}

}  // namespace wrapio
