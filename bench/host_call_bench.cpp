// How many calls of a trivial plug-in function the host makes per second: a calculation parsed once
// and evaluated again and again, as a script line inside a loop would be, and the same calculation
// parsed anew each time, as `vdhost eval` does.
#include "api/values.h"
#include "calc/expression.h"
#include "session/session.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <unistd.h>

namespace {

vdhost::SessionOptions benchOptions() {
    vdhost::SessionOptions o;
    o.database = std::filesystem::temp_directory_path() / ("vdbench-" + std::to_string(getpid()) + ".vddb");
    o.pluginFolders = {VD_FIXTURE_PLUGIN_DIR};
    return o;
}

void PluginCallParsedOnce(benchmark::State& state) {
    vdhost::Session session(benchOptions());
    vdhost::calc::Variables locals;
    auto expression = vdhost::calc::Expression::parse(u"Fixture_Echo ( 1 )");
    for (auto _ : state) benchmark::DoNotOptimize(expression->evaluate(session, locals));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(PluginCallParsedOnce);

void PluginCallParsedEachTime(benchmark::State& state) {
    vdhost::Session session(benchOptions());
    vdhost::calc::Variables locals;
    for (auto _ : state) benchmark::DoNotOptimize(session.evaluate(u"Fixture_Echo ( 1 )", locals));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(PluginCallParsedEachTime);

// Ten calls in one calculation: the per-call cost without the per-evaluation overhead.
void PluginCallsInOneCalculation(benchmark::State& state) {
    vdhost::Session session(benchOptions());
    vdhost::calc::Variables locals;
    auto expression = vdhost::calc::Expression::parse(
        u"List ( Fixture_Echo ( 1 ) ; Fixture_Echo ( 2 ) ; Fixture_Echo ( 3 ) ; Fixture_Echo ( 4 ) ; "
        u"Fixture_Echo ( 5 ) ; Fixture_Echo ( 6 ) ; Fixture_Echo ( 7 ) ; Fixture_Echo ( 8 ) ; "
        u"Fixture_Echo ( 9 ) ; Fixture_Echo ( 10 ) )");
    for (auto _ : state) benchmark::DoNotOptimize(expression->evaluate(session, locals));
    state.SetItemsProcessed(state.iterations() * 10);
}
BENCHMARK(PluginCallsInOneCalculation);

}  // namespace

BENCHMARK_MAIN();
