#pragma once

#include "Editor_Rules.h"

namespace KTReminds {

/// The record of a task. `Day` is the day on which it is due.
class TTask_Rules : public TEditor_Rules {
 public:
  TTask_Rules();

  TDateTime Start_Day = 0;
  TTask_Status Status = TTask_Status::Not_Started;
  std::string Percentage_Text = "0", Budget_Text = "0", Worked_Text = "0";  // as typed
  TDateTime Started = 0, Completed = 0;                                     // whole days; 0 hides them
  TDateTime Alarm_Day = 0;
  std::string Alarm_Time_Text;

  bool Started_Visible() const { return started_visible; }
  bool Completed_Visible() const { return completed_visible; }
  /// Budget less what was worked, with two decimals; an invalid number counts as 0.
  std::string Remaining_Text() const;
  /// Whether the percentage may be changed.
  bool Percentage_Enabled() const { return Status <= TTask_Status::Completed && !Read_Only(); }

  /// Brings percentage and dates in step with the status.
  void Set_Status();
  /// Takes the status from a percentage that was typed, when it is a number.
  void Percentage_Changed();

  /// Takes the alarm's day and time from its offset and the day on which the task is due.
  void Show_Alarm();
  /// The alarm as its day and time stand; an offset is kept as it was while they make none.
  TAlarm Shown_Alarm() const;

  TRefusal Validate() override;

 private:
  void Prepare_New(TDateTime now) override;
  TDateTime New_Date() const override { return Day; }
  TEntry_Type Event_Type() const override { return TEntry_Type::Task; }
  bool All_Day() const override { return true; }
  TDateTime Entry_Date() const override { return Day; }
  void Load(const TEvent_Record& event, const TOccurrence& occurrence) override;
  bool Is_Done(bool /*stored*/) const override { return Status == TTask_Status::Completed; }
  void Define(TEvent_Record& event) const override;
  void Finish_Update(const std::string& contact) override;
  TRefusal Validate_Numbers();

  bool started_visible = false, completed_visible = false;
  TTask_Status stored_status = TTask_Status::Not_Started;
  std::int64_t percentage = 0, budget = 0, worked = 0;  // the last two in hundredths
};

}  // namespace KTReminds
