#include "ConfigurationFixture.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using ConfigurationSavingTest = ConfigurationFixture;

}  // namespace

TEST_F(ConfigurationSavingTest, writes_every_field_of_the_form_into_the_current_record) {
    makeForm();
    const AppConfiguration before = current();
    form->setUrlInput(u" new.example.com "_s);
    form->setAppNameInput(u"New"_s);
    form->setCustomCSS(u"a{}"_s);
    form->setCustomJS(u"b()"_s);
    form->setJSInjectionTime(JSInjectionTime::documentStart);
    form->setThemeColor(u"#112233"_s);
    form->setThemeOpacity(0.4);
    form->setThemeBorderEnabled(true);
    form->setDevMode(true);
    EXPECT_TRUE(form->saveConfiguration());
    const AppConfiguration after = stored().front();
    EXPECT_EQ(after.configuredURL->absoluteString(), u"http://new.example.com"_s);
    EXPECT_EQ(after.appName, u"New"_s);
    EXPECT_EQ(after.customCSS, u"a{}"_s);
    EXPECT_EQ(after.customJS, u"b()"_s);
    EXPECT_EQ(after.jsInjectionTime, JSInjectionTime::documentStart);
    EXPECT_EQ(after.themeColor, u"#112233"_s);
    EXPECT_EQ(after.themeOpacity, 0.4);
    EXPECT_TRUE(after.themeBorderEnabled);
    EXPECT_TRUE(after.isDevMode);
    EXPECT_EQ(after.id, before.id);
}

TEST_F(ConfigurationSavingTest, keeps_what_the_form_does_not_show) {
    AppConfiguration record = app(u"Mail"_s);
    record.customUserAgent = u"Agent"_s;
    record.allowedHosts = {u"cdn.example.com"_s};
    record.badgeEnabled = false;
    record.lastVisitedURL = WebAddress::parse(u"https://example.com/last"_s);
    record.sortOrder = 7;
    makeForm({record});
    form->loadConfiguration();
    ASSERT_TRUE(form->saveConfiguration());
    AppConfiguration after = current();
    after.lastUpdated = record.lastUpdated;
    EXPECT_EQ(after, record);
}

TEST_F(ConfigurationSavingTest, stores_in_nine_steps_each_of_which_reads_the_record_anew) {
    makeForm();
    form->loadConfiguration();
    resources.images[u"template-dev-server"_s] = plainImage(32, 32);
    form->applyDefaultDevIcon();
    std::vector<AppConfiguration> states;
    const auto subscription = store->configurationsProperty().onDidChange([&] { states.push_back(current()); });
    form->setUrlInput(u"https://b.example.com/"_s);
    form->setAppNameInput(u"B"_s);
    form->setCustomCSS(u"c"_s);
    form->setCustomJS(u"j"_s);
    form->setThemeColor(u"#1"_s);
    form->setThemeOpacity(0.4);
    form->setThemeBorderEnabled(true);
    form->setDevMode(true);
    ASSERT_TRUE(form->saveConfiguration());
    ASSERT_EQ(states.size(), 9U);
    EXPECT_EQ(states[0].configuredURL->host(), u"b.example.com"_s);
    EXPECT_EQ(states[0].appName, u"Mail"_s);
    EXPECT_EQ(states[1].appName, u"B"_s);
    EXPECT_EQ(states[1].customCSS, std::nullopt);
    EXPECT_EQ(states[2].customCSS, u"c"_s);
    EXPECT_EQ(states[2].customJS, std::nullopt);
    EXPECT_EQ(states[3].customJS, u"j"_s);
    EXPECT_EQ(states[3].themeColor, std::nullopt);
    EXPECT_EQ(states[4].themeColor, u"#1"_s);
    EXPECT_EQ(states[4].themeOpacity, std::nullopt);
    EXPECT_EQ(states[5].themeOpacity, 0.4);
    EXPECT_FALSE(states[5].themeBorderEnabled);
    EXPECT_TRUE(states[6].themeBorderEnabled);
    EXPECT_FALSE(states[6].isDevMode);
    EXPECT_TRUE(states[7].isDevMode);
    EXPECT_EQ(states[7].iconSource, IconSource::default_);
    EXPECT_EQ(states[8].iconSource, IconSource::favicon);
}

TEST_F(ConfigurationSavingTest, leaves_the_store_alone_when_the_address_is_not_usable_at_save) {
    makeForm();
    const auto before = store->configurations();
    form->setAppNameInput(u"New"_s);
    for (const QString& address : {QString(), u"localhost"_s, u"   "_s}) {
        form->setUrlInput(address);
        EXPECT_FALSE(form->saveConfiguration());
        EXPECT_EQ(store->configurations(), before);
        EXPECT_EQ(form->injectionError(), std::nullopt);
        EXPECT_EQ(form->urlError(), std::nullopt);
    }
}

TEST_F(ConfigurationSavingTest, accepts_code_of_exactly_102400_bytes_and_not_one_more) {
    makeForm();
    form->loadConfiguration();
    form->setCustomCSS(QString(102400, u'a'));
    form->setCustomJS(QString(102400, u'b'));
    EXPECT_TRUE(form->saveConfiguration());
    EXPECT_EQ(form->injectionError(), std::nullopt);
    EXPECT_EQ(current().customCSS->size(), 102400);
    const auto before = store->configurations();
    form->setCustomCSS(QString(102401, u'a'));
    EXPECT_FALSE(form->saveConfiguration());
    EXPECT_EQ(form->injectionError(), u"Custom CSS exceeds 100KB limit"_s);
    form->setCustomCSS(QString());
    form->setCustomJS(QString(102401, u'b'));
    EXPECT_FALSE(form->saveConfiguration());
    EXPECT_EQ(form->injectionError(), u"Custom JavaScript exceeds 100KB limit"_s);
    EXPECT_EQ(store->configurations(), before);
    form->setCustomJS(QString());
    EXPECT_TRUE(form->saveConfiguration());
    EXPECT_EQ(form->injectionError(), std::nullopt);
}

TEST_F(ConfigurationSavingTest, counts_encoded_bytes_and_not_characters) {
    makeForm();
    form->loadConfiguration();
    form->setCustomCSS(QString(51200, QChar(0xE9)));
    EXPECT_TRUE(form->saveConfiguration());
    form->setCustomCSS(QString(102400, QChar(0xE9)));
    EXPECT_FALSE(form->saveConfiguration());
    EXPECT_EQ(form->injectionError(), u"Custom CSS exceeds 100KB limit"_s);
}

TEST_F(ConfigurationSavingTest, tells_of_the_style_sheet_only_when_both_are_too_large) {
    makeForm();
    form->loadConfiguration();
    form->setCustomCSS(QString(102401, u'a'));
    form->setCustomJS(QString(102401, u'b'));
    EXPECT_FALSE(form->saveConfiguration());
    EXPECT_EQ(form->injectionError(), u"Custom CSS exceeds 100KB limit"_s);
}

TEST_F(ConfigurationSavingTest, stores_names_trimmed_and_an_empty_one_not_at_all) {
    makeForm();
    form->loadConfiguration();
    const std::vector<std::pair<QString, std::optional<QString>>> rows = {
        {u"  Mail \n"_s, u"Mail"_s}, {QString(), std::nullopt}, {u"   "_s, QString()}};
    for (const auto& [typed, kept] : rows) {
        form->setAppNameInput(typed);
        ASSERT_TRUE(form->saveConfiguration());
        EXPECT_EQ(current().appName, kept);
    }
}

TEST_F(ConfigurationSavingTest, stores_no_code_when_the_fields_are_empty) {
    AppConfiguration record = app(u"Mail"_s);
    record.customCSS = u"a"_s;
    record.customJS = u"b"_s;
    makeForm({record});
    form->loadConfiguration();
    form->setCustomCSS(QString());
    form->setCustomJS(QString());
    form->setJSInjectionTime(JSInjectionTime::documentStart);
    ASSERT_TRUE(form->saveConfiguration());
    EXPECT_EQ(current().customCSS, std::nullopt);
    EXPECT_EQ(current().customJS, std::nullopt);
    EXPECT_EQ(current().jsInjectionTime, JSInjectionTime::documentStart);
}

TEST_F(ConfigurationSavingTest, records_any_icon_as_favicon_when_it_saves_and_none_as_it_was) {
    makeForm();
    form->loadConfiguration();
    ASSERT_TRUE(form->saveConfiguration());
    EXPECT_EQ(current().iconSource, IconSource::default_);
    form->uploadCustomIcon();
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(64, 64), "png")));
    ASSERT_EQ(current().iconSource, IconSource::custom);
    ASSERT_TRUE(form->saveConfiguration());
    EXPECT_EQ(current().iconSource, IconSource::favicon);
}

TEST_F(ConfigurationSavingTest, creates_the_first_record_of_an_empty_catalogue) {
    makeForm({});
    form->setUrlInput(u"example.com"_s);
    form->setAppNameInput(u"First"_s);
    EXPECT_TRUE(form->saveConfiguration());
    ASSERT_EQ(names(), QStringList{u"First"_s});
    EXPECT_EQ(current().configuredURL->absoluteString(), u"https://example.com"_s);
}

TEST_F(ConfigurationSavingTest, resets_the_catalogue_the_form_and_the_current_apps_icon) {
    makeForm({app(u"Mail"_s, u"http://localhost/"_s), app(u"News"_s)});
    const QUuid mail = store->configurations()[0].id;
    const QUuid news = store->configurations()[1].id;
    favicons.saveIcon(plainImage(32, 32), mail);
    favicons.saveIcon(plainImage(32, 32), news);
    form->loadConfiguration();
    form->setDevMode(true);
    form->setCustomCSS(QString(102401, u'a'));
    form->setCustomJS(u"b"_s);
    ASSERT_FALSE(form->saveConfiguration());
    form->setThemeColor(u"#1"_s);
    form->setThemeOpacity(0.4);
    form->setThemeBorderEnabled(true);
    form->setCSSExpanded(true);
    form->setJSExpanded(true);
    form->setJSInjectionTime(JSInjectionTime::documentStart);
    form->fetchFavicon();
    form->resetConfiguration();
    EXPECT_EQ(names(), QStringList());
    EXPECT_EQ(form->urlInput(), QString());
    EXPECT_EQ(form->appNameInput(), QString());
    EXPECT_EQ(form->customCSS(), QString());
    EXPECT_EQ(form->customJS(), QString());
    EXPECT_EQ(form->urlError(), std::nullopt);
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
    EXPECT_EQ(form->injectionError(), std::nullopt);
    EXPECT_EQ(form->themeColor(), std::nullopt);
    EXPECT_EQ(form->themeOpacity(), std::nullopt);
    EXPECT_FALSE(form->isValidURL());
    EXPECT_FALSE(form->isCSSExpanded());
    EXPECT_FALSE(form->isJSExpanded());
    EXPECT_FALSE(form->themeBorderEnabled());
    EXPECT_FALSE(form->isDevMode());
    EXPECT_EQ(form->jsInjectionTime(), JSInjectionTime::documentEnd);
    EXPECT_TRUE(form->isFetchingIcon());
    EXPECT_FALSE(favicons.loadSavedIcon(mail));
    EXPECT_TRUE(favicons.loadSavedIcon(news));
}

}  // namespace wrapio
