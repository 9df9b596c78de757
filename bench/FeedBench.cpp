#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <utility>

#include "bench/FeedPipelines.h"
#include "bench/QuakeMLGenerator.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeListProcessor.h"

namespace {

constexpr int kKept = 10;
constexpr int kMaxEvents = 20'000;

using Pipeline = std::vector<CQuakeEvent*> (*)(std::string document);

void release(const std::vector<CQuakeEvent*>& quakes) {
    for (const CQuakeEvent* quake : quakes) delete quake;
}

void keepBiggest(benchmark::State& state, const std::vector<CQuakeEvent*>& quakes) {
    std::vector<CQuakeEvent*> kept = quakes;
    CQuakeListProcessor::KeepBiggestQuakes(kKept, kept);
    if (kept.size() != kKept || !kept.front()) state.SkipWithError("did not keep ten quakes");
}

// From the bytes of a document to the ten quakes that are kept.
void run(benchmark::State& state, Pipeline pipeline) {
    const std::string document = generateQuakeML(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        std::string bytes = document;
        state.ResumeTiming();
        const std::vector<CQuakeEvent*> quakes = pipeline(std::move(bytes));
        keepBiggest(state, quakes);
        state.PauseTiming();
        release(quakes);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(document.size()));
}

void feedPipeline(benchmark::State& state) { run(state, quakesFromFeedPipeline); }
void libxml2Pipeline(benchmark::State& state) { run(state, quakesFromLibxml2Pipeline); }

void selection(benchmark::State& state) {
    std::minstd_rand random(1);
    std::uniform_real_distribution<double> magnitude(4, 8);
    std::vector<CQuakeEvent*> quakes;
    for (std::int64_t index = 0; index < state.range(0); ++index) {
        quakes.push_back(new CQuakeEvent("2009-07-15T09:22:29.123Z", magnitude(random), -45.8, 166.6, 12));
    }
    for (auto _ : state) keepBiggest(state, quakes);
    release(quakes);
    state.SetComplexityN(state.range(0));
}

BENCHMARK(feedPipeline)->Arg(50)->Arg(1000)->Arg(kMaxEvents)->Unit(benchmark::kMillisecond);
BENCHMARK(libxml2Pipeline)->Arg(50)->Arg(1000)->Arg(kMaxEvents)->Unit(benchmark::kMillisecond);
BENCHMARK(selection)->RangeMultiplier(10)->Range(100, 100'000)->Complexity(benchmark::oN);

// Peak memory of the pipeline in a process of its own, in MiB, the document included. 0 when the process
// failed.
double peakMemory(Pipeline pipeline) {
    const pid_t child = fork();
    if (child == 0) {
        const bool isWhole = pipeline(generateQuakeML(kMaxEvents)).size() == kMaxEvents;
        _exit(isWhole ? 0 : 1);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) < 0 || status != 0) return 0;
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

int comparePeakMemory() {
    const double feed = peakMemory(quakesFromFeedPipeline);
    const double libxml2 = peakMemory(quakesFromLibxml2Pipeline);
    if (feed == 0 || libxml2 == 0) return 1;
    std::printf("peak memory at %d events: feed pipeline %.0f MiB, libxml2 %.0f MiB, ratio %.2f\n",
                kMaxEvents, feed, libxml2, feed / libxml2);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--memory") == 0) return comparePeakMemory();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
}
