#include "Reminder_Rules.h"

#include "Alarm_Texts.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr TEditor_Words Words = {"fm_Reminder", "fm_Reminders", "A subject for this event is required.",
                                 "Event"};

bool Same_Dates(const TRecurrence_Pattern& a, const TRecurrence_Pattern& b) {
  return a.Freq == b.Freq && a.Period == b.Period && a.PeriodDefault == b.PeriodDefault && a.P == b.P &&
         a.Instance == b.Instance && a.Month == b.Month && Whole_Day(a.LastDate) == Whole_Day(b.LastDate);
}

}  // namespace

int Read_New_Reminder() {
  constexpr std::int64_t most = 60LL * 24 * 365;
  const std::int64_t minutes = Read_Integer("Options", "New Event Reminder", -1);
  return minutes >= 0 && minutes <= most ? static_cast<int>(minutes) : -1;
}

void Write_New_Reminder(int minutes) {
  Write_Integer("Options", "New Event Reminder", minutes);
}

TReminder_Rules::TReminder_Rules() : TEditor_Rules(Words) {}

void TReminder_Rules::Show_Moment(TDateTime moment) {
  event_date = moment;
  Day = static_cast<TDateTime>(Whole_Day(moment));
  Time_Text = FormatDateTime("t", moment);
}

void TReminder_Rules::Prepare_New(TDateTime now) {
  // The shown day at the next full hour. Today's last one is the first of tomorrow: nothing new has passed.
  const std::int64_t day = Whole_Day(CurrentDate), next_hour = Decode_Time(now).Hour + 1;
  const std::int64_t hour = day == Whole_Day(now) ? next_hour : next_hour % 24;
  Show_Moment(From_Msecs(day * Msecs_Per_Day + hour * 3'600'000));
  Pages = Propose_Pages(event_date);
  if (const int offset = Read_New_Reminder(); offset >= 0) {
    Alarm.On = true;
    Alarm.Offset = offset;
  }
  Show_Alarm();
}

void TReminder_Rules::Load(const TEvent_Record& event, const TOccurrence& occurrence) {
  event_type = event.EventType;
  No_Time = event.AllDay;
  stored_first_date = event.FirstDate;
  stored_pattern = pattern = event.Pattern;
  Show_Moment(occurrence.EventDate);
  Show_Alarm();
  Pages = Propose_Pages(event_date);
}

void TReminder_Rules::Open_Whole_Set() {
  mode = TEditor_Mode::Whole_Set;
  Show_Moment(stored_first_date);
  Pages = Pages_From_Pattern(stored_pattern, stored_first_date);
}

void TReminder_Rules::Set_Recurring(bool recurring) {
  if (!Is_New()) return;
  if (recurring && !pages_shown) Pages = Propose_Pages(Day);
  pages_shown = pages_shown || recurring;
  recurring_new = recurring;
}

void TReminder_Rules::Day_Changed() {
  Follow_Date(Pages, Day);
}

TDateTime TReminder_Rules::Shown_Moment() const {
  TDateTime time = 0;
  if (!No_Time && Time_Text == FormatDateTime("t", event_date)) {
    time = event_date;  // with the seconds that its text does not show
  } else if (!No_Time && !Str2Time(Time_Text, time)) {
    time = 0;
  }
  return From_Msecs(Whole_Day(Day) * Msecs_Per_Day + Msec_Of_Day(time));
}

void TReminder_Rules::Show_Alarm() {
  Alarm_Text = Convert_Offset_to_ItemText(Alarm.On ? Alarm.Offset : TAlarm().Offset);
}

TAlarm TReminder_Rules::Shown_Alarm() const {
  TAlarm shown = Alarm;
  std::string text = Alarm_Text;
  Validate_Alarm_Offset(text, shown.Offset);
  return shown;
}

TRefusal TReminder_Rules::Validate_Date() {
  TDateTime time = 0;
  if (!No_Time && !Str2Time(Time_Text, time)) {
    return Refuse_Time("Invalid Date", "SetTimeBox");
  }
  event_date = Shown_Moment();
  return {};
}

TRefusal TReminder_Rules::Validate_Alarm_Input() {
  if (!Alarm.On) {
    Clear_Alarm();
    return {};
  }
  TRefusal refusal = Validate_Alarm_Offset(Alarm_Text, Alarm.Offset);
  refusal.Control = "AlarmBox";
  return refusal.Empty() ? TRefusal() : refusal;
}

TRefusal TReminder_Rules::Validate() {
  TRefusal refusal = Validate_Subject();
  if (refusal.Empty()) refusal = Validate_Date();
  if (refusal.Empty()) refusal = Validate_Alarm_Input();
  if (refusal.Empty()) refusal = Validate_Access();
  if (refusal.Empty() && Is_Recurring()) refusal = Pattern_From_Pages(Pages, stored_pattern, pattern);
  return refusal;
}

bool TReminder_Rules::Check_If_Recurrence_Changed() {
  recurrence_changed =
      mode == TEditor_Mode::Whole_Set &&
      (To_Msecs(event_date) != To_Msecs(stored_first_date) || !Same_Dates(pattern, stored_pattern) ||
       Alarm.On != stored_alarm.On ||
       (Alarm.On && (Alarm.Offset != stored_alarm.Offset || Alarm.WAVFile != stored_alarm.WAVFile)));
  return recurrence_changed;
}

bool TReminder_Rules::Rewrites() const {
  return recurrence_changed || recurring_new;
}

bool TReminder_Rules::Keeps_Date() const {
  return mode == TEditor_Mode::Whole_Set && !recurrence_changed;
}

std::int64_t TReminder_Rules::Occurrences_To_Write(std::int64_t limit) const {
  if (!Rewrites()) return 0;
  std::int64_t count = 1;
  TDateTime date = event_date;
  try {
    while (count <= limit && Next_Written_Date(pattern, date)) ++count;
  } catch (const EConvert_Error&) {
    // Saving will say so; there is nothing more to count.
  }
  return count;
}

void TReminder_Rules::Update_Done() {
  if (mode != TEditor_Mode::Whole_Set) return;
  if (recurrence_changed) stored_first_date = event_date;
  stored_pattern = pattern;
  recurrence_changed = false;
}

void TReminder_Rules::Define(TEvent_Record& event) const {
  // The pattern of a set stays as it is while one of its occurrences is edited.
  if (mode == TEditor_Mode::Single_Occurrence) return;
  event.FirstDate = event_date;
  event.Pattern = pattern;
  if (!Is_Recurring()) {
    event.Pattern = {};
    event.Pattern.LastDate = event_date;
  }
}

void TReminder_Rules::Write_Later_Dates(TOccurrence_Writer& writer) {
  // Only the first one was put off.
  TAlarm alarm = Alarm;
  alarm.NextTime = 0;
  TDateTime date = event_date;
  while (Next_Written_Date(pattern, date)) writer.Write(date, false, alarm);
}

}  // namespace KTReminds
