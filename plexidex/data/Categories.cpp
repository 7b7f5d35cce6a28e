#include "Categories.h"

#include <algorithm>

#include "Contacts.h"
#include "Kt_util_01.h"
#include "Row_Sets.h"

namespace Kt_data_01 {

namespace {

constexpr const char* In_Use = "KT_Categories_InUse";

void Sort_By_Name(std::vector<TCategory>& categories) {
  std::stable_sort(categories.begin(), categories.end(), [](const TCategory& a, const TCategory& b) {
    return Kt_util_01::CompareText(a.Name, b.Name) < 0;
  });
}

std::string Find_By_Name(std::string_view book, std::string_view name) {
  for (TCategory& category : List_Categories(book)) {
    if (Kt_util_01::CompareText(category.Name, name) == 0) return std::move(category.Key);
  }
  return {};
}

}  // namespace

std::vector<TCategory> List_Categories(std::string_view book) {
  std::vector<TCategory> categories;
  TTable table(Categories_Table, "Book");
  const TField key = table.Field("Key"), name = table.Field("Name");
  table.SetRange({book}, {book});
  for (table.First(); !table.Eof(); table.Next())
    categories.push_back({std::string(table.Text(key)), std::string(table.Text(name))});
  Sort_By_Name(categories);
  return categories;
}

std::string Find_Or_Add_Category(std::string_view book, std::string_view name) {
  std::string key = Find_By_Name(book, name);
  if (!key.empty()) return key;
  key = Kt_util_01::Get_GUID();
  TTable table(Categories_Table);
  table.Insert();
  table.SetFields({key, book, name});
  PostUpdate(table);
  return key;
}

bool Is_Category_Name_Taken(std::string_view book, std::string_view name, std::string_view own_key) {
  const std::string found = Find_By_Name(book, name);
  return !found.empty() && found != own_key;
}

bool Rename_Category(std::string_view category, std::string_view name) {
  TTable table(Categories_Table, "Key");
  if (!table.FindKey({category})) return false;
  if (Is_Category_Name_Taken(table.Text(table.Field("Book")), name, category))
    throw EData_Error("name", "KT_Categories", "there is a category \"" + std::string(name) + "\" already");
  table.Edit();
  table.Set(table.Field("Name"), name);
  PostUpdate(table);
  return true;
}

std::int64_t Members_Of(std::string_view category) {
  TTable table(Categories_InUse, "KeyandContact");
  table.SetRange({category}, {category});
  return table.Record_Count();
}

void Remove_Category(std::string_view category) {
  Delete_Rows(In_Use, "Category", category);
  Delete_Rows("KT_Categories", "Key", category);
}

std::vector<TCategory> Categories_Of(std::string_view contact) {
  std::vector<TCategory> categories;
  TTable members(Categories_InUse, "Contact"), table(Categories_Table, "Key");
  const TField category = members.Field("Category"), name = table.Field("Name");
  members.SetRange({contact}, {contact});
  for (members.First(); !members.Eof(); members.Next()) {
    std::string key(members.Text(category));
    if (table.FindKey({key})) categories.push_back({std::move(key), std::string(table.Text(name))});
  }
  Sort_By_Name(categories);
  return categories;
}

bool Set_Categories(std::string_view contact, const std::vector<std::string>& keys) {
  TTable members(Categories_InUse, "Contact");
  const TField category = members.Field("Category");
  std::vector<std::string> missing = keys;
  bool changed = false;
  members.SetRange({contact}, {contact});
  for (members.First(); !members.Eof();) {
    const auto kept = std::find(missing.begin(), missing.end(), members.Text(category));
    if (kept != missing.end()) {
      missing.erase(kept);
      members.Next();
    } else {
      members.Delete();
      changed = true;
    }
  }
  for (const std::string& key : missing) {
    members.Insert();
    members.SetFields({key, contact});
    PostUpdate(members);
    changed = true;
  }
  return changed;
}

void Change_Categories(std::string_view contact, const std::vector<std::string>& keys) {
  if (!Set_Categories(contact, keys)) return;
  const std::string names = Names_Of(Categories_Of(contact));
  Note_Change(contact, names.empty() ? "No categories" : "Categories: " + names);
}

std::string Names_Of(const std::vector<TCategory>& categories) {
  std::string names;
  for (const TCategory& category : categories) names += (names.empty() ? "" : ", ") + category.Name;
  return names;
}

}  // namespace Kt_data_01
