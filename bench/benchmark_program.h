// What the benchmark programs share: the counter of time for each track, and a main that registers
// everything at three sizes.
#ifndef BENCHMARK_PROGRAM_H
#define BENCHMARK_PROGRAM_H

#include <benchmark/benchmark.h>

#include <cstdint>

// Counter "per_track": the time of a pass divided by the tracks looked at.
inline void count_per_track(benchmark::State& state, double tracks) {
  state.counters["per_track"] = benchmark::Counter(
      tracks, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Runs what `register_at(size)` registers at 10^4, 10^5 and 10^6 tracks.
template <class RegisterAt>
int run_benchmarks(int argc, char** argv, RegisterAt register_at) {
  for (int64_t size : {10'000, 100'000, 1'000'000}) register_at(size);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

#endif
