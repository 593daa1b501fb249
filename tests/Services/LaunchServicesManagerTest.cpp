#include "Services/LaunchServicesManager.h"

#include "Services/ServiceFixture.h"

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QString lsregister = u"/System/Library/Frameworks/CoreServices.framework/Frameworks/LaunchServices.framework/"
                           u"Support/lsregister"_s;

class LaunchServicesManagerTest : public ServiceFixture {
protected:
    LaunchServicesManager manager{tools, files, workspace, directories};

    static AppConfiguration named(const QString& name) {
        AppConfiguration configuration;
        configuration.appName = name;
        return configuration;
    }
    QString makeBundle(const QString& name) {
        const QString path = directories.generatedApps() + u'/' + name;
        EXPECT_TRUE(temporary.createDirectories(path));
        return path;
    }
    static LaunchServicesError errorOf(const tl::expected<void, AnyError>& result) {
        const auto* const error = result ? nullptr : result.error().as<LaunchServicesError>();
        EXPECT_NE(error, nullptr);
        return error ? *error : LaunchServicesError::directoryNotFound();
    }
};

TEST_F(LaunchServicesManagerTest, RegistersABundleAnew) {
    const QString bundle = makeBundle(u"Mail.app"_s);
    EXPECT_TRUE(manager.registerApp(bundle));
    const std::vector<RecordingToolRunner::Call> expected = {{lsregister, {u"-f"_s, bundle}}};
    EXPECT_EQ(tools.calls(), expected);
}

TEST_F(LaunchServicesManagerTest, RefusesOtherExtensionsBeforeItAsksTheFileSystem) {
    for (const QString& path : {u"/a/Mail.APP"_s, u"/a/Mail"_s, u"/a/.app"_s, u"/a.app/Mail"_s, u""_s}) {
        EXPECT_EQ(errorOf(manager.registerApp(path)), LaunchServicesError::invalidBundle()) << path.toStdString();
        EXPECT_EQ(errorOf(manager.unregisterApp(path)), LaunchServicesError::invalidBundle()) << path.toStdString();
    }
    EXPECT_TRUE(files.log.isEmpty());
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(LaunchServicesManagerTest, DoesNotRegisterAMissingBundle) {
    const auto result = manager.registerApp(u"/nowhere/Mail.app"_s);
    EXPECT_EQ(errorOf(result), LaunchServicesError::bundleNotFound());
    EXPECT_EQ(result.error().description(), u"App bundle not found"_s);
}

TEST_F(LaunchServicesManagerTest, StartsNothingWhenTheToolIsMissing) {
    tools.remove(lsregister);
    const auto result = manager.registerApp(makeBundle(u"Mail.app"_s));
    EXPECT_EQ(errorOf(result), LaunchServicesError::lsregisterNotFound());
    EXPECT_EQ(result.error().description(), u"lsregister utility not found"_s);
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(LaunchServicesManagerTest, PassesOnThatTheToolDidNotStart) {
    tools.answer(lsregister, [](const QStringList&) -> tl::expected<ToolResult, LaunchError> {
        return tl::unexpected(LaunchError{u"lsregister"_s, u"Permission denied"_s});
    });
    const auto result = manager.registerApp(makeBundle(u"Mail.app"_s));
    ASSERT_FALSE(result);
    ASSERT_NE(result.error().as<LaunchError>(), nullptr);
    EXPECT_EQ(result.error().as<LaunchError>()->reason, u"Permission denied"_s);
}

TEST_F(LaunchServicesManagerTest, ReportsWhatTheToolSaidOnBothChannels) {
    tools.answer(lsregister, ToolResult{3, "scan", " failed: ü\n"});
    DiagnosticsCapture output;
    const auto result = manager.registerApp(makeBundle(u"Mail.app"_s));
    EXPECT_EQ(errorOf(result), LaunchServicesError::commandFailed(u"scan failed: ü\n"_s));
    EXPECT_EQ(result.error().description(), u"lsregister failed: scan failed: ü\n"_s);
    EXPECT_EQ(output.lines().first(), u"❌ [LaunchServices] lsregister failed: scan failed: ü"_s);
}

TEST_F(LaunchServicesManagerTest, SaysUnknownErrorForOutputThatIsNotText) {
    tools.answer(lsregister, ToolResult{1, {}, "cut off \xE2\x82"});
    DiagnosticsCapture output;
    const auto result = manager.registerApp(makeBundle(u"Mail.app"_s));
    EXPECT_EQ(errorOf(result), LaunchServicesError::commandFailed(u"Unknown error"_s));
    EXPECT_EQ(output.lines(), QStringList(u"❌ [LaunchServices] lsregister failed: Unknown error"_s));
}

TEST_F(LaunchServicesManagerTest, UnregistersABundle) {
    const QString bundle = makeBundle(u"Mail.app"_s);
    DiagnosticsCapture output;
    EXPECT_TRUE(manager.unregisterApp(bundle));
    EXPECT_EQ(output.lines(), QStringList(u"[LaunchServices] Unregistering app: Mail.app"_s));
    const std::vector<RecordingToolRunner::Call> expected = {{lsregister, {u"-u"_s, bundle}}};
    EXPECT_EQ(tools.calls(), expected);
}

TEST_F(LaunchServicesManagerTest, SkipsUnregisteringABundleThatIsGone) {
    DiagnosticsCapture output;
    EXPECT_TRUE(manager.unregisterApp(u"/nowhere/Mail.app/"_s));
    EXPECT_EQ(output.lines(), QStringList(u"[LaunchServices] Bundle not found, skipping unregistration: Mail.app"_s));
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(LaunchServicesManagerTest, UnregistersByIdentifierWhereverTheBundleIs) {
    const QString bundle = temporary.path(u"Elsewhere.app"_s);
    ASSERT_TRUE(temporary.createDirectories(bundle));
    workspace.registered[u"com.wrapio.generated.mail-1"_s] = bundle;
    EXPECT_TRUE(manager.unregisterAppByBundleID(u"com.wrapio.generated.mail-1"_s));
    const std::vector<RecordingToolRunner::Call> expected = {{lsregister, {u"-u"_s, bundle}}};
    EXPECT_EQ(tools.calls(), expected);
}

TEST_F(LaunchServicesManagerTest, PassesOnWhatFailsForAnIdentifier) {
    workspace.registered[u"a"_s] = u"/opt/tool"_s;
    EXPECT_EQ(errorOf(manager.unregisterAppByBundleID(u"a"_s)), LaunchServicesError::invalidBundle());
}

TEST_F(LaunchServicesManagerTest, SkipsAnIdentifierThatNobodyHas) {
    DiagnosticsCapture output;
    EXPECT_TRUE(manager.unregisterAppByBundleID(u"com.wrapio.generated.mail-1"_s));
    EXPECT_EQ(output.lines(),
              QStringList(u"[LaunchServices] App not found for bundle ID: com.wrapio.generated.mail-1"_s));
}

TEST_F(LaunchServicesManagerTest, NoConfigurationsAreHealthy) {
    EXPECT_EQ(manager.checkHealth({}), HealthStatus::healthy());
    EXPECT_TRUE(temporary.exists(directories.generatedApps()));
}

TEST_F(LaunchServicesManagerTest, ARegistrationThatPointsElsewhereIsHealthy) {
    const AppConfiguration mail = named(u"Mail"_s);
    makeBundle(u"Mail.app"_s);
    workspace.registered[mail.bundleIdentifier()] = u"/elsewhere/Mail.app"_s;
    EXPECT_EQ(manager.checkHealth({mail}), HealthStatus::healthy());
}

TEST_F(LaunchServicesManagerTest, TwoProblemsAreAWarningThatListsThem) {
    makeBundle(u"Mail.app"_s);
    EXPECT_EQ(manager.checkHealth({named(u"Mail"_s), named(u"News"_s)}),
              HealthStatus::warning(u"Not registered: Mail, Missing bundle: News"_s));
}

TEST_F(LaunchServicesManagerTest, OneProblemIsAWarning) {
    EXPECT_EQ(manager.checkHealth({named(u"News"_s)}), HealthStatus::warning(u"Missing bundle: News"_s));
}

TEST_F(LaunchServicesManagerTest, ThreeProblemsAreAnErrorThatCountsThem) {
    EXPECT_EQ(manager.checkHealth({named(u"A"_s), named(u"B"_s), named(u"C"_s)}),
              HealthStatus::error(u"3 issues detected"_s));
}

TEST_F(LaunchServicesManagerTest, WithoutAnAppsDirectoryTheStatusIsAnErrorAndNothingCountsAsOrphaned) {
    failWhere(u"createDirectories"_s, u"Wrapio Apps"_s);
    EXPECT_EQ(manager.checkHealth({}), HealthStatus::error(u"Apps directory not found"_s));
    EXPECT_TRUE(manager.findOrphanedConfigs({named(u"News"_s)}).empty());
}

TEST_F(LaunchServicesManagerTest, LooksForBundlesUnderNamesThatKeepTheirDots) {
    makeBundle(u"draw.io.app"_s);
    EXPECT_TRUE(manager.findOrphanedConfigs({named(u"draw.io"_s), named(u"draw:.io"_s)}).empty());
}

TEST_F(LaunchServicesManagerTest, OrphansComeInTheGivenOrder) {
    makeBundle(u"Mail.app"_s);
    const AppConfiguration news = named(u"News"_s);
    const AppConfiguration maps = named(u"Maps"_s);
    EXPECT_EQ(manager.findOrphanedConfigs({news, named(u"Mail"_s), maps}), (std::vector{news, maps}));
}

TEST_F(LaunchServicesManagerTest, CleansUpOrphanedRegistrationsAndGoesOnAfterAFailure) {
    const AppConfiguration news = named(u"News"_s);
    const AppConfiguration maps = named(u"Maps"_s);
    workspace.registered[news.bundleIdentifier()] = u"/opt/not-a-bundle"_s;
    DiagnosticsCapture output;
    manager.cleanupOrphanedRegistrations({news, maps});
    EXPECT_EQ(output.lines(),
              (QStringList{u"[LaunchServices] Cleaning up orphaned registration: News"_s,
                           u"[LaunchServices] Cleaning up orphaned registration: Maps"_s,
                           u"[LaunchServices] App not found for bundle ID: "_s + maps.bundleIdentifier()}));
}

TEST_F(LaunchServicesManagerTest, CleaningUpNothingDoesNothing) {
    DiagnosticsCapture output;
    manager.cleanupOrphanedRegistrations({});
    EXPECT_TRUE(output.lines().isEmpty());
    EXPECT_TRUE(tools.calls().empty());
}

TEST_F(LaunchServicesManagerTest, EveryErrorSaysWhatItIs) {
    EXPECT_EQ(LaunchServicesError::commandFailed(u"x"_s).description(), u"lsregister failed: x"_s);
    EXPECT_EQ(LaunchServicesError::invalidBundle().description(), u"Invalid app bundle"_s);
    EXPECT_EQ(LaunchServicesError::directoryNotFound().description(), u"Apps directory not found"_s);
}

}  // namespace
}  // namespace wrapio
