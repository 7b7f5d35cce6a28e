#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_dates.h"

namespace Plexidex {

/// Writes content lines: escaped, folded, ended as the format wants.
class TLine_Writer {
 public:
  /// Not owned; must outlive this.
  explicit TLine_Writer(std::ostream& out) : out(out) {}

  void Begin(std::string_view component) { Raw("BEGIN", component); }
  void End(std::string_view component) { Raw("END", component); }
  /// A value as it stands. `name` may have parameters.
  void Raw(std::string_view name, std::string_view value);
  /// A text; an empty one writes nothing.
  void Text(std::string_view name, std::string_view text);
  /// A date, or with a time of day a moment in local time.
  void Moment(std::string_view name, Kt_util_01::TDateTime value, bool is_date);
  /// Several of them, on as many lines as it takes; none writes nothing.
  void Moments(std::string_view name, const std::vector<Kt_util_01::TDateTime>& values, bool are_dates);

 private:
  std::ostream& out;
};

/// With a backslash before what would end a value, "\\n" for line breaks, and no other control characters.
std::string Escaped_Text(std::string_view text);
/// A line, as several where it is too long.
void Write_Folded(std::ostream& out, std::string_view line);

/// 20240131 or 20240131T235959.
std::string Moment_Text(Kt_util_01::TDateTime value, bool is_date);

}  // namespace Plexidex
