#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Kt_dates.h"
#include "Kt_text.h"

namespace Kt_data_01 {

/// `EventType` of a stored event. Other is neither event nor task; holidays have it too, and no key. Stored:
/// never renumber. A damaged row may hold any number.
enum class TEntry_Type : int { Event = 0, Other = 1, Task = 3 };

/// What a list entry knows of the occurrence, task or holiday it stands for.
class TEventKey {
 public:
  TText Key;          // occurrence key; empty for a holiday
  TText FirstText;    // a task's status text, otherwise the title
  TText SecondText;   // a task's title, a holiday's country, otherwise the location
  TText Description;  // the title, for tasks too
  TText Contact;      // key of the owner: the contact or calendar record the occurrence belongs to
  TText ContactName;
  TText User;  // key of the user who owns the reminder
  Kt_util_01::TDateTime EventDate = 0;
  Kt_util_01::TDateTime FirstDate = 0;
  int Priority = 0;
  TEntry_Type EventType = TEntry_Type::Event;
  int Percentage = 0;
  int TextRight = 0;      // right edge of the drawn text, in pixels; kept by the view that draws it
  bool Private = false;   // marked private by another user than the current one
  bool Timeless = false;  // all day: the time of EventDate means nothing
  bool Alarm = false;     // outstanding, the current user's, and with a reminder
  bool Done = false;

  /// A stored entry may have the type of a holiday; only a holiday has no key.
  bool Is_Holiday() const { return Key.Empty(); }
  bool Is_Task() const { return EventType == TEntry_Type::Task; }

  /// The info tip: title, location, when, owner and contact, one to a line, or separated by commas when
  /// `one_line`; "Private" for a private entry.
  std::string Get_Tip(bool one_line) const;
};

using TEventKey_List = std::vector<std::unique_ptr<TEventKey>>;

}  // namespace Kt_data_01
