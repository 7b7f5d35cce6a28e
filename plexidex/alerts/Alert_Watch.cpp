#include "Alert_Watch.h"

#include <algorithm>
#include <set>
#include <utility>

#include "Database.h"
#include "Entry_Rows.h"
#include "Entry_Walk.h"
#include "Event_Rows.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Marking.h"
#include "UTC_Clock.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace KTReminds;

namespace {

bool May_Change(const TTable& events, const TTable& occurrences) {
  return Access_Allowed(occurrences.Text(Occurrence_Columns().Contact), Access_Update) && !Is_Hidden(events);
}

}  // namespace

bool TAlert_Watch::Look() {
  TDatabase& open = Shared_Database();
  if (Update_Is_Open()) return false;
  // Looking for the zone can cost more than all the rest.
  constexpr std::int64_t of_a_minute = 60'000;
  const std::int64_t minute = Kt_util_01::To_Msecs(Kt_util_01::Now()) / of_a_minute;
  if (std::exchange(zone_looked_at, minute) != minute) Kt_util_01::Follow_Time_Zone();
  if (!open.Is_Open()) return false;
  const bool is_other = database != open.Path() || user != Kt_util_01::User_Key();
  elsewhere = !lock.Take(open.Path(), Kt_util_01::User_Key());
  const std::uint64_t now_changes = Change_Numbers().All;
  const TDateTime now = Kt_util_01::Now();
  if (elsewhere) {
    const bool had = !entries.empty();
    entries.clear();
    news.clear();
    changes = 0;
    return had;
  }
  if (!is_other && now_changes == changes && now >= looked_at && !(next && *next <= now)) return false;
  if (is_other) {
    entries.clear();
    latest = 0;
  }
  database = open.Path();
  user = Kt_util_01::User_Key();
  // What was shown before the hour that comes twice, or before a journey, stays. A clock that was set back
  // farther than from the first time zone to the last was wrong, and what is not due yet after all goes.
  constexpr double widest_journey = 26.0 / 24;
  const TDateTime shown_until = latest > now && latest - now <= widest_journey ? latest : now;
  Read_Entries(now, shown_until);
  changes = now_changes;
  looked_at = now;
  latest = shown_until;
  return true;
}

void TAlert_Watch::Read_Entries(TDateTime now, TDateTime shown_until) {
  const TSnapshot snapshot;
  std::set<std::pair<std::string, TDateTime>> known;
  for (const TAlert_Entry& entry : entries) known.emplace(entry.Key(), entry.Alert.Due);
  entries.clear();
  news.clear();
  TTable occurrences(Events_Data, "Key", {"Key", "Contact", "Book", "Event", "Actioned", "EventDate"});
  TTable events = Entry_Events("Key"), contacts = Entry_Contacts(), alarms(Alarms_Table, "Key");
  for (const TAlert& alert : Due_Alerts(shown_until)) {
    const bool is_known = known.contains({alert.Occurrence, alert.Due});
    if (alert.Due > now && !is_known) continue;
    if (!occurrences.FindKey({alert.Occurrence})) continue;
    const TOccurrence_Columns& column = Occurrence_Columns();
    if (occurrences.Boolean(column.Actioned) || !events.FindKey({occurrences.Text(column.Event)}) ||
        !Is_Visible(contacts, occurrences.Text(column.Contact)) || !alarms.FindKey({alert.Occurrence}))
      continue;
    const auto entry = Entry_At(occurrences, events, contacts);
    TAlert_Entry made;
    made.Alert = alert;
    made.Private = entry->Private;
    made.Title = entry->Private ? Hidden_Text : std::string(events.Text(Event_Columns().Title));
    if (!entry->Private) made.Location = events.Text(Event_Columns().Location);
    made.Owner = {std::string(occurrences.Text(column.Book)), entry->Contact.Str()};
    if (Calendar_Of_Book(made.Owner.Book) != made.Owner.Contact) made.Owner_Name = entry->ContactName.Str();
    made.EventDate = entry->EventDate;
    made.Timeless = entry->Timeless;
    made.Task = entry->Is_Task();
    made.May_Change = May_Change(events, occurrences);
    made.Sound = alarms.Text(Alarm_Columns().WAVFile);
    if (!is_known) news.push_back(made);
    entries.push_back(std::move(made));
  }
  next = Next_Alert(now);
}

int TAlert_Watch::Wait() const {
  // So long that nobody waits for what another program has written, or after the machine's sleep.
  constexpr double most = 5000, least = 50;
  if (!next || elsewhere) return static_cast<int>(most);
  const double until = (*next - Kt_util_01::Now()) * static_cast<double>(Kt_util_01::Msecs_Per_Day);
  return static_cast<int>(std::clamp(until + 1, least, most));
}

bool TAlert_Watch::Dismiss(const std::vector<TAlert_Entry>& entries) {
  return bool(Update("Alert_Watch:Dismiss [KT_Alerts/KT_Alarms]", [&] {
    for (const TAlert_Entry& entry : entries) Dismiss_Alert(entry.Alert);
  }));
}

bool TAlert_Watch::Put_Off(const std::vector<TAlert_Entry>& entries, int minutes) {
  const TDateTime until = Kt_util_01::Local_Time_In(minutes);
  return bool(Update("Alert_Watch:Put_Off [KT_Alarms]", [&] {
    for (const TAlert_Entry& entry : entries) Put_Off_Alert(entry.Alert, until);
  }));
}

bool TAlert_Watch::Mark_Done(const TAlert_Entry& entry) {
  TMarking::TEnd end = TMarking::TEnd::Gone;
  bool may = true;
  const bool kept(Update("Alert_Watch:Mark_Done [KT_Events/KT_Events_Data/KT_Alarms]", [&] {
    // Rights, or to whom it belongs, may have changed since it was shown.
    const auto rows = Find_Occurrence(entry.Key());
    if (!rows) return;
    may = May_Change(rows->Event, rows->Occurrence);
    if (may) end = Mark_Occurrence(entry.Key(), true).End;
  }));
  if (!may)
    Kt_util_01::Raise_Notice("\"" + entry.Title + "\" cannot be marked as done: you may not change it.");
  return kept && (!may || end == TMarking::TEnd::Marked || end == TMarking::TEnd::Gone);
}

}  // namespace Plexidex
