// Writing a set: Create_Event against the same rows written with bare prepared statements in one transaction.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "Bench_Database.h"
#include "Database.h"
#include "Event_Creation.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"

namespace {

using namespace Bench;
using Kt_util_01::TDateTime;

constexpr int Set_Length = 3650;
constexpr TDateTime First_Date = First_Day + 0.375;
const char* const Title = "Daily round";

KTReminds::TNew_Event New_Set() {
  KTReminds::TNew_Event event;
  event.Owner = {Book, Calendar};
  event.Record.Title = Title;
  event.Record.User = Kt_util_01::User_Key();
  event.Record.FirstDate = First_Date;
  event.Record.Pattern.Freq = KTReminds::TFrequency::Daily;
  event.Record.Pattern.LastDate = First_Day + Set_Length - 1;
  event.Alarm = {true, 15, "<Default Sound>", 0};
  return event;
}

// Of equal content; each writer has one of its own, so that neither finds its pages changed by the other.
const std::string& File_Of(bool bare) {
  return Database_File(Size_Of(100'000), bare ? 2 : 1);
}

const char* const Remove_Set =
    "BEGIN IMMEDIATE;"
    "DELETE FROM KT_Alerts WHERE Occurrence IN (SELECT d.Key FROM KT_Events_Data d JOIN KT_Events e ON e.Key "
    "= d.Event WHERE e.Title = 'Daily round');"
    "DELETE FROM KT_Alarms WHERE Key IN (SELECT d.Key FROM KT_Events_Data d JOIN KT_Events e ON e.Key = "
    "d.Event "
    "WHERE e.Title = 'Daily round');"
    "DELETE FROM KT_Events_Data WHERE Event IN (SELECT Key FROM KT_Events WHERE Title = 'Daily round');"
    "DELETE FROM KT_Events WHERE Title = 'Daily round';"
    "COMMIT";

void Create_Set(benchmark::State& state) {
  Use_Database(File_Of(false));
  const KTReminds::TNew_Event event = New_Set();
  for (auto _ : state) {
    std::string key;
    if (KTReminds::Create_Event(event, key).empty()) state.SkipWithError("nothing was written");
    state.PauseTiming();
    Kt_data_01::Shared_Database().Engine().Execute(Remove_Set);
    state.ResumeTiming();
  }
}
BENCHMARK(Create_Set)->UseRealTime()->Unit(benchmark::kMillisecond);

struct TBare_Set {
  std::string Event;
  std::vector<std::string> Keys;
};

TBare_Set New_Keys() {
  TBare_Set set{Kt_util_01::Get_GUID(), {}};
  for (int i = 0; i < Set_Length; ++i) set.Keys.push_back(Kt_util_01::Get_GUID());
  return set;
}

void Write_Bare(sqlite3* connection, const TBare_Set& set, const std::string& user) {
  static sqlite3_stmt* event = Prepare(connection,
                                       "INSERT INTO KT_Events (Key, Title, Location, FirstDate, LastDate, "
                                       "Freq, Period, Priority, PeriodDefault, User, AllDay, "
                                       "Private, P1, P2, P3, P4, P5, P6, P7, P8, P9, P10, Month, Instance, "
                                       "EventType, Started, Completed, Percentage, Status, "
                                       "Budget, Worked) VALUES (?, ?, '', ?, ?, 1, 1, 5, 1, ?, 0, 0, 0, 0, "
                                       "0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)");
  static sqlite3_stmt* occurrence = Prepare(connection,
                                            "INSERT INTO KT_Events_Data (Key, Contact, Book, Event, "
                                            "Actioned, EventDate) VALUES (?, ?, ?, ?, ?, ?)");
  static sqlite3_stmt* alarm = Prepare(
      connection,
      "INSERT INTO KT_Alarms (Key, User, Offset, WAVFile, NextTime, Actioned) VALUES (?, ?, ?, ?, ?, ?)");
  static sqlite3_stmt* alert = Prepare(connection,
                                       "INSERT INTO KT_Alerts (Occurrence, User, Moment, NextTime, Due, "
                                       "Dismissed) VALUES (?, ?, ?, ?, ?, ?)");
  const auto text = [](sqlite3_stmt* statement, int parameter, const std::string& value) {
    sqlite3_bind_text(statement, parameter, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
  };
  const auto step = [](sqlite3_stmt* statement) {
    sqlite3_step(statement);
    sqlite3_reset(statement);
  };
  Execute(connection, "BEGIN IMMEDIATE");
  text(event, 1, set.Event);
  text(event, 2, Title);
  sqlite3_bind_double(event, 3, First_Date);
  sqlite3_bind_double(event, 4, First_Day + Set_Length - 1);
  text(event, 5, user);
  step(event);
  static const std::string sound = "<Default Sound>";
  double date = First_Date;
  for (const std::string& key : set.Keys) {
    text(occurrence, 1, key);
    text(occurrence, 2, Calendar);
    text(occurrence, 3, Book);
    text(occurrence, 4, set.Event);
    sqlite3_bind_int(occurrence, 5, 0);
    sqlite3_bind_double(occurrence, 6, date);
    step(occurrence);
    text(alarm, 1, key);
    text(alarm, 2, user);
    sqlite3_bind_int(alarm, 3, 15);
    text(alarm, 4, sound);
    sqlite3_bind_double(alarm, 5, 0);
    sqlite3_bind_int(alarm, 6, 0);
    step(alarm);
    text(alert, 1, key);
    text(alert, 2, user);
    for (const int column : {3, 5}) sqlite3_bind_double(alert, column, date - 15.0 / (24 * 60));
    sqlite3_bind_double(alert, 4, 0);
    sqlite3_bind_int(alert, 6, 0);
    step(alert);
    date += 1;
  }
  Execute(connection, "COMMIT");
}

void Create_Set_Bare(benchmark::State& state) {
  sqlite3* connection = Bare_Connection(File_Of(true));
  const std::string user = Kt_util_01::User_Key();
  for (auto _ : state) {
    state.PauseTiming();
    const TBare_Set set = New_Keys();
    state.ResumeTiming();
    Write_Bare(connection, set, user);
    state.PauseTiming();
    Execute(connection, Remove_Set);
    state.ResumeTiming();
  }
}
BENCHMARK(Create_Set_Bare)->UseRealTime()->Unit(benchmark::kMillisecond);

// Everything of the set but its keys.
std::string Fingerprint(sqlite3* connection) {
  sqlite3_stmt* statement = Prepare(
      connection,
      "SELECT count(*) || '/' || sum(d.EventDate) || '/' || sum(d.Actioned) || '/' || count(DISTINCT d.Key) "
      "|| '/' || "
      "sum(a.Offset) || '/' || group_concat(DISTINCT a.WAVFile) || '/' || sum(a.NextTime) || '/' || "
      "min(e.Priority) || '/' || "
      "min(e.LastDate) || '/' || min(d.Contact) FROM KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key "
      "JOIN KT_Alarms a ON a.Key = d.Key WHERE e.Title = 'Daily round'");
  std::string fingerprint = "nothing";
  if (sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_text(statement, 0)) {
    fingerprint = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  }
  sqlite3_finalize(statement);
  return fingerprint;
}

[[maybe_unused]] const bool Checks = Ratio_Bench::Check_First("Create_Event writes the same rows", [] {
  Use_Database(File_Of(false));
  std::string key;
  KTReminds::Create_Event(New_Set(), key);
  sqlite3* ours = Bare_Connection(File_Of(false));
  sqlite3* bare = Bare_Connection(File_Of(true));
  Write_Bare(bare, New_Keys(), Kt_util_01::User_Key());
  const std::string written = Fingerprint(ours), expected = Fingerprint(bare);
  Execute(ours, Remove_Set);
  Execute(bare, Remove_Set);
  return written == expected && written != "nothing" ? std::string() : written + " instead of " + expected;
});

[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("Create_Event / bare statements", "Create_Set/real_time",
                              "Create_Set_Bare/real_time", 1.3, Ratio_Bench::TBound::At_Most);

}  // namespace
