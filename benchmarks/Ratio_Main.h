#pragma once

// A benchmark run that judges by ratios: absolute times differ from machine to machine, the ratio of two
// benchmarks timed in alternation much less. All functions are for use at namespace scope, before main runs.

#include <functional>
#include <string>
#include <utility>

namespace Ratio_Bench {

enum class TBound {
  At_Most,   // time of `ours` divided by time of `reference` stays at or below the limit
  At_Least,  // speed of `ours` divided by speed of `reference` stays at or above the limit
};

/// Adds a row to the table at the end. `ours` and `reference` are benchmark names as they are printed; one
/// iteration of each does the same work. CPU time counts, or real time for benchmarks that use it. A missed
/// limit is reported and leaves the exit status alone. The result means nothing.
bool Expect_Ratio(std::string name, std::string ours, std::string reference, double limit, TBound bound);

/// Adds a row for amounts that are not times, such as bytes: `measure` gives ours and the reference, and is
/// run once after the benchmarks. The result means nothing.
bool Expect_Amounts(std::string name, std::function<std::pair<double, double>()> measure, double limit,
                    TBound bound);

/// A check run once before anything is timed, such as that both sides of a ratio give the same results. It
/// returns the complaint, or "". Any complaint or exception ends the program with status 1 and without times.
/// The result means nothing.
bool Check_First(std::string name, std::function<std::string()> check);

}  // namespace Ratio_Bench
