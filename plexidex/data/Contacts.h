#pragma once

// Contacts with their details, and what may be changed of a book. What writes must be called inside an update
// bracket; reading and writing throw EData_Error.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kt_data_01 {

struct TContact {
  std::string Key, Name, Book;
  bool Deleted = false;
};

inline constexpr std::size_t Other_Fields = 8;
using TOther_Texts = std::array<std::string, Other_Fields>;

struct TContact_Details {
  TOther_Texts Other;  // labelled as the book says
  std::string Notes;
};

/// A book's contacts, kept or deleted ones, that the current user may see; by name, ignoring case.
std::vector<TContact> List_Contacts(std::string_view book, bool deleted);
/// Nothing when there is no such contact, or the record is a folder or a calendar.
std::optional<TContact> Find_Contact(std::string_view key);
/// Empty texts for a contact without details.
TContact_Details Read_Contact_Details(std::string_view contact);
/// Name and details. False, with nothing written, when there is no such contact.
bool Write_Contact(std::string_view contact, std::string_view name, const TContact_Details& details);

/// The labels of a book's "Other" fields; "Other 1" to "Other 8" where the book has none of its own.
TOther_Texts Other_Labels(std::string_view book);
void Set_Other_Labels(std::string_view book, const TOther_Texts& labels);

/// False when there is no such book.
bool Rename_Book(std::string_view book, std::string_view name);
/// Removes a book with its contacts, events, tasks and everything kept about them, for good.
void Delete_Book(std::string_view book);

}  // namespace Kt_data_01
