#include "CommandLine/AppLookup.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

AppConfiguration app(const QString& id, const QString& name) {
    AppConfiguration config;
    config.id = QUuid(id);
    config.appName = name;
    return config;
}

const std::vector<AppConfiguration> apps = {
    app(u"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40"_s, u"Mail"_s),
    app(u"3F2A9C02-5D0F-4C51-9A57-3E1F6B1D2A40"_s, u"News"_s),
    app(u"AAAAAAAA-5D0F-4C51-9A57-3E1F6B1D2A40"_s, u"News"_s),
    app(u"BBBBBBBB-5D0F-4C51-9A57-3E1F6B1D2A40"_s, u"3f2a9c01"_s),
};

}  // namespace

TEST(AppLookup, finds_an_app_by_its_full_id_in_any_case) {
    EXPECT_EQ(findApp(apps, u"3f2a9c02-5d0f-4c51-9a57-3e1f6b1d2a40"_s)->displayName(), u"News"_s);
}

TEST(AppLookup, finds_an_app_by_a_unique_beginning_of_four_characters) {
    EXPECT_EQ(findApp(apps, u"aaaa"_s)->id, apps[2].id);
    EXPECT_EQ(findApp(apps, u"aaa"_s).error().status, ExitStatus::noSuchApp);
}

TEST(AppLookup, finds_an_app_by_its_display_name) {
    EXPECT_EQ(findApp(apps, u"Mail"_s)->id, apps[0].id);
}

TEST(AppLookup, knows_no_app_of_that_name) {
    const auto found = findApp(apps, u"mail"_s);
    ASSERT_FALSE(found);
    EXPECT_EQ(found.error().status, ExitStatus::noSuchApp);
    EXPECT_EQ(findApp({}, u"x"_s).error().status, ExitStatus::noSuchApp);
}

TEST(AppLookup, refuses_to_guess_between_several_apps) {
    EXPECT_EQ(findApp(apps, u"News"_s).error().status, ExitStatus::severalAppsMatch);
    EXPECT_EQ(findApp(apps, u"3F2A"_s).error().status, ExitStatus::severalAppsMatch);
    EXPECT_EQ(findApp(apps, u"3f2a9c01"_s).error().status, ExitStatus::severalAppsMatch);
}

}  // namespace wrapio
