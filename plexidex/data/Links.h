#pragma once

// The document links of a contact: files and web addresses. What writes must be called inside an update
// bracket, and says in the contact's journal what it did; reading and writing throw EData_Error.

#include <string>
#include <string_view>
#include <vector>

namespace Kt_data_01 {

struct TLink {
  std::string Title, Target;  // a file's path or an address; may be empty
  bool operator==(const TLink&) const = default;
};

/// In the order in which they were added.
std::vector<TLink> List_Links(std::string_view contact);
void Add_Link(std::string_view contact, const TLink& link);
/// False, with nothing written, when the contact has no such link any more.
bool Change_Link(std::string_view contact, const TLink& before, const TLink& after);
bool Remove_Link(std::string_view contact, const TLink& link);
/// To be called when one was opened.
void Log_Link_Opened(std::string_view contact, const TLink& link);

}  // namespace Kt_data_01
