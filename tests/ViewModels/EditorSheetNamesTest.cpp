#include "EditorSheetFixture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using EditorSheetNamesTest = EditorSheetFixture;

}  // namespace

TEST_F(EditorSheetNamesTest, takes_the_old_bundle_away_once_the_app_stands_under_its_new_name) {
    makeServicesOnce();
    makeBundles();
    openEdit(records[0]);
    form().setAppNameInput(u"Post"_s);
    tools.forget();
    ASSERT_TRUE(sheet->save());
    EXPECT_TRUE(hasBundle(u"Post.app"_s));
    EXPECT_FALSE(hasBundle(u"Mail.app"_s));
    EXPECT_TRUE(hasBundle(u"News.app"_s));
    EXPECT_THAT(tools.calls(),
                testing::Contains(RecordingToolRunner::Call{lsregister, {u"-u"_s, bundle(u"Mail.app"_s)}}));
}

TEST_F(EditorSheetNamesTest, leaves_the_old_bundle_while_the_new_one_does_not_stand) {
    makeServicesOnce();
    makeBundles();
    openEdit(records[0]);
    form().setAppNameInput(u"Post"_s);
    failGeneration();
    ASSERT_FALSE(sheet->save());
    EXPECT_TRUE(hasBundle(u"Mail.app"_s));
    files.fault = nullptr;
    ASSERT_TRUE(sheet->save());
    EXPECT_FALSE(hasBundle(u"Mail.app"_s));
    EXPECT_TRUE(hasBundle(u"Post.app"_s));
}

TEST_F(EditorSheetNamesTest, hints_at_another_app_with_the_same_bundle_without_blocking) {
    openNew();
    QSignalSpy hints(sheet.get(), &EditorSheetViewModel::hintsChanged);
    EXPECT_EQ(sheet->bundleHint(), QString());
    form().setUrlInput(u"chat.example.com"_s);
    form().setAppNameInput(u"News"_s);
    EXPECT_TRUE(sheet->bundleHint().contains(u"“News”"_s));
    EXPECT_GT(hints.count(), 0);
    form().setAppNameInput(u"Chat"_s);
    EXPECT_EQ(sheet->bundleHint(), QString());
    form().setAppNameInput(u" News "_s);
    EXPECT_TRUE(sheet->bundleHint().contains(u"“News”"_s));
    EXPECT_TRUE(sheet->save());
}

TEST_F(EditorSheetNamesTest, hints_at_the_name_that_the_address_would_give) {
    openNew();
    store->updateConfiguration([this] {
        AppConfiguration news = records[1];
        news.appName = u"Example"_s;
        return news;
    }());
    form().setUrlInput(u"chat.example.com"_s);
    EXPECT_TRUE(sheet->bundleHint().contains(u"“Example”"_s));
}

TEST_F(EditorSheetNamesTest, does_not_hint_at_the_app_itself) {
    openEdit(records[0]);
    EXPECT_EQ(sheet->bundleHint(), QString());
    EXPECT_EQ(sheet->nameHint(), QString());
    EXPECT_EQ(sheet->safeName(), QString());
}

TEST_F(EditorSheetNamesTest, offers_the_safe_name_where_the_places_of_a_bundle_disagree) {
    openEdit(records[0]);
    form().setAppNameInput(u"Mail: v1.0"_s);
    EXPECT_FALSE(sheet->nameHint().isEmpty());
    EXPECT_EQ(sheet->safeName(), u"Mail v10"_s);
    sheet->takeSafeName();
    EXPECT_EQ(form().appNameInput(), u"Mail v10"_s);
    EXPECT_EQ(sheet->nameHint(), QString());
    sheet->takeSafeName();
    EXPECT_EQ(form().appNameInput(), u"Mail v10"_s);
}

TEST_F(EditorSheetNamesTest, hints_without_an_offer_when_nothing_of_a_name_is_safe) {
    openEdit(records[0]);
    form().setAppNameInput(u"..."_s);
    EXPECT_FALSE(sheet->nameHint().isEmpty());
    EXPECT_EQ(sheet->safeName(), QString());
    sheet->takeSafeName();
    EXPECT_EQ(form().appNameInput(), u"..."_s);
}

TEST_F(EditorSheetNamesTest, tells_whether_removing_takes_other_apps_too) {
    openEdit(records[0]);
    QSignalSpy changed(sheet.get(), &EditorSheetViewModel::removesOtherAppsChanged);
    EXPECT_TRUE(sheet->removesOtherApps());
    store->removeApp(records[1].id);
    EXPECT_FALSE(sheet->removesOtherApps());
    EXPECT_GT(changed.count(), 0);
}

TEST_F(EditorSheetNamesTest, resets_the_whole_catalogue_on_remove_app) {
    makeServicesOnce();
    makeBundles();
    openEdit(records[0]);
    sheet->removeApp();
    EXPECT_EQ(names(), QStringList());
    EXPECT_FALSE(hasBundle(u"Mail.app"_s));
    EXPECT_FALSE(hasBundle(u"News.app"_s));
    EXPECT_EQ(dismissals, 1);
}

TEST_F(EditorSheetNamesTest, hands_only_this_app_over_to_be_deleted_with_undo) {
    openEdit(records[0]);
    sheet->removeOnlyThisApp();
    EXPECT_EQ(removed, QStringList{u"Mail"_s});
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
    EXPECT_EQ(dismissals, 1);
}

TEST_F(EditorSheetNamesTest, takes_removing_a_new_app_for_cancelling_it) {
    openNew();
    sheet->removeApp();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
    openNew();
    sheet->removeOnlyThisApp();
    EXPECT_EQ(names(), (QStringList{u"Mail"_s, u"News"_s}));
    EXPECT_EQ(removed, QStringList());
    EXPECT_EQ(dismissals, 2);
}

}  // namespace wrapio
