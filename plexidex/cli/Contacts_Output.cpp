#include "Contacts_Output.h"

#include <algorithm>
#include <array>
#include <map>
#include <nlohmann/json.hpp>

#include "Categories.h"
#include "Console_Text.h"
#include "Contact_List.h"
#include "Contacts.h"
#include "Folders.h"
#include "Kt_util_01.h"
#include "Templates.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

std::string Joined(const std::vector<std::pair<std::string, std::string>>& labelled) {
  std::string joined;
  for (const auto& [label, text] : labelled) joined += (joined.empty() ? "" : ", ") + text;
  return joined;
}

constexpr std::size_t Columns = 8;
using TCells = std::array<std::string, Columns>;

TCells Cells_Of(const TListed_Contact& contact, bool with_book) {
  std::string address, categories;
  for (const char c : contact.Address) address += c == '\n' ? std::string(", ") : std::string(1, c);
  for (const std::string& category : contact.Categories)
    categories += (categories.empty() ? "" : ", ") + category;
  TCells cells{contact.Name,          with_book ? contact.Book : std::string(),
               contact.Kind,          Joined(contact.Telephones),
               Joined(contact.Mails), address,
               contact.Folder,        categories};
  for (std::string& cell : cells) cell = Printable(cell);
  return cells;
}

// Adds those of a book that the list shows and `wanted` takes, with what they keep.
template <class TWanted>
void List_Rows(const TBook& book, const TContact_List& list, TWanted wanted,
               std::vector<TListed_Contact>& listed) {
  std::map<std::string, TTemplate> templates;
  for (TTemplate& one : List_Templates(book.Key)) templates.emplace(one.Key, one);
  const auto paths = Folder_Paths(book.Key);
  for (std::size_t i = 0; i < list.Count(); ++i) {
    const TContact_Row& row = list.Row(i);
    if (!wanted(row)) continue;
    const TContact_Details details = Read_Contact_Details(row.Key);
    TListed_Contact contact{row.Key, row.Name, book.Name, row.Template, {}, {}, details.Fields[Field_Address],
                            {},      {}};
    const TTemplate& of = templates[details.Template];
    for (std::size_t field = 0; field < Template_Fields.size(); ++field) {
      const auto& [code, column, kind] = Template_Fields[field];
      const std::string& text = details.Fields[code];
      if (text.empty()) continue;
      if (kind == TField_Kind::Telephone) contact.Telephones.emplace_back(Field_Name(of, field), text);
      if (kind == TField_Kind::Mail) contact.Mails.emplace_back(Field_Name(of, field), text);
    }
    if (const auto found = Find_Contact(row.Key); found && paths.contains(found->Folder))
      contact.Folder = paths.at(found->Folder);
    for (TCategory& category : Categories_Of(row.Key)) contact.Categories.push_back(std::move(category.Name));
    listed.push_back(std::move(contact));
  }
}

}  // namespace

std::map<std::string, std::string> Folder_Paths(const std::string& book) {
  std::map<std::string, std::string> paths;
  for (const TFolder& folder : List_Folders(book)) {
    const auto parent = paths.find(folder.Parent);
    paths[folder.Key] = (parent == paths.end() ? "" : parent->second + "/") + folder.Name;
  }
  return paths;
}

std::vector<TListed_Contact> Read_Listed_Contacts(const std::vector<TBook>& books, const std::string& words) {
  const TSnapshot snapshot;
  std::vector<TListed_Contact> listed;
  for (const TBook& book : books) {
    TContact_List list;
    list.Set_Rows(Read_Contact_Rows(book.Key, false));
    list.Narrow(words);
    List_Rows(
        book, list, [](const TContact_Row&) { return true; }, listed);
  }
  return listed;
}

std::vector<TListed_Contact> Read_Listed_Contacts(const TBook& book,
                                                  const std::unordered_set<std::string>& keys) {
  const TSnapshot snapshot;
  std::vector<TListed_Contact> listed;
  if (keys.empty()) return listed;
  TContact_List list;
  list.Set_Rows(Read_Contact_Rows(book.Key, false));
  List_Rows(
      book, list, [&keys](const TContact_Row& row) { return keys.contains(row.Key); }, listed);
  return listed;
}

void Write_Contacts_Text(std::ostream& out, const std::vector<TListed_Contact>& contacts) {
  constexpr int widest = 48;
  if (contacts.empty()) {
    out << "No contacts.\n";
    return;
  }
  const bool with_book = contacts.front().Book != contacts.back().Book;
  const TCells headings{"Name", "Book", "Kind", "Telephones", "E-mail", "Address", "Folder", "Categories"};
  std::array<int, Columns> widths{};
  std::vector<TCells> rows;
  for (const TListed_Contact& contact : contacts) {
    const TCells& cells = rows.emplace_back(Cells_Of(contact, with_book));
    for (std::size_t column = 0; column < Columns; ++column)
      widths[column] = std::max(widths[column], std::min(Display_Width(cells[column]), widest));
  }
  const auto write = [&](const TCells& cells) {
    std::string line;
    for (std::size_t column = 0; column < Columns; ++column) {
      if (widths[column] > 0)
        line += Padded(cells[column], std::max(widths[column], Display_Width(headings[column]))) + "  ";
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  };
  write(headings);
  for (const TCells& cells : rows) {
    if (!out) return;
    write(cells);
  }
}

void Write_Contacts_Json(std::ostream& out, const std::vector<TListed_Contact>& contacts) {
  // A terminal may obey what JSON lets stand in a text.
  constexpr bool ascii_only = true;
  using TJson = nlohmann::ordered_json;
  const auto labelled = [](const std::vector<std::pair<std::string, std::string>>& texts, const char* what) {
    TJson list = TJson::array();
    for (const auto& [label, text] : texts)
      list.push_back({{"label", Valid_UTF8(label)}, {what, Valid_UTF8(text)}});
    return list;
  };
  out << '[';
  for (const TListed_Contact& contact : contacts) {
    if (!out) return;
    TJson categories = TJson::array();
    for (const std::string& category : contact.Categories) categories.push_back(Valid_UTF8(category));
    const TJson object = {{"key", Valid_UTF8(contact.Key)},
                          {"name", Valid_UTF8(contact.Name)},
                          {"book", Valid_UTF8(contact.Book)},
                          {"kind", Valid_UTF8(contact.Kind)},
                          {"telephones", labelled(contact.Telephones, "number")},
                          {"emails", labelled(contact.Mails, "address")},
                          {"address", Valid_UTF8(contact.Address)},
                          {"folder", Valid_UTF8(contact.Folder)},
                          {"categories", categories}};
    out << (&contact == &contacts.front() ? "\n" : ",\n") << object.dump(-1, ' ', ascii_only);
  }
  out << (contacts.empty() ? "]\n" : "\n]\n");
}

}  // namespace Plexidex
