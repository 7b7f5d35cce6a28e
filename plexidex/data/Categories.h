#pragma once

// The categories of a book, and which of them a contact belongs to. What writes must be called inside an
// update bracket; reading and writing throw EData_Error.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Kt_data_01 {

struct TCategory {
  std::string Key, Name;
  bool operator==(const TCategory&) const = default;
};

/// By name.
std::vector<TCategory> List_Categories(std::string_view book);
/// The key of the category of this name, whatever the case; makes one where there is none.
std::string Find_Or_Add_Category(std::string_view book, std::string_view name);
/// The name, without regard to case.
bool Is_Category_Name_Taken(std::string_view book, std::string_view name, std::string_view own_key);
/// False when it is not there. Throws EData_Error when the book has another one of this name.
bool Rename_Category(std::string_view category, std::string_view name);
/// How many contacts belong to it, deleted ones included.
std::int64_t Members_Of(std::string_view category);
/// Its contacts belong to it no longer.
void Remove_Category(std::string_view category);

/// By name.
std::vector<TCategory> Categories_Of(std::string_view contact);
/// Writes the whole membership, for a contact that is being made; false when it was so before.
bool Set_Categories(std::string_view contact, const std::vector<std::string>& keys);
/// The same as a change of the contact, which its journal tells.
void Change_Categories(std::string_view contact, const std::vector<std::string>& keys);
/// "Club, Friends"
std::string Names_Of(const std::vector<TCategory>& categories);

}  // namespace Kt_data_01
