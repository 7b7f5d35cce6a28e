#pragma once

// Contacts with their details. What writes must be called inside an update bracket; reading and writing throw
// EData_Error.

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Contact_Fields.h"
#include "Kt_data_01.h"

namespace Kt_data_01 {

struct TContact {
  std::string Key, Name, Book;
  bool Deleted = false;
  std::string Folder{};  // "" at the top of the book
};

inline constexpr std::size_t Other_Fields = 8;
using TOther_Texts = std::array<std::string, Other_Fields>;

struct TContact_Details {
  TOther_Texts Other{};  // see Other_Labels
  std::string Notes{};
  std::string Template{};    // its key
  TContact_Fields Fields{};  // the address as the template's style has it
  bool operator==(const TContact_Details&) const = default;
};

/// The deleted or the other contacts of a book that the current user may see, by name, case-insensitive.
std::vector<TContact> List_Contacts(std::string_view book, bool deleted);
/// Nothing when there is no such contact, or the record is a folder or a calendar.
std::optional<TContact> Find_Contact(std::string_view key);
/// Returns the key of the new contact or folder; `parent` is a folder of the same book or empty. A contact
/// gets the first template of its book, and its journal says that it was created.
std::string Create_Contact(std::string_view book, std::string_view name, std::string_view parent = {},
                           int type = Contact_Type_Contact);
/// A contact with details, whose address is as the style of their template has it.
std::string Create_Contact(std::string_view book, std::string_view name, const TContact_Details& details,
                           std::string_view parent = {});
/// A contact, folder or calendar record. False when there is none.
bool Rename_Contact(std::string_view contact, std::string_view name);
/// Deleted contacts are kept, with their entries, and can be restored. The journal tells. False when there is
/// no such contact.
bool Set_Contact_Deleted(std::string_view contact, bool deleted);
/// Gives a contact to another user; the journal tells. False when there is no such contact.
bool Set_Contact_Owner(std::string_view contact, std::string_view user);
/// Says who changed a contact, when, and in its journal what.
void Note_Change(std::string_view contact, std::string_view what);

/// Empty texts for a contact without details.
TContact_Details Read_Contact_Details(std::string_view contact);
/// Writes the details of a contact that is being made; an empty template leaves the contact the one it has.
/// False, with nothing written, when there is no such contact.
bool Write_Contact_Details(std::string_view contact, const TContact_Details& details);
/// The same with its name as a change, if anything is: says who made it, when, also in the journal.
bool Write_Contact(std::string_view contact, std::string_view name, const TContact_Details& details);

/// The labels of a book's "Other" fields; "Other 1" to "Other 8" where the book has none of its own.
TOther_Texts Other_Labels(std::string_view book);
void Set_Other_Labels(std::string_view book, const TOther_Texts& labels);

}  // namespace Kt_data_01
