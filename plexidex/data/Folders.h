#pragma once

// The folders of a book's contacts. What writes must be called inside an update bracket; reading and writing
// throw EData_Error.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Kt_data_01.h"

namespace Kt_data_01 {

/// Whose rights a place in a book has: the book itself where there is no folder.
std::string Owner_Of_Place(std::string_view book, std::string_view folder);
/// A folder of the book, whoever may see it.
std::optional<TFolder> Find_Folder(std::string_view book, std::string_view key);

/// How many contacts, deleted ones included, and folders lie directly in it.
struct TFolder_Content {
  std::int64_t Contacts = 0, Folders = 0;
};
TFolder_Content Content_Of_Folder(std::string_view folder);

/// Whether another folder in `parent`, or at the top, has this name, whatever the case.
bool Is_Folder_Name_Taken(std::string_view book, std::string_view parent, std::string_view name,
                          std::string_view own_key);
/// Whether the user may take a contact or folder away from where it lies.
bool May_Be_Moved(std::string_view key);
/// Whether the user may delete the folder, and move all that lies directly in it to where it lies.
bool May_Remove_Folder(std::string_view folder);
/// What lies in it moves to where it lay. False when there is no such folder.
bool Remove_Folder(std::string_view folder);

enum class TMove { Done, Gone, Into_Itself, Other_Book };
/// Moves a contact, which its journal tells, or a folder with all it holds; "" is the top of its book.
/// Nothing is written unless it is Done.
TMove Move_To_Folder(std::string_view key, std::string_view folder);

}  // namespace Kt_data_01
