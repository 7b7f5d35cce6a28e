#pragma once

// Which columns the rows of an entry list have.

#include <string>
#include <vector>

namespace KTReminds {

/// What a column shows. A time is left out of an entry that has none, the columns after it begin there. The
/// images stand outside what a selection covers, and so at the beginning of a row.
enum class TCell {
  State_Image,
  Reminder_Mark,
  Time,
  Date,
  Start_Date,
  Due_Date,
  Text,
  Status,
  Percent,
  Priority,
  Sub_Item
};

/// Where in its column it stands. Under_Middle: it ends under the middle of the heading.
enum class TSide { Left, Right, Under_Middle };

struct TEntry_Column {
  TCell Cell;
  int Sort = -1;  // the "Tag" of the heading over it; -1 without one
  TSide Side = TSide::Left;
  /// The column is as wide as this text, or as a date or time where it shows one and that is wider.
  std::string Sample = {};
  int Sub_Item = 0;  // which of the item's further texts a Sub_Item shows
};

struct TEntry_Columns {
  /// From left to right. One shows the text, which gets the room that the others leave.
  std::vector<TEntry_Column> Columns;
  /// The tip needs the pointer to be left of where the text ends; otherwise the whole row gives it.
  bool Tip_On_Text = true;
};

/// The entries of one day: state, reminder, time, text and priority.
const TEntry_Columns& Day_Columns();
/// Those of many days: the date before the time.
const TEntry_Columns& All_Columns();

}  // namespace KTReminds
