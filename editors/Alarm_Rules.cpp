#include "Alarm_Rules.h"

#include <filesystem>
#include <limits>

#include "Event_Rows.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr int Minutes_Per_Hour = 60;
constexpr int Minutes_Per_Day = 1440;
constexpr int Proposed_Task_Offset = 960;

std::string Unit_Text(std::int64_t count, const std::string& unit) {
  return std::to_string(count) + " " + unit + (count == 1 ? "" : "s") + " before";
}

bool Is_File(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

bool Is_Sound(const std::filesystem::path& path) {
  return UpperCase(path.extension().string()) == ".WAV" && Is_File(path.string());
}

std::string With_Separator(std::string folder) {
  const char separator = static_cast<char>(std::filesystem::path::preferred_separator);
  if (folder.empty() || folder.back() != separator) folder += separator;
  return folder;
}

}  // namespace

const std::vector<std::string>& Alarm_Offset_Items() {
  static const std::vector<std::string> items = [] {
    std::vector<std::string> made;
    for (const int minutes : {0, 5, 10, 15, 30, 45}) made.push_back(Convert_Offset_to_ItemText(minutes));
    for (int hours = 1; hours <= 12; ++hours)
      made.push_back(Convert_Offset_to_ItemText(hours * Minutes_Per_Hour));
    for (int days = 1; days <= 3; ++days) made.push_back(Convert_Offset_to_ItemText(days * Minutes_Per_Day));
    return made;
  }();
  return items;
}

std::string Convert_Offset_to_ItemText(int Minutes) {
  if (Minutes < Minutes_Per_Hour) return Unit_Text(Minutes, "minute");
  if (Minutes >= Minutes_Per_Day) return Unit_Text(Minutes / Minutes_Per_Day, "day");
  const std::string hours = Unit_Text(Minutes / Minutes_Per_Hour, "hour");
  const int rest = Minutes % Minutes_Per_Hour;
  return rest == 0 ? hours : hours + " " + Unit_Text(rest, "minute");
}

int Convert_Alarm_ItemText(std::string& Text) {
  const std::size_t blank = Text.find(' ');
  std::int64_t number = 0;
  if (!Str2Int(Text.substr(0, blank), number)) return -1;

  std::int64_t factor = 1;
  std::string unit = "minute";
  bool known = true;
  if (blank != std::string::npos) {
    const char letter = blank + 1 < Text.size() ? Text[blank + 1] : '\0';
    switch (letter) {
      case 'D':
      case 'd':
        factor = Minutes_Per_Day;
        unit = "day";
        break;
      case 'H':
      case 'h':
        factor = Minutes_Per_Hour;
        unit = "hour";
        break;
      case 'M':
      case 'm':
        break;
      default:
        known = false;
        unit.clear();
    }
  }
  constexpr std::int64_t most = std::numeric_limits<int>::max();
  if (number > most / factor || number < -most / factor) return -1;
  if (number >= 0) Text = Unit_Text(number, unit);
  return known ? static_cast<int>(number * factor) : -1;
}

std::string Canonical_Offset(const std::string& text) {
  std::string rewritten = text;
  return Convert_Alarm_ItemText(rewritten) >= 0 ? rewritten : text;
}

std::string Get_Alarm_TimeStr(TDateTime EventDate, TDateTime NextTime, int Offset) {
  if (NextTime == 0)
    return FormatDateTime("\"at\" t \"on\" dddd, dd mmmm yyyy", SubtractMins(EventDate, Offset));
  return FormatDateTime("\"until\" t \"on\" dddd, dd mmmm yyyy", NextTime);
}

TRefusal Refuse_Time(const std::string& caption, const std::string& control) {
  std::string format;
  char quote = '\0';
  for (const char letter : Format_Settings().ShortTimeFormat) {
    if (letter == quote) {
      quote = '\0';
    } else if (quote == '\0' && (letter == '"' || letter == '\'')) {
      quote = letter;
    } else if (quote == '\0' && letter == ':') {
      format += Format_Settings().TimeSeparator;
    } else {
      format += quote == '\0' && letter == 'n' ? 'm' : letter;
    }
  }
  return {caption, "The Time entered is invalid. Please specify a valid time in the format " + format,
          control};
}

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

std::string TSound_List::Stored_Value() const {
  const std::string& item = Items[static_cast<std::size_t>(Selected)];
  if (Selected < 2) return item;
  const std::string file = Folder + item;
  return Is_File(file) ? file : std::string();
}

std::string TSound_List::Default_Value() const {
  return Selected < 2 ? Standard_Beep_Text : Folder + Items[static_cast<std::size_t>(Selected)];
}

std::string TSound_List::Preview_Value() const {
  return Selected == 0 ? Read_Default_Sound() : Default_Value();
}

TSound_List Build_WAV_List(const std::string& current) {
  TSound_List list;
  const bool is_file = !current.empty() && Is_File(current);
  list.Folder =
      With_Separator(is_file ? std::filesystem::path(current).parent_path().string() : Sound_Folder());
  list.Items = {Default_Sound_Text, Standard_Beep_Text};
  std::error_code failed;
  for (std::filesystem::directory_iterator file(list.Folder, failed), end; !failed && file != end;
       file.increment(failed)) {
    if (Is_Sound(file->path())) list.Items.push_back(file->path().filename().string());
  }
  if (!is_file) {
    list.Selected = current == Standard_Beep_Text ? 1 : 0;
    return list;
  }
  const std::string name = std::filesystem::path(current).filename().string();
  for (std::size_t i = 2; i < list.Items.size(); ++i) {
    if (list.Items[i] == name) list.Selected = static_cast<int>(i);
  }
  return list;
}

std::string Read_Default_Sound() {
  return Read_String("Sounds", "Default", Standard_Beep_Text);
}
void Write_Default_Sound(const std::string& value) {
  Write_String("Sounds", "Default", value);
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
  bool found = false;
  const TUpdate_Result result = Update("fm_Alarm_Props:Set_Alarm_Properties [KT_Events_Data/KT_Alarms]", [&] {
    auto rows = Find_Occurrence(occurrence);
    found = rows && rows->Has_Alarm;
    if (!found) return;
    Write_Alarm(rows->Alarm, true, Read_Occurrence(rows->Occurrence),
                std::string(rows->Alarm.Text(Alarm_Columns().User)), alarm);
  });
  return result && found;
}

}  // namespace KTReminds
