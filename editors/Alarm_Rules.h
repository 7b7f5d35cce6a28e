#pragma once

// What an alarm is in words and in minutes, which sounds it may play, and its stored row. No window.

#include <optional>
#include <string>
#include <vector>

#include "Event_Record.h"

namespace KTReminds {

using Kt_util_01::TDateTime;

/// Sounds that are no files.
inline constexpr const char* Default_Sound_Text = "<Default Sound>";
inline constexpr const char* Standard_Beep_Text = "<Standard Beep>";

/// The offsets that combo boxes offer, in their order.
const std::vector<std::string>& Alarm_Offset_Items();

/// "15 minutes before"; hours and minutes each with their own "before"; from a day on only whole days.
std::string Convert_Offset_to_ItemText(int Minutes);

/// Reads "90", "2 h", "1 day before": a number and the first letter of its unit; whatever follows does not
/// count. Returns whole minutes, -1 for a text that is no offset, another negative number as it was typed. A
/// number of 0 or more rewrites the text to its canonical form, without a unit when the letter is unknown.
int Convert_Alarm_ItemText(std::string& Text);

/// A typed offset in its canonical form; a text that is no offset as it was typed.
std::string Canonical_Offset(const std::string& text);

/// When an alarm fires, in words: "at" a time "on" a day, or for one put off, whose NextTime is not 0,
/// "until" then.
std::string Get_Alarm_TimeStr(TDateTime EventDate, TDateTime NextTime, int Offset);

/// What an input that was refused tells the user, and where it points.
struct TRefusal {
  std::string Caption, Text;
  std::string Control;  // name of the control to be focused
  bool Empty() const { return Text.empty(); }
};

/// The refusal of what is no time of day; shows the user's short format with the minutes as "mm".
TRefusal Refuse_Time(const std::string& caption, const std::string& control);

/// An offset typed into a combo box, put into its canonical form where it can be.
TRefusal Validate_Alarm_Offset(std::string& text, int& offset);

/// An alarm given as a day and a time of day, for something due on a day: `offset` counts back from that
/// day's midnight. `time_control` and `date_control` name what a refusal points at.
TRefusal Validate_Alarm_Moment(TDateTime due, TDateTime day, const std::string& time_text, int& offset,
                               const std::string& time_control, const std::string& date_control);

/// The day and the time of day at which the alarm of something due on a day fires; for one that is off, the
/// proposal, 08:00 on the day before.
void Show_Alarm_Moment(TDateTime due, const TAlarm& alarm, TDateTime& day, std::string& time_text);

/// The sounds of one folder to choose from.
struct TSound_List {
  std::string Folder;              // ends in the separator
  std::vector<std::string> Items;  // the two texts, then bare file names
  int Selected = 0;

  /// What an alarm stores for the selected item: a text as it stands, or the file's path, empty when it is
  /// gone.
  std::string Stored_Value() const;
  /// The same for the user's default sound, which cannot be itself the default sound.
  std::string Default_Value() const;
  /// What a preview of the selected item plays: a file's path, which may be gone, or Standard_Beep_Text.
  std::string Preview_Value() const;
};

/// The folder of `current` with that file selected, or the system's sounds when `current` is no file that
/// exists.
TSound_List Build_WAV_List(const std::string& current);

/// The user's default sound.
std::string Read_Default_Sound();
void Write_Default_Sound(const std::string& value);

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
