#include "EditorSheetFixture.h"

#include <QSignalSpy>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using EditorSheetViewModelTest = EditorSheetFixture;

AppTemplate mailTemplate() {
    AppTemplate chosen;
    chosen.name = u"Web Mail"_s;
    chosen.url = u"https://webmail.example.com/"_s;
    return chosen;
}

}  // namespace

TEST_F(EditorSheetViewModelTest, fills_the_form_with_the_record_in_edit_mode) {
    openEdit(records[1]);
    EXPECT_EQ(form().appNameInput(), u"News"_s);
    EXPECT_EQ(form().urlInput(), u"https://news.example.com/"_s);
    EXPECT_TRUE(form().isValidURL());
    EXPECT_EQ(store->selectedAppId(), records[1].id);
    EXPECT_EQ(sheet->modeForBindings(), EditorSheetViewModel::Mode::Edit);
    EXPECT_FALSE(sheet->isNew());
}

TEST_F(EditorSheetViewModelTest, starts_empty_with_a_record_of_its_own_in_create_mode) {
    openNew();
    EXPECT_EQ(form().appNameInput(), QString());
    EXPECT_EQ(form().urlInput(), QString());
    EXPECT_EQ(store->configurations().size(), 3U);
    EXPECT_EQ(store->selectedAppId(), sheet->record()->id);
    EXPECT_EQ(sheet->modeForBindings(), EditorSheetViewModel::Mode::Create);
    EXPECT_TRUE(sheet->isNew());
}

TEST_F(EditorSheetViewModelTest, never_loads_the_record_in_create_or_template_mode) {
    makeServicesOnce();
    AppConfiguration draft = store->createApp();
    draft.appName = u"From the store"_s;
    draft.customCSS = u"a{}"_s;
    store->updateConfiguration(draft);
    open({.mode = ConfigurationMode::create, .appId = draft.id});
    EXPECT_EQ(form().appNameInput(), QString());
    EXPECT_EQ(form().customCSS(), QString());
    sheet->save();
    open({.mode = ConfigurationMode::template_, .appId = records[0].id, .appTemplate = mailTemplate(), .isNew = false});
    EXPECT_EQ(form().appNameInput(), u"Web Mail"_s);
    EXPECT_EQ(form().customCSS(), QString());
    EXPECT_EQ(sheet->modeForBindings(), EditorSheetViewModel::Mode::Template);
}

TEST_F(EditorSheetViewModelTest, validates_the_address_with_every_change) {
    openNew();
    form().setUrlInput(u"localhost"_s);
    EXPECT_EQ(form().urlError(), u"Please enter a valid URL"_s);
    form().setUrlInput(u"example.com"_s);
    EXPECT_TRUE(form().isValidURL());
    form().setUrlInput(QString());
    EXPECT_EQ(form().urlError(), std::nullopt);
}

TEST_F(EditorSheetViewModelTest, validates_at_once_and_sets_the_developer_icon_when_developer_mode_is_switched_on) {
    openNew();
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::blue);
    form().setUrlInput(u"localhost:3000"_s);
    ASSERT_FALSE(form().isValidURL());
    form().setDevMode(true);
    EXPECT_TRUE(form().isValidURL());
    ASSERT_TRUE(form().fetchedIcon());
    EXPECT_EQ(form().fetchedIcon()->pixelColor(0, 0), QColor(Qt::blue));
    form().setDevMode(false);
    EXPECT_FALSE(form().isValidURL());
    EXPECT_TRUE(form().fetchedIcon());
}

TEST_F(EditorSheetViewModelTest, keeps_an_icon_when_developer_mode_is_switched_on) {
    makeServicesOnce();
    favicons.saveIcon(plainImage(32, 32, Qt::green), records[0].id);
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::blue);
    openEdit(records[0]);
    form().setDevMode(true);
    EXPECT_EQ(form().fetchedIcon()->pixelColor(0, 0), QColor(Qt::green));
}

TEST_F(EditorSheetViewModelTest, does_not_touch_the_icon_when_it_loads_an_app_in_developer_mode) {
    records[0].isDevMode = true;
    records[0].configuredURL = WebAddress::parse(u"http://localhost:3000"_s);
    makeServicesOnce();
    favicons.saveIcon(plainImage(32, 32, Qt::green), records[0].id);
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::blue);
    openEdit(records[0]);
    EXPECT_EQ(form().fetchedIcon()->pixelColor(0, 0), QColor(Qt::green));
    openEdit(records[1]);
    EXPECT_FALSE(favicons.loadSavedIcon(records[1].id));
}

TEST_F(EditorSheetViewModelTest, saves_the_record_and_makes_its_bundle_at_once) {
    openNew();
    const QUuid id = sheet->record()->id;
    form().setUrlInput(u"chat.example.com"_s);
    form().setAppNameInput(u"Chat"_s);
    EXPECT_TRUE(sheet->save());
    EXPECT_TRUE(hasBundle(u"Chat.app"_s));
    EXPECT_EQ(store->find(id)->runnerVersion, u"1.4.0"_s);
    EXPECT_EQ(dismissals, 1);
    EXPECT_EQ(sheet->errorData(), std::nullopt);
    sheet.reset();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s, u"Chat"_s}));
}

TEST_F(EditorSheetViewModelTest, stays_open_in_every_mode_when_the_form_cannot_be_saved) {
    const auto staysOpen = [this] {
        form().setUrlInput(u"localhost"_s);
        const auto before = store->configurations();
        EXPECT_FALSE(sheet->save());
        EXPECT_EQ(dismissals, 0);
        EXPECT_EQ(store->configurations(), before);
        EXPECT_EQ(sheet->errorData(), std::nullopt);
    };
    openNew();
    staysOpen();
    openEdit(records[0]);
    staysOpen();
    openTemplate(mailTemplate());
    staysOpen();
}

TEST_F(EditorSheetViewModelTest, shows_generation_failed_whatever_the_cause_and_stays) {
    openEdit(records[0]);
    QSignalSpy signalled(sheet.get(), &EditorSheetViewModel::errorDataChanged);
    failGeneration();
    form().setCustomCSS(u"a{}"_s);
    EXPECT_FALSE(sheet->save());
    ASSERT_TRUE(sheet->errorData());
    EXPECT_EQ(sheet->errorData()->title, u"Generation Failed"_s);
    EXPECT_EQ(sheet->errorData()->message, u"Could not create the app bundle. Check if you have enough disk space."_s);
    EXPECT_TRUE(sheet->errorData()->error->as<FileError>());
    EXPECT_FALSE(sheet->errorData()->isRecoverable());
    EXPECT_EQ(store->find(records[0].id)->customCSS, u"a{}"_s);
    EXPECT_EQ(dismissals, 0);
    EXPECT_EQ(signalled.count(), 1);
    const QUuid first = sheet->errorData()->id;
    EXPECT_FALSE(sheet->save());
    EXPECT_NE(sheet->errorData()->id, first);
    sheet->dismissError();
    EXPECT_FALSE(sheet->errorDataVariant().isValid());
    files.fault = nullptr;
    EXPECT_TRUE(sheet->save());
    EXPECT_EQ(dismissals, 1);
}

TEST_F(EditorSheetViewModelTest, gives_the_same_message_when_no_template_is_there) {
    openEdit(records[0]);
    resources.paths.clear();
    EXPECT_FALSE(sheet->save());
    EXPECT_EQ(sheet->errorData()->message, u"Could not create the app bundle. Check if you have enough disk space."_s);
    EXPECT_FALSE(sheet->errorData()->details().isEmpty());
}

TEST_F(EditorSheetViewModelTest, leaves_no_record_and_no_icon_when_a_new_app_is_cancelled) {
    makeServicesOnce();
    store->selectApp(records[1].id);
    openNew();
    const QUuid id = sheet->record()->id;
    form().uploadCustomIcon();
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(32, 32), "png")));
    ASSERT_TRUE(favicons.loadSavedIcon(id));
    sheet->cancel();
    EXPECT_EQ(dismissals, 1);
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
    EXPECT_EQ(store->selectedAppId(), records[1].id);
    EXPECT_FALSE(favicons.loadSavedIcon(id));
}

TEST_F(EditorSheetViewModelTest, leaves_nothing_when_a_template_is_cancelled_not_even_after_a_failed_generation) {
    openTemplate(mailTemplate());
    failGeneration();
    ASSERT_FALSE(sheet->save());
    ASSERT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s, u"Web Mail"_s}));
    sheet->cancel();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
    EXPECT_FALSE(hasBundle(u"Web Mail.app"_s));
}

TEST_F(EditorSheetViewModelTest, leaves_the_bundle_of_another_app_of_that_name_when_a_draft_is_cancelled) {
    makeServicesOnce();
    makeBundles();
    AppTemplate same = mailTemplate();
    same.name = u"Mail"_s;
    openTemplate(same);
    AppConfiguration draft = *sheet->record();
    draft.appName = u"Mail"_s;
    store->updateConfiguration(draft);
    sheet->cancel();
    EXPECT_TRUE(hasBundle(u"Mail.app"_s));
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
}

TEST_F(EditorSheetViewModelTest, takes_a_draft_back_when_it_goes_away_unfinished) {
    openNew();
    ASSERT_EQ(store->configurations().size(), 3U);
    sheet.reset();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
    EXPECT_EQ(stored().size(), 2U);
}

TEST_F(EditorSheetViewModelTest, does_not_write_a_fetched_icon_for_a_cancelled_app) {
    openNew();
    const QUuid id = sheet->record()->id;
    http.responses[u"https://chat.example.com/apple-touch-icon.png"_s] = {200, u"image/png"_s,
                                                                          fileOf(plainImage(32, 32), "png")};
    form().setUrlInput(u"chat.example.com"_s);
    form().fetchFavicon();
    sheet->cancel();
    sheet.reset();
    http.deliverAll();
    EXPECT_FALSE(favicons.loadSavedIcon(id));
}

TEST_F(EditorSheetViewModelTest, changes_nothing_when_an_edit_is_cancelled) {
    openEdit(records[0]);
    form().setAppNameInput(u"Other"_s);
    sheet->cancel();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
    EXPECT_EQ(dismissals, 1);
    EXPECT_FALSE(sheet->save());
}

TEST_F(EditorSheetViewModelTest, knows_that_its_app_does_not_exist) {
    AppConfiguration unknown = app(u"Gone"_s);
    openEdit(unknown);
    EXPECT_TRUE(sheet->isAppMissing());
    EXPECT_EQ(form().appNameInput(), QString());
    EXPECT_FALSE(sheet->save());
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
}

TEST_F(EditorSheetViewModelTest, does_not_write_into_another_app_when_its_own_is_removed_meanwhile) {
    openEdit(records[0]);
    QSignalSpy missing(sheet.get(), &EditorSheetViewModel::isAppMissingChanged);
    form().setAppNameInput(u"Changed"_s);
    store->removeApp(records[0].id);
    EXPECT_TRUE(sheet->isAppMissing());
    EXPECT_EQ(missing.count(), 1);
    EXPECT_FALSE(sheet->save());
    EXPECT_EQ(names(), QStringList{u"News"_s});
    sheet->removeOnlyThisApp();
    EXPECT_EQ(removed, QStringList());
}

TEST_F(EditorSheetViewModelTest, works_on_its_own_app_when_another_is_selected_meanwhile) {
    openEdit(records[0]);
    store->selectApp(records[1].id);
    scheduler.runPending();
    EXPECT_EQ(store->selectedAppId(), records[0].id);
    store->selectApp(records[1].id);
    form().setAppNameInput(u"Post"_s);
    EXPECT_TRUE(sheet->save());
    EXPECT_EQ(names(), (QStringList{u"Post"_s, u"News"_s}));
}

TEST_F(EditorSheetViewModelTest, applies_a_quick_start_template_by_its_stable_id) {
    openNew();
    sheet->applyTemplate(u"localhost-dev"_s);
    EXPECT_EQ(form().appNameInput(), u"Localhost Dev Server"_s);
    EXPECT_TRUE(form().isDevMode());
    EXPECT_TRUE(form().isValidURL());
    sheet->applyTemplate(u"unknown"_s);
    EXPECT_EQ(form().appNameInput(), u"Localhost Dev Server"_s);
}

}  // namespace wrapio
