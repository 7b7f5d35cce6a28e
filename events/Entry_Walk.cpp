#include "Entry_Walk.h"

#include <limits>

#include "Entry_Lists.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

struct TContact_Columns {
  const TField Key = Contacts_Table.Field("Key"), DisplayName = Contacts_Table.Field("DisplayName"),
               Deleted = Contacts_Table.Field("Deleted");
};

const TContact_Columns& Contact_Columns() {
  static const TContact_Columns columns;
  return columns;
}

// So many milliseconds before the end of a day, and what behind them still rounds to them: the dates of a set
// that began long ago are off by less.
TDateTime Before_Day_End(TDateTime date, std::int64_t msecs) {
  constexpr double rounded_down = 0.49 / static_cast<double>(Msecs_Per_Day);
  return From_Msecs((Whole_Day(date) + 1) * Msecs_Per_Day - msecs) + rounded_down;
}

}  // namespace

TWalk_Range Days_Of(const TOwner& owner, bool by_book, TDateTime first_day, TDateTime last_day) {
  return {owner, by_book, static_cast<TDateTime>(Whole_Day(first_day)), Before_Day_End(last_day, 1000)};
}

TWalk_Range Day_Of(const TOwner& owner, bool by_book, TDateTime day) {
  return {owner, by_book, static_cast<TDateTime>(Whole_Day(day)), Before_Day_End(day, 1)};
}

TWalk_Range All_Of(const TOwner& owner, bool by_book) {
  return {owner, by_book, std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max()};
}

TTable Entry_Events(std::string_view index) {
  return TTable(Events_Table, index,
                {"Title", "Location", "FirstDate", "Freq", "User", "Private", "AllDay", "Priority",
                 "EventType", "Percentage", "Status"});
}

TTable Entry_Contacts() {
  return TTable(Contacts_Table, "Key", {"DisplayName", "Deleted"});
}

bool Is_Visible(TTable& contacts, std::string_view owner) {
  return contacts.FindKey({owner}) && !contacts.Boolean(Contact_Columns().Deleted) &&
         Access_Allowed(owner, Access_See);
}

std::unique_ptr<TEventKey> Entry_At(const TTable& occurrences, const TTable& events, const TTable& contacts) {
  const TOccurrence_Columns& occurrence = Occurrence_Columns();
  const TEvent_Columns& master = Event_Columns();
  auto entry = std::make_unique<TEventKey>();
  entry->Key = TText(occurrences.Text(occurrence.Key));
  entry->Description = events.Shared_Text(master.Title);
  entry->User = events.Shared_Text(master.User);
  entry->Private = Is_Hidden(events);
  entry->EventType = Read_Entry_Type(events);
  entry->Percentage = static_cast<int>(events.Integer(master.Percentage));
  if (entry->Is_Task()) {
    entry->FirstText =
        TText(Task_Status_Text(static_cast<TTask_Status>(events.Integer(master.Status)), entry->Percentage));
    entry->SecondText = entry->Description;
  } else {
    entry->FirstText = entry->Description;
    entry->SecondText = events.Shared_Text(master.Location);
  }
  entry->Contact = contacts.Shared_Text(Contact_Columns().Key);
  entry->ContactName = contacts.Shared_Text(Contact_Columns().DisplayName);
  entry->Timeless = events.Boolean(master.AllDay);
  entry->Priority = static_cast<int>(events.Integer(master.Priority));
  entry->FirstDate = events.DateTime(master.FirstDate);
  entry->EventDate = occurrences.DateTime(occurrence.EventDate);
  entry->Done = occurrences.Boolean(occurrence.Actioned);
  return entry;
}

TEntry_Walk::TEntry_Walk(const TWalk_Range& range, TAlarm_Key alarm_key, TReading reading)
    : occurrences(Events_Data, range.By_Book ? "BookandDate" : "ContactandDate",
                  {"Key", "Contact", "Event", "Actioned", "EventDate"}),
      events(Entry_Events("Key")),
      contacts(Entry_Contacts()),
      alarms(Alarms_Table, "Key", {"Key"}),
      alarm_key(alarm_key) {
  const std::string& owner = range.By_Book ? range.Owner.Book : range.Owner.Contact;
  occurrences.SetRange({owner, range.From}, {owner, range.To});
  if (reading == TReading::Whole) {
    for (TTable* looked_up : {&events, &contacts, &alarms}) Set_Cache(*looked_up);
  }
  Set_Cache(occurrences);
  if (reading == TReading::Window) {
    const TOccurrence_Columns& column = Occurrence_Columns();
    // Over many days the same contacts come again and again, on a single one hardly.
    constexpr int few_days = 10;
    if (range.To - range.From < few_days) {
      occurrences.Prefetch(column.Contact, contacts);
    } else {
      Set_Cache(contacts);
    }
    occurrences.Prefetch(column.Event, events);
    occurrences.Prefetch(alarm_key == TAlarm_Key::Set ? column.Event : column.Key, alarms);
  }
}

std::unique_ptr<TEventKey> TEntry_Walk::Next() {
  while (true) {
    if (!started) {
      occurrences.First();
      started = true;
    } else {
      occurrences.Next();
    }
    if (occurrences.Eof()) return nullptr;
    ++passed;
    if (auto entry = Entry()) return entry;
  }
}

std::unique_ptr<TEventKey> TEntry_Walk::Entry() {
  const TOccurrence_Columns& occurrence = Occurrence_Columns();
  if (!Is_Visible(contacts, occurrences.Text(occurrence.Contact))) return nullptr;
  const std::string_view event = occurrences.Text(occurrence.Event);
  if (!events.FindKey({event})) return nullptr;
  auto entry = Entry_At(occurrences, events, contacts);
  if (!entry->Done && entry->User == User_Key())
    entry->Alarm = alarms.FindKey({alarm_key == TAlarm_Key::Set ? event : entry->Key.View()});
  return entry;
}

}  // namespace KTReminds
