#include "Event_Creation.h"

#include "Event_Rows.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// Writes the occurrences of a new event, and remembers the first one's key.
class TCreation {
 public:
  TCreation(const TNew_Event& event, const std::string& key)
      : event(event), writer(key, event.Owner, event.Record.User), today(Whole_Day(Today())) {}

  void Write(TDateTime date) {
    const bool actioned = event.MarkPastActioned && (today > Whole_Day(date) || event.Actioned);
    if (!event.Adjust) return Keep(writer.Write(date, actioned, event.Alarm));
    TNew_Occurrence occurrence{date, actioned, event.Alarm};
    if (event.Adjust(occurrence)) Keep(writer.Write(occurrence.Date, occurrence.Actioned, occurrence.Alarm));
  }
  const std::string& First() const { return first; }

 private:
  void Keep(std::string&& key) {
    if (first.empty()) first = std::move(key);
  }

  const TNew_Event& event;
  TOccurrence_Writer writer;
  const std::int64_t today;
  std::string first;
};

}  // namespace

std::string Create_Event(const TNew_Event& event, std::string& EventKey) {
  std::string first;
  const TUpdate_Result result = Update("fm_Reminder:Create_Event [KT_Events,KT_Events_Data,KT_Alarms]", [&] {
    EventKey = Get_GUID();
    TEvent_Record record = event.Record;
    record.Key = EventKey;
    TTable events(Events_Table);
    Insert_Event(events, record);
    TCreation creation(event, EventKey);
    TDateTime date = event.Date.value_or(record.FirstDate);
    creation.Write(date);
    while (Next_Written_Date(record.Pattern, date)) creation.Write(date);
    for (const TDateTime extra : event.Extra) creation.Write(extra);
    first = creation.First();
  });
  return result ? first : std::string();
}

std::string Create_Event(const std::string& Contact, const std::string& Book, const std::string& Title,
                         const std::string& Location, const std::string& WAVFile, const std::string& User,
                         std::string& EventKey, TMemory_Stream* Notes, bool Alarm, bool AllDay, bool Actioned,
                         bool PeriodDefault, TDateTime FirstDate, TDateTime LastDate, int Freq, int Period,
                         int Priority, int Offset, bool P1, bool P2, bool P3, bool P4, bool P5, bool P6,
                         bool P7, bool P8, bool P9, bool P10, int Instance, int Month, int EventType,
                         bool MarkPastActioned) {
  TNew_Event event;
  event.Owner = {Book, Contact};
  TEvent_Record& record = event.Record;
  record.Title = Title;
  record.Location = Location;
  record.User = User;
  if (Notes) {
    Notes->Position = 0;
    record.Notes = Notes->Read_All();
  }
  record.AllDay = AllDay;
  record.FirstDate = FirstDate;
  record.Priority = Priority;
  record.EventType = static_cast<TEntry_Type>(EventType);
  record.Pattern.Freq = static_cast<TFrequency>(Freq);
  record.Pattern.Period = Period;
  record.Pattern.PeriodDefault = PeriodDefault;
  record.Pattern.Instance = Instance;
  record.Pattern.Month = Month;
  record.Pattern.LastDate = LastDate;
  int flag = 0;
  for (const bool on : {P1, P2, P3, P4, P5, P6, P7, P8, P9, P10}) record.Pattern.Set_Flag(flag++, on);
  event.Alarm = {Alarm, Offset, WAVFile, 0};
  event.Actioned = Actioned;
  event.MarkPastActioned = MarkPastActioned;
  return Create_Event(event, EventKey);
}

std::string Create_Event_Entry(const std::string& EventKey, const std::string& Contact,
                               const std::string& Book, const std::string& User, const std::string& WAVFile,
                               bool Alarm, bool Actioned, TDateTime EventDate, int Offset) {
  const TOwner owner{Book, Contact};
  return TOccurrence_Writer(EventKey, owner, User).Write(EventDate, Actioned, {Alarm, Offset, WAVFile, 0});
}

}  // namespace KTReminds
