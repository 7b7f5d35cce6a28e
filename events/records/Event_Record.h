#pragma once

// The rows of one event: its master, which holds all that a whole set shares, its occurrences and their
// alarms. Here alone their columns are named.

#include <array>
#include <string>

#include "Kt_data_01.h"
#include "Recurrence.h"

namespace KTReminds {

using Kt_data_01::TEntry_Type;
using Kt_data_01::TField;
using Kt_data_01::TTable;

/// `Status` of a task. Stored, and the position in lists of them: never renumber. A damaged row may hold any
/// number.
enum class TTask_Status : int {
  Not_Started = 0,
  In_Progress = 1,
  Completed = 2,
  Pending = 3,
  Postponed = 4,
  Cancelled = 5
};

/// Whom occurrences belong to.
struct TOwner {
  std::string Book;
  std::string Contact;  // key of a contact, or of the book's calendar record
};

/// How far a task is. Nothing of an event.
struct TTask_Progress {
  TTask_Status Status = TTask_Status::Not_Started;
  std::int64_t Percentage = 0;
  std::int64_t Started = 0, Completed = 0;  // day numbers, 0 for none
  std::int64_t Budget = 0, Worked = 0;      // hundredths
};

/// Journal activity of what is not recorded when it is completed.
inline constexpr int No_Activity = -1;

/// A master: a one-off event, a task, or what the occurrences of a set have in common.
struct TEvent_Record {
  std::string Key;
  std::string Title, Location;
  std::string Notes;
  std::string User;         // key of the user who owns it
  TDateTime FirstDate = 0;  // of the first occurrence; the start of a task
  TRecurrence_Pattern Pattern;
  int Priority = 5;  // 1 (highest) to 9
  TEntry_Type EventType = TEntry_Type::Event;
  bool AllDay = false;
  bool Private = false;
  TTask_Progress Progress;
  int Activity = No_Activity;  // what completing an occurrence is recorded as
};

struct TOccurrence {
  std::string Key;
  TOwner Owner;
  std::string Event;  // key of the master
  bool Actioned = false;
  TDateTime EventDate = 0;
};

/// An alarm, as an occurrence has it or an editor holds it. The row's user is that of the master, and its
/// `Actioned` follows the occurrence.
struct TAlarm {
  bool On = false;         // off is no row at all
  int Offset = 15;         // minutes before the occurrence; negative when it fires later
  std::string WAVFile;     // a file's path, or one of the texts that stand for the default and the beep
  TDateTime NextTime = 0;  // when it was put off to; 0 when it was not

  bool operator==(const TAlarm&) const = default;
};

/// Columns, looked up once. They hold for every cursor on their table.
struct TEvent_Columns {
  TField Key, FirstDate, Title, Location, LastDate, Freq, Period, Priority, PeriodDefault, User, AllDay,
      Private, Month, Instance, EventType, Started, Completed, Percentage, Status, Budget, Worked, Type,
      Notes;
  std::array<TField, 10> P;
};
struct TOccurrence_Columns {
  TField Key, Contact, Book, Event, Actioned, EventDate;
};
struct TAlarm_Columns {
  TField Key, User, Offset, WAVFile, NextTime, Actioned;
};
const TEvent_Columns& Event_Columns();
const TOccurrence_Columns& Occurrence_Columns();
const TAlarm_Columns& Alarm_Columns();

/// Read a cursor's current row, which must have all columns. All of these throw EData_Error.
TEvent_Record Read_Event(const TTable& events);
TRecurrence_Pattern Read_Pattern(const TTable& events);
TEntry_Type Read_Entry_Type(const TTable& events);
/// Whether the event is another user's private one, which the current user may know no more of than when it
/// is.
bool Is_Hidden(const TTable& events);
TTask_Progress Read_Progress(const TTable& events);
TOccurrence Read_Occurrence(const TTable& occurrences);
TAlarm Read_Alarm(const TTable& alarms);

/// Write a row, inside an update bracket. `Insert_` adds one, the others change the current one and write no
/// more than what differs from it as it is stored now.
void Insert_Event(TTable& events, const TEvent_Record& event);
/// Keeps the key.
void Write_Event(TTable& events, const TEvent_Record& event);
void Write_Progress(TTable& events, const TTask_Progress& progress);
/// Keeps the keys of occurrence and master.
void Write_Occurrence(TTable& occurrences, const TOccurrence& occurrence);
/// Makes the alarm of an occurrence what it shall be, by inserting, changing or deleting its row. `found`
/// says whether the cursor stands on that row.
void Write_Alarm(TTable& alarms, bool found, const TOccurrence& occurrence, std::string_view user,
                 const TAlarm& alarm);

}  // namespace KTReminds
