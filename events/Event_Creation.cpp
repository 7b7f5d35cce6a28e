#include "Event_Creation.h"

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

void Write_Master(const TNew_Event& event, const std::string& key) {
  const TRecurrence_Pattern& pattern = event.Pattern;
  TTable events(Events_Table);
  const auto set = [&events](std::string_view column, const TValue& value) {
    events.Set(events.Field(column), value);
  };
  events.Insert();
  set("Key", key);
  set("Title", event.Title);
  set("Location", event.Location);
  set("FirstDate", event.FirstDate);
  set("LastDate", pattern.LastDate);
  set("Freq", pattern.Freq);
  set("Period", pattern.Period);
  set("Priority", event.Priority);
  set("PeriodDefault", pattern.PeriodDefault);
  set("User", event.User);
  set("AllDay", event.AllDay);
  set("Private", event.Private);
  for (int i = 0; i < 10; ++i) set("P" + std::to_string(i + 1), pattern.Flag(i));
  set("Month", pattern.Month);
  set("Instance", pattern.Instance);
  set("EventType", event.EventType);
  for (const std::string_view column : {"Started", "Completed", "Percentage", "Status", "Budget", "Worked"})
    set(column, 0);
  if (event.Notes) {
    TBlob_Stream blob(events, events.Field("Notes"), TBlob_Stream::TMode::Write);
    event.Notes->Position = 0;
    blob.Write(event.Notes->Read_All());
  }
  PostUpdate(events);
}

}  // namespace

TOccurrence_Writer::TOccurrence_Writer(const TOf& written_for)
    : of(written_for), occurrences(Events_Data), alarms(Alarms_Table) {}

std::string TOccurrence_Writer::Write(TDateTime EventDate, bool Actioned) {
  std::string key = Get_GUID();
  occurrences.Insert();
  occurrences.SetFields({key, of.Contact, of.Book, of.EventKey, Actioned, EventDate});
  PostUpdate(occurrences);
  if (of.Alarm) {
    constexpr TDateTime not_scheduled = 0;
    alarms.Insert();
    alarms.SetFields({key, of.User, of.Offset, of.WAVFile, not_scheduled, Actioned});
    PostUpdate(alarms);
  }
  return key;
}

std::string Create_Event(const TNew_Event& event, std::string& EventKey) {
  if (!Start_Update()) return {};
  try {
    EventKey = Get_GUID();
    Write_Master(event, EventKey);

    const std::int64_t today = Whole_Day(Today());
    const auto actioned_on = [&](TDateTime date) {
      return event.MarkPastActioned && (today > Whole_Day(date) || event.Actioned);
    };
    TOccurrence_Writer writer(
        {EventKey, event.Contact, event.Book, event.User, event.WAVFile, event.Alarm, event.Offset});
    std::string first = writer.Write(event.FirstDate, actioned_on(event.FirstDate));
    TDateTime date = event.FirstDate;
    while (Next_Written_Date(event.Pattern, date)) writer.Write(date, actioned_on(date));
    EndUpdate();
    return first;
  } catch (...) {
    FailUpdate("fm_Reminder:Create_Event [KT_Events,KT_Events_Data,KT_Alarms]");
    return {};
  }
}

std::string Create_Event(const std::string& Contact, const std::string& Book, const std::string& Title,
                         const std::string& Location, const std::string& WAVFile, const std::string& User,
                         std::string& EventKey, TMemory_Stream* Notes, bool Alarm, bool AllDay, bool Actioned,
                         bool PeriodDefault, TDateTime FirstDate, TDateTime LastDate, int Freq, int Period,
                         int Priority, int Offset, bool P1, bool P2, bool P3, bool P4, bool P5, bool P6,
                         bool P7, bool P8, bool P9, bool P10, int Instance, int Month, int EventType,
                         bool MarkPastActioned) {
  TNew_Event event;
  event.Contact = Contact;
  event.Book = Book;
  event.Title = Title;
  event.Location = Location;
  event.WAVFile = WAVFile;
  event.User = User;
  event.Notes = Notes;
  event.Alarm = Alarm;
  event.AllDay = AllDay;
  event.Actioned = Actioned;
  event.MarkPastActioned = MarkPastActioned;
  event.FirstDate = FirstDate;
  event.Pattern.Freq = Freq;
  event.Pattern.Period = Period;
  event.Pattern.PeriodDefault = PeriodDefault;
  event.Pattern.Instance = Instance;
  event.Pattern.Month = Month;
  event.Pattern.LastDate = LastDate;
  int flag = 0;
  for (const bool on : {P1, P2, P3, P4, P5, P6, P7, P8, P9, P10}) event.Pattern.Set_Flag(flag++, on);
  event.Priority = Priority;
  event.Offset = Offset;
  event.EventType = EventType;
  return Create_Event(event, EventKey);
}

std::string Create_Event_Entry(const std::string& EventKey, const std::string& Contact,
                               const std::string& Book, const std::string& User, const std::string& WAVFile,
                               bool Alarm, bool Actioned, TDateTime EventDate, int Offset) {
  return TOccurrence_Writer({EventKey, Contact, Book, User, WAVFile, Alarm, Offset})
      .Write(EventDate, Actioned);
}

}  // namespace KTReminds
