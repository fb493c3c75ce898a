#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

/**
 * Console reporter that, after the usual table, prints each benchmark's time as a ratio against a
 * baseline measured in the same run, so results compare across machines.
 *
 * Usage in a benchmark's main:
 *   ZRBenchRatioReporter reporter({{"BM_Wrap/256", "BM_DeepCopy/256"}, ...});
 *   benchmark::RunSpecifiedBenchmarks(&reporter);
 *   reporter.printRatios();
 */
class ZRBenchRatioReporter : public benchmark::ConsoleReporter
{
public:
  // Pairs of (measured, baseline) benchmark names, as Google Benchmark prints them.
  explicit ZRBenchRatioReporter(std::vector<std::pair<std::string, std::string>> pairs)
      : m_Pairs(std::move(pairs))
  {
  }

  void ReportRuns(const std::vector<Run>& runs) override
  {
    for (const Run& run : runs)
    {
      if (run.run_type == Run::RT_Iteration)
      {
        m_Seconds[run.benchmark_name()] = run.GetAdjustedRealTime() / timeUnitsPerSecond(run.time_unit);
        m_Counters[run.benchmark_name()] = run.counters;
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }

  double seconds(const std::string& name) const
  {
    const auto it = m_Seconds.find(name);
    return it == m_Seconds.end() ? -1.0 : it->second;
  }

  double counter(const std::string& name, const std::string& counterName) const
  {
    const auto it = m_Counters.find(name);
    if (it == m_Counters.end() || it->second.count(counterName) == 0)
    {
      return -1.0;
    }
    return it->second.at(counterName);
  }

  // Prints "measured / baseline = ratio" (time ratio: below 1 is faster than the baseline).
  void printRatios() const
  {
    std::printf("\nRatios against the baseline of the same run (time; < 1 is faster):\n");
    for (const auto& [measured, baseline] : m_Pairs)
    {
      const double a = seconds(measured);
      const double b = seconds(baseline);
      if (a < 0 || b <= 0)
      {
        std::printf("  %-45s / %-45s : not measured\n", measured.c_str(), baseline.c_str());
        continue;
      }
      std::printf("  %-45s / %-45s : %.3f\n", measured.c_str(), baseline.c_str(), a / b);
    }
  }

private:
  static double timeUnitsPerSecond(benchmark::TimeUnit unit)
  {
    switch (unit)
    {
    case benchmark::kNanosecond:
      return 1e9;
    case benchmark::kMicrosecond:
      return 1e6;
    case benchmark::kMillisecond:
      return 1e3;
    default:
      return 1.0;
    }
  }

  std::vector<std::pair<std::string, std::string>> m_Pairs;
  std::map<std::string, double> m_Seconds;
  std::map<std::string, benchmark::UserCounters> m_Counters;
};
