#pragma once

// A month as a grid of days, and what is written into it, without windows.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_event_key.h"

namespace KTReminds {

struct TGrid_Cell {
  int Column, Row;
};

/// Six weeks from Monday to Sunday around a date, the first one with the first of its month. Row 0 is for the
/// headings.
class TMonth_Grid {
 public:
  static constexpr int Columns = 7, Rows = 7, Days = Columns * (Rows - 1);

  /// A date outside the years 1 to 9999 counts as the nearest in them.
  explicit TMonth_Grid(Kt_util_01::TDateTime date);

  /// Midnight of the date.
  Kt_util_01::TDateTime Date() const { return date; }
  /// Midnight of the day in a cell; at the end of the year 9999 also a day that has no date.
  Kt_util_01::TDateTime Day_In(TGrid_Cell cell) const;
  Kt_util_01::TDateTime First_Day() const { return Day_In({0, 1}); }
  Kt_util_01::TDateTime Last_Day() const { return Day_In({Columns - 1, Rows - 1}); }
  /// Nothing for a day that is not in the grid.
  std::optional<TGrid_Cell> Cell_Of(Kt_util_01::TDateTime day) const;

 private:
  double date, first;
};

/// Whether the day lies in the years 1 to 9999.
bool Has_Date(Kt_util_01::TDateTime day);
bool Is_Same_Month(Kt_util_01::TDateTime a, Kt_util_01::TDateTime b);
/// The same day so many months on, or the last one of a shorter month; the date itself where that would lie
/// outside the years 1 to 9999.
Kt_util_01::TDateTime Add_Months(Kt_util_01::TDateTime date, int months);

/// The ends of the week and of the month in which a date lies.
struct TAround {
  Kt_util_01::TDateTime Monday, Sunday, Month_Begin, Month_End;
};
TAround Around(Kt_util_01::TDateTime date);

/// The month as a view's title, in the manner of Day_Titles.
std::vector<std::string> Month_Titles(Kt_util_01::TDateTime date);

/// An entry as it stands in a cell: time and text.
struct TMonth_Line {
  std::string Text;
  const Kt_data_01::TEventKey* Entry;
};
using TDay_Lines = std::vector<TMonth_Line>;
/// The lines of each day from `first_day` on, in the order of their texts. Entries of other days are left
/// out. Valid as long as the entries.
std::vector<TDay_Lines> Lines_Of_Days(const Kt_data_01::TEventKey_List& entries,
                                      Kt_util_01::TDateTime first_day, int days);
/// One line each, but of many only the first and how many more there are.
std::string Day_Tip(const TDay_Lines& lines);
/// A day in words: its date, how many entries it has, and the first of them.
std::string Spoken_Day(Kt_util_01::TDateTime day, const TDay_Lines& lines, Kt_util_01::TDateTime now);
/// The beginning of a text, which is as much of it as a cell can show; only whole characters.
std::string_view Shown_Part(std::string_view text);

}  // namespace KTReminds
