// What it costs to judge an address, which happens at every keystroke in the form.
#include "Models/ConfigurationManager.h"
#include "Models/WebAddress.h"
#include "Platform/Diagnostics.h"
#include "Utilities/HostRules.h"

#include <benchmark/benchmark.h>

#include <array>

namespace wrapio {
namespace {

using namespace Qt::StringLiterals;

const std::array typed = {u"example.com"_s,
                          u"https://www.example.com/inbox?view=all#top"_s,
                          u"localhost:3000"_s,
                          u"http://192.168.1.20:8080/admin"_s,
                          u"https://müller.example/straße"_s,
                          u"exam ple"_s,
                          u"https://[2001:db8::1]/"_s,
                          u"javascript:alert(1)"_s};

void normalisingAnAddress(benchmark::State& state) {
    setDiagnosticsDestination(DiagnosticsDestination::nowhere);
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ConfigurationManager::normalizeURL(typed[next % typed.size()], next % 2 == 0));
        ++next;
    }
}
BENCHMARK(normalisingAnAddress)->Unit(benchmark::kMicrosecond);

void parsingAnAddress(benchmark::State& state) {
    std::size_t next = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(WebAddress::parse(typed[next++ % typed.size()]));
}
BENCHMARK(parsingAnAddress)->Unit(benchmark::kMicrosecond);

void recognisingAnInternalHost(benchmark::State& state) {
    const std::array hosts = {"example.com", "192.168.1.20", "printer.local", "10.0.0.1",
                              "a.very.long.name.example.org"};
    std::size_t next = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(isInternalHost(hosts[next++ % hosts.size()]));
}
BENCHMARK(recognisingAnInternalHost)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace wrapio
