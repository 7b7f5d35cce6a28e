#pragma once

// One criterion against one value.

#include <cstdint>
#include <string_view>

#include "Search_Buffer.h"
#include "Search_Record.h"

namespace KTReminds {

/// Days that a date may have, both included, or with Outside those that it may not have.
struct TDay_Range {
  double First = 1, Last = 0;  // none
  bool Outside = false;
  bool Holds(double day) const { return (First <= day && day <= Last) != Outside; }
};

/// A criterion made ready for many values. All of a search's are made at one moment, which is its today. The
/// criterion must outlive it.
class TMatcher {
 public:
  TMatcher(const TSearchItem& item, TDateTime now);

  const TSearchItem& Item() const { return item; }
  /// What "Contains" and "Doesn't Contain" find within the first 255 characters.
  bool Text(std::string_view text) const;
  bool Date(TDateTime date) const;
  /// The days for which Date is true.
  const TDay_Range& Days() const { return days; }
  bool Number(std::int64_t number) const { return Compare(number, item.IntegerValue); }
  /// Of a number that is kept in hundredths.
  bool Hundredths(std::int64_t number) const {
    return Compare(number, std::int64_t{100} * item.IntegerValue);
  }

 private:
  bool Compare(std::int64_t number, std::int64_t with) const;

  const TSearchItem& item;
  TSearched_Text wanted;
  TDay_Range days;
};

}  // namespace KTReminds
