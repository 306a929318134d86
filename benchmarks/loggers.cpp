// The time of a logger beside the time of the engine executing the same statements, in one run.
//
// Good for the ratio of the two, which is what composing adds to executing. Not good for the time
// of a command on a device: the database is in memory and the data model answers at once.
#include "benchmarks/Cases.h"

#include <benchmark/benchmark.h>

namespace
{

constexpr int RUNS_BETWEEN_RESETS = 200;

void Measure(benchmark::State& state, const std::string& name, void (Case::*run)())
{
    Case measured(name);
    int runs = 0;
    for (auto _ : state) {
        (measured.*run)();
        if (++runs % RUNS_BETWEEN_RESETS == 0) {
            state.PauseTiming();
            measured.Reset();
            state.ResumeTiming();
        }
    }
    state.counters["statements"] = static_cast<double>(measured.Statements().size());
}

} // namespace

int main(int argc, char** argv)
{
    for (const std::string& name : Case::Names()) {
        benchmark::RegisterBenchmark((name + "/logger").c_str(), Measure, name, &Case::Log);
        benchmark::RegisterBenchmark((name + "/engine").c_str(), Measure, name, &Case::Execute);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
