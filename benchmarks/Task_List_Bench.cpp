// The tasks of a book, 20,000 among a million occurrences, against one bare SQL join in the same order.

#include <benchmark/benchmark.h>

#include "Bare_Entries.h"
#include "Bench_Windows.h"
#include "Entry_List.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"
#include "Task_Order.h"
#include "fm_Task_HomePage.h"

namespace {

using namespace Bench;

const std::string& Task_Database() {
  static const std::string file = [] {
    // A copy of its own, whose tasks are not sets.
    const std::string& path = Database_File(Size_Of(1'000'000), 1);
    sqlite3* connection = nullptr;
    sqlite3_open(path.c_str(), &connection);
    Execute(
        connection,
        "UPDATE KT_Events SET EventType = 0;"
        "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO "
        "KT_Events (Key, FirstDate, Title, Priority, User, AllDay, EventType, Status, Percentage) SELECT "
        "'t-' || lower(hex(randomblob(15))), 45292 + i % 700, 'Task about subject number ' || i, 1 + i % 9, "
        "(SELECT User FROM KT_Events LIMIT 1), 1, 3, i % 6, i % 100 FROM n;"
        "INSERT INTO KT_Events_Data (Key, Contact, Book, Event, Actioned, EventDate) SELECT 'o' || Key, "
        "(SELECT Key FROM KT_Contacts c WHERE c.row_id = 2 + e.row_id * 7 % 1900), 'book', Key, Status = 2, "
        "FirstDate + row_id % 90 FROM KT_Events e WHERE EventType = 3;"
        "PRAGMA wal_checkpoint(TRUNCATE)");
    sqlite3_close(connection);
    return path;
  }();
  return file;
}

/// The page of a whole book, in a window.
struct TTask_Page {
  TTask_Page() {
    Need_Windows();
    Use_Database(Task_Database());
    Window.resize(800, 600);
    KTReminds::Display_Task_Home_Page(&Window, Page, Book, Calendar, 0, nullptr);
    Window.show();
    Window.grab();
  }
  Kt_data_01::TItem_List& Items() const { return Page.Get()->findChild<KTReminds::TEntry_List*>()->Items(); }

  QWidget Window;
  Kt_forms::TForm_Reference Page;
};

void TaskList(benchmark::State& state) {
  TTask_Page page;
  for (auto _ : state) page.Page.As<KTReminds::TTask_HomePage_Frm>()->DoRefresh();
}
BENCHMARK(TaskList)->Unit(benchmark::kMillisecond);

// Rows as those of the lists, with the name of the status. Joined in this order: the engine's own choice
// reads all of the book's occurrences, in order of their dates.
std::vector<TBare_Entry> Read_In_Order() {
  static sqlite3_stmt* join = Prepare(
      Bare_Connection(Task_Database()),
      "SELECT d.Key, e.Title, e.Location, d.Contact, c.DisplayName, e.User, d.EventDate, e.FirstDate, "
      "e.Priority, e.EventType, e.Percentage, e.Status, e.Private, e.AllDay, d.Actioned, 0 FROM KT_Events e "
      "CROSS JOIN KT_Events_Data d ON d.Event = e.Key CROSS JOIN KT_Contacts c ON c.Key = d.Contact WHERE "
      "e.EventType = 3 AND +d.Book = 'book' AND c.Deleted = 0 ORDER BY d.EventDate, CASE e.Status "
      "WHEN 0 THEN 'Not Started' WHEN 1 THEN 'In Progress' WHEN 2 THEN 'Completed' WHEN 3 THEN 'Pending' "
      "WHEN 4 THEN 'Postponed' ELSE 'Cancelled' END");
  return Read_Bare(join);
}

void TaskList_Bare_Ordered_Join(benchmark::State& state) {
  auto list = Read_In_Order();
  for (auto _ : state) {
    list = Read_In_Order();
    benchmark::DoNotOptimize(list.data());
  }
  state.counters["rows"] = static_cast<double>(list.size());
}
BENCHMARK(TaskList_Bare_Ordered_Join)->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool Checks =
    Ratio_Bench::Check_First("TaskList lists what the ordered join reads", []() -> std::string {
      const TTask_Page page;
      const auto bare = Read_In_Order();
      const auto& items = page.Items();
      if (bare.size() != 20'000 || bare.size() != items.Count()) return "the lists differ in length";
      for (std::size_t i = 0; i < bare.size(); ++i) {
        const auto& task = *items[i].Data;
        if (bare[i].EventDate != task.EventDate || !bare[i].Status.starts_with(task.FirstText.View()))
          return "the lists differ in order";
      }
      return {};
    });

[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("TaskList, 20,000 among 1,000,000 / bare ordered join", "TaskList",
                              "TaskList_Bare_Ordered_Join", 1.2, Ratio_Bench::TBound::At_Most);

}  // namespace
