#include "Models/AppConfiguration.h"

#include "Fakes/PrintQt.h"

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

AppConfiguration named(const QString& name) {
    AppConfiguration record;
    record.id = QUuid(u"3F2A9C01-5D0F-4C51-9A57-3E1F6B1D2A40"_s);
    record.appName = name;
    return record;
}

AppConfiguration addressed(const QString& address) {
    AppConfiguration record;
    record.appName = u""_s;
    record.configuredURL = WebAddress::parse(address);
    return record;
}

}  // namespace

TEST(AppConfiguration, has_exactly_the_stated_values_when_new) {
    const AppConfiguration record;
    EXPECT_FALSE(record.id.isNull());
    EXPECT_FALSE(record.configuredURL || record.appName || record.lastVisitedURL || record.runnerVersion);
    EXPECT_EQ(record.iconSource, IconSource::default_);
    EXPECT_NEAR(record.lastUpdated.secondsSinceReference, Timestamp::now().secondsSinceReference, 5);
    EXPECT_FALSE(record.customUserAgent || record.customCSS || record.customJS || record.themeColor);
    EXPECT_TRUE(record.allowedHosts.empty());
    EXPECT_TRUE(record.badgeEnabled);
    EXPECT_EQ(record.jsInjectionTime, JSInjectionTime::documentEnd);
    EXPECT_FALSE(record.themeOpacity || record.themeBorderEnabled || record.isDevMode || record.sortOrder);
}

TEST(AppConfiguration, takes_its_display_name_from_the_second_to_last_label_of_the_host) {
    EXPECT_EQ(addressed(u"https://w.shop.net"_s).displayName(), u"Shop"_s);
    EXPECT_EQ(addressed(u"https://shop.net/a"_s).displayName(), u"Shop"_s);
}

TEST(AppConfiguration, takes_its_display_name_from_a_host_of_one_label) {
    EXPECT_EQ(addressed(u"http://localhost:3000"_s).displayName(), u"Localhost"_s);
}

TEST(AppConfiguration, keeps_empty_labels_of_the_host) {
    EXPECT_EQ(addressed(u"https://shop."_s).displayName(), u"Shop"_s);
}

TEST(AppConfiguration, capitalises_word_by_word) {
    EXPECT_EQ(addressed(u"https://MY-big-SHOP.net"_s).displayName(), u"My-Big-Shop"_s);
}

TEST(AppConfiguration, is_called_Wrapio_without_a_host) {
    EXPECT_EQ(addressed(u"mailto:a@b.c"_s).displayName(), u"Wrapio"_s);
    EXPECT_EQ(AppConfiguration().displayName(), u"Wrapio"_s);
}

TEST(AppConfiguration, shows_a_typed_name_with_its_blanks) {
    const AppConfiguration record = named(u"  Mail  "_s);
    EXPECT_EQ(record.displayName(), u"  Mail  "_s);
    EXPECT_EQ(record.bundleIdentifier(), u"com.wrapio.generated.--mail---3f2a9c01"_s);
}

TEST(AppConfiguration, makes_its_bundle_identifier_from_name_and_id) {
    EXPECT_EQ(named(u"My Mail!"_s).bundleIdentifier(), u"com.wrapio.generated.my-mail-3f2a9c01"_s);
}

TEST(AppConfiguration, keeps_twenty_characters_of_a_name_of_thirty_letters) {
    const QString identifier = named(QString(30, u'A')).bundleIdentifier();
    EXPECT_EQ(identifier, u"com.wrapio.generated."_s + QString(20, u'a') + u"-3f2a9c01"_s);
}

TEST(AppConfiguration, counts_the_twenty_characters_after_cleaning) {
    EXPECT_EQ(named(u"é!"_s.repeated(15) + QString(25, u'b')).bundleIdentifier(),
              u"com.wrapio.generated."_s + QString(20, u'b') + u"-3f2a9c01"_s);
}

TEST(AppConfiguration, accepts_an_empty_name_part) {
    EXPECT_EQ(named(u"Почта 📬"_s).bundleIdentifier(), u"com.wrapio.generated.--3f2a9c01"_s);
    EXPECT_EQ(named(u"📬"_s).bundleIdentifier(), u"com.wrapio.generated.-3f2a9c01"_s);
}

}  // namespace wrapio
