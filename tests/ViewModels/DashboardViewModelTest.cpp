#include "ViewModels/DashboardViewModel.h"

#include "DashboardFixture.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using DashboardViewModelTest = DashboardFixture;

std::vector<AppConfiguration> someApps() {
    return {DashboardFixture::app(u"Mail"_s, u"https://post.example.com/"_s),
            DashboardFixture::app(u"News"_s, u"https://mail.example.org/"_s),
            DashboardFixture::app(u"Chat"_s, u"https://chat.example.net/"_s)};
}

QVariant gadgetValue(const QVariant& gadget, const char* name) {
    const QMetaObject* const meta = gadget.metaType().metaObject();
    return meta->property(meta->indexOfProperty(name)).readOnGadget(gadget.constData());
}

}  // namespace

TEST_F(DashboardViewModelTest, shows_the_catalogue_in_its_order) {
    makeDashboard(someApps());
    EXPECT_EQ(shown(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
    EXPECT_EQ(dashboard->appCount(), 3);
    EXPECT_EQ(dashboard->searchText(), QString());
    EXPECT_FALSE(dashboard->isSearchEmpty());
}

TEST_F(DashboardViewModelTest, shows_every_app_when_the_search_is_only_spaces) {
    makeDashboard(someApps());
    dashboard->setSearchText(u"  \n\t "_s);
    EXPECT_EQ(shown().size(), 3);
    EXPECT_EQ(dashboard->filteredConfigurations().size(), 3U);
    EXPECT_FALSE(dashboard->isSearchEmpty());
}

TEST_F(DashboardViewModelTest, finds_an_app_by_its_name_or_its_host_whatever_the_case) {
    makeDashboard(someApps());
    dashboard->setSearchText(u"MAIL"_s);
    EXPECT_EQ(shown(), (QStringList{u"Mail"_s, u"News"_s}));
    EXPECT_EQ(namesOf(dashboard->filteredConfigurations()), (QStringList{u"Mail"_s, u"News"_s}));
    dashboard->setSearchText(u"  chat "_s);
    EXPECT_EQ(shown(), QStringList{u"Chat"_s});
}

TEST_F(DashboardViewModelTest, does_not_search_the_path_of_an_address) {
    makeDashboard({app(u"A"_s, u"https://example.com/mail"_s)});
    dashboard->setSearchText(u"mail"_s);
    EXPECT_EQ(shown(), QStringList());
    EXPECT_TRUE(dashboard->isSearchEmpty());
    EXPECT_EQ(dashboard->appCount(), 1);
}

TEST_F(DashboardViewModelTest, keeps_the_search_while_the_catalogue_changes) {
    makeDashboard(someApps());
    dashboard->setSearchText(u"mail"_s);
    rename(2, u"Mailing lists"_s);
    EXPECT_EQ(shown(), (QStringList{u"Mail"_s, u"News"_s, u"Mailing lists"_s}));
    store->removeApp(record(0).id);
    EXPECT_EQ(shown(), (QStringList{u"News"_s, u"Mailing lists"_s}));
    dashboard->setSearchText(QString());
    EXPECT_EQ(shown(), (QStringList{u"News"_s, u"Mailing lists"_s}));
}

TEST_F(DashboardViewModelTest, announces_the_search_before_it_changes_and_filters_before_it_signals) {
    makeDashboard(someApps());
    std::vector<std::string> log;
    const auto will = dashboard->searchTextProperty().onWillChange([&](const QString& next) {
        log.push_back("will " + next.toStdString() + " was '" + dashboard->searchText().toStdString() + "' shown " +
                      std::to_string(shown().size()));
    });
    QObject::connect(dashboard.get(), &DashboardViewModel::searchTextChanged, [&] {
        log.push_back("did " + dashboard->searchText().toStdString() + " shown " + std::to_string(shown().size()));
    });
    dashboard->setProperty("searchText", u"chat"_s);
    EXPECT_THAT(log, testing::ElementsAre("will chat was '' shown 3", "did chat shown 1"));
}

TEST_F(DashboardViewModelTest, announces_every_observable_property_before_it_changes) {
    makeDashboard(someApps());
    std::vector<std::string> log;
    const auto note = [&log](const char* name, bool next, bool old) {
        log.push_back(std::string(name) + (next ? " comes" : " goes") + (old ? ", is there" : ", is not there"));
    };
    std::vector<Subscription> subscriptions;
    subscriptions.push_back(dashboard->editingContextProperty().onWillChange(
        [&](const auto& next) { note("context", next.has_value(), dashboard->editingContext().has_value()); }));
    subscriptions.push_back(dashboard->errorDataProperty().onWillChange(
        [&](const auto& next) { note("error", next.has_value(), dashboard->errorData().has_value()); }));
    subscriptions.push_back(dashboard->pendingDeleteConfigProperty().onWillChange(
        [&](const auto& next) { note("pending", next.has_value(), dashboard->pendingDeleteConfig().has_value()); }));
    subscriptions.push_back(dashboard->undoableDeleteProperty().onWillChange(
        [&](const auto& next) { note("undoable", next.has_value(), dashboard->undoableDelete().has_value()); }));
    dashboard->editApp(record(0));
    dashboard->closeEditor();
    dashboard->requestDelete(record(0));
    dashboard->confirmDelete();
    dashboard->dismissError();
    EXPECT_THAT(log, testing::ElementsAre("context comes, is not there", "context goes, is there",
                                          "pending comes, is not there", "pending goes, is there",
                                          "undoable comes, is not there", "error goes, is not there"));
}

TEST_F(DashboardViewModelTest, gives_bindings_every_property_with_its_signal) {
    makeDashboard();
    const QMetaObject& meta = *dashboard->metaObject();
    for (const char* name : {"editingContext", "editor", "errorData", "searchText", "isUpdatingAll", "updateProgress",
                             "pendingDeleteConfig", "undoableDelete", "isExchanging", "exchangeProgress",
                             "isSearchEmpty", "appCount", "outdatedCount"}) {
        const int index = meta.indexOfProperty(name);
        ASSERT_GE(index, 0) << name;
        EXPECT_TRUE(meta.property(index).hasNotifySignal()) << name;
    }
    EXPECT_EQ(dashboard->property("filteredConfigurations").value<AppListModel*>(), dashboard->appList());
    EXPECT_FALSE(dashboard->property("errorData").isValid());
    EXPECT_FALSE(dashboard->property("undoableDelete").isValid());
    EXPECT_FALSE(dashboard->property("pendingDeleteConfig").isValid());
    EXPECT_FALSE(dashboard->property("updateProgress").isValid());
    EXPECT_FALSE(dashboard->property("exchangeProgress").isValid());
    EXPECT_FALSE(dashboard->property("editingContext").isValid());
}

TEST_F(DashboardViewModelTest, gives_bindings_values_whose_fields_they_can_read) {
    makeDashboard(someApps());
    dashboard->requestDelete(idOf(0));
    EXPECT_EQ(gadgetValue(dashboard->property("pendingDeleteConfig"), "displayName").toString(), u"Mail"_s);
    EXPECT_EQ(gadgetValue(dashboard->property("pendingDeleteConfig"), "id").toString(), idOf(0));
    dashboard->confirmDelete();
    EXPECT_EQ(gadgetValue(dashboard->property("undoableDelete"), "displayName").toString(), u"Mail"_s);
    resources.paths.clear();
    dashboard->launchApp(record(0));
    const QVariant error = dashboard->property("errorData");
    EXPECT_EQ(gadgetValue(error, "title").toString(), u"Launch Failed"_s);
    EXPECT_TRUE(gadgetValue(error, "isRecoverable").toBool());
    EXPECT_FALSE(gadgetValue(error, "details").toString().isEmpty());
    dashboard->editApp(idOf(0));
    EXPECT_FALSE(gadgetValue(dashboard->property("editingContext"), "isNew").toBool());
}

TEST_F(DashboardViewModelTest, lists_the_quick_start_templates_for_bindings) {
    makeDashboard();
    QStringList ids;
    for (const QVariant& each : dashboard->templates())
        ids << each.toMap()[u"stableId"_s].toString();
    EXPECT_EQ(ids, (QStringList{u"google-gmail"_s, u"google-calendar"_s, u"youtube"_s, u"localhost-dev"_s}));
    EXPECT_EQ(dashboard->templates().last().toMap()[u"isDevMode"_s], QVariant(true));
}

TEST_F(DashboardViewModelTest, shows_which_apps_run) {
    makeDashboard(someApps());
    workspace.start(makeBundle(u"News.app"_s));
    scheduler.advance(1.0);
    EXPECT_FALSE(at(0, AppListModel::IsRunningRole).toBool());
    EXPECT_TRUE(at(1, AppListModel::IsRunningRole).toBool());
    workspace.running.clear();
    scheduler.advance(1.0);
    EXPECT_FALSE(at(1, AppListModel::IsRunningRole).toBool());
}

TEST_F(DashboardViewModelTest, counts_apps_that_are_older_than_the_template_as_outdated) {
    AppConfiguration unbuilt;
    makeDashboard({app(u"Old"_s, u"https://a.example/"_s, u"1.3.9"_s), app(u"Current"_s),
                   app(u"Newer"_s, u"https://c.example/"_s, u"1.10"_s),
                   app(u"Unknown"_s, u"https://d.example/"_s, std::nullopt), unbuilt});
    EXPECT_EQ(namesOf(dashboard->outdatedApps()), (QStringList{u"Old"_s, u"Unknown"_s}));
    EXPECT_EQ(dashboard->outdatedCount(), 2);
    EXPECT_TRUE(at(0, AppListModel::IsOutdatedRole).toBool());
    EXPECT_FALSE(at(1, AppListModel::IsOutdatedRole).toBool());
}

TEST_F(DashboardViewModelTest, looks_at_the_templates_version_again_when_it_appears) {
    makeDashboard(someApps());
    EXPECT_EQ(dashboard->outdatedCount(), 0);
    makeTemplate(u"1.5.0"_s);
    dashboard->appear();
    EXPECT_EQ(dashboard->outdatedCount(), 3);
}

TEST_F(DashboardViewModelTest, moves_a_dragged_card_to_the_targets_place_at_once) {
    makeDashboard(someApps());
    QSignalSpy moves(dashboard->appList(), &QAbstractItemModel::rowsMoved);
    dashboard->moveApp(idOf(0), idOf(2));
    EXPECT_EQ(names(), (QStringList{u"News"_s, u"Chat"_s, u"Mail"_s}));
    EXPECT_EQ(shown(), names());
    EXPECT_EQ(moves.count(), 1);
}

TEST_F(DashboardViewModelTest, takes_the_targets_place_in_the_catalogue_while_a_search_is_on) {
    makeDashboard(someApps());
    dashboard->setSearchText(u"a"_s);
    ASSERT_EQ(shown(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
    dashboard->setSearchText(u"chat"_s);
    const QString chat = idOf(2);
    dashboard->moveApp(idOf(0), chat);
    EXPECT_EQ(names(), (QStringList{u"News"_s, u"Chat"_s, u"Mail"_s}));
}

TEST_F(DashboardViewModelTest, moves_nothing_over_itself_or_with_an_app_that_is_gone) {
    makeDashboard(someApps());
    const int writes = defaults.writes;
    dashboard->moveApp(idOf(1), idOf(1));
    dashboard->moveApp(canonicalText(QUuid::createUuid()), idOf(1));
    dashboard->moveApp(idOf(1), canonicalText(QUuid::createUuid()));
    dashboard->moveApp(QString(), u"no id"_s);
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
    EXPECT_EQ(defaults.writes, writes);
}

TEST_F(DashboardViewModelTest, opens_the_editor_for_a_new_app_and_leaves_nothing_when_it_is_closed) {
    makeDashboard(someApps());
    QSignalSpy editorChanged(dashboard.get(), &DashboardViewModel::editorChanged);
    dashboard->createNewApp();
    ASSERT_TRUE(dashboard->editingContext());
    EXPECT_EQ(dashboard->editingContext()->mode, ConfigurationMode::create);
    ASSERT_NE(dashboard->editor(), nullptr);
    EXPECT_EQ(editorChanged.count(), 1);
    EXPECT_EQ(dashboard->appCount(), 4);
    dashboard->closeEditor();
    EXPECT_EQ(dashboard->editor(), nullptr);
    EXPECT_EQ(dashboard->editingContext(), std::nullopt);
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
    scheduler.runPending();
}

TEST_F(DashboardViewModelTest, closes_the_editor_when_its_sheet_is_done) {
    makeDashboard(someApps());
    dashboard->createNewApp();
    dashboard->editor()->configuration().setUrlInput(u"wiki.example.com"_s);
    dashboard->editor()->configuration().setAppNameInput(u"Wiki"_s);
    EXPECT_TRUE(dashboard->editor()->save());
    EXPECT_EQ(dashboard->editor(), nullptr);
    scheduler.runPending();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s, u"Wiki"_s}));
    EXPECT_TRUE(hasBundle(u"Wiki.app"_s));
}

TEST_F(DashboardViewModelTest, shows_the_saved_icon_of_the_app_that_is_edited_anew) {
    makeDashboard(someApps());
    dashboard->editApp(idOf(0));
    const QString before = at(0, AppListModel::IconUrlRole).toString();
    dashboard->editor()->configuration().uploadCustomIcon();
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(32, 32), "png")));
    EXPECT_NE(at(0, AppListModel::IconUrlRole).toString(), before);
}

TEST_F(DashboardViewModelTest, ignores_ids_that_are_not_in_the_catalogue) {
    makeDashboard(someApps());
    for (const QString& id : {canonicalText(QUuid::createUuid()), QString(), u"no id"_s}) {
        dashboard->editApp(id);
        dashboard->launchApp(id);
        dashboard->quitApp(id);
        dashboard->restartApp(id);
        dashboard->updateApp(id);
        dashboard->openWebsite(id);
        dashboard->requestDelete(id);
    }
    dashboard->createFromTemplate(u"unknown"_s);
    EXPECT_EQ(dashboard->editingContext(), std::nullopt);
    EXPECT_EQ(dashboard->errorData(), std::nullopt);
    EXPECT_EQ(dashboard->pendingDeleteConfig(), std::nullopt);
    EXPECT_EQ(workspace.log, QStringList());
    EXPECT_EQ(dashboard->appCount(), 3);
}

TEST_F(DashboardViewModelTest, takes_an_unsaved_new_app_back_when_it_goes_away) {
    makeDashboard(someApps());
    dashboard->createNewApp();
    dashboard.reset();
    scheduler.runPending();
    EXPECT_EQ(namesOf(stored()), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
}

}  // namespace wrapio
