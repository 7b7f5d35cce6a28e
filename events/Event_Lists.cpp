#include "Event_Lists.h"

#include "Kt_util_01.h"
#include "Reminder_Utils.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr auto Owner_Index(bool by_book) {
  return by_book ? "BookandDate" : "ContactandDate";
}

struct TOccurrence_Fields {
  const TField Key = Events_Data.Field("Key"), Contact = Events_Data.Field("Contact"),
               Event = Events_Data.Field("Event"), Actioned = Events_Data.Field("Actioned"),
               EventDate = Events_Data.Field("EventDate");
};
struct TEvent_Fields {
  const TField Title = Events_Table.Field("Title"), Location = Events_Table.Field("Location"),
               FirstDate = Events_Table.Field("FirstDate"), User = Events_Table.Field("User"),
               Private = Events_Table.Field("Private"), AllDay = Events_Table.Field("AllDay"),
               Priority = Events_Table.Field("Priority"), EventType = Events_Table.Field("EventType"),
               Percentage = Events_Table.Field("Percentage"), Status = Events_Table.Field("Status");
};
struct TContact_Fields {
  const TField Key = Contacts_Table.Field("Key"), DisplayName = Contacts_Table.Field("DisplayName"),
               Deleted = Contacts_Table.Field("Deleted");
};

const TOccurrence_Fields& Occurrence() {
  static const TOccurrence_Fields fields;
  return fields;
}
const TEvent_Fields& Event() {
  static const TEvent_Fields fields;
  return fields;
}
const TContact_Fields& Contact_Of() {
  static const TContact_Fields fields;
  return fields;
}

}  // namespace

TEntry_Walk::TEntry_Walk(const std::string& contact, const std::string& book, bool by_book, TDateTime from,
                         TDateTime to, TAlarm_Key key, TReading reading)
    : occurrences(Events_Data, {"Key", "Contact", "Event", "Actioned", "EventDate"}),
      events(Events_Table, {"Key", "Title", "Location", "FirstDate", "User", "Private", "AllDay", "Priority",
                            "EventType", "Percentage", "Status"}),
      contacts(Contacts_Table, {"Key", "DisplayName", "Deleted"}),
      alarms(Alarms_Table, {"Key"}),
      alarm_key(key),
      user(User_Key()) {
  occurrences.Set_Index(Owner_Index(by_book));
  const std::string& owner = by_book ? book : contact;
  occurrences.SetRange({owner, from}, {owner, to});
  for (TTable* looked_up : {&events, &contacts, &alarms}) {
    looked_up->Set_Index("Key");
    if (reading == TReading::Whole) Set_Cache(*looked_up);
  }
  Set_Cache(occurrences);
  if (reading == TReading::Window) {
    // Over many days the same contacts come again and again, on a single one hardly.
    constexpr int few_days = 2;
    if (to - from < few_days) {
      occurrences.Prefetch(Occurrence().Contact, contacts);
    } else {
      Set_Cache(contacts);
    }
    occurrences.Prefetch(Occurrence().Event, events);
    occurrences.Prefetch(alarm_key == TAlarm_Key::Set ? Occurrence().Event : Occurrence().Key, alarms);
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
  const std::string_view contact = occurrences.Text(Occurrence().Contact);
  if (!contacts.FindKey({contact}) || contacts.Boolean(Contact_Of().Deleted)) return nullptr;
  if (!Access_Allowed(contact, Access_See)) return nullptr;
  const std::string_view event = occurrences.Text(Occurrence().Event);
  if (!events.FindKey({event})) return nullptr;

  auto entry = std::make_unique<TEventKey>();
  entry->Key = TText(occurrences.Text(Occurrence().Key));
  entry->Description = events.Shared_Text(Event().Title);
  entry->EventType = static_cast<int>(events.Integer(Event().EventType));
  entry->Percentage = static_cast<int>(events.Integer(Event().Percentage));
  if (entry->EventType == Event_Type_Task) {
    entry->FirstText =
        TText(Task_Status_Text(static_cast<int>(events.Integer(Event().Status)), entry->Percentage));
    entry->SecondText = entry->Description;
  } else {
    entry->FirstText = entry->Description;
    entry->SecondText = events.Shared_Text(Event().Location);
  }
  entry->Contact = contacts.Shared_Text(Contact_Of().Key);
  entry->ContactName = contacts.Shared_Text(Contact_Of().DisplayName);
  entry->User = events.Shared_Text(Event().User);
  const bool own = events.Text(Event().User) == user;
  entry->Private = events.Boolean(Event().Private) && !own;
  entry->Timeless = events.Boolean(Event().AllDay);
  entry->Priority = static_cast<int>(events.Integer(Event().Priority));
  entry->FirstDate = events.DateTime(Event().FirstDate);
  entry->EventDate = occurrences.DateTime(Occurrence().EventDate);
  entry->Done = occurrences.Boolean(Occurrence().Actioned);
  if (own && !entry->Done)
    entry->Alarm = alarms.FindKey({alarm_key == TAlarm_Key::Set ? event : entry->Key.View()});
  return entry;
}

int State_Image(const TEventKey& entry) {
  switch (entry.EventType) {
    case TEventKey::Type_Event:
      return entry.Done ? Image_Done_Event : Image_Open_Event;
    case Event_Type_Task:
      return entry.Done ? Image_Done_Task : Image_Open_Task;
    default:
      return -1;
  }
}

}  // namespace KTReminds
