// The time of a logger beside the time of the engine on the same texts, in one run; and the cycles
// that clearing a statement's array takes, in one fill and in quarters.
//
// Good for the ratio of the two, which is what composing adds to executing. Not good for the time
// of a command on a device: the database is in memory and the data model answers at once.
#include "benchmarks/Cases.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstring>

#if defined(__x86_64__)
#include <x86intrin.h>
#endif

namespace
{

constexpr int RUNS_BETWEEN_RESETS = 200;

// What a run leaves for the next is taken back on both sides, within the time measured.
void Measure(benchmark::State& state, const LoggerCase& logger, void (Case::*run)())
{
    Case measured(logger);
    int runs = 0;
    for (auto _ : state) {
        (measured.*run)();
        measured.Undo();
        if (++runs % RUNS_BETWEEN_RESETS == 0) {
            state.PauseTiming();
            measured.Reset();
            state.ResumeTiming();
        }
    }
    state.counters["texts"] = static_cast<double>(measured.Texts());
}

#if defined(__x86_64__)
constexpr std::size_t LARGEST_STATEMENT = 8000;

void FillAtOnce(char* array, std::size_t size)
{
    std::memset(array, 0, size);
}

void FillInQuarters(char* array, std::size_t size)
{
    const std::size_t quarter = (size + 3) / 4;
    for (std::size_t at = 0; at < size; at += quarter) {
        std::memset(array + at, 0, std::min(quarter, size - at));
    }
}

// The time-stamp counter goes at the processor's nominal rate.
void MeasureFill(benchmark::State& state, void (*fill)(char*, std::size_t))
{
    alignas(64) char array[LARGEST_STATEMENT];
    const std::size_t size = static_cast<std::size_t>(state.range(0));
    unsigned long long cycles = 0;
    for (auto _ : state) {
        const unsigned long long start = __rdtsc();
        fill(array, size);
        benchmark::ClobberMemory();
        cycles += __rdtsc() - start;
    }
    state.counters["cycles"] =
        static_cast<double>(cycles) / static_cast<double>(state.iterations());
}

void RegisterFills()
{
    benchmark::RegisterBenchmark("fill_at_once", MeasureFill, FillAtOnce)->Arg(5000)->Arg(8000);
    benchmark::RegisterBenchmark("fill_in_quarters", MeasureFill, FillInQuarters)
        ->Arg(5000)
        ->Arg(8000);
}
#else
void RegisterFills() {}
#endif

} // namespace

int main(int argc, char** argv)
{
    for (const LoggerCase& logger : LoggerCases()) {
        // Without a text there is nothing to compare with.
        if (Case(logger).Texts() == 0) {
            continue;
        }
        benchmark::RegisterBenchmark((logger.Name() + "/logger").c_str(), Measure, logger,
                                     &Case::Log);
        benchmark::RegisterBenchmark((logger.Name() + "/engine").c_str(), Measure, logger,
                                     &Case::Execute);
    }
    RegisterFills();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
