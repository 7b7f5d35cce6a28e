#pragma once

// Criteria as texts that a hand can type.

#include <stdexcept>
#include <string>
#include <string_view>

#include "Search_Record.h"

namespace KTReminds {

/// Why a text is no criterion: one sentence, which names the part that is not understood and what would be.
class ECriterion_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A criterion as Get_Search_Criteria writes it, with "(match case)" and "(whole word)" behind it where they
/// are asked for; empty out of range.
std::string Criterion_Text(const TSearchRecord& record, int index, const std::string& book);

/// Reads such a text, of all groups of contacts and of the calendar: in any case and with any number of
/// blanks; with "--", a dash or blanks alone before the action; without its group where no other has a field
/// of that name; with a number in place of "(x)"; with or without the colon before the value, which must be
/// one that the action can be asked with. Throws ECriterion_Error.
TSearchItem Read_Criterion(std::string_view text, const std::string& book);

}  // namespace KTReminds
