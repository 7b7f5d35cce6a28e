#pragma once

// What is typed for an alarm, as an alarm, and the alarm that is stored.

#include <optional>
#include <string>

#include "Alarm_Sounds.h"
#include "Event_Record.h"
#include "Refusal.h"

namespace KTReminds {

/// An offset typed into a combo box, put into its canonical form where it can be.
TRefusal Validate_Alarm_Offset(std::string& text, int& offset);

/// An alarm given as a day and a time of day, for something due on a day: `offset` counts back from that
/// day's midnight. `time_control` and `date_control` name what a refusal points at.
TRefusal Validate_Alarm_Moment(TDateTime due, TDateTime day, const std::string& time_text, int& offset,
                               const std::string& time_control, const std::string& date_control);

/// The day and the time of day at which the alarm of something due on a day fires; for one that is off, the
/// proposal, 08:00 on the day before.
void Show_Alarm_Moment(TDateTime due, const TAlarm& alarm, TDateTime& day, std::string& time_text);

/// What the alarm dialog's controls hold.
struct TAlarm_Input {
  bool Task_Mode = false;   // the alarm is a day and a time of day, otherwise an offset
  TDateTime EventDate = 0;  // only its day counts in task mode
  bool On = false;
  std::string Offset_Text;
  TDateTime Day = 0;
  std::string Time_Text;
  TSound_List Sounds;
};

/// Fills all of `alarm` but its NextTime. A refusal leaves it off.
TRefusal Validate_Alarm(TAlarm_Input& input, TAlarm& alarm);

/// An occurrence and its alarm, which is on.
struct TStored_Alarm {
  TDateTime EventDate = 0;
  TAlarm Alarm;
};
/// Nothing without either row. Throws EData_Error.
std::optional<TStored_Alarm> Read_Stored_Alarm(const std::string& occurrence);
/// Changes the alarm's row, or deletes it when the alarm is off. False when the rows are gone or the update
/// was refused or failed, which is reported.
bool Write_Stored_Alarm(const std::string& occurrence, const TAlarm& alarm);

}  // namespace KTReminds
