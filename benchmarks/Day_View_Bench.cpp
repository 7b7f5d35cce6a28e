// The day view: building its list against one bare SQL join of the same rows, and stepping through days.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QToolButton>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "Bare_Entries.h"
#include "Bench_Windows.h"
#include "Entry_Model.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"
#include "Reminder_Utils.h"
#include "fm_Contacts_Page3b.h"

namespace {

using namespace Bench;

constexpr int Entries_A_Day = 200;

TSize Days_Of(int occurrences) {
  return {occurrences, occurrences / 5, 2000, occurrences / Entries_A_Day, 30};
}

double Middle_Day(const TSize& size) {
  return First_Day + size.Days / 2;
}

sqlite3_stmt* Day_Join(const TSize& size) {
  sqlite3_stmt* join = Prepare(
      Bare_Connection(Database_File(size)),
      Bare_Join("d.Key", " AND d.EventDate >= ?1 AND d.EventDate < ?1 + 1 ORDER BY d.EventDate, e.Priority"));
  sqlite3_bind_double(join, 1, Middle_Day(size));
  return join;
}

void Refresh(KTReminds::TEntry_Model& model, const TSize& size) {
  KTReminds::Build_Reminder_DayView({}, Book, model.Items(), Middle_Day(size), true, true);
}

void DayView(benchmark::State& state) {
  const TSize size = Days_Of(static_cast<int>(state.range(0)));
  Use_Database(Database_File(size));
  KTReminds::TEntry_Model model;
  Refresh(model, size);
  for (auto _ : state) Refresh(model, size);
  state.counters["rows"] = model.rowCount();
}
BENCHMARK(DayView)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

void DayView_Bare_Join(benchmark::State& state) {
  const TSize size = Days_Of(static_cast<int>(state.range(0)));
  sqlite3_stmt* join = Day_Join(size);
  auto list = Read_Bare(join);
  for (auto _ : state) {
    list = Read_Bare(join);
    benchmark::DoNotOptimize(list.data());
  }
  sqlite3_finalize(join);
}
BENCHMARK(DayView_Bare_Join)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

[[maybe_unused]] const bool Checks =
    Ratio_Bench::Check_First("DayView reads what the join reads", []() -> std::string {
      const TSize size = Days_Of(10'000);
      Use_Database(Database_File(size));
      KTReminds::TEntry_Model model;
      Refresh(model, size);
      sqlite3_stmt* join = Day_Join(size);
      const auto bare = Read_Bare(join);
      sqlite3_finalize(join);
      if (static_cast<int>(bare.size()) != model.rowCount()) return "the lists differ in length";
      for (std::size_t i = 0; i < bare.size(); ++i) {
        if (bare[i].EventDate != model.Items()[i].Data->EventDate) return "the lists differ in order";
      }
      return {};
    });

// A hundred days with ever more entries, from 20 to 200.
std::string Uneven_Days() {
  const TSize size = {100 * 220, 4400, 2000, 100, 30};
  const std::string path = Database_File(size);
  Execute(
      Bare_Connection(path),
      "CREATE TEMP TABLE Surplus AS SELECT Key FROM (SELECT Key, EventDate, row_number() OVER (PARTITION BY "
      "cast(EventDate AS INTEGER)) AS Nth FROM KT_Events_Data) WHERE Nth > 20 + 180 * (cast(EventDate AS "
      "INTEGER) - 45292) / 99; DELETE FROM KT_Alarms WHERE Key IN Surplus; DELETE FROM KT_Events_Data WHERE "
      "Key IN Surplus");
  return path;
}

// Milliseconds of the longest step to the next day, painting included.
std::pair<double, double> Longest_Step() {
  constexpr double limit_msecs = 30, nsecs = 1e6;
  Need_Windows();
  Use_Database(Uneven_Days());
  QWidget window;
  window.resize(800, 600);
  Kt_forms::TForm_Reference view;
  Kt_util_01::CurrentDate = First_Day - 1;
  KTReminds::Display_Calendar_Dayview(&window, view, Book, {}, true);
  window.show();
  window.grab();
  auto* next = view.Get()->findChild<QToolButton*>(QStringLiteral("SpeedButton2"));
  std::vector<double> steps;
  for (int day = 0; day < 100; ++day) {
    QElapsedTimer timer;
    timer.start();
    next->click();
    window.grab();
    steps.push_back(static_cast<double>(timer.nsecsElapsed()) / nsecs);
  }
  std::sort(steps.begin(), steps.end());
  std::printf("\nstep to the next day, painted: median %.2f ms, longest %.2f ms\n", steps[50], steps.back());
  return {steps.back(), limit_msecs};
}

using Ratio_Bench::TBound;
[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("DayView of 200 / bare join, 1,000,000", "DayView/1000000",
                              "DayView_Bare_Join/1000000", 1.5, TBound::At_Most) &
    Ratio_Bench::Expect_Ratio("DayView in 1,000,000 / in 10,000", "DayView/1000000", "DayView/10000", 2.0,
                              TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("longest painted day step / 30 ms", Longest_Step, 1.0, TBound::At_Most);

}  // namespace
