// The editor of events: opening it against its bare layout, saving in a large and a small database, writing a
// set anew against bare statements.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Bench_Database.h"
#include "Bench_Windows.h"
#include "Event_Creation.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"
#include "fm_Reminder.h"
#include "ui_Editor_Pages.h"
#include "ui_fm_Reminder.h"

namespace {

using namespace Bench;
using Kt_util_01::TDateTime;

constexpr int Set_Length = 3650;
constexpr TDateTime First_Date = First_Day + 0.375;

/// Runs what opens a modal dialog, and closes the dialog once it has been painted whole.
class TFirst_Paint : public QObject {
 public:
  explicit TFirst_Paint(std::function<void()> painted) : on_painted(std::move(painted)) {
    qApp->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (dialog && event->type() == QEvent::Paint && !seen) {
      seen = true;
      // The rest of the window is painted before the event loop comes round again.
      QTimer::singleShot(0, dialog, [this, dialog] {
        on_painted();
        dialog->reject();
      });
    }
    return false;
  }

 private:
  const std::function<void()> on_painted;
  bool seen = false;
};

void Time_Opening(benchmark::State& state, const std::function<void()>& open) {
  for (auto _ : state) {
    bool painted = false;
    {
      TFirst_Paint first([&] {
        state.PauseTiming();
        painted = true;
      });
      open();
    }
    if (!painted) return state.SkipWithError("no window was painted");
    state.ResumeTiming();
  }
}

// Of equal content for each use, so that what one writes is not there for the others.
enum TCopy { Copy_Open = 3, Copy_Rewrite, Copy_Bare, Copy_Save };

const std::string& File_Of(int occurrences, TCopy copy) {
  return Database_File(Size_Of(occurrences), copy);
}

/// Makes an event, or a set, in the database in use; the key of its first date.
std::string Make(int days) {
  KTReminds::TNew_Event event;
  event.Owner = {Book, Calendar};
  event.Record.Title = days > 1 ? "Daily round" : "Meeting";
  event.Record.User = Kt_util_01::User_Key();
  event.Record.FirstDate = First_Date;
  if (days > 1) event.Record.Pattern.Freq = KTReminds::TFrequency::Daily;
  event.Record.Pattern.LastDate = First_Day + days - 1;
  event.Alarm = {true, 15, "<Default Sound>", 0};
  std::string master;
  return KTReminds::Create_Event(event, master);
}

/// The entry of one file, made at the first call, with the file in use.
const std::string& Entry_Of(const std::string& file, int days) {
  static std::map<std::string, std::string> keys;
  Use_Database(file);
  std::string& key = keys[file];
  if (key.empty()) key = Make(days);
  return key;
}

void Open_Editor(benchmark::State& state) {
  Need_Windows();
  const std::string& key = Entry_Of(File_Of(100'000, Copy_Open), 1);
  Time_Opening(state, [&] { KTReminds::Reminder_Properties(key, {}, Book, {}, false); });
}
BENCHMARK(Open_Editor)->Unit(benchmark::kMillisecond);

// The pages that the editor shows for a single event.
void Open_Layout(benchmark::State& state) {
  Need_Windows();
  Time_Opening(state, [] {
    QDialog dialog;
    Ui::Reminder_Frm form;
    Ui::Editor_Pages pages;
    form.setupUi(&dialog);
    pages.setupUi(form.PageControl1);
    const int page = form.PageControl1->indexOf(form.RecurrencePage);
    form.PageControl1->setTabVisible(page, false);
    form.PageControl1->setCurrentIndex(page + 1);
    dialog.exec();
  });
}
BENCHMARK(Open_Layout)->Unit(benchmark::kMillisecond);

bool Save(KTReminds::TReminder_Rules& rules) {
  return rules.Validate().Empty() && rules.Process_Update();
}

void Save_Title(benchmark::State& state) {
  const std::string& key = Entry_Of(File_Of(static_cast<int>(state.range(0)), Copy_Save), 1);
  int round = 0;
  for (auto _ : state) {
    state.PauseTiming();
    KTReminds::TReminder_Rules rules;
    const bool opened = rules.Open(key, {Book, {}}, {}, false);
    rules.Subject = "Meeting, moved " + std::to_string(++round) + " times";
    state.ResumeTiming();
    if (!opened || !Save(rules)) return state.SkipWithError("nothing was saved");
  }
}
BENCHMARK(Save_Title)->Arg(1'000)->Arg(100'000)->UseRealTime()->Unit(benchmark::kMillisecond);

// The hour that the dates of the set move to.
TDateTime Time_Of(int round) {
  return (8.0 + round % 8) / 24;
}

bool Open_Set(KTReminds::TReminder_Rules& rules, const std::string& key, TDateTime time) {
  if (!rules.Open(key, {Book, {}}, {}, false)) return false;
  rules.Open_Whole_Set();
  rules.Time_Text = Kt_util_01::FormatDateTime("t", time);
  return rules.Validate().Empty() && rules.Check_If_Recurrence_Changed();
}

void Rewrite_Set(benchmark::State& state) {
  const std::string& key = Entry_Of(File_Of(100'000, Copy_Rewrite), Set_Length);
  static int round = 0;
  for (auto _ : state) {
    state.PauseTiming();
    KTReminds::TReminder_Rules rules;
    const bool opened = Open_Set(rules, key, Time_Of(++round));
    state.ResumeTiming();
    if (!opened || !rules.Process_Update()) return state.SkipWithError("nothing was saved");
  }
}
BENCHMARK(Rewrite_Set)->UseRealTime()->Unit(benchmark::kMillisecond);

/// The same deletes and inserts as statements, three of them for all the deletes.
class TBare_Set {
 public:
  TBare_Set(const std::string& file, const std::string& first_key)
      : connection(Bare_Connection(file)), first(first_key), user(Kt_util_01::User_Key()) {
    sqlite3_stmt* find = Prepare(connection, "SELECT Event FROM KT_Events_Data WHERE Key = ?");
    Bind(find, 1, first);
    if (sqlite3_step(find) == SQLITE_ROW) event = reinterpret_cast<const char*>(sqlite3_column_text(find, 0));
    sqlite3_finalize(find);
    clear_alerts = Prepare(connection,
                           "DELETE FROM KT_Alerts WHERE Occurrence IN (SELECT Key FROM KT_Events_Data WHERE "
                           "Event = ? AND Key <> ?)");
    clear_alarms = Prepare(connection,
                           "DELETE FROM KT_Alarms WHERE Key IN (SELECT Key FROM KT_Events_Data WHERE Event = "
                           "? AND Key <> ?)");
    clear_dates = Prepare(connection, "DELETE FROM KT_Events_Data WHERE Event = ? AND Key <> ?");
    move_first = Prepare(connection, "UPDATE KT_Events_Data SET EventDate = ?, Actioned = 0 WHERE Key = ?");
    move_alert = Prepare(connection,
                         "UPDATE KT_Alerts SET Moment = ?1 - 15 / 1440.0, Due = ?1 - 15 / 1440.0 WHERE "
                         "Occurrence = ?2");
    move_event = Prepare(connection, "UPDATE KT_Events SET FirstDate = ? WHERE Key = ?");
    add_date = Prepare(connection,
                       "INSERT INTO KT_Events_Data (Key, Contact, Book, Event, Actioned, EventDate) VALUES "
                       "(?, ?, ?, ?, 0, ?)");
    add_alarm = Prepare(connection,
                        "INSERT INTO KT_Alarms (Key, User, Offset, WAVFile, NextTime, Actioned) VALUES (?, "
                        "?, 15, '<Default Sound>', 0, 0)");
    add_alert = Prepare(connection,
                        "INSERT INTO KT_Alerts (Occurrence, User, Moment, NextTime, Due, Dismissed) VALUES "
                        "(?1, ?2, ?3 - 15 / 1440.0, 0, ?3 - 15 / 1440.0, ?3 - 15 / 1440.0 <= ?4)");
  }

  static std::vector<std::string> New_Keys() {
    std::vector<std::string> keys;
    for (int i = 1; i < Set_Length; ++i) keys.push_back(Kt_util_01::Get_GUID());
    return keys;
  }

  void Rewrite(TDateTime time, const std::vector<std::string>& keys) {
    TDateTime date = First_Day + time;
    const TDateTime now = Kt_util_01::Now();
    Execute(connection, "BEGIN IMMEDIATE");
    for (sqlite3_stmt* clear : {clear_alerts, clear_alarms, clear_dates}) {
      Bind(clear, 1, event);
      Bind(clear, 2, first);
      Step(clear);
    }
    for (const auto& [move, key] :
         {std::pair(move_first, &first), {move_alert, &first}, {move_event, &event}}) {
      sqlite3_bind_double(move, 1, date);
      Bind(move, 2, *key);
      Step(move);
    }
    for (const std::string& key : keys) {
      Bind(add_date, 1, key);
      Bind(add_date, 2, Calendar);
      Bind(add_date, 3, Book);
      Bind(add_date, 4, event);
      sqlite3_bind_double(add_date, 5, date += 1);
      Step(add_date);
      Bind(add_alarm, 1, key);
      Bind(add_alarm, 2, user);
      Step(add_alarm);
      Bind(add_alert, 1, key);
      Bind(add_alert, 2, user);
      sqlite3_bind_double(add_alert, 3, date);
      sqlite3_bind_double(add_alert, 4, now);
      Step(add_alert);
    }
    Execute(connection, "COMMIT");
  }

 private:
  static void Bind(sqlite3_stmt* statement, int parameter, const std::string& text) {
    sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
  }
  static void Step(sqlite3_stmt* statement) {
    sqlite3_step(statement);
    sqlite3_reset(statement);
  }

  sqlite3* const connection;
  const std::string first, user;
  std::string event;
  sqlite3_stmt *clear_alerts, *clear_alarms, *clear_dates, *move_first, *move_alert, *move_event, *add_date,
      *add_alarm, *add_alert;
};

TBare_Set& Bare_Set() {
  const std::string& file = File_Of(100'000, Copy_Bare);
  static TBare_Set set(file, Entry_Of(file, Set_Length));
  return set;
}

void Rewrite_Set_Bare(benchmark::State& state) {
  TBare_Set& set = Bare_Set();
  static int round = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const auto keys = TBare_Set::New_Keys();
    state.ResumeTiming();
    set.Rewrite(Time_Of(++round), keys);
  }
}
BENCHMARK(Rewrite_Set_Bare)->UseRealTime()->Unit(benchmark::kMillisecond);

// Everything of the set but its keys.
std::string Fingerprint(const std::string& file) {
  sqlite3_stmt* statement = Prepare(
      Bare_Connection(file),
      "SELECT count(*) || '/' || round(sum(d.EventDate), 3) || '/' || sum(d.Actioned) || '/' || "
      "count(DISTINCT d.Key) || '/' || sum(a.Offset) || '/' || group_concat(DISTINCT a.WAVFile) || '/' || "
      "min(e.FirstDate) || '/' || min(e.LastDate) || '/' || min(d.Contact) || '/' || round(sum(k.Due), 3) || "
      "'/' || sum(k.Dismissed) FROM KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key JOIN KT_Alarms a ON "
      "a.Key = d.Key JOIN KT_Alerts k ON k.Occurrence = d.Key WHERE e.Title = 'Daily round'");
  std::string fingerprint = "nothing";
  if (sqlite3_step(statement) == SQLITE_ROW && sqlite3_column_text(statement, 0))
    fingerprint = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  sqlite3_finalize(statement);
  return fingerprint;
}

[[maybe_unused]] const bool Checks = Ratio_Bench::Check_First("A set is written anew as the same rows", [] {
  const std::string& ours = File_Of(100'000, Copy_Rewrite);
  const std::string& bare = File_Of(100'000, Copy_Bare);
  Bare_Set().Rewrite(Time_Of(4), TBare_Set::New_Keys());
  const std::string& key = Entry_Of(ours, Set_Length);
  KTReminds::TReminder_Rules rules;
  if (!Open_Set(rules, key, Time_Of(4)) || !rules.Process_Update()) return std::string("nothing was saved");
  const std::string written = Fingerprint(ours), expected = Fingerprint(bare);
  return written == expected && written != "nothing" ? std::string() : written + " instead of " + expected;
});

using Ratio_Bench::Expect_Ratio;
using Ratio_Bench::TBound;
[[maybe_unused]] const bool Ratios =
    Expect_Ratio("Open_Editor / bare layout", "Open_Editor", "Open_Layout", 1.5, TBound::At_Most) &
    Expect_Ratio("Save_Title of 100,000 / of 1,000", "Save_Title/100000/real_time",
                 "Save_Title/1000/real_time", 1.5, TBound::At_Most) &
    Expect_Ratio("Rewrite_Set / bare statements", "Rewrite_Set/real_time", "Rewrite_Set_Bare/real_time", 1.5,
                 TBound::At_Most);

}  // namespace
