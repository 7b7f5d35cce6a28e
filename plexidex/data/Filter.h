#pragma once

#include <string>
#include <string_view>

#include "Schema.h"

namespace Kt_data_01 {

/// Translates a filter expression (see TTable::Set_Filter) into a condition on the table, in the SQL of
/// Sql_Text.h, with every name checked and every literal written anew. Throws EData_Error that says what was
/// not understood.
std::string Filter_Condition(const TTable_Def& table, std::string_view expression);

}  // namespace Kt_data_01
