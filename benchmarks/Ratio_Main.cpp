#include "Ratio_Main.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace Ratio_Bench {
namespace {

struct TExpected {
  std::string Name, Ours, Reference;
  double Limit;
  TBound Bound;
  std::function<std::pair<double, double>()> Measure;  // instead of two benchmarks
};

struct TCheck {
  std::string Name;
  std::function<std::string()> Run;
};

std::vector<TExpected>& Expectations() {
  static std::vector<TExpected> expectations;
  return expectations;
}

std::vector<TCheck>& Checks() {
  static std::vector<TCheck> checks;
  return checks;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// Keeps every time for the table, and prints medians and spreads where there are repetitions.
class TRatio_Reporter : public benchmark::ConsoleReporter {
 public:
  TRatio_Reporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    std::vector<Run> shown;
    for (const Run& run : runs) {
      if (run.error_occurred) Failed_ = true;
      if (run.run_type == Run::RT_Iteration && !run.error_occurred) Keep(run);
      if (run.run_type == Run::RT_Aggregate &&
          (run.aggregate_name == "median" || run.aggregate_name == "cv")) {
        shown.push_back(run);
      }
    }
    const bool single = !runs.empty() && runs.front().repetitions <= 1;
    if (single) ConsoleReporter::ReportRuns(runs);
    if (!shown.empty()) ConsoleReporter::ReportRuns(shown);
  }

  void Print_Table() const {
    if (Expectations().empty()) return;
    std::printf("\n%-44s %10s %16s  %s\n", "ratio", "measured", "limit", "kept");
    for (const TExpected& expected : Expectations()) Print_Row(expected);
  }

  bool Failed() const { return Failed_; }

 private:
  void Keep(const Run& run) {
    const bool real_time = run.run_name.time_type.find("real_time") != std::string::npos;
    const double total = real_time ? run.real_accumulated_time : run.cpu_accumulated_time;
    Times_[run.run_name.str()].push_back(total / static_cast<double>(run.iterations));
  }

  std::optional<double> Time_Of(const std::string& name) const {
    const auto found = Times_.find(name);
    if (found == Times_.end()) return std::nullopt;
    return Median(found->second);
  }

  void Print_Row(const TExpected& expected) const {
    const bool at_most = expected.Bound == TBound::At_Most;
    auto ours = Time_Of(expected.Ours), reference = Time_Of(expected.Reference);
    if (expected.Measure) std::tie(ours, reference) = expected.Measure();
    char measured[32] = "-";
    const char* kept = "not run";
    if (ours && reference) {
      const double ratio = at_most ? *ours / *reference : *reference / *ours;
      std::snprintf(measured, sizeof measured, "%.3g", ratio);
      kept = (at_most ? ratio <= expected.Limit : ratio >= expected.Limit) ? "yes" : "NO";
    }
    std::printf("%-44s %10s %8s %7.3g  %s\n", expected.Name.c_str(), measured,
                at_most ? "at most" : "at least", expected.Limit, kept);
  }

  std::map<std::string, std::vector<double>> Times_;
  bool Failed_ = false;
};

bool All_Checks_Hold() {
  bool hold = true;
  for (const TCheck& check : Checks()) {
    std::string complaint;
    try {
      complaint = check.Run();
    } catch (const std::exception& error) {
      complaint = error.what();
    }
    if (complaint.empty()) continue;
    std::cerr << check.Name << ": " << complaint << '\n';
    hold = false;
  }
  return hold;
}

}  // namespace

bool Expect_Ratio(std::string name, std::string ours, std::string reference, double limit, TBound bound) {
  Expectations().push_back({std::move(name), std::move(ours), std::move(reference), limit, bound, {}});
  return true;
}

bool Expect_Amounts(std::string name, std::function<std::pair<double, double>()> measure, double limit,
                    TBound bound) {
  // A ratio of amounts is ours to the reference whichever way it is bound; of speeds, it is that of the times
  // turned round.
  if (bound == TBound::At_Least) {
    measure = [turned = std::move(measure)] {
      const auto [ours, reference] = turned();
      return std::pair(reference, ours);
    };
  }
  Expectations().push_back({std::move(name), {}, {}, limit, bound, std::move(measure)});
  return true;
}

bool Check_First(std::string name, std::function<std::string()> check) {
  Checks().push_back({std::move(name), std::move(check)});
  return true;
}

}  // namespace Ratio_Bench

int main(int argc, char** argv) {
  // Defaults go first, so that the command line overrides them.
  std::string defaults[] = {"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=9",
                            "--benchmark_min_time=0.1"};
  std::vector<char*> arguments{argv[0]};
  for (std::string& flag : defaults) arguments.push_back(flag.data());
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  int count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);

  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  if (!Ratio_Bench::All_Checks_Hold()) return 1;

  Ratio_Bench::TRatio_Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.Print_Table();
  benchmark::Shutdown();
  return reporter.Failed() ? 1 : 0;
}
