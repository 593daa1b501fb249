// What it costs to find out once a second which of 1,000 apps run: with the processes given, and with 500 real ones.
// One look is to take 5 ms at most.
#include "ManyApps.h"
#include "Models/ConfigurationCoding.h"
#include "Platform/Darwin/ProcessToolRunner.h"
#include "Platform/Diagnostics.h"
#include "Platform/Linux/DesktopRegistration.h"
#include "Platform/Linux/FileDefaults.h"
#include "Platform/Linux/LinuxFileSystem.h"
#include "Platform/Linux/LinuxResources.h"
#include "Platform/Linux/LinuxToolRunner.h"
#include "Platform/Linux/LinuxWorkspace.h"
#include "Platform/Linux/ProcessList.h"
#include "Platform/Linux/QtHttpClient.h"
#include "Platform/Linux/QtScheduler.h"
#include "Services/AppLifecycleManager.h"
#include "SleepingBundles.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

constexpr int appCount = 1000;
constexpr int processCount = 500;

/// Answers always the same processes.
class GivenWorkspace final : public Workspace {
public:
    std::vector<RunningApplication> given;

    std::vector<RunningApplication> runningApplications() const override { return given; }
    void openApplication(const QString&, const OpenConfiguration&,
                         std::function<void(std::optional<LaunchError>)>) override {}
    void activate(const RunningApplication&, ActivationOptions) override {}
    bool terminate(const RunningApplication&) override { return false; }
    bool forceTerminate(const RunningApplication&) override { return false; }
    bool open(const QString&) override { return false; }
    std::optional<QString> urlForApplication(const QString&) const override { return std::nullopt; }
};

/// Everything that stands around the lifecycle manager, in a home of its own.
struct Surroundings {
    QTemporaryDir home;
    Directories directories{home.path(), home.filePath(u"data"_s), home.filePath(u"cache"_s),
                            home.filePath(u"configuration"_s), home.path()};
    LinuxFileSystem files;
    FileDefaults defaults{directories.configuration};
    QtScheduler scheduler;
    QtHttpClient http;
    LinuxResources resources{home.path()};
    ProcessToolRunner processes;
    DesktopRegistration registration{*directories.applicationSupport, std::nullopt, processes};
    LinuxToolRunner tools{registration};
    LinuxWorkspace workspace{directories, scheduler, [](const QString&) { return std::nullopt; }};
    LaunchServicesManager launchServices{tools, files, workspace, directories};
    PreviewCacheManager previews{files, directories};
    FaviconService favicons{http, files, directories};
    IconService icons{tools, files};
    VersionManager versions{resources, files};
    BundleGenerator generator{tools, files, resources, favicons, icons, launchServices, versions};

    Surroundings() {
        const auto bytes = encodeConfigurations(manyApps(appCount));
        if (!bytes || !defaults.setData(*bytes, u"app_configurations"_s))
            qFatal("the catalogue could not be written");
    }
    std::unique_ptr<ConfigurationManager> loadedStore() {
        return std::make_unique<ConfigurationManager>(defaults, files, launchServices, previews, scheduler,
                                                      directories);
    }
};

/// One look after the first, whose result has arrived: nothing changes any more.
void look(benchmark::State& state, Surroundings& around, Workspace& workspace) {
    const auto store = around.loadedStore();
    AppLifecycleManager lifecycle(*store, around.generator, around.versions, workspace, around.files, around.scheduler,
                                  around.directories);
    QCoreApplication::processEvents();
    for (auto _ : state)
        lifecycle.checkRunningApps();
    state.counters["running"] = static_cast<double>(lifecycle.runningAppIds().size());
}

void lookWithGivenProcesses(benchmark::State& state) {
    Surroundings around;
    GivenWorkspace workspace;
    for (int i = 0; i < processCount; ++i)
        workspace.given.push_back(
            {1000 + i, around.directories.generatedApps() + u"/Harbour Notes %1.app"_s.arg(i * 2)});
    look(state, around, workspace);
}
BENCHMARK(lookWithGivenProcesses)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The argument is how many of the processes are apps.
void lookAmongRealProcesses(benchmark::State& state) {
    Surroundings around;
    const int apps = static_cast<int>(state.range(0));
    const SleepingBundles bundles(around.directories.generatedApps(), apps, processCount - apps);
    look(state, around, around.workspace);
    const bool allFound = around.workspace.runningApplications().size() >= static_cast<std::size_t>(apps);
    if (!allFound || bundles.count() != processCount)
        state.SkipWithError("not every process was found");
}
BENCHMARK(lookAmongRealProcesses)->Arg(20)->Arg(processCount)->Unit(benchmark::kMillisecond)->UseRealTime();

void listingRealProcesses(benchmark::State& state) {
    const QTemporaryDir folder;
    const SleepingBundles bundles(folder.path(), processCount, 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(bundleProcesses());
}
BENCHMARK(listingRealProcesses)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace wrapio

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    wrapio::setDiagnosticsDestination(wrapio::DiagnosticsDestination::nowhere);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
