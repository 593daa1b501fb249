#include "ConfigurationFixture.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

using ConfigurationIconsTest = ConfigurationFixture;

const QString touchIcon = u"https://mail.example.com/apple-touch-icon.png"_s;

AppTemplate mailTemplate() {
    AppTemplate chosen;
    chosen.name = u"Web Mail"_s;
    chosen.url = u"https://webmail.example.com/"_s;
    chosen.iconAssetName = u"template-mail"_s;
    return chosen;
}

}  // namespace

TEST_F(ConfigurationIconsTest, applies_a_template_and_saves_its_icon_at_once) {
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

TEST_F(ConfigurationIconsTest, leaves_the_icon_alone_when_a_template_brings_none) {
    makeForm();
    form->applyTemplate(mailTemplate());
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
    EXPECT_EQ(current().iconSource, IconSource::default_);
}

TEST_F(ConfigurationIconsTest, asks_for_one_image_of_three_types_in_order) {
    makeForm();
    form->uploadCustomIcon();
    ASSERT_EQ(dialogs.openRequests.size(), 1U);
    EXPECT_EQ(dialogs.openRequests[0].contentTypes, QStringList({u"image/png"_s, u"image/jpeg"_s, u"image/tiff"_s}));
}

TEST_F(ConfigurationIconsTest, saves_an_uploaded_icon_as_custom_at_once) {
    makeForm();
    form->uploadCustomIcon();
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(64, 64, Qt::cyan), "png")));
    EXPECT_EQ(shownColour(), QColor(Qt::cyan));
    EXPECT_EQ(savedColour(current().id), QColor(Qt::cyan));
    EXPECT_EQ(current().iconSource, IconSource::custom);
}

TEST_F(ConfigurationIconsTest, changes_nothing_when_the_dialog_is_cancelled) {
    makeForm();
    form->uploadCustomIcon();
    dialogs.answer(std::nullopt);
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
    EXPECT_EQ(current().iconSource, IconSource::default_);
}

TEST_F(ConfigurationIconsTest, says_nothing_and_changes_nothing_when_an_icon_file_is_unreadable) {
    makeForm();
    for (const QString& path : {writeFile(u"broken.png"_s, "no image"), home.filePath(u"missing.png"_s)}) {
        form->uploadCustomIcon();
        dialogs.answer(path);
        EXPECT_EQ(form->fetchedIcon(), std::nullopt);
        EXPECT_EQ(current().iconSource, IconSource::default_);
    }
}

TEST_F(ConfigurationIconsTest, does_not_give_an_uploaded_icon_to_another_app_selected_meanwhile) {
    makeForm({app(u"Mail"_s), app(u"News"_s)});
    form->uploadCustomIcon();
    store->selectApp(store->configurations()[1].id);
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(64, 64), "png")));
    EXPECT_FALSE(favicons.loadSavedIcon(store->configurations()[1].id));
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
}

TEST_F(ConfigurationIconsTest, survives_a_dialog_that_outlives_it) {
    makeForm();
    form->uploadCustomIcon();
    form.reset();
    dialogs.answer(writeFile(u"mine.png"_s, fileOf(plainImage(64, 64), "png")));
    EXPECT_EQ(current().iconSource, IconSource::default_);
}

TEST_F(ConfigurationIconsTest, fetches_the_sites_icon_in_the_background) {
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

TEST_F(ConfigurationIconsTest, does_not_fetch_for_an_address_that_is_none) {
    makeForm();
    form->setUrlInput(u"localhost:3000"_s);
    form->fetchFavicon();
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_TRUE(http.requests.empty());
    EXPECT_EQ(form->urlError(), std::nullopt);
}

TEST_F(ConfigurationIconsTest, keeps_its_icon_when_the_site_has_none) {
    makeForm();
    favicons.saveIcon(plainImage(32, 32, Qt::green), current().id);
    form->loadConfiguration();
    form->fetchFavicon();
    http.deliverAll();
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_EQ(shownColour(), QColor(Qt::green));
}

TEST_F(ConfigurationIconsTest, takes_the_developer_icon_when_a_site_has_none_in_developer_mode) {
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

TEST_F(ConfigurationIconsTest, goes_without_an_icon_when_there_is_no_developer_icon_either) {
    makeForm();
    form->setUrlInput(u"localhost:3000"_s);
    form->setDevMode(true);
    form->fetchFavicon();
    http.deliverAll();
    EXPECT_FALSE(form->isFetchingIcon());
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
}

TEST_F(ConfigurationIconsTest, lets_the_last_of_overlapping_fetches_win) {
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

TEST_F(ConfigurationIconsTest, saves_a_fetched_icon_for_the_app_that_was_current_when_it_was_asked_for) {
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

TEST_F(ConfigurationIconsTest, survives_a_fetch_that_outlives_it) {
    makeForm();
    serveIcon(touchIcon, Qt::magenta);
    form->setUrlInput(u"https://mail.example.com"_s);
    form->fetchFavicon();
    form.reset();
    http.deliverAll();
    EXPECT_FALSE(favicons.loadSavedIcon(current().id));
}

TEST_F(ConfigurationIconsTest, sets_the_developer_icon_only_when_there_is_no_icon) {
    makeForm();
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::blue);
    form->applyDefaultDevIcon();
    EXPECT_EQ(shownColour(), QColor(Qt::blue));
    EXPECT_EQ(savedColour(current().id), QColor(Qt::blue));
    resources.images[u"template-dev-server"_s] = plainImage(32, 32, Qt::red);
    form->applyDefaultDevIcon();
    EXPECT_EQ(shownColour(), QColor(Qt::blue));
}

TEST_F(ConfigurationIconsTest, does_without_a_developer_icon_that_is_not_there) {
    makeForm();
    form->applyDefaultDevIcon();
    EXPECT_EQ(form->fetchedIcon(), std::nullopt);
}

TEST_F(ConfigurationIconsTest, gives_a_changed_icon_another_address) {
    makeForm();
    favicons.saveIcon(plainImage(32, 32, Qt::green), current().id);
    form->loadConfiguration();
    const QString before = form->fetchedIconUrl();
    serveIcon(touchIcon, Qt::magenta);
    form->fetchFavicon();
    http.deliverAll();
    EXPECT_NE(form->fetchedIconUrl(), before);
}

}  // namespace wrapio
