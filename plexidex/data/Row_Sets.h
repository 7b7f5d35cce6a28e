#pragma once

// What one statement does with many rows of a table of the shared database. All throw EData_Error; deleting
// needs an open bracket.

#include <string>
#include <string_view>
#include <vector>

#include "Kt_data_01.h"

namespace Kt_data_01 {

/// Deletes the rows in which a column has a value.
void Delete_Rows(std::string_view table, std::string_view column, const TValue& value);
/// Deletes the rows in which a column has the Key of one of the owners: of a row of the table `owners` in
/// which `owner_column` has a value.
void Delete_Rows_Of(std::string_view table, std::string_view column, std::string_view owners,
                    std::string_view owner_column, const TValue& value);

/// Keys of a table's rows that end in a text, at most so many of them.
std::vector<std::string> Keys_Ending_In(std::string_view table, std::string_view ending, std::size_t most);

}  // namespace Kt_data_01
