#pragma once

#include <string>
#include <string_view>

#include "Schema.h"

namespace Kt_data_01 {

/// Translates a filter expression (see TTable::Set_Filter) into an SQL condition on the table, checking every
/// name and literal. Throws EData_Error that says where the expression cannot be parsed.
std::string Filter_Condition(const TTable_Def& table, std::string_view expression);

}  // namespace Kt_data_01
