#include "ViewModels/ConfigurationViewModel.h"

#include "ViewModelFixture.h"

#include <QColor>
#include <QMetaProperty>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <memory>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

const QString touchIcon = u"https://mail.example.com/apple-touch-icon.png"_s;
constexpr int darkModeLength = 286;

class ConfigurationViewModelTest : public ViewModelFixture {
protected:
    ConfigurationViewModel& makeForm(const std::vector<AppConfiguration>& records = {
                                         ViewModelFixture::app(u"Mail"_s, u"https://mail.example.com/"_s)}) {
        makeServices(records);
        form = std::make_unique<ConfigurationViewModel>(*store, favicons, resources, dialogs, files);
        return *form;
    }

    [[nodiscard]] AppConfiguration current() const { return store->configuration(); }

    /// The colour of the icon that is saved for an app.
    [[nodiscard]] QColor savedColour(const QUuid& id) {
        const auto icon = favicons.loadSavedIcon(id);
        return icon ? icon->pixelColor(0, 0) : QColor();
    }
    [[nodiscard]] QColor shownColour() const {
        return form->fetchedIcon() ? form->fetchedIcon()->pixelColor(0, 0) : QColor();
    }

    void serveIcon(const QString& url, const QColor& colour) {
        http.responses[url] = {200, u"image/png"_s, fileOf(plainImage(32, 32, colour), "png")};
    }

    std::unique_ptr<ConfigurationViewModel> form;
};

AppTemplate mailTemplate() {
    AppTemplate chosen;
    chosen.name = u"Web Mail"_s;
    chosen.url = u"https://webmail.example.com/"_s;
    chosen.iconAssetName = u"template-mail"_s;
    return chosen;
}

}  // namespace

TEST_F(ConfigurationViewModelTest, starts_with_document_end_and_nothing_optional) {
    makeForm();
    EXPECT_EQ(form->urlInput(), QString());
    EXPECT_EQ(form->appNameInput(), QString());
    EXPECT_EQ(form->urlError(), std::nullopt);
    EXPECT_FALSE(form->isValidURL());
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_EQ(form->customCSS(), QString());
    EXPECT_EQ(form->customJS(), QString());
    EXPECT_EQ(form->jsInjectionTime(), JSInjectionTime::documentEnd);
    EXPECT_FALSE(form->isCSSExpanded());
    EXPECT_FALSE(form->isJSExpanded());
    EXPECT_EQ(form->injectionError(), std::nullopt);
    EXPECT_EQ(form->themeColor(), std::nullopt);
    EXPECT_EQ(form->themeOpacity(), std::nullopt);
    EXPECT_FALSE(form->themeBorderEnabled());
    EXPECT_FALSE(form->isDevMode());
    EXPECT_EQ(ConfigurationViewModel::maxInjectionSize, 102400);
}

TEST_F(ConfigurationViewModelTest, announces_every_property_before_it_changes_and_signals_afterwards) {
    makeForm();
    std::vector<std::string> log;
    const auto will = form->urlInputProperty().onWillChange([&](const QString& next) {
        log.push_back("will " + next.toStdString() + " was " + form->urlInput().toStdString());
    });
    QObject::connect(form.get(), &ConfigurationViewModel::urlInputChanged,
                     [&] { log.push_back("did " + form->urlInput().toStdString()); });
    form->setUrlInput(u"a"_s);
    form->setUrlInput(u"ab"_s);
    EXPECT_THAT(log, testing::ElementsAre("will a was ", "did a", "will ab was a", "did ab"));
}

TEST_F(ConfigurationViewModelTest, gives_bindings_every_property_with_its_signal) {
    makeForm();
    const QMetaObject& meta = *form->metaObject();
    for (const char* name : {"urlInput", "appNameInput", "urlError", "isValidURL", "fetchedIconUrl", "isFetchingIcon",
                             "customCSS", "customJS", "jsInjectionTime", "isCSSExpanded", "isJSExpanded",
                             "injectionError", "themeColor", "themeOpacity", "themeBorderEnabled", "isDevMode"}) {
        const int index = meta.indexOfProperty(name);
        ASSERT_GE(index, 0) << name;
        EXPECT_TRUE(meta.property(index).hasNotifySignal()) << name;
    }
}

TEST_F(ConfigurationViewModelTest, writes_every_property_that_a_control_is_bound_to_and_signals_it) {
    makeForm();
    const std::vector<std::pair<const char*, QVariant>> values = {
        {"urlInput", u"example.com"_s}, {"appNameInput", u"Mail"_s},
        {"customCSS", u"a{}"_s},        {"customJS", u"b()"_s},
        {"isCSSExpanded", true},        {"isJSExpanded", true},
        {"themeColor", u"#112233"_s},   {"themeOpacity", 0.5},
        {"themeBorderEnabled", true},   {"isDevMode", true},
        {"jsInjectionTime", 0}};
    for (const auto& [name, value] : values) {
        const QMetaProperty property = form->metaObject()->property(form->metaObject()->indexOfProperty(name));
        QSignalSpy spy(form.get(), property.notifySignal());
        EXPECT_TRUE(property.write(form.get(), value)) << name;
        EXPECT_EQ(spy.count(), 1) << name;
        EXPECT_EQ(property.read(form.get()).toInt(), value.toInt()) << name;
        EXPECT_EQ(property.isEnumType() || property.read(form.get()) == value, true) << name;
    }
    EXPECT_EQ(form->jsInjectionTime(), JSInjectionTime::documentStart);
    form->setProperty("jsInjectionTime", 1);
    EXPECT_EQ(form->jsInjectionTime(), JSInjectionTime::documentEnd);
}

TEST_F(ConfigurationViewModelTest, gives_bindings_undefined_for_what_is_absent) {
    makeForm();
    EXPECT_FALSE(form->property("themeColor").isValid());
    EXPECT_FALSE(form->property("themeOpacity").isValid());
    EXPECT_FALSE(form->property("urlError").isValid());
    EXPECT_FALSE(form->property("injectionError").isValid());
    EXPECT_EQ(form->property("fetchedIconUrl").toString(), QString());
    form->setProperty("themeColor", u"#112233"_s);
    form->setProperty("themeOpacity", 0.5);
    form->setProperty("themeColor", QVariant());
    form->setProperty("themeOpacity", QVariant());
    EXPECT_EQ(form->themeColor(), std::nullopt);
    EXPECT_EQ(form->themeOpacity(), std::nullopt);
}

TEST_F(ConfigurationViewModelTest, keeps_a_chosen_opacity_between_a_tenth_and_one) {
    makeForm();
    const std::vector<std::pair<double, double>> rows = {{0.0, 0.1}, {0.1, 0.1}, {0.55, 0.55}, {1.0, 1.0}, {7.0, 1.0}};
    for (const auto& [chosen, kept] : rows) {
        form->setProperty("themeOpacity", chosen);
        EXPECT_EQ(form->themeOpacity(), kept) << chosen;
    }
    form->setProperty("themeOpacity", std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(form->themeOpacity(), std::nullopt);
}

TEST_F(ConfigurationViewModelTest, loads_every_field_of_the_current_record) {
    AppConfiguration record = app(u"Mail"_s, u"http://localhost:3000/"_s);
    record.customCSS = u"a{}"_s;
    record.jsInjectionTime = JSInjectionTime::documentStart;
    record.themeColor = u"#112233"_s;
    record.themeOpacity = 0.4;
    record.themeBorderEnabled = true;
    record.isDevMode = true;
    makeForm({app(u"Other"_s), record});
    store->selectApp(record.id);
    favicons.saveIcon(plainImage(32, 32, Qt::green), record.id);
    form->loadConfiguration();
    EXPECT_EQ(form->urlInput(), u"http://localhost:3000/"_s);
    EXPECT_EQ(form->appNameInput(), u"Mail"_s);
    EXPECT_EQ(form->customCSS(), u"a{}"_s);
    EXPECT_TRUE(form->isCSSExpanded());
    EXPECT_EQ(form->customJS(), QString());
    EXPECT_FALSE(form->isJSExpanded());
    EXPECT_EQ(form->jsInjectionTime(), JSInjectionTime::documentStart);
    EXPECT_EQ(form->themeColor(), u"#112233"_s);
    EXPECT_EQ(form->themeOpacity(), 0.4);
    EXPECT_TRUE(form->themeBorderEnabled());
    EXPECT_TRUE(form->isDevMode());
    EXPECT_EQ(shownColour(), QColor(Qt::green));
    EXPECT_TRUE(form->isValidURL());
    EXPECT_EQ(form->urlError(), std::nullopt);
    EXPECT_TRUE(form->fetchedIconUrl().startsWith(u"image://appicon/"_s + canonicalText(record.id)));
}

TEST_F(ConfigurationViewModelTest, opens_the_script_section_when_a_script_is_loaded) {
    AppConfiguration record = app(u"Mail"_s);
    record.customJS = u"b()"_s;
    makeForm({record});
    form->loadConfiguration();
    EXPECT_EQ(form->customJS(), u"b()"_s);
    EXPECT_TRUE(form->isJSExpanded());
}

TEST_F(ConfigurationViewModelTest, loads_a_record_that_holds_nothing) {
    makeForm({AppConfiguration()});
    form->loadConfiguration();
    EXPECT_EQ(form->urlInput(), QString());
    EXPECT_EQ(form->appNameInput(), QString());
    EXPECT_FALSE(form->isValidURL());
    EXPECT_EQ(form->urlError(), std::nullopt);
}

TEST_F(ConfigurationViewModelTest, leaves_its_icon_alone_when_the_loaded_record_has_none) {
    makeForm();
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::blue);
    form->applyDefaultDevIcon();
    favicons.deleteSavedIcon(current().id);
    form->loadConfiguration();
    EXPECT_EQ(shownColour(), QColor(Qt::blue));
}

TEST_F(ConfigurationViewModelTest, shows_no_message_for_an_empty_address_even_in_developer_mode) {
    makeForm();
    form->validateURL(u"not valid"_s);
    ASSERT_NE(form->urlError(), std::nullopt);
    form->validateURL(QString());
    EXPECT_EQ(form->urlError(), std::nullopt);
    EXPECT_FALSE(form->isValidURL());
    form->setDevMode(true);
    form->validateURL(QString());
    EXPECT_EQ(form->urlError(), std::nullopt);
    EXPECT_FALSE(form->isValidURL());
}

TEST_F(ConfigurationViewModelTest, words_its_message_by_the_developer_mode) {
    makeForm();
    form->validateURL(u"http://"_s);
    EXPECT_EQ(form->urlError(), u"Please enter a valid URL"_s);
    EXPECT_FALSE(form->isValidURL());
    form->setDevMode(true);
    form->validateURL(u"http://"_s);
    EXPECT_EQ(form->urlError(), u"Please enter a valid URL (e.g. localhost:3000)"_s);
    EXPECT_FALSE(form->isValidURL());
}

TEST_F(ConfigurationViewModelTest, accepts_a_local_address_in_developer_mode_only) {
    makeForm();
    form->setUrlInput(u"localhost:3000"_s);
    form->validateURL(form->urlInput());
    EXPECT_FALSE(form->isValidURL());
    EXPECT_EQ(form->urlInput(), u"localhost:3000"_s);
    form->setDevMode(true);
    form->validateURL(form->urlInput());
    EXPECT_TRUE(form->isValidURL());
    EXPECT_EQ(form->urlError(), std::nullopt);
}

TEST_F(ConfigurationViewModelTest, applies_a_template_and_saves_its_icon_at_once) {
    makeForm();
    resources.images[u"template-mail"_s] = plainImage(32, 32, Qt::yellow);
    form->applyTemplate(mailTemplate());
    EXPECT_EQ(form->appNameInput(), u"Web Mail"_s);
    EXPECT_EQ(form->urlInput(), u"https://webmail.example.com/"_s);
    EXPECT_TRUE(form->isValidURL());
    EXPECT_EQ(shownColour(), QColor(Qt::yellow));
    EXPECT_EQ(savedColour(current().id), QColor(Qt::yellow));
    EXPECT_EQ(current().iconSource, IconSource::favicon);
    EXPECT_EQ(current().appName, u"Mail"_s);
}

TEST_F(ConfigurationViewModelTest, takes_the_developer_mode_of_a_template) {
    makeForm();
    form->applyTemplate(AppTemplate::devTemplates().front());
    EXPECT_TRUE(form->isDevMode());
    EXPECT_TRUE(form->isValidURL());
    form->applyTemplate(mailTemplate());
    EXPECT_FALSE(form->isDevMode());
}

TEST_F(ConfigurationViewModelTest, leaves_the_icon_alone_when_a_template_brings_none) {
    makeForm();
    form->applyTemplate(mailTemplate());
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
    EXPECT_EQ(current().iconSource, IconSource::default_);
}

TEST_F(ConfigurationViewModelTest, asks_for_one_image_of_three_types_in_order) {
    makeForm();
    form->uploadCustomIcon();
    ASSERT_EQ(dialogs.openRequests.size(), 1U);
    EXPECT_EQ(dialogs.openRequests[0].contentTypes, QStringList({u"image/png"_s, u"image/jpeg"_s, u"image/tiff"_s}));
}

TEST_F(ConfigurationViewModelTest, saves_an_uploaded_icon_as_custom_at_once) {
    makeForm();
    form->uploadCustomIcon();
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(64, 64, Qt::cyan), "png")));
    EXPECT_EQ(shownColour(), QColor(Qt::cyan));
    EXPECT_EQ(savedColour(current().id), QColor(Qt::cyan));
    EXPECT_EQ(current().iconSource, IconSource::custom);
}

TEST_F(ConfigurationViewModelTest, changes_nothing_when_the_dialog_is_cancelled) {
    makeForm();
    form->uploadCustomIcon();
    dialogs.answer(std::nullopt);
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
    EXPECT_EQ(current().iconSource, IconSource::default_);
}

TEST_F(ConfigurationViewModelTest, says_nothing_and_changes_nothing_when_an_icon_file_is_unreadable) {
    makeForm();
    for (const QString& path : {writeFile(u"broken.png"_s, "no image"), home.filePath(u"missing.png"_s)}) {
        form->uploadCustomIcon();
        dialogs.answer(path);
        EXPECT_EQ(form->fetchedIcon(), std::nullopt);
        EXPECT_EQ(current().iconSource, IconSource::default_);
    }
}

TEST_F(ConfigurationViewModelTest, does_not_give_an_uploaded_icon_to_another_app_selected_meanwhile) {
    makeForm({app(u"Mail"_s), app(u"News"_s)});
    form->uploadCustomIcon();
    store->selectApp(store->configurations()[1].id);
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(64, 64), "png")));
    EXPECT_FALSE(favicons.loadSavedIcon(store->configurations()[1].id));
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
}

TEST_F(ConfigurationViewModelTest, survives_a_dialog_that_outlives_it) {
    makeForm();
    form->uploadCustomIcon();
    form.reset();
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(64, 64), "png")));
    EXPECT_EQ(current().iconSource, IconSource::default_);
}

TEST_F(ConfigurationViewModelTest, fetches_the_sites_icon_in_the_background) {
    makeForm();
    serveIcon(touchIcon, Qt::magenta);
    form->setUrlInput(u"mail.example.com/inbox"_s);
    form->fetchFavicon();
    EXPECT_TRUE(form->isFetchingIcon());
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
    http.deliverAll();
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_EQ(shownColour(), QColor(Qt::magenta));
    EXPECT_EQ(savedColour(current().id), QColor(Qt::magenta));
    EXPECT_EQ(current().iconSource, IconSource::default_);
}

TEST_F(ConfigurationViewModelTest, does_not_fetch_for_an_address_that_is_none) {
    makeForm();
    form->setUrlInput(u"localhost:3000"_s);
    form->fetchFavicon();
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_TRUE(http.requests.empty());
    EXPECT_EQ(form->urlError(), std::nullopt);
}

TEST_F(ConfigurationViewModelTest, keeps_its_icon_when_the_site_has_none) {
    makeForm();
    favicons.saveIcon(plainImage(32, 32, Qt::green), current().id);
    form->loadConfiguration();
    form->fetchFavicon();
    http.deliverAll();
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_EQ(shownColour(), QColor(Qt::green));
}

TEST_F(ConfigurationViewModelTest, takes_the_developer_icon_when_a_site_has_none_in_developer_mode) {
    makeForm();
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::blue);
    form->setUrlInput(u"localhost:3000"_s);
    form->setDevMode(true);
    form->fetchFavicon();
    http.deliverAll();
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_EQ(shownColour(), QColor(Qt::blue));
    EXPECT_EQ(savedColour(current().id), QColor(Qt::blue));
}

TEST_F(ConfigurationViewModelTest, goes_without_an_icon_when_there_is_no_developer_icon_either) {
    makeForm();
    form->setUrlInput(u"localhost:3000"_s);
    form->setDevMode(true);
    form->fetchFavicon();
    http.deliverAll();
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
}

TEST_F(ConfigurationViewModelTest, lets_the_last_of_overlapping_fetches_win) {
    makeForm();
    serveIcon(u"https://slow.example.com/favicon.ico"_s, Qt::red);
    serveIcon(u"https://fast.example.com/apple-touch-icon.png"_s, Qt::green);
    form->setUrlInput(u"https://slow.example.com"_s);
    form->fetchFavicon();
    form->setUrlInput(u"https://fast.example.com"_s);
    form->fetchFavicon();
    ASSERT_TRUE(http.deliver());
    ASSERT_TRUE(http.deliver());
    EXPECT_EQ(shownColour(), QColor(Qt::green));
    EXPECT_FALSE(form->isFetchingIcon());
    http.deliverAll();
    EXPECT_EQ(shownColour(), QColor(Qt::red));
    EXPECT_EQ(savedColour(current().id), QColor(Qt::red));
    EXPECT_FALSE(form->isFetchingIcon());
}

TEST_F(ConfigurationViewModelTest, saves_a_fetched_icon_for_the_app_that_was_current_when_it_was_asked_for) {
    makeForm({app(u"Mail"_s), app(u"News"_s)});
    const QUuid mail = store->configurations()[0].id;
    const QUuid news = store->configurations()[1].id;
    serveIcon(touchIcon, Qt::magenta);
    form->setUrlInput(u"https://mail.example.com"_s);
    form->fetchFavicon();
    store->selectApp(news);
    http.deliverAll();
    EXPECT_EQ(savedColour(mail), QColor(Qt::magenta));
    EXPECT_FALSE(favicons.loadSavedIcon(news));
}

TEST_F(ConfigurationViewModelTest, survives_a_fetch_that_outlives_it) {
    makeForm();
    serveIcon(touchIcon, Qt::magenta);
    form->setUrlInput(u"https://mail.example.com"_s);
    form->fetchFavicon();
    form.reset();
    http.deliverAll();
    EXPECT_FALSE(favicons.loadSavedIcon(current().id));
}

TEST_F(ConfigurationViewModelTest, sets_the_developer_icon_only_when_there_is_no_icon) {
    makeForm();
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::blue);
    form->applyDefaultDevIcon();
    EXPECT_EQ(shownColour(), QColor(Qt::blue));
    EXPECT_EQ(savedColour(current().id), QColor(Qt::blue));
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::red);
    form->applyDefaultDevIcon();
    EXPECT_EQ(shownColour(), QColor(Qt::blue));
}

TEST_F(ConfigurationViewModelTest, does_without_a_developer_icon_that_is_not_there) {
    makeForm();
    form->applyDefaultDevIcon();
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
}

TEST_F(ConfigurationViewModelTest, gives_a_changed_icon_another_address) {
    makeForm();
    favicons.saveIcon(plainImage(32, 32, Qt::green), current().id);
    form->loadConfiguration();
    const QString before = form->fetchedIconUrl();
    serveIcon(touchIcon, Qt::magenta);
    form->fetchFavicon();
    http.deliverAll();
    EXPECT_NE(form->fetchedIconUrl(), before);
}

TEST_F(ConfigurationViewModelTest, inserts_a_dark_mode_block_of_286_characters_into_an_empty_field) {
    makeForm();
    form->insertDarkModeTemplate();
    const QString css = form->customCSS();
    EXPECT_EQ(css.size(), darkModeLength);
    EXPECT_TRUE(css.startsWith(u"/* Wrapio Dark Mode */\nhtml {\n  filter: invert(1) hue-rotate(180deg);\n}\n\n"_s));
    EXPECT_TRUE(css.contains(u"img, video, canvas, picture, svg,\n[style*=\"background-image\"] {\n"_s));
    EXPECT_TRUE(css.endsWith(u"/* Preserve iframes */\niframe {\n  filter: invert(1) hue-rotate(180deg);\n}"_s));
    EXPECT_EQ(css.count(u'\n'), 14);
}

TEST_F(ConfigurationViewModelTest, appends_the_dark_mode_block_behind_two_line_feeds) {
    makeForm();
    form->setCustomCSS(u"a"_s);
    form->insertDarkModeTemplate();
    EXPECT_EQ(form->customCSS().size(), 289);
    EXPECT_TRUE(form->customCSS().startsWith(u"a\n\n/* Wrapio Dark Mode */"_s));
}

TEST_F(ConfigurationViewModelTest, leaves_two_blocks_when_it_is_used_twice) {
    makeForm();
    form->insertDarkModeTemplate();
    form->insertDarkModeTemplate();
    EXPECT_EQ(form->customCSS().size(), 2 * darkModeLength + 2);
    EXPECT_EQ(form->customCSS().count(u"/* Wrapio Dark Mode */"_s), 2);
}

TEST_F(ConfigurationViewModelTest, resets_colour_and_opacity_but_not_the_border) {
    makeForm();
    form->setThemeColor(u"#112233"_s);
    form->setThemeOpacity(0.4);
    form->setThemeBorderEnabled(true);
    form->resetAppearance();
    EXPECT_EQ(form->themeColor(), std::nullopt);
    EXPECT_EQ(form->themeOpacity(), std::nullopt);
    EXPECT_TRUE(form->themeBorderEnabled());
}

TEST_F(ConfigurationViewModelTest, writes_every_field_of_the_form_into_the_current_record) {
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

TEST_F(ConfigurationViewModelTest, keeps_what_the_form_does_not_show) {
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

TEST_F(ConfigurationViewModelTest, stores_in_nine_steps_each_of_which_reads_the_record_anew) {
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

TEST_F(ConfigurationViewModelTest, leaves_the_store_alone_when_the_address_is_not_usable_at_save) {
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

TEST_F(ConfigurationViewModelTest, accepts_code_of_exactly_102400_bytes_and_not_one_more) {
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

TEST_F(ConfigurationViewModelTest, counts_encoded_bytes_and_not_characters) {
    makeForm();
    form->loadConfiguration();
    form->setCustomCSS(QString(51200, QChar(0xE9)));
    EXPECT_TRUE(form->saveConfiguration());
    form->setCustomCSS(QString(102400, QChar(0xE9)));
    EXPECT_FALSE(form->saveConfiguration());
    EXPECT_EQ(form->injectionError(), u"Custom CSS exceeds 100KB limit"_s);
}

TEST_F(ConfigurationViewModelTest, tells_of_the_style_sheet_only_when_both_are_too_large) {
    makeForm();
    form->loadConfiguration();
    form->setCustomCSS(QString(102401, u'a'));
    form->setCustomJS(QString(102401, u'b'));
    EXPECT_FALSE(form->saveConfiguration());
    EXPECT_EQ(form->injectionError(), u"Custom CSS exceeds 100KB limit"_s);
}

TEST_F(ConfigurationViewModelTest, stores_names_trimmed_and_an_empty_one_not_at_all) {
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

TEST_F(ConfigurationViewModelTest, stores_no_code_when_the_fields_are_empty) {
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

TEST_F(ConfigurationViewModelTest, records_any_icon_as_favicon_when_it_saves_and_none_as_it_was) {
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

TEST_F(ConfigurationViewModelTest, creates_the_first_record_of_an_empty_catalogue) {
    makeForm({});
    form->setUrlInput(u"example.com"_s);
    form->setAppNameInput(u"First"_s);
    EXPECT_TRUE(form->saveConfiguration());
    ASSERT_EQ(names(), QStringList{u"First"_s});
    EXPECT_EQ(current().configuredURL->absoluteString(), u"https://example.com"_s);
}

TEST_F(ConfigurationViewModelTest, resets_the_catalogue_the_form_and_the_current_apps_icon) {
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
