#pragma once

// Tagged contacts, of the current user alone. What writes must be called inside an update bracket; reading
// and writing throw EData_Error.

#include <string>
#include <string_view>
#include <unordered_set>

namespace Kt_data_01 {

bool Is_Tagged(std::string_view contact);
void Set_Tagged(std::string_view contact, bool tagged);
/// Of all books.
std::unordered_set<std::string> Tagged_Contacts();

}  // namespace Kt_data_01
