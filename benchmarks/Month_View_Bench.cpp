// The month view: reading a month against one bare SQL join of the same rows, and painting a crowded one.

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QPixmap>
#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

#include "Bare_Entries.h"
#include "Bench_Windows.h"
#include "Kt_util_01.h"
#include "Month_Rules.h"
#include "Ratio_Main.h"
#include "fm_Contacts_Page3c.h"

namespace {

using namespace Bench;
using KTReminds::TMonth_Grid;

// The view of a month of a database, in a window.
struct TMonth_Page {
  TMonth_Page(const TSize& size, double date) {
    Need_Windows();
    Use_Database(Database_File(size));
    Window.emplace().resize(800, 600);
    Kt_util_01::CurrentDate = date;
    KTReminds::Display_Calendar_MonthView(&*Window, View, Book, {}, true);
    Window->show();
    Window->grab();
  }

  std::optional<QWidget> Window;
  Kt_forms::TForm_Reference View;
};

double Middle_Day(const TSize& size) {
  return First_Day + size.Days / 2;
}

void MonthView(benchmark::State& state) {
  const TSize size = Size_Of(static_cast<int>(state.range(0)));
  const TMonth_Page page(size, Middle_Day(size));
  auto* view = page.View.As<KTReminds::TCalendar_View>();
  for (auto _ : state) view->DoRefresh();
}
BENCHMARK(MonthView)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void MonthView_Bare_Join(benchmark::State& state) {
  const TSize size = Size_Of(static_cast<int>(state.range(0)));
  const TMonth_Grid grid(Middle_Day(size));
  auto list = Read_Bare_Window(size, grid.First_Day(), TMonth_Grid::Days);
  for (auto _ : state) {
    list = Read_Bare_Window(size, grid.First_Day(), TMonth_Grid::Days);
    benchmark::DoNotOptimize(list.data());
  }
  state.counters["rows"] = static_cast<double>(list.size());
}
BENCHMARK(MonthView_Bare_Join)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// Milliseconds of the longest painting of a month with fifty entries a day.
std::pair<double, double> Longest_Painting() {
  constexpr int entries = 50 * TMonth_Grid::Days, paintings = 50;
  constexpr double limit_msecs = 16, nsecs = 1e6;
  TMonth_Page page({entries, entries / 5, 100, TMonth_Grid::Days, 30}, First_Day);
  auto* grid = page.View.Get()->findChild<KTReminds::TEPCalendar*>();
  std::vector<double> msecs;
  for (int i = 0; i < paintings; ++i) {
    QElapsedTimer timer;
    timer.start();
    grid->grab();
    msecs.push_back(static_cast<double>(timer.nsecsElapsed()) / nsecs);
  }
  std::sort(msecs.begin(), msecs.end());
  std::printf("\npainting a crowded month: median %.2f ms, longest %.2f ms\n", msecs[paintings / 2],
              msecs.back());
  return {msecs.back(), limit_msecs};
}

using Ratio_Bench::TBound;
[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("MonthView / bare join of its window, 1,000,000", "MonthView/1000000",
                              "MonthView_Bare_Join/1000000", 1.5, TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("painting a crowded month / 16 ms", Longest_Painting, 1.0, TBound::At_Most);

}  // namespace
