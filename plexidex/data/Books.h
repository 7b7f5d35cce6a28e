#pragma once

// Books. What writes must be called inside an update bracket; reading and writing throw EData_Error.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_data_01.h"

namespace Kt_data_01 {

struct TBook {
  std::string Key, Name;
  std::string Calendar;  // key of the book's calendar record
};

/// All, in the order in which they were created.
std::vector<TBook> List_Books();
/// Those of which the user may see something.
std::vector<TBook> Visible_Books();
std::optional<TBook> Find_Visible_Book(std::string_view name);
/// Whether the user may delete all that Delete_Book deletes.
bool May_Delete_Book(const TBook& book);
/// By its exact name, whoever may see it.
std::optional<TBook> Find_Book(std::string_view name);
/// With its calendar record and its first templates. Throws EData_Error when there is a book of this name
/// already.
TBook Create_Book(std::string_view name);
/// False when there is no such book. Throws EData_Error when another one has this name.
bool Rename_Book(std::string_view book, std::string_view name);
/// Deletes a book with its contacts, events, tasks and everything that belongs to them.
void Delete_Book(std::string_view book);

}  // namespace Kt_data_01
