#pragma once

#include "Editor_Rules.h"
#include "Recurrence_Pages.h"

namespace KTReminds {

/// A preference: the reminder of a new event, in minutes before it; -1 for none.
int Read_New_Reminder();
void Write_New_Reminder(int minutes);

/// The record of an event or of a recurring set.
class TReminder_Rules : public TEditor_Rules {
 public:
  TReminder_Rules();

  /// Of a stored entry: whether it belongs to a set, so that the user must choose what to open.
  bool Belongs_To_Set() const {
    return mode == TEditor_Mode::Single_Occurrence || mode == TEditor_Mode::Whole_Set;
  }
  /// Turns the record to the whole set, from its first date on, whichever occurrence was opened.
  void Open_Whole_Set();
  /// Turns a new event into a set, or back. The first time the pages are proposed anew from its date.
  void Set_Recurring(bool recurring);
  bool Is_Recurring() const { return mode == TEditor_Mode::Whole_Set || recurring_new; }

  std::string Time_Text;  // as typed
  bool No_Time = false;
  std::string Alarm_Text;  // of the offset, as typed
  TRecurrence_Pages Pages;

  /// The date changed: takes the proposals that follow it along.
  void Day_Changed();
  /// The event's date and time; the day alone while the typed time is invalid.
  TDateTime Shown_Moment() const;
  /// Takes the text of the offset from the alarm.
  void Show_Alarm();
  /// The alarm with the offset that is typed; with the last valid one while that is invalid.
  TAlarm Shown_Alarm() const;

  TRefusal Validate() override;
  /// Whether what was validated would make the stored set's dates or alarms anew. Always false but for a
  /// whole stored set.
  bool Check_If_Recurrence_Changed();
  /// How many occurrences saving would write, counted no further than one above `limit`; 0 when it would
  /// rewrite none. Ends at a date that cannot be made, on which saving will fail.
  std::int64_t Occurrences_To_Write(std::int64_t limit) const;

 private:
  void Prepare_New(TDateTime now) override;
  TDateTime New_Date() const override { return event_date; }
  TEntry_Type Event_Type() const override { return event_type; }
  bool All_Day() const override { return No_Time; }
  TDateTime Entry_Date() const override { return event_date; }
  void Load(const TEvent_Record& event, const TOccurrence& occurrence) override;
  bool Rewrites() const override;
  bool Keeps_Date() const override;
  void Define(TEvent_Record& event) const override;
  void Write_Later_Dates(TOccurrence_Writer& writer) override;
  void Update_Done() override;
  void Show_Moment(TDateTime moment);
  TRefusal Validate_Date();
  TRefusal Validate_Alarm_Input();

  TEntry_Type event_type = TEntry_Type::Event;
  bool recurring_new = false, pages_shown = false, recurrence_changed = false;
  TDateTime event_date = 0;
  TDateTime stored_first_date = 0;
  TRecurrence_Pattern stored_pattern, pattern;
};

}  // namespace KTReminds
