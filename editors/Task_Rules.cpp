#include "Task_Rules.h"

#include <charconv>
#include <cmath>

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr TEditor_Words Words = {"fm_Task", "fm_Task", "A subject for this task is required.", "Task"};
constexpr double Hundredths = 100;

TDateTime Whole(TDateTime date) {
  return static_cast<TDateTime>(Whole_Day(date));
}

// With the user's separator, whichever the C library's own locale has.
std::string Two_Decimals(double number) {
  char text[400];  // the largest number has 309 digits
  std::string made(text, std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, 2).ptr);
  return made.replace(made.find('.'), 1, Format_Settings().DecimalSeparator);
}

std::string Number_Text(std::int64_t hundredths) {
  return hundredths % 100 == 0 ? std::to_string(hundredths / 100)
                               : Two_Decimals(static_cast<double>(hundredths) / Hundredths);
}

double Number_Or_0(const std::string& text) {
  double number = 0;
  return Str2Float(text, number) ? number : 0;
}

bool Read_Hundredths(const std::string& text, std::int64_t& hundredths) {
  constexpr double most = 9e15;
  double number = 0;
  if (!Str2Float(text, number) || std::fabs(number) * Hundredths > most) return false;
  hundredths = std::llround(number * Hundredths);
  return true;
}

}  // namespace

TTask_Rules::TTask_Rules() : TEditor_Rules(Words) {}

void TTask_Rules::Prepare_New(TDateTime /*now*/) {
  Day = Start_Day = Whole(CurrentDate);
  Show_Alarm();
}

void TTask_Rules::Show_Alarm() {
  Show_Alarm_Moment(Day, Alarm, Alarm_Day, Alarm_Time_Text);
}

TAlarm TTask_Rules::Shown_Alarm() const {
  TAlarm shown = Alarm;
  Validate_Alarm_Moment(Day, Alarm_Day, Alarm_Time_Text, shown.Offset, {}, {});
  return shown;
}

void TTask_Rules::Load(const TEvent_Record& event, const TOccurrence& occurrence) {
  const TTask_Progress& progress = event.Progress;
  Day = Whole(occurrence.EventDate);
  Start_Day = Whole(event.FirstDate);
  stored_status = Status = progress.Status;
  percentage = progress.Percentage;
  Percentage_Text = std::to_string(percentage);
  Budget_Text = Number_Text(progress.Budget);
  Worked_Text = Number_Text(progress.Worked);
  Started = static_cast<TDateTime>(progress.Started);
  Completed = static_cast<TDateTime>(progress.Completed);
  started_visible = Started > 0;
  completed_visible = Completed > 0;
  Show_Alarm();
}

std::string TTask_Rules::Remaining_Text() const {
  return Two_Decimals(Number_Or_0(Budget_Text) - Number_Or_0(Worked_Text));
}

void TTask_Rules::Set_Status() {
  const TDateTime today = Today();
  const auto hide_completed = [this] {
    Completed = 0;
    completed_visible = false;
  };
  switch (Status) {
    case TTask_Status::Not_Started:
      Percentage_Text = "0";
      Started = 0;
      started_visible = false;
      hide_completed();
      break;
    case TTask_Status::In_Progress:
      if (Started == 0) Started = today;
      started_visible = true;
      hide_completed();
      break;
    case TTask_Status::Completed:
      Percentage_Text = "100";
      if (Started == 0) Started = today;
      if (Completed == 0) Completed = today;
      started_visible = completed_visible = true;
      break;
    default: {
      // The box is disabled now, so that an invalid number in it could not be corrected.
      std::int64_t number = 0;
      if (!Str2Int(Percentage_Text, number)) Percentage_Text = std::to_string(percentage);
      started_visible = Started > 0;
      hide_completed();
    }
  }
}

void TTask_Rules::Percentage_Changed() {
  std::int64_t number = 0;
  if (!Str2Int(Percentage_Text, number)) return;
  Status = number == 0     ? TTask_Status::Not_Started
           : number == 100 ? TTask_Status::Completed
                           : TTask_Status::In_Progress;
  const std::string typed = Percentage_Text;
  Set_Status();
  Percentage_Text = typed;
}

TRefusal TTask_Rules::Validate_Numbers() {
  const auto refuse = [](const char* control) {
    return TRefusal{"Validation Failed",
                    "The value specified is not a valid number. Please respecify before continuing", control};
  };
  if (!Str2Int(Percentage_Text, percentage)) return refuse("PercentBox");
  if (!Read_Hundredths(Budget_Text, budget)) return refuse("BudgetBox");
  if (!Read_Hundredths(Worked_Text, worked)) return refuse("WorkedBox");
  return {};
}

TRefusal TTask_Rules::Validate() {
  TRefusal refusal = Validate_Subject();
  if (!refusal.Empty()) return refusal;
  if (Whole_Day(Start_Day) > Whole_Day(Day)) {
    return {"Validation Failed",
            "The Start Date cannot be later that the Date Due. Please respecify before continuing",
            "StartDate"};
  }
  if (Started > 0 && Completed > 0 && Whole_Day(Started) > Whole_Day(Completed)) {
    return {"Validation Failed",
            "The Date the Task Started cannot be later that the Date the Task Completed. Please respecify "
            "before continuing",
            "DateStarted"};
  }
  if (Alarm.On) {
    refusal = Validate_Alarm_Moment(Day, Alarm_Day, Alarm_Time_Text, Alarm.Offset, "AlarmTime", "AlarmDate");
    if (!refusal.Empty()) return refusal;
  } else {
    Clear_Alarm();
  }
  refusal = Validate_Access();
  return refusal.Empty() ? Validate_Numbers() : refusal;
}

void TTask_Rules::Define(TEvent_Record& event) const {
  event.FirstDate = Whole(Start_Day);
  // A set that was imported keeps its end while one of its dates is edited.
  if (mode != TEditor_Mode::Single_Occurrence) event.Pattern.LastDate = Whole(Day);
  event.EventType = TEntry_Type::Task;
  event.Progress = {Status, percentage, Whole_Day(Started), Whole_Day(Completed), budget, worked};
}

void TTask_Rules::Finish_Update(const std::string& contact) {
  if (!Journal || !Is_Done(false) || (!Is_New() && stored_status == TTask_Status::Completed)) return;
  const TDateTime now = Now();
  LogJournal(Activity, occurrence_key, contact, Subject, now,
             FormatDateTime("\"Task Marked Completed: \"ddddd,t", now), 0, now);
}

}  // namespace KTReminds
