#include "Services/Doctor.h"

#include "Fakes/CommandFixture.h"
#include "Platform/Imaging.h"

#include <nlohmann/json.hpp>

namespace wrapio {

using namespace Qt::StringLiterals;

class DoctorTest : public CommandFixture {
protected:
    /// One app in good health.
    AppConfiguration healthyApp(const QString& name) {
        EXPECT_EQ(run({u"create"_s, u"a.example"_s, u"--name"_s, name, u"--no-icon"_s}), ExitStatus::done);
        console.printed.clear();
        const AppConfiguration app = stored().back();
        workspace.registered[app.bundleIdentifier()] = lifecycle->getBundleURL(app);
        return app;
    }
    [[nodiscard]] QString said() const { return console.printed.join(u'\n'); }
    void put(const QString& path) {
        QDir().mkpath(path.section(u'/', 0, -2));
        ASSERT_TRUE(realFiles.write(path, "12345"));
    }
    [[nodiscard]] QStringList leftovers() {
        QStringList found;
        openForReading();
        for (const Leftover& leftover : doctor->examine().leftovers)
            found << description(leftover.kind) + u' ' + leftover.path;
        return found;
    }
};

TEST_F(DoctorTest, finds_nothing_wrong_with_a_healthy_app) {
    healthyApp(u"Mail"_s);
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::done);
    EXPECT_TRUE(said().contains(u"Mail: bundle, seal and registration are in order"_s)) << said().toStdString();
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(DoctorTest, names_a_missing_bundle_with_its_remedy) {
    const AppConfiguration app = healthyApp(u"Mail"_s);
    QDir(bundle(u"Mail.app"_s)).removeRecursively();
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::failed);
    EXPECT_TRUE(said().contains(u"its bundle is missing"_s));
    EXPECT_TRUE(said().contains(u"wrapio regenerate "_s + canonicalText(app.id)));
}

TEST_F(DoctorTest, names_an_unfinished_and_a_changed_bundle) {
    healthyApp(u"Mail"_s);
    health.seals[bundle(u"Mail.app"_s)] = {Finding::missing, u""_s};
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::failed);
    EXPECT_TRUE(said().contains(u"unfinished"_s));
    health.seals[bundle(u"Mail.app"_s)] = {Finding::damaged, u"changed Contents/Info.plist"_s};
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::failed);
    EXPECT_TRUE(said().contains(u"changed Contents/Info.plist"_s));
}

TEST_F(DoctorTest, names_a_missing_and_a_wrong_registration) {
    const AppConfiguration app = healthyApp(u"Mail"_s);
    workspace.registered[app.bundleIdentifier()] = u"/elsewhere.app"_s;
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::failed);
    EXPECT_TRUE(said().contains(u"points to another bundle: /elsewhere.app"_s));
    workspace.registered.clear();
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::failed);
    EXPECT_TRUE(said().contains(u"not registered"_s));
}

TEST_F(DoctorTest, names_records_whose_three_places_differ_and_records_without_an_address) {
    AppConfiguration dotted = record(u"Mail 2.0"_s);
    AppConfiguration blank;
    storeList({dotted, blank});
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::failed);
    EXPECT_TRUE(said().contains(u"\"Mail 2.0.app\", \"Mail 2.0.app\" and \"Mail 20.app\""_s)) << said().toStdString();
    EXPECT_TRUE(said().contains(u"Wrapio: has no address"_s));
}

TEST_F(DoctorTest, warns_of_shared_names_and_old_templates_without_failing) {
    healthyApp(u"Mail"_s);
    makeTemplate(u"2.0"_s);
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::done);
    EXPECT_TRUE(said().contains(u"older template 1.4.0"_s));
    healthyApp(u"Mail"_s);
    run({u"doctor"_s});
    EXPECT_TRUE(said().contains(u"2 apps have this name"_s));
}

TEST_F(DoctorTest, tells_what_the_surroundings_lack) {
    health.checks = {{u"page engine"_s, false, u"bwrap is missing"_s, u"Install the package bubblewrap"_s}};
    EXPECT_EQ(run({u"doctor"_s}), ExitStatus::done);
    EXPECT_TRUE(said().contains(u"page engine: bwrap is missing"_s));
    EXPECT_TRUE(said().contains(u"Install the package bubblewrap"_s));
}

TEST_F(DoctorTest, mentions_a_damaged_catalogue_that_was_kept) {
    put(directories.configuration + u"/app_configurations.damaged-1"_s);
    run({u"doctor"_s});
    EXPECT_TRUE(said().contains(u"app_configurations.damaged-1"_s));
}

TEST_F(DoctorTest, finds_every_kind_of_leftover_and_nothing_of_living_apps) {
    const AppConfiguration app = healthyApp(u"Mail"_s);
    const QString gone = u"0B7C57E2-5D0F-4C51-9A57-3E1F6B1D2A40"_s;
    const QString support = *directories.applicationSupport + u"/Wrapio"_s;
    const QString caches = *directories.caches + u"/Wrapio"_s;
    for (const QString& id : {gone, canonicalText(app.id)}) {
        put(support + u'/' + id + u".png"_s);
        put(support + u"/Profiles/"_s + id + u"/cookies"_s);
        put(caches + u"/previews/"_s + id + u".jpg"_s);
        put(caches + u"/Profiles/"_s + id + u"/blob"_s);
    }
    put(support + u"/notes.txt"_s);
    put(bundle(u"Stray.app/Contents/Linux/WrapioRunner"_s));
    put(bundle(u"Foreign.app/Contents/MacOS/Foreign"_s));
    put(directories.configuration + u"/.app_configurations.a1B2c3.new"_s);
    health.registered = {{u"com.wrapio.generated.gone-0b7c57e2"_s, u"/gone.app"_s},
                         {app.bundleIdentifier(), bundle(u"Mail.app"_s)}};
    QStringList expected = {u"saved icon "_s + support + u'/' + gone + u".png"_s,
                            u"site data "_s + support + u"/Profiles/"_s + gone,
                            u"preview "_s + caches + u"/previews/"_s + gone + u".jpg"_s,
                            u"site cache "_s + caches + u"/Profiles/"_s + gone,
                            u"app bundle "_s + bundle(u"Stray.app"_s),
                            u"registration com.wrapio.generated.gone-0b7c57e2"_s,
                            u"unfinished write "_s + directories.configuration + u"/.app_configurations.a1B2c3.new"_s};
    EXPECT_EQ(leftovers(), expected);
}

TEST_F(DoctorTest, cleans_only_after_a_yes) {
    put(bundle(u"Stray.app/Contents/Linux/WrapioRunner"_s));
    run({u"doctor"_s});
    run({u"doctor"_s, u"--clean"_s});
    EXPECT_EQ(console.questions.size(), 1);
    EXPECT_TRUE(files.exists(bundle(u"Stray.app"_s)));
    console.answer = true;
    EXPECT_EQ(run({u"doctor"_s, u"--clean"_s}), ExitStatus::done);
    EXPECT_FALSE(files.exists(bundle(u"Stray.app"_s)));
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(DoctorTest, leaves_what_an_app_has_come_to_use_while_the_question_was_open) {
    put(bundle(u"Stray.app/Contents/Linux/WrapioRunner"_s));
    put(bundle(u"Other.app/Contents/Linux/WrapioRunner"_s));
    console.answer = true;
    console.beforeTheAnswer = [this] {
        AppConfiguration app = record(u"Stray"_s);
        store->appendApps({app});
    };
    run({u"doctor"_s, u"--clean"_s});
    EXPECT_EQ(console.questions.size(), 1);
    EXPECT_TRUE(files.exists(bundle(u"Stray.app"_s)));
    EXPECT_FALSE(files.exists(bundle(u"Other.app"_s)));
    EXPECT_TRUE(said().contains(u"Removed 1 of 1 leftovers"_s)) << said().toStdString();
}

TEST_F(DoctorTest, cleans_without_a_question_when_told_so) {
    put(bundle(u"Stray.app/Contents/Linux/WrapioRunner"_s));
    health.registered = {{u"com.wrapio.generated.gone-0b7c57e2"_s, u"/gone.app"_s}};
    EXPECT_EQ(run({u"doctor"_s, u"--clean"_s, u"--yes"_s, u"--json"_s}), ExitStatus::done);
    EXPECT_TRUE(console.questions.isEmpty());
    EXPECT_EQ(Json::parse(said().toStdString())["removed"], 2);
    EXPECT_EQ(health.removed, QStringList(u"com.wrapio.generated.gone-0b7c57e2"_s));
}

}  // namespace wrapio
