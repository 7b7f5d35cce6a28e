#pragma once

// What is printed of a calendar, as texts: read from the database here, laid out on paper by TSheet_Pages.

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Event_Record.h"
#include "Kt_lists.h"

namespace Plexidex {

using Kt_data_01::TText;
using Kt_util_01::TDateTime;

enum class TSheet_Kind { Day, Week, Month, List };

/// An entry or a holiday.
struct TSheet_Line {
  std::string Time;      // empty for what has none
  TText Text, Location;  // of another user's private entry "Private" and nothing
  bool Holiday = false, All_Day = false, Task = false, Done = false;
};

struct TSheet_Day {
  TDateTime Date = 0;
  std::string Heading;
  std::vector<TSheet_Line> Lines;  // in the order of Comes_Before
};

struct TSheet {
  TSheet_Kind Kind = TSheet_Kind::Day;
  std::string Title;  // as the view's
  std::string Range;  // what the title leaves open of the days, or empty
  std::string Whose;  // name of the book or contact
  std::string Printed;
  std::vector<TSheet_Day> Days;  // of a day, week or month all its days, of a list those with entries
};

struct TSheet_Request {
  TSheet_Kind Kind = TSheet_Kind::Day;
  KTReminds::TOwner Owner;
  bool By_Book = true;                // all entries of the book, not the contact's alone
  TDateTime Date = 0;                 // a day of what is printed; a list has no use for it
  std::optional<TDateTime> From, To;  // first and last day of a list; without one it is open on that side
};

/// One sentence for the user.
class ESheet_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads what is to be printed from one state of the database. Holidays stand where the views show
/// them, on days and weeks. Progress, which may be null, is told how far it is. Throws
/// EData_Error, and ESheet_Error when there are too many entries.
TSheet Build_Sheet(const TSheet_Request& request, Kt_data_01::TProgress_Bar* progress);

}  // namespace Plexidex
