#pragma once

// Operations on many rows of the shared database, each by one statement. They throw EData_Error; what
// changes rows requires an open bracket.

#include <string>
#include <string_view>
#include <vector>

#include "Kt_data_01.h"

namespace Kt_data_01 {

/// Deletes the rows in which a column equals a value.
void Delete_Rows(std::string_view table, std::string_view column, const TValue& value);
/// Deletes the rows in which a column equals the Key of a row of the table `owners` in which `owner_column`
/// equals a value.
void Delete_Rows_Of(std::string_view table, std::string_view column, std::string_view owners,
                    std::string_view owner_column, const TValue& value);
/// Replaces a text in all rows in which a column equals it.
void Replace_In_Rows(std::string_view table, std::string_view column, std::string_view text,
                     std::string_view by);

/// Keys of a table that end in a text, case-sensitively; at most `most` of them.
std::vector<std::string> Keys_Ending_In(std::string_view table, std::string_view ending, std::size_t most);

}  // namespace Kt_data_01
