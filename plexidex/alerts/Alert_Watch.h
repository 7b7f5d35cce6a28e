#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Alert_Lock.h"
#include "Alerts.h"
#include "Event_Record.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

/// A reminder that has gone off and waits for an answer.
struct TAlert_Entry {
  Kt_data_01::TAlert Alert;
  std::string Title, Location;
  KTReminds::TOwner Owner;
  std::string Owner_Name;  // of the contact, "" for the calendar itself
  TDateTime EventDate = 0;
  bool Timeless = false, Task = false;
  bool Private = false;     // another user's
  bool May_Change = false;  // so that it may be marked done
  std::string Sound;        // as the alarm has it, "" for the default

  const std::string& Key() const { return Alert.Occurrence; }
};

/// What the current user's alarms ask for. To be looked at every few seconds; a look without news costs next
/// to nothing.
class TAlert_Watch {
 public:
  /// Reads what is due, by the time zone that the system has now. False when nothing has changed since the
  /// last look, or when now is no time to look: an update is open, no database is, or another program shows
  /// this user's reminders. Throws EData_Error.
  bool Look();
  /// Whether the last look found that another program shows them.
  bool Is_Elsewhere() const { return elsewhere; }
  /// What is due and unanswered, the first due first.
  const std::vector<TAlert_Entry>& Entries() const { return entries; }
  /// Those of them that the look before did not have.
  const std::vector<TAlert_Entry>& News() const { return news; }
  /// How long to wait for the next look, in milliseconds.
  int Wait() const;

  /// Answers. Each is one update, reported when it fails; false when it was refused or failed.
  static bool Dismiss(const std::vector<TAlert_Entry>& entries);
  static bool Put_Off(const std::vector<TAlert_Entry>& entries, int minutes);
  /// One that is gone meanwhile counts as done. A notice tells of one that may not be changed any more, which
  /// is true too, as there is nothing to try again.
  static bool Mark_Done(const TAlert_Entry& entry);

 private:
  void Read_Entries(TDateTime now, TDateTime shown_until);

  TAlert_Lock lock;
  bool elsewhere = false;
  std::string database, user;  // of the last look
  std::uint64_t changes = 0;
  TDateTime looked_at = 0, latest = 0;
  std::int64_t zone_looked_at = 0;  // the minute
  std::optional<TDateTime> next;
  std::vector<TAlert_Entry> entries, news;
};

/// When it is, as "23/11/2026 09:30"; of what has no time, the day.
std::string When_Text(const TAlert_Entry& entry);
/// How far off it is, as "in 15 minutes", "now", "2 hours late", "tomorrow".
std::string Lateness_Text(const TAlert_Entry& entry, TDateTime now);
/// All in one line, as a terminal and a notification show it.
std::string Alert_Text(const TAlert_Entry& entry, TDateTime now);
/// "1 reminder", "3 reminders".
std::string Count_Text(int count);

/// For how long alerts are usually put off, in minutes.
const std::vector<int>& Usual_Delays();
/// "5 minutes", "1 hour", "2 days".
std::string Delay_Text(int minutes);
/// Reads "5", "20 m", "2 hours", "1 day", or "1 week"; nothing for another text, for none at all, and for
/// more than ten years.
std::optional<int> Delay_From_Text(const std::string& text);

}  // namespace Plexidex
