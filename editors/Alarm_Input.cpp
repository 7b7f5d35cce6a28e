#include "Alarm_Input.h"

#include "Alarm_Texts.h"
#include "Event_Rows.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr int Proposed_Task_Offset = 960;  // 08:00 on the day before

}  // namespace

TRefusal Validate_Alarm_Offset(std::string& text, int& offset) {
  const int minutes = Convert_Alarm_ItemText(text);
  if (minutes >= 0) {
    offset = minutes;
    return {};
  }
  return {"Invalid Reminder Specified",
          "The offset for the Reminder is invalid.\r\n\r\n"
          "Please specify an offset in one of the following formats: - \r\n\r\n"
          "     ? minutes ( or ? )\r     ? hours ( or ? h)\r     ? days ( or ? d )",
          {}};
}

TRefusal Validate_Alarm_Moment(TDateTime due, TDateTime day, const std::string& time_text, int& offset,
                               const std::string& time_control, const std::string& date_control) {
  TDateTime time = 0;
  if (!Str2Time(time_text, time)) {
    return Refuse_Time("Invalid Time", time_control);
  }
  const auto due_day = static_cast<TDateTime>(Whole_Day(due)),
             alarm_day = static_cast<TDateTime>(Whole_Day(day));
  if (alarm_day > due_day) {
    return {
        "Validation Failed",
        "The Reminder Date cannot be later that the Date the Task is Due. Please respecify before continuing",
        date_control};
  }
  offset = static_cast<int>(Get_Alarm_Offset(due_day, alarm_day + time));
  return {};
}

void Show_Alarm_Moment(TDateTime due, const TAlarm& alarm, TDateTime& day, std::string& time_text) {
  const auto midnight = static_cast<TDateTime>(Whole_Day(due));
  const TDateTime moment = SubtractMins(midnight, alarm.On ? alarm.Offset : Proposed_Task_Offset);
  day = static_cast<TDateTime>(Whole_Day(moment));
  time_text = FormatDateTime("t", moment);
}

TRefusal Validate_Alarm(TAlarm_Input& input, TAlarm& alarm) {
  const TAlarm off;
  alarm.On = off.On;
  alarm.Offset = off.Offset;
  alarm.WAVFile = off.WAVFile;
  if (!input.On) return {};
  int offset = off.Offset;
  TRefusal refusal;
  if (input.Task_Mode) {
    refusal =
        Validate_Alarm_Moment(input.EventDate, input.Day, input.Time_Text, offset, "AlarmTime", "AlarmDate");
  } else {
    refusal = Validate_Alarm_Offset(input.Offset_Text, offset);
    refusal.Control = "Alarmbox";
  }
  if (!refusal.Empty()) return refusal;
  alarm.On = true;
  alarm.Offset = offset;
  alarm.WAVFile = input.Sounds.Stored_Value();
  return {};
}

std::optional<TStored_Alarm> Read_Stored_Alarm(const std::string& occurrence) {
  const auto rows = Find_Occurrence(occurrence);
  if (!rows || !rows->Has_Alarm) return std::nullopt;
  return TStored_Alarm{rows->Occurrence.DateTime(Occurrence_Columns().EventDate), Read_Alarm(rows->Alarm)};
}

bool Write_Stored_Alarm(const std::string& occurrence, const TAlarm& alarm) {
  constexpr auto tag = "fm_Alarm_Props:Set_Alarm_Properties [KT_Events_Data/KT_Alarms]";
  bool found = Read(tag, [&] { return Read_Stored_Alarm(occurrence).has_value(); }).value_or(false);
  if (!found) return false;
  const TUpdate_Result result = Update(tag, [&] {
    auto rows = Find_Occurrence(occurrence);
    found = rows && rows->Has_Alarm;
    if (!found) return;
    Write_Alarm(rows->Alarm, true, Read_Occurrence(rows->Occurrence),
                std::string(rows->Alarm.Text(Alarm_Columns().User)), alarm);
  });
  return result && found;
}

}  // namespace KTReminds
