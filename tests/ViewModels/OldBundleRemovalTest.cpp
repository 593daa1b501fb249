#include "ViewModels/OldBundleRemoval.h"

#include "ViewModelFixture.h"

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

class OldBundleRemovalTest : public ViewModelFixture {
protected:
    /// Renames the first record as an edit does, and cleans up.
    void rename(const QString& name) {
        const AppConfiguration before = store->configurations().front();
        AppConfiguration after = before;
        after.appName = name;
        store->updateConfiguration(after);
        removeOldBundle(before, after, *services);
    }
    void start(const std::vector<AppConfiguration>& records) { services.emplace(makeServices(records)); }

    std::optional<ViewModelServices> services;
};

}  // namespace

TEST_F(OldBundleRemovalTest, removes_the_bundle_wherever_one_of_the_rules_puts_it) {
    start({app(u"v1.0"_s)});
    makeBundle(u"v1.0.app"_s);
    makeBundle(u"v10.app"_s);
    rename(u"New"_s);
    EXPECT_FALSE(hasBundle(u"v1.0.app"_s));
    EXPECT_FALSE(hasBundle(u"v10.app"_s));
}

TEST_F(OldBundleRemovalTest, leaves_a_bundle_in_which_another_record_lives) {
    start({app(u"Mail"_s), app(u"Mail"_s), app(u"v1.0"_s)});
    makeBundle(u"Mail.app"_s);
    rename(u"New"_s);
    EXPECT_TRUE(hasBundle(u"Mail.app"_s));
    rename(u"v10"_s);
    makeBundle(u"v10.app"_s);
    rename(u"New"_s);
    EXPECT_TRUE(hasBundle(u"v10.app"_s));
}

TEST_F(OldBundleRemovalTest, leaves_the_bundle_when_the_name_stays_or_only_a_place_stays) {
    start({app(u"Mail"_s)});
    makeBundle(u"Mail.app"_s);
    rename(u"Mail"_s);
    EXPECT_TRUE(hasBundle(u"Mail.app"_s));
    rename(u"Ma:il"_s);
    EXPECT_TRUE(hasBundle(u"Mail.app"_s));
}

TEST_F(OldBundleRemovalTest, ends_the_app_that_still_runs_from_the_old_bundle) {
    start({app(u"Mail"_s)});
    workspace.start(makeBundle(u"Mail.app"_s));
    rename(u"New"_s);
    EXPECT_TRUE(workspace.running.empty());
    EXPECT_FALSE(hasBundle(u"Mail.app"_s));
}

TEST_F(OldBundleRemovalTest, reports_a_bundle_that_cannot_be_removed) {
    start({app(u"Mail"_s)});
    makeBundle(u"Mail.app"_s);
    files.fault = [](const QString& operation, const QString&) {
        return operation == u"remove"_s ? std::optional(EACCES) : std::nullopt;
    };
    DiagnosticsCapture capture;
    rename(u"New"_s);
    const QStringList lines = capture.lines();
    ASSERT_FALSE(lines.isEmpty());
    EXPECT_TRUE(lines.last().startsWith(u"❌ [Dashboard] Failed to delete old bundle: "_s))
        << lines.last().toStdString();
}

TEST_F(OldBundleRemovalTest, does_nothing_when_there_was_no_bundle) {
    start({app(u"Mail"_s)});
    tools.forget();
    rename(u"New"_s);
    EXPECT_TRUE(tools.calls().empty());
}

}  // namespace wrapio
