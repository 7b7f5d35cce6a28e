#pragma once

#include <optional>
#include <string>

namespace KTReminds {

/// Positions Events_Data on an occurrence, Events_Table on its set and Alarms_Table on its alarm, all by
/// their keys, and leaves them there for the caller. AlarmFound says whether there is an alarm. False when
/// there is no such occurrence; the other two are not moved then. Throws EData_Error.
bool Locate_Event_Data(const std::string& OccurrenceKey, bool& AlarmFound);

/// What the question before a deletion depends on.
struct TDeletion_Question {
  bool Is_Task = false;
  bool Is_Recurring = false;
};
/// Nothing when there is no such occurrence, and after a failed read, which is reported.
std::optional<TDeletion_Question> Ask_About_Deletion(const std::string& OccurrenceKey);

/// Deletes an occurrence with its alarm, and with WholeSet all others of its set with theirs; a set without
/// occurrences goes too. A one-off event has only its one occurrence. Does nothing when the occurrence is
/// gone or the update is refused; a failure is reported and undoes everything.
void Delete_Occurrence(const std::string& OccurrenceKey, bool WholeSet);

}  // namespace KTReminds
