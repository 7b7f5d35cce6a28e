#include "Event_Record.h"

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;

namespace {

// Sets columns of a new row, or of one that is being edited those that differ.
class TRow_Writer {
 public:
  TRow_Writer(TTable& row, bool all) : row(row), all(all) {}

  void Set(TField field, const std::string& value) {
    if (all || row.Text(field) != value) row.Set(field, value);
  }
  void Set(TField field, std::int64_t value) {
    if (all || row.Integer(field) != value) row.Set(field, value);
  }
  void Set(TField field, int value) { Set(field, std::int64_t{value}); }
  void Set(TField field, bool value) { Set(field, std::int64_t{value ? 1 : 0}); }
  void Set(TField field, double value) {
    if (all || row.DateTime(field) != value) row.Set(field, value);
  }
  void Set_Blob(TField field, const std::string& value) {
    if (all ? !value.empty() : row.Blob(field) != value) row.Set_Blob(field, value);
  }

 private:
  TTable& row;
  const bool all;
};

void Set_Progress(TRow_Writer& row, const TTask_Progress& progress) {
  const TEvent_Columns& column = Event_Columns();
  row.Set(column.Status, static_cast<int>(progress.Status));
  row.Set(column.Percentage, progress.Percentage);
  row.Set(column.Started, progress.Started);
  row.Set(column.Completed, progress.Completed);
  row.Set(column.Budget, progress.Budget);
  row.Set(column.Worked, progress.Worked);
}

void Set_Event(TRow_Writer& row, const TEvent_Record& event) {
  const TEvent_Columns& column = Event_Columns();
  const TRecurrence_Pattern& pattern = event.Pattern;
  row.Set(column.Title, event.Title);
  row.Set(column.Location, event.Location);
  row.Set(column.FirstDate, event.FirstDate);
  row.Set(column.LastDate, pattern.LastDate);
  row.Set(column.Freq, static_cast<int>(pattern.Freq));
  row.Set(column.Period, pattern.Period);
  row.Set(column.Priority, event.Priority);
  row.Set(column.PeriodDefault, pattern.PeriodDefault);
  row.Set(column.User, event.User);
  row.Set(column.AllDay, event.AllDay);
  row.Set(column.Private, event.Private);
  for (std::size_t i = 0; i < column.P.size(); ++i) row.Set(column.P[i], pattern.Flag(static_cast<int>(i)));
  row.Set(column.Month, pattern.Month);
  row.Set(column.Instance, pattern.Instance);
  row.Set(column.EventType, static_cast<int>(event.EventType));
  Set_Progress(row, event.Progress);
  row.Set(column.Type, event.Activity);
  row.Set_Blob(column.Notes, event.Notes);
}

}  // namespace

const TEvent_Columns& Event_Columns() {
  static const TEvent_Columns columns = [] {
    const auto field = [](std::string_view name) { return Events_Table.Field(name); };
    TEvent_Columns made{field("Key"),           field("FirstDate"),  field("Title"),     field("Location"),
                        field("LastDate"),      field("Freq"),       field("Period"),    field("Priority"),
                        field("PeriodDefault"), field("User"),       field("AllDay"),    field("Private"),
                        field("Month"),         field("Instance"),   field("EventType"), field("Started"),
                        field("Completed"),     field("Percentage"), field("Status"),    field("Budget"),
                        field("Worked"),        field("Type"),       field("Notes"),     {}};
    for (std::size_t i = 0; i < made.P.size(); ++i) made.P[i] = field("P" + std::to_string(i + 1));
    return made;
  }();
  return columns;
}

const TOccurrence_Columns& Occurrence_Columns() {
  static const TOccurrence_Columns columns{Events_Data.Field("Key"),      Events_Data.Field("Contact"),
                                           Events_Data.Field("Book"),     Events_Data.Field("Event"),
                                           Events_Data.Field("Actioned"), Events_Data.Field("EventDate")};
  return columns;
}

const TAlarm_Columns& Alarm_Columns() {
  static const TAlarm_Columns columns{Alarms_Table.Field("Key"),      Alarms_Table.Field("User"),
                                      Alarms_Table.Field("Offset"),   Alarms_Table.Field("WAVFile"),
                                      Alarms_Table.Field("NextTime"), Alarms_Table.Field("Actioned")};
  return columns;
}

TRecurrence_Pattern Read_Pattern(const TTable& events) {
  const TEvent_Columns& column = Event_Columns();
  const auto number = [&events](TField field) { return static_cast<int>(events.Integer(field)); };
  TRecurrence_Pattern pattern;
  pattern.Freq = static_cast<TFrequency>(number(column.Freq));
  pattern.Period = number(column.Period);
  pattern.PeriodDefault = events.Boolean(column.PeriodDefault);
  for (std::size_t i = 0; i < column.P.size(); ++i)
    pattern.Set_Flag(static_cast<int>(i), events.Boolean(column.P[i]));
  pattern.Instance = number(column.Instance);
  pattern.Month = number(column.Month);
  pattern.LastDate = events.DateTime(column.LastDate);
  return pattern;
}

TEntry_Type Read_Entry_Type(const TTable& events) {
  return static_cast<TEntry_Type>(events.Integer(Event_Columns().EventType));
}

bool Is_Hidden(const TTable& events) {
  const TEvent_Columns& column = Event_Columns();
  return events.Boolean(column.Private) && events.Text(column.User) != Kt_util_01::User_Key();
}

TTask_Progress Read_Progress(const TTable& events) {
  const TEvent_Columns& column = Event_Columns();
  return {static_cast<TTask_Status>(events.Integer(column.Status)),
          events.Integer(column.Percentage),
          events.Integer(column.Started),
          events.Integer(column.Completed),
          events.Integer(column.Budget),
          events.Integer(column.Worked)};
}

TEvent_Record Read_Event(const TTable& events) {
  const TEvent_Columns& column = Event_Columns();
  TEvent_Record event;
  event.Key = events.Text(column.Key);
  event.Title = events.Text(column.Title);
  event.Location = events.Text(column.Location);
  event.Notes = events.Blob(column.Notes);
  event.User = events.Text(column.User);
  event.FirstDate = events.DateTime(column.FirstDate);
  event.Pattern = Read_Pattern(events);
  event.Priority = static_cast<int>(events.Integer(column.Priority));
  event.EventType = Read_Entry_Type(events);
  event.AllDay = events.Boolean(column.AllDay);
  event.Private = events.Boolean(column.Private);
  event.Progress = Read_Progress(events);
  event.Activity = static_cast<int>(events.Integer(column.Type));
  return event;
}

TOccurrence Read_Occurrence(const TTable& occurrences) {
  const TOccurrence_Columns& column = Occurrence_Columns();
  const auto text = [&occurrences](TField field) { return std::string(occurrences.Text(field)); };
  return {text(column.Key),
          {text(column.Book), text(column.Contact)},
          text(column.Event),
          occurrences.Boolean(column.Actioned),
          occurrences.DateTime(column.EventDate)};
}

TAlarm Read_Alarm(const TTable& alarms) {
  const TAlarm_Columns& column = Alarm_Columns();
  return {true, static_cast<int>(alarms.Integer(column.Offset)), std::string(alarms.Text(column.WAVFile)),
          alarms.DateTime(column.NextTime)};
}

void Insert_Event(TTable& events, const TEvent_Record& event) {
  events.Insert();
  events.Set(Event_Columns().Key, event.Key);
  TRow_Writer row(events, true);
  Set_Event(row, event);
  PostUpdate(events);
}

void Write_Event(TTable& events, const TEvent_Record& event) {
  events.Edit();
  TRow_Writer row(events, false);
  Set_Event(row, event);
  PostUpdate(events);
}

void Write_Progress(TTable& events, const TTask_Progress& progress) {
  events.Edit();
  TRow_Writer row(events, false);
  Set_Progress(row, progress);
  PostUpdate(events);
}

void Write_Occurrence(TTable& occurrences, const TOccurrence& occurrence) {
  const TOccurrence_Columns& column = Occurrence_Columns();
  occurrences.Edit();
  TRow_Writer row(occurrences, false);
  row.Set(column.Contact, occurrence.Owner.Contact);
  row.Set(column.Book, occurrence.Owner.Book);
  row.Set(column.Actioned, occurrence.Actioned);
  row.Set(column.EventDate, occurrence.EventDate);
  PostUpdate(occurrences);
}

void Write_Alarm(TTable& alarms, bool found, const TOccurrence& occurrence, std::string_view user,
                 const TAlarm& alarm) {
  if (!alarm.On) {
    if (found) alarms.Delete();
    return;
  }
  const TAlarm_Columns& column = Alarm_Columns();
  if (!found) {
    alarms.Insert();
    alarms.Set(column.Key, occurrence.Key);
  } else {
    alarms.Edit();
  }
  TRow_Writer row(alarms, !found);
  row.Set(column.User, std::string(user));
  row.Set(column.Offset, alarm.Offset);
  row.Set(column.WAVFile, alarm.WAVFile);
  row.Set(column.NextTime, alarm.NextTime);
  row.Set(column.Actioned, occurrence.Actioned);
  PostUpdate(alarms);
}

}  // namespace KTReminds
