#pragma once

// What the editors of events and tasks have in common: which rows they stand on, what they show, what they
// refuse, and how they save. No window.

#include <string>
#include <string_view>
#include <vector>

#include "Alarm_Input.h"
#include "Event_Rows.h"

namespace KTReminds {

enum class TEditor_Mode { New, Plain, Whole_Set, Single_Occurrence };

/// The texts in which events and tasks differ.
struct TEditor_Words {
  std::string_view Unit, Update_Unit;  // in the tags of reports
  std::string_view Subject_Missing;
  std::string_view Noun;  // in the refusal of another owner
};

/// An editor's record: loaded from stored rows, changed by a form, validated and written back. A new entry
/// stands on a temporary event without a title, which is removed again unless the record is saved.
class TEditor_Rules {
 public:
  virtual ~TEditor_Rules();
  TEditor_Rules(const TEditor_Rules&) = delete;
  TEditor_Rules& operator=(const TEditor_Rules&) = delete;

  /// Finds the rows of an occurrence, or makes those of a new entry when `event_key` is empty. An owner
  /// without a contact stands for the book's calendar record. `no_contact` hides the contact and makes the
  /// record read-only. False when the rows are not there or cannot be made; a failure is reported.
  bool Open(const std::string& event_key, const TOwner& new_owner, const std::string& subject,
            bool no_contact);

  TEditor_Mode Mode() const { return mode; }
  bool Is_New() const { return mode == TEditor_Mode::New; }
  bool Read_Only() const { return read_only; }
  bool No_Contact() const { return no_contact; }
  /// Whether only the owner may change privacy; never for one occurrence of a set.
  bool May_Change_Privacy() const;
  const std::string& Host_Key() const { return owner.Contact; }
  const std::string& Contact_Name() const { return contact_name; }
  /// Keys and names of those who may be the owner.
  const std::vector<Kt_data_01::TUser>& Users() const { return users; }

  // What the form shows and changes.
  std::string Subject, Location, Notes;
  TDateTime Day = 0;  // of the event, or on which the task is due
  int Priority = 5;   // 1..9
  TAlarm Alarm;
  bool Private = false;
  std::string Owner;     // user key; "" when none is chosen
  bool Journal = false;  // when completed, record it
  int Activity = 18;     // as what

  /// Whether the user may create this new entry; always for a stored one.
  TRefusal Check_Right() const;
  TRefusal Validate_Subject() const;
  /// The first input that cannot be saved, or an empty refusal. Takes typed texts over where they are valid.
  virtual TRefusal Validate() = 0;
  /// Writes everything in one update. False when it was refused or failed, which is reported; nothing is
  /// changed then.
  bool Process_Update();
  /// Removes the temporary event of a new entry that was not saved. Does nothing otherwise.
  void Discard();

 protected:
  explicit TEditor_Rules(const TEditor_Words& words);

  virtual void Prepare_New(TDateTime now) = 0;
  virtual TDateTime New_Date() const = 0;
  virtual TEntry_Type Event_Type() const = 0;
  virtual bool All_Day() const = 0;
  /// The occurrence's date as saved.
  virtual TDateTime Entry_Date() const = 0;
  virtual void Load(const TEvent_Record& event, const TOccurrence& occurrence) = 0;
  /// Whether later dates are made anew.
  virtual bool Rewrites() const { return false; }
  virtual bool Keeps_Date() const { return false; }
  /// Whether the occurrence is done with, given whether it is so now as stored, perhaps by an answer to its
  /// reminder while the editor was open.
  virtual bool Is_Done(bool stored) const { return stored && !Rewrites(); }
  /// Puts what only this kind of entry has into its master.
  virtual void Define(TEvent_Record& event) const = 0;
  virtual void Write_Later_Dates(TOccurrence_Writer& /*writer*/) {}
  /// What was written is what is stored now.
  virtual void Update_Done() {}
  /// Runs last inside the update.
  virtual void Finish_Update(const std::string& /*contact*/) {}

  /// One that is off has the offset and the sound of a new one.
  void Clear_Alarm();
  TRefusal Validate_Access() const;

  TEditor_Mode mode = TEditor_Mode::New;
  TOwner owner;
  std::string occurrence_key, event_key, calendar_key, contact_name;
  TAlarm stored_alarm;

 private:
  bool Create_Temporary();
  bool Find_Rows();
  void Load_Common(const TOccurrence_Rows& rows);
  void Write_Rows(TOccurrence_Rows& rows);

  const TEditor_Words words;
  bool read_only = false, no_contact = false, saved = false;
  std::string stored_owner;
  std::vector<Kt_data_01::TUser> users;
};

/// Discards a record when its editor ends, however it ends.
class TDiscard_At_End {
 public:
  explicit TDiscard_At_End(TEditor_Rules& rules) : rules(rules) {}
  ~TDiscard_At_End() { rules.Discard(); }
  TDiscard_At_End(const TDiscard_At_End&) = delete;
  TDiscard_At_End& operator=(const TDiscard_At_End&) = delete;

 private:
  TEditor_Rules& rules;
};

/// Removes the temporary events of the current user's editors that died with their program. To be called at
/// its start; a failure is reported.
void Remove_Abandoned_Events();

}  // namespace KTReminds
