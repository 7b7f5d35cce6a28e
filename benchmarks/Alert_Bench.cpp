// Reminders: finding what is due among few and among very many, and opening the window on a thousand.

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <cstdio>
#include <vector>

#include "Alert_Window.h"
#include "Alerts.h"
#include "Bench_Database.h"
#include "Bench_Windows.h"
#include "Database.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"

namespace {

using namespace Bench;

constexpr int Due = 20;
constexpr double Now = 45000;

// So many alarms, a minute after the other, of which the first few are due.
void Use_Alerts(int count) {
  static int in_use = 0;
  if (in_use == count) return;
  in_use = count;
  Use_Database(Database_File({1, 1, 1, 1, 0}, count == 1000 ? 3 : 4));
  auto& engine = Kt_data_01::Shared_Database().Engine();
  engine.Execute("DELETE FROM KT_Alerts");
  engine.Execute("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                 std::to_string(count - 1) +
                 ") INSERT INTO KT_Alerts (Occurrence, User, Moment, Due) SELECT printf('%036d', i), '" +
                 Kt_util_01::User_Key() + "', " + std::to_string(Now - Due) + " + i, " +
                 std::to_string(Now - Due) + " + i FROM n");
}

void Alerts_Due(benchmark::State& state) {
  Use_Alerts(static_cast<int>(state.range(0)));
  std::size_t found = 0;
  for (auto _ : state) {
    found = Kt_data_01::Due_Alerts(Now - 0.5).size();
    benchmark::DoNotOptimize(Kt_data_01::Next_Alert(Now - 0.5));
  }
  if (found != Due) state.SkipWithError("not those that are due");
}
BENCHMARK(Alerts_Due)->Arg(1'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

// Milliseconds until the window with a thousand reminders is painted.
std::pair<double, double> Opening() {
  constexpr double limit_msecs = 100, nsecs = 1e6;
  Need_Windows();
  std::vector<Plexidex::TAlert_Entry> entries(1000);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    entries[i].Alert = {"occurrence " + std::to_string(i), Now};
    entries[i].Title = "Event number " + std::to_string(i);
    entries[i].Location = "Here";
    entries[i].EventDate = Now + static_cast<double>(i);
  }
  QElapsedTimer timer;
  timer.start();
  Plexidex::TAlert_Window window;
  window.Set_Entries(entries);
  window.Appear();
  window.grab();
  return {static_cast<double>(timer.nsecsElapsed()) / nsecs, limit_msecs};
}

using Ratio_Bench::TBound;
[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("Alerts due, 1,000,000 / 1,000", "Alerts_Due/1000000", "Alerts_Due/1000", 1.5,
                              TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("opening the window on 1,000 alerts / 100 ms", Opening, 1, TBound::At_Most);

}  // namespace
