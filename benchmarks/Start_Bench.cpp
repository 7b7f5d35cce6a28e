// The time from the start of the program to the first painted calendar, against an empty window.

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>

#include <string>
#include <vector>

#include "Bench_Database.h"
#include "Ratio_Main.h"

extern char** environ;

namespace {

constexpr int Occurrences = 100'000;

// False when the program did not end well.
bool Run_Program(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), KT_START_PROGRAM);
  std::vector<char*> raw;
  for (std::string& argument : arguments) raw.push_back(argument.data());
  raw.push_back(nullptr);
  pid_t child = 0;
  int status = 1;
  return posix_spawn(&child, KT_START_PROGRAM, nullptr, nullptr, raw.data(), environ) == 0 &&
         waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void Start(benchmark::State& state, const std::vector<std::string>& arguments) {
  for (auto _ : state) {
    if (!Run_Program(arguments)) return state.SkipWithError("the program did not show its window");
  }
}

void Start_Empty_Window(benchmark::State& state) {
  Start(state, {"empty"});
}
BENCHMARK(Start_Empty_Window)->UseRealTime()->Unit(benchmark::kMillisecond);

void Start_Calendar(benchmark::State& state) {
  Start(state, {"calendar", Bench::Database_File(Bench::Size_Of(Occurrences))});
}
BENCHMARK(Start_Calendar)->UseRealTime()->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool Start_Expected =
    Ratio_Bench::Expect_Ratio("program start / empty window", "Start_Calendar/real_time",
                              "Start_Empty_Window/real_time", 1.5, Ratio_Bench::TBound::At_Most);

}  // namespace
