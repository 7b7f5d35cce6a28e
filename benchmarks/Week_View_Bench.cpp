// The week view against one bare SQL join of the rows of its seven days.

#include <benchmark/benchmark.h>

#include "Bare_Entries.h"
#include "Bench_Windows.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"
#include "View_Rules.h"
#include "fm_Contacts_Page3a.h"

namespace {

using namespace Bench;

constexpr int Days = 7;

double Middle_Week(const TSize& size) {
  return KTReminds::Week_Start(First_Day + size.Days / 2);
}

void WeekView(benchmark::State& state) {
  const TSize size = Size_Of(static_cast<int>(state.range(0)));
  Need_Windows();
  Use_Database(Database_File(size));
  QWidget window;
  window.resize(800, 600);
  Kt_forms::TForm_Reference view;
  Kt_util_01::CurrentDate = Middle_Week(size);
  KTReminds::Display_Calendar_Weekview(&window, view, Book, {}, true);
  window.show();
  window.grab();
  auto* week = view.As<KTReminds::TCalendar_View>();
  for (auto _ : state) week->DoRefresh();
}
BENCHMARK(WeekView)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

void WeekView_Bare_Join(benchmark::State& state) {
  const TSize size = Size_Of(static_cast<int>(state.range(0)));
  auto list = Read_Bare_Window(size, Middle_Week(size), Days, "d.Key");
  for (auto _ : state) {
    list = Read_Bare_Window(size, Middle_Week(size), Days, "d.Key");
    benchmark::DoNotOptimize(list.data());
  }
  state.counters["rows"] = static_cast<double>(list.size());
}
BENCHMARK(WeekView_Bare_Join)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

using Ratio_Bench::TBound;
[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("WeekView / bare join of its days, 10,000", "WeekView/10000",
                              "WeekView_Bare_Join/10000", 1.2, TBound::At_Most) &
    Ratio_Bench::Expect_Ratio("WeekView / bare join of its days, 1,000,000", "WeekView/1000000",
                              "WeekView_Bare_Join/1000000", 1.2, TBound::At_Most);

}  // namespace
