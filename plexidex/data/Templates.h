#pragma once

// Templates: the kinds of contact that a book has, with the labels of their fields. What writes must be
// called inside an update bracket; reading and writing throw EData_Error.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Contact_Fields.h"

namespace Kt_data_01 {

struct TTemplate {
  std::string Key, Book, Name;
  std::array<std::string, Template_Fields.size()>
      Labels;  // as Template_Fields; empty: there is no such field
  TAddress_Style Address_Style = TAddress_Style::International;
};

/// What to call a field: its label, or "Telephone 2" where it has none.
std::string Field_Name(const TTemplate& of, std::size_t field);

/// Of a book, in the order in which they were made: the first is that of a contact that is given none.
std::vector<TTemplate> List_Templates(std::string_view book);
std::optional<TTemplate> Find_Template(std::string_view key);
/// A person and a company, as every new book has them.
void Add_First_Templates(std::string_view book);
/// Adds a template without key, which it is given, or writes over the one with this key. False when that is
/// not there. Throws EData_Error when the book has another one of this name, whatever the case.
bool Write_Template(TTemplate& written);
/// The name, without regard to case.
bool Is_Template_Name_Taken(std::string_view book, std::string_view name, std::string_view own_key);

/// How many contacts have it, deleted ones included.
std::int64_t Contacts_With(std::string_view key);
/// Gives its contacts another template of the book, and removes it. What has no field there goes into their
/// notes.
void Remove_Template(const TTemplate& removed, const TTemplate& instead);

/// What a contact has under another template. A telephone, e-mail or web address keeps its label, or else its
/// place, or takes one that is free; a text keeps its label. What is left has no field there: its name and
/// text.
struct TFitted {
  TContact_Fields Fields;
  std::vector<std::pair<std::string, std::string>> Left;
};
TFitted Fit(const TContact_Fields& fields, const TTemplate& from, const TTemplate& to);
/// Notes with what is left at their end, one line each.
std::string Notes_With(std::string notes, const TFitted& fitted);

}  // namespace Kt_data_01
