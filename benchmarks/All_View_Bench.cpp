// The all-events view of 100,000 occurrences: its whole build against one bare SQL join in the same order,
// how soon its first rows are there, how long it blocks the window, and what its rows cost.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QProgressBar>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <optional>

#include "Bare_Entries.h"
#include "Bench_Windows.h"
#include "Entry_List.h"
#include "Kt_data_01.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"
#include "Reminder_Utils.h"
#include "fm_Contacts_Page3d.h"

namespace {

using namespace Bench;

const TSize All_Size = {100'000, 20'000, 2'000, 2'100, 30};
constexpr double Nsecs_Per_Msec = 1e6;

/// The view of a whole book, in a window.
struct TAll_Page {
  TAll_Page() {
    Need_Windows();
    Use_Database(Database_File(All_Size));
    Window.emplace().resize(800, 600);
    KTReminds::Display_Calendar_Allview(&*Window, View, Book, {}, true);
    Window->show();
    Window->grab();
  }
  KTReminds::TEntry_List* List() const { return View.Get()->findChild<KTReminds::TEntry_List*>(); }
  void Build() {
    View.As<KTReminds::TCalendar_View>()->DoRefresh();
    Window->grab();
  }

  std::optional<QWidget> Window;
  Kt_forms::TForm_Reference View;
};

void AllView_Shown(benchmark::State& state) {
  TAll_Page page;
  for (auto _ : state) page.Build();
}
BENCHMARK(AllView_Shown)->Unit(benchmark::kMillisecond);

std::vector<TBare_Entry> Read_In_Order() {
  static sqlite3_stmt* join = Prepare(Bare_Connection(Database_File(All_Size)),
                                      Bare_Join("d.Key", " ORDER BY d.EventDate, e.Priority"));
  return Read_Bare(join);
}

void AllView_Bare_Ordered_Join(benchmark::State& state) {
  benchmark::DoNotOptimize(Read_In_Order().size());
  for (auto _ : state) {
    auto list = Read_In_Order();
    benchmark::DoNotOptimize(list.data());
    state.PauseTiming();
    list.clear();
    state.ResumeTiming();
  }
}
BENCHMARK(AllView_Bare_Ordered_Join)->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool Checks =
    Ratio_Bench::Check_First("AllView_Shown shows what the ordered join reads", []() -> std::string {
      const TAll_Page page;
      const auto bare = Read_In_Order();
      auto& items = page.List()->Items();
      if (bare.size() != items.Count()) return "the lists differ in length";
      for (std::size_t i = 0; i < bare.size(); ++i) {
        const auto& entry = *items[i].Data;
        if (bare[i].EventDate != entry.EventDate || bare[i].Priority != entry.Priority)
          return "the lists differ in order";
      }
      return {};
    });

/// When the rows of a build were painted first, and how long the window had to wait at most, in milliseconds.
struct TTimes : QObject {
  explicit TTimes(TAll_Page& page) : list(page.List()) {
    list->viewport()->installEventFilter(this);
    // What is due at once runs whenever the window is served.
    QObject::connect(&heart, &QTimer::timeout, this, [this] { Beat(); });
    heart.start(0);
    since.start();
    page.Build();
    Whole = Now();
    Beat();
  }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint && First_Rows == 0 && list->model()->rowCount() > 0)
      First_Rows = Now();
    return false;
  }
  double First_Rows = 0, Longest_Wait = 0, Whole = 0;

 private:
  double Now() const { return static_cast<double>(since.nsecsElapsed()) / Nsecs_Per_Msec; }
  void Beat() {
    Longest_Wait = std::max(Longest_Wait, Now() - last);
    last = Now();
  }

  KTReminds::TEntry_List* list;
  QTimer heart;
  QElapsedTimer since;
  double last = 0;
};

std::pair<double, double> First_Rows() {
  TAll_Page page;
  const TTimes times(page);
  std::printf("\nall events: first rows after %.0f ms, all after %.0f ms\n", times.First_Rows, times.Whole);
  return {times.First_Rows, times.Whole};
}

std::pair<double, double> Longest_Wait() {
  constexpr double limit_msecs = 50;
  TAll_Page page;
  const TTimes times(page);
  std::printf("all events: the window waits %.1f ms at most\n", times.Longest_Wait);
  return {times.Longest_Wait, limit_msecs};
}

std::pair<double, double> Longest_Sort() {
  constexpr double limit_msecs = 50;
  TAll_Page page;
  double longest = 0;
  for (const int column : {4, 3, 1, 0, 2}) {
    QElapsedTimer timer;
    timer.start();
    KTReminds::Sort_Items(page.List()->Items(), column);
    page.Window->grab();
    const double msecs = static_cast<double>(timer.nsecsElapsed()) / Nsecs_Per_Msec;
    std::printf("all events: sorted by column %d in %.1f ms\n", column, msecs);
    longest = std::max(longest, msecs);
  }
  return {longest, limit_msecs};
}

std::pair<double, double> Longest_Painting() {
  constexpr double limit_msecs = 16;
  constexpr int paintings = 50;
  TAll_Page page;
  double longest = 0;
  for (int i = 0; i < paintings; ++i) {
    page.List()->scrollTo(page.List()->model()->index(i * 1'000, 0));
    QElapsedTimer timer;
    timer.start();
    page.List()->viewport()->grab();
    longest = std::max(longest, static_cast<double>(timer.nsecsElapsed()) / Nsecs_Per_Msec);
  }
  std::printf("all events: a screen of rows is painted in %.2f ms at most\n", longest);
  return {longest, limit_msecs};
}

std::pair<double, double> Look() {
  constexpr double limit_msecs = 0.1;
  constexpr int looks = 1'000;
  Use_Database(Database_File(All_Size));
  Kt_data_01::Change_Numbers();
  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < looks; ++i) benchmark::DoNotOptimize(Kt_data_01::Change_Numbers());
  const double msecs = static_cast<double>(timer.nsecsElapsed()) / Nsecs_Per_Msec / looks;
  std::printf("a look at the change number: %.4f ms\n", msecs);
  return {msecs, limit_msecs};
}

using Ratio_Bench::TBound;
[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("AllView, sorted and shown / bare ordered join", "AllView_Shown",
                              "AllView_Bare_Ordered_Join", 0.8, TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("AllView first rows / whole build", First_Rows, 0.25, TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("AllView longest wait / 50 ms", Longest_Wait, 1.0, TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("AllView longest sort / 50 ms", Longest_Sort, 1.0, TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("AllView painting a screen / 16 ms", Longest_Painting, 1.0, TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("change number looked at / 0.1 ms", Look, 1.0, TBound::At_Most);

}  // namespace
