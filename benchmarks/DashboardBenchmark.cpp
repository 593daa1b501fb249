// What the dashboard costs with a thousand apps: a key in the search field, a change of the catalogue, a key in the
// form.
#include "Fakes/ManualScheduler.h"
#include "Offline/OfflineFixture.h"
#include "Platform/Diagnostics.h"

#include <benchmark/benchmark.h>

#include <array>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

/// A thousand apps, silent.
struct Thousand {
    Thousand() { setDiagnosticsDestination(DiagnosticsDestination::nowhere); }

    ManualScheduler scheduler;
    OfflineFixture fixture{u"thousand"_s, scheduler};
};

void searchKeystroke(benchmark::State& state) {
    Thousand thousand;
    const std::array<QString, 6> typed = {u"a"_s, u"ap"_s, u"app"_s, u"app 01"_s, u"9"_s, QString()};
    std::size_t key = 0;
    for (auto _ : state)
        thousand.fixture.dashboard().setSearchText(typed[key++ % typed.size()]);
}
BENCHMARK(searchKeystroke)->Unit(benchmark::kMillisecond);

void rename(OfflineFixture& fixture, int round) {
    AppConfiguration changed = fixture.store().configurations()[500];
    changed.appName = u"App %1"_s.arg(round);
    fixture.store().updateConfiguration(changed);
}

/// The dashboard's share is the difference to `changeWithoutDashboard`.
void changeWithDashboard(benchmark::State& state) {
    Thousand thousand;
    int round = 0;
    for (auto _ : state)
        rename(thousand.fixture, ++round);
}
BENCHMARK(changeWithDashboard)->Unit(benchmark::kMillisecond);

void changeWithoutDashboard(benchmark::State& state) {
    Thousand thousand;
    thousand.fixture.closeDashboard();
    int round = 0;
    for (auto _ : state)
        rename(thousand.fixture, ++round);
}
BENCHMARK(changeWithoutDashboard)->Unit(benchmark::kMillisecond);

/// One step of a drag over the cards.
void dragStep(benchmark::State& state) {
    Thousand thousand;
    const QString dragged = canonicalText(thousand.fixture.store().configurations()[10].id);
    std::size_t target = 20;
    for (auto _ : state) {
        target = target == 20 ? 600 : 20;
        const QString id = canonicalText(thousand.fixture.store().configurations()[target].id);
        thousand.fixture.dashboard().moveApp(dragged, id);
    }
}
BENCHMARK(dragStep)->Unit(benchmark::kMillisecond);

void formKeystroke(benchmark::State& state) {
    Thousand thousand;
    thousand.fixture.dashboard().editApp(thousand.fixture.store().configurations()[3]);
    ConfigurationViewModel& form = thousand.fixture.dashboard().editor()->configuration();
    int round = 0;
    for (auto _ : state)
        form.setAppNameInput(u"Typed %1"_s.arg(++round));
}
BENCHMARK(formKeystroke)->Unit(benchmark::kMillisecond);

void saveForm(benchmark::State& state) {
    Thousand thousand;
    thousand.fixture.dashboard().editApp(thousand.fixture.store().configurations()[3]);
    ConfigurationViewModel& form = thousand.fixture.dashboard().editor()->configuration();
    for (auto _ : state)
        benchmark::DoNotOptimize(form.saveConfiguration());
}
BENCHMARK(saveForm)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace wrapio
