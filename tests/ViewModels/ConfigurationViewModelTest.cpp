#include "ConfigurationFixture.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <gmock/gmock.h>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using ConfigurationViewModelTest = ConfigurationFixture;

constexpr int darkModeLength = 286;

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
    EXPECT_EQ(form->property("jsInjectionTime").toInt(), 1);
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

TEST_F(ConfigurationViewModelTest, takes_the_developer_mode_of_a_template) {
    makeForm();
    form->applyTemplate(AppTemplate::devTemplates().front());
    EXPECT_TRUE(form->isDevMode());
    EXPECT_TRUE(form->isValidURL());
    form->applyTemplate(mailTemplate());
    EXPECT_FALSE(form->isDevMode());
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

}  // namespace wrapio
