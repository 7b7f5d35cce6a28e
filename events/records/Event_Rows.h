#pragma once

// Finding, deleting and writing the rows of an event together. Everything here uses cursors of its own, and
// throws EData_Error.

#include <optional>
#include <string>
#include <string_view>

#include "Event_Record.h"

namespace KTReminds {

/// An occurrence with what belongs to it, each a cursor on its row.
struct TOccurrence_Rows {
  TTable Occurrence, Event, Alarm;
  bool Has_Alarm = false;  // otherwise Alarm stands nowhere
};

/// Nothing when there is no such occurrence, or its master is missing.
std::optional<TOccurrence_Rows> Find_Occurrence(std::string_view key);

/// Deletes an occurrence with its alarm, and its master when that has no other.
void Delete_Event(TOccurrence_Rows& rows);
/// Deletes the occurrences of a master with their alarms, but for one of them ("" for none).
void Delete_Occurrences(std::string_view event, std::string_view but = {});
/// Deletes a master with all its occurrences and their alarms. Does nothing for one that is not there.
void Delete_Set(std::string_view event);

/// Makes a user the owner of all alarms of a master's occurrences.
void Write_Alarm_Users(std::string_view event, std::string_view user);

/// Adds occurrences to one master.
class TOccurrence_Writer {
 public:
  /// The texts are not copied and must outlive the writer.
  TOccurrence_Writer(std::string_view event, const TOwner& owner, std::string_view user);
  /// Returns the new occurrence's key.
  std::string Write(TDateTime date, bool actioned, const TAlarm& alarm);

 private:
  const std::string_view event, user;
  const TOwner& owner;
  TTable occurrences, alarms;
};

}  // namespace KTReminds
