// What it costs to read and write the catalogue, on the disk that holds TMPDIR. A catalogue of 10,000 apps is to be
// loaded and decoded, and encoded and saved durably, in 80 ms each.
#include "ManyApps.h"
#include "Models/ConfigurationCoding.h"
#include "Models/ConfigurationManager.h"
#include "Platform/Linux/FileDefaults.h"
#include "Platform/Linux/LinuxFileSystem.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const QString key = u"app_configurations"_s;

void encodingOneRecord(benchmark::State& state) {
    const AppConfiguration app = manyApps(1).front();
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeConfiguration(app).dump());
}
BENCHMARK(encodingOneRecord)->Unit(benchmark::kMicrosecond);

void decodingOneRecord(benchmark::State& state) {
    const QByteArray json = QByteArray::fromStdString(encodeConfiguration(manyApps(1).front()).dump());
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeConfiguration(json));
}
BENCHMARK(decodingOneRecord)->Unit(benchmark::kMicrosecond);

void encoding(benchmark::State& state) {
    const auto apps = manyApps(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeConfigurations(apps));
    state.counters["bytes"] = static_cast<double>(encodeConfigurations(apps)->size());
}
BENCHMARK(encoding)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

void decoding(benchmark::State& state) {
    const QByteArray json = encodeConfigurations(manyApps(static_cast<int>(state.range(0)))).value();
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeConfigurations(json));
}
BENCHMARK(decoding)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

void loadingAndDecoding(benchmark::State& state) {
    const QTemporaryDir folder;
    FileDefaults defaults(folder.path());
    if (!defaults.setData(encodeConfigurations(manyApps(static_cast<int>(state.range(0)))).value(), key))
        state.SkipWithError("the catalogue could not be written");
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeConfigurations(defaults.data(key).value()));
}
BENCHMARK(loadingAndDecoding)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

void encodingAndSaving(benchmark::State& state) {
    const QTemporaryDir folder;
    FileDefaults defaults(folder.path());
    const auto apps = manyApps(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        if (!defaults.setData(encodeConfigurations(apps).value(), key))
            state.SkipWithError("the catalogue could not be written");
    }
}
BENCHMARK(encodingAndSaving)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace wrapio
