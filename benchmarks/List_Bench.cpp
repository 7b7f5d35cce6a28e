// Building lists: the module's builders against one bare SQL join of the same rows read into structs.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "Bare_Entries.h"
#include "Entry_Walk.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"
#include "Reminder_Utils.h"

namespace {

using namespace Bench;
using Kt_data_01::TEventKey_List;
using Kt_util_01::TDateTime;

// The whole book, as Build_Reminder_AllView reads it, but for the sorting.
TEventKey_List Read_All() {
  TEventKey_List list;
  KTReminds::TEntry_Walk walk(KTReminds::All_Of({Book, {}}, true), KTReminds::TAlarm_Key::Occurrence,
                              KTReminds::TReading::Whole);
  while (auto entry = walk.Next()) list.push_back(std::move(entry));
  return list;
}

const TSize All_Size = {100'000, 20'000, 2'000, 2'100, 30};

sqlite3_stmt* All_Join() {
  static sqlite3_stmt* statement = Prepare(Bare_Connection(Database_File(All_Size)), Bare_Join("d.Key", ""));
  return statement;
}

void AllView(benchmark::State& state) {
  Use_Database(Database_File(All_Size));
  benchmark::DoNotOptimize(Read_All().size());
  for (auto _ : state) {
    auto list = Read_All();
    benchmark::DoNotOptimize(list.data());
    state.PauseTiming();
    list.clear();
    state.ResumeTiming();
  }
}
BENCHMARK(AllView)->Unit(benchmark::kMillisecond);

void AllView_Bare_Join(benchmark::State& state) {
  benchmark::DoNotOptimize(Read_Bare(All_Join()).size());
  for (auto _ : state) {
    auto list = Read_Bare(All_Join());
    benchmark::DoNotOptimize(list.data());
    state.PauseTiming();
    list.clear();
    state.ResumeTiming();
  }
}
BENCHMARK(AllView_Bare_Join)->Unit(benchmark::kMillisecond);

TDateTime Window_Start(const TSize& size) {
  return First_Day + size.Days / 2;
}

std::vector<TBare_Entry> Read_Window_Bare(const TSize& size) {
  return Read_Bare_Window(size, Window_Start(size), 42);
}

void Read_Window(const TSize& size, TEventKey_List& list) {
  KTReminds::Build_Events_Data({}, Book, list, Window_Start(size), Window_Start(size) + 41, true);
}

void Window(benchmark::State& state) {
  const TSize size = Size_Of(static_cast<int>(state.range(0)));
  Use_Database(Database_File(size));
  TEventKey_List list;
  Read_Window(size, list);
  for (auto _ : state) {
    Read_Window(size, list);
    benchmark::DoNotOptimize(list.data());
  }
  state.counters["rows"] = static_cast<double>(list.size());
}
BENCHMARK(Window)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void Window_Bare_Join(benchmark::State& state) {
  const TSize size = Size_Of(static_cast<int>(state.range(0)));
  auto list = Read_Window_Bare(size);
  for (auto _ : state) {
    list = Read_Window_Bare(size);
    benchmark::DoNotOptimize(list.data());
  }
}
BENCHMARK(Window_Bare_Join)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

std::string Compare(std::vector<TBare_Entry> bare, const TEventKey_List& list) {
  if (bare.size() != list.size()) return "the lists differ in length";
  std::vector<const Kt_data_01::TEventKey*> ours;
  for (const auto& entry : list) ours.push_back(entry.get());
  std::sort(ours.begin(), ours.end(), [](auto* a, auto* b) { return a->Key.View() < b->Key.View(); });
  std::sort(bare.begin(), bare.end(), [](auto& a, auto& b) { return a.Key < b.Key; });
  for (std::size_t i = 0; i < bare.size(); ++i) {
    const TBare_Entry& a = bare[i];
    const Kt_data_01::TEventKey& b = *ours[i];
    const bool is_task = a.EventType == 3;
    if (!(b.Key == a.Key) || !(b.Description == a.Title) || !(b.Contact == a.Contact) ||
        !(b.ContactName == a.ContactName) || !(b.User == a.User) ||
        !(b.FirstText == (is_task ? a.Status : a.Title)) ||
        !(b.SecondText == (is_task ? a.Title : a.Location)) || a.EventDate != b.EventDate ||
        a.FirstDate != b.FirstDate || a.Priority != b.Priority ||
        a.EventType != static_cast<int>(b.EventType) || a.Percentage != b.Percentage ||
        a.Private != b.Private || a.AllDay != b.Timeless || a.Done != b.Done || a.Alarm != b.Alarm) {
      return "the entries of " + a.Key + " differ";
    }
  }
  return {};
}

[[maybe_unused]] const bool Checks =
    Ratio_Bench::Check_First("AllView reads what the join reads",
                             [] {
                               Use_Database(Database_File(All_Size));
                               return Compare(Read_Bare(All_Join()), Read_All());
                             }) &
    Ratio_Bench::Check_First("Window reads what the join reads", [] {
      for (const int occurrences : {10'000, 100'000, 1'000'000}) {
        const TSize size = Size_Of(occurrences);
        Use_Database(Database_File(size));
        TEventKey_List list;
        Read_Window(size, list);
        if (std::string complaint = Compare(Read_Window_Bare(size), list); !complaint.empty())
          return complaint;
      }
      return std::string();
    });

// Bytes that a whole book's list holds, as the all-events view keeps it and as structs.
std::pair<double, double> List_Memory() {
  Use_Database(Database_File(All_Size));
  Read_All();
  const std::size_t empty = Heap_In_Use();
  double ours = 0, structs = 0;
  {
    Kt_data_01::TItem_List list;
    KTReminds::Build_Reminder_AllView({}, Book, list, true, true, nullptr);
    ours = static_cast<double>(Heap_In_Use() - empty) / static_cast<double>(list.Count());
  }
  Read_Bare(All_Join());
  const std::size_t again = Heap_In_Use();
  {
    auto list = Read_Bare(All_Join());
    list.shrink_to_fit();
    structs = static_cast<double>(Heap_In_Use() - again) / static_cast<double>(list.size());
  }
  std::printf("\nbytes per entry of a whole book: list item %.0f, struct %.0f\n", ours, structs);
  return {ours, structs};
}

using Ratio_Bench::TBound;
[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("AllView / bare join", "AllView", "AllView_Bare_Join", 0.8, TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("AllView bytes per entry / struct", List_Memory, 1.0, TBound::At_Most) &
    Ratio_Bench::Expect_Ratio("Window / bare join, 10,000", "Window/10000", "Window_Bare_Join/10000", 1.3,
                              TBound::At_Most) &
    Ratio_Bench::Expect_Ratio("Window / bare join, 100,000", "Window/100000", "Window_Bare_Join/100000", 1.3,
                              TBound::At_Most) &
    Ratio_Bench::Expect_Ratio("Window / bare join, 1,000,000", "Window/1000000", "Window_Bare_Join/1000000",
                              1.3, TBound::At_Most) &
    Ratio_Bench::Expect_Ratio("Window of 1,000,000 / of 10,000", "Window/1000000", "Window/10000", 2.0,
                              TBound::At_Most);

}  // namespace
