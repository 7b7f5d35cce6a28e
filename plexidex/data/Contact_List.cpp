#include "Contact_List.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

#include "Categories.h"
#include "Contact_Fields.h"
#include "Folders.h"
#include "Kt_util_01.h"
#include "Sql_Text.h"
#include "Table_Context.h"
#include "Tags.h"

namespace Kt_data_01 {

namespace {

// The fields of a kind.
std::vector<std::string> Columns_Of(TField_Kind kind) {
  std::vector<std::string> columns;
  for (const TTemplate_Field& field : Template_Fields) {
    if (field.Kind == kind) columns.push_back("Field" + std::to_string(field.Code));
  }
  return columns;
}

std::string First_Filled(TStatement& row, int from, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (const auto text = row.Text(from + static_cast<int>(i)); !text.empty()) return std::string(text);
  }
  return {};
}

class TRow_Reader {
 public:
  TRow_Reader(std::string_view book, std::vector<TContact_Row>& rows)
      : columns(Columns_Of(TField_Kind::Telephone)), telephones(columns.size()), rows(rows) {
    for (std::string& column : Columns_Of(TField_Kind::Mail)) columns.push_back(std::move(column));
    for (TFolder& one : List_Folders(book)) folders.emplace(std::move(one.Key), std::move(one.Name));
  }

  // Appends those in which a column has a value, or without a column all of the book.
  void Read(TDatabase& database, std::string_view book, bool deleted, std::string_view column,
            std::string_view value) {
    constexpr int first = 2;
    const int first_mail = first + static_cast<int>(telephones),
              name = first + static_cast<int>(columns.size()), parent = name + 1;
    TUse use(database.Statement(Contact_Rows_Sql(columns, column)));
    use->Bind(0, book);
    use->Bind(1, std::int64_t{deleted});
    if (!column.empty()) use->Bind(2, value);
    while (use->Step()) {
      if (!Access_Allowed(use->Text(0), Access_See)) continue;
      rows.push_back({std::string(use->Text(0)), std::string(use->Text(1)),
                      First_Filled(*use, first, telephones),
                      First_Filled(*use, first_mail, columns.size() - telephones),
                      std::string(use->Text(name)), Folder_Name(use->Text(parent))});
    }
  }

 private:
  // The rows of a folder come one after the other.
  const std::string& Folder_Name(std::string_view key) {
    if (key != last_key) {
      last_key = key;
      const auto found = folders.find(last_key);
      last_name = found == folders.end() ? std::string() : found->second;
    }
    return last_name;
  }

  std::vector<std::string> columns;
  const std::size_t telephones;
  std::unordered_map<std::string, std::string> folders;
  std::string last_key, last_name;
  std::vector<TContact_Row>& rows;
};

// Categories and tags.
void Add_What_Few_Have(TDatabase& database, std::string_view book, std::vector<TContact_Row>& rows) {
  const auto categories = List_Categories(book);
  const auto tagged = Tagged_Contacts();
  if (categories.empty() && tagged.empty()) return;
  std::unordered_map<std::string_view, TContact_Row*> by_key;
  by_key.reserve(rows.size());
  for (TContact_Row& row : rows) by_key.emplace(row.Key, &row);
  for (const TCategory& category : categories) {
    TUse use(database.Statement(Members_Sql()));
    use->Bind(0, category.Key);
    while (use->Step()) {
      const auto found = by_key.find(use->Text(0));
      if (found == by_key.end()) continue;
      std::string& names = found->second->Categories;
      if (!names.empty()) names += ", ";
      names += category.Name;
    }
  }
  for (const std::string& contact : tagged) {
    if (const auto found = by_key.find(contact); found != by_key.end()) found->second->Tagged = true;
  }
}

template <class TRead>
std::vector<TContact_Row> Read_Rows(std::string_view book, TRead read) {
  const TSnapshot snapshot;
  const TTable_Context contacts(Shared_Database(), Table_Def("KT_Contacts"));
  return contacts.Guarded("read", [&] {
    std::vector<TContact_Row> rows;
    TRow_Reader reader(book, rows);
    read(reader, contacts.Database);
    Add_What_Few_Have(contacts.Database, book, rows);
    return rows;
  });
}

std::string Digits_Of(std::string_view text) {
  std::string digits;
  for (const char c : text) {
    if (c >= '0' && c <= '9') digits += c;
  }
  return digits;
}

}  // namespace

const std::string& TContact_Row::Text(TContact_Column column) const {
  switch (column) {
    case TContact_Column::Telephone:
      return Telephone;
    case TContact_Column::Mail:
      return Mail;
    case TContact_Column::Template:
      return Template;
    case TContact_Column::Folder:
      return Folder;
    case TContact_Column::Categories:
      return Categories;
    default:
      return Name;
  }
}

std::vector<TContact_Row> Read_Contact_Rows(std::string_view book, bool deleted, std::string_view folder) {
  return Read_Rows(book, [&](TRow_Reader& reader, TDatabase& database) {
    if (folder.empty()) return reader.Read(database, book, deleted, {}, {});
    reader.Read(database, book, deleted, "Parent", folder);
    for (const std::string& below : Get_SubGroups(folder))
      reader.Read(database, book, deleted, "Parent", below);
  });
}

std::vector<TContact_Row> Read_Rows_Of_Contacts(std::string_view book, const std::vector<std::string>& keys) {
  return Read_Rows(book, [&](TRow_Reader& reader, TDatabase& database) {
    for (const std::string& key : keys) reader.Read(database, book, false, "Key", key);
  });
}

void TContact_List::Set_Rows(std::vector<TContact_Row> new_rows) {
  rows = std::move(new_rows);
  folded.clear();
  places.clear();
  words.clear();
  by_name.resize(rows.size());
  std::iota(by_name.begin(), by_name.end(), 0U);
  sorted = by_name;
  Sort(TContact_Column::Name, true);
  by_name = sorted;
}

void TContact_List::Sort(TContact_Column column, bool ascending) {
  std::vector<std::string> keys(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (const std::string& text = rows[i].Text(column); !text.empty()) keys[i] = Kt_util_01::Sort_Key(text);
  }
  sorted = by_name;
  std::stable_sort(sorted.begin(), sorted.end(), [&](std::uint32_t a, std::uint32_t b) {
    if (keys[a].empty() || keys[b].empty()) return !keys[a].empty() && keys[b].empty();
    return ascending ? keys[a] < keys[b] : keys[b] < keys[a];
  });
  shown.clear();
  std::copy_if(sorted.begin(), sorted.end(), std::back_inserter(shown),
               [this](std::uint32_t row) { return Has_Words(row); });
}

void TContact_List::Fold() {
  if (!places.empty()) return;
  places.resize(rows.size());
  std::string texts;
  for (const std::uint32_t number : by_name) {
    const TContact_Row& row = rows[number];
    texts.clear();
    for (const std::string& text : {row.Name, row.Mail, row.Telephone, Digits_Of(row.Telephone)})
      texts.append(text).append("\n");
    const std::string upper = Kt_util_01::Simple_UpperCase(texts);
    places[number] = {folded.size(), upper.size()};
    folded += upper;
  }
}

bool TContact_List::Has_Words(std::uint32_t row) const {
  if (words.empty()) return true;
  const auto text = std::string_view(folded).substr(places[row].Start, places[row].Length);
  return std::all_of(words.begin(), words.end(),
                     [text](const std::string& word) { return text.find(word) != std::string_view::npos; });
}

void TContact_List::Narrow(std::string_view text) {
  Fold();
  const std::vector<std::string> before = std::move(words);
  words.clear();
  std::string rest = Kt_util_01::Simple_UpperCase(text);
  for (std::size_t at = 0; (at = rest.find_first_not_of(' ', at)) != std::string::npos;) {
    const std::size_t next = std::min(rest.find(' ', at), rest.size());
    words.push_back(rest.substr(at, next - at));
    at = next;
  }
  // What had not the words before has not the longer ones.
  const bool narrower = std::all_of(before.begin(), before.end(), [this](const std::string& word) {
    return std::any_of(words.begin(), words.end(),
                       [&](const std::string& longer) { return longer.find(word) != std::string::npos; });
  });
  TNumbers left;
  const TNumbers& from = narrower ? shown : sorted;
  std::copy_if(from.begin(), from.end(), std::back_inserter(left),
               [this](std::uint32_t row) { return Has_Words(row); });
  shown = std::move(left);
}

void TContact_List::Set_Tagged(const std::unordered_set<std::string>& keys, bool tagged) {
  for (TContact_Row& row : rows) {
    if (keys.contains(row.Key)) row.Tagged = tagged;
  }
}

std::optional<std::size_t> TContact_List::Position_Of(std::string_view key) const {
  // Where they lie in memory the keys are passed faster than in any order.
  const auto row =
      std::find_if(rows.begin(), rows.end(), [&](const TContact_Row& one) { return one.Key == key; });
  if (row == rows.end()) return {};
  const auto found = std::find(shown.begin(), shown.end(), static_cast<std::uint32_t>(row - rows.begin()));
  if (found == shown.end()) return {};
  return static_cast<std::size_t>(found - shown.begin());
}

}  // namespace Kt_data_01
