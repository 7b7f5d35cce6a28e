#include "Folders.h"

#include <algorithm>
#include <map>
#include <set>

#include "Contacts.h"
#include "Kt_util_01.h"
#include "Row_Sets.h"

namespace Kt_data_01 {

namespace {

// By name.
std::vector<TFolder> Read_Folders(std::string_view book) {
  std::vector<TFolder> folders;
  TTable table(Contacts_Table, "TypeBookandParent", {"Key", "DisplayName"});
  const TField key = table.Field("Key"), name = table.Field("DisplayName"), parent = table.Field("Parent");
  table.SetRange({Contact_Type_Folder, book}, {Contact_Type_Folder, book});
  for (table.First(); !table.Eof(); table.Next()) {
    folders.push_back(
        {std::string(table.Text(key)), std::string(table.Text(name)), std::string(table.Text(parent))});
  }
  std::stable_sort(folders.begin(), folders.end(), [](const TFolder& a, const TFolder& b) {
    return Kt_util_01::CompareText(a.Name, b.Name) < 0;
  });
  return folders;
}

// Appends a folder and those below it that have not been taken yet.
class TDescent {
 public:
  explicit TDescent(const std::vector<TFolder>& folders) {
    for (const TFolder& folder : folders) by_parent.emplace(folder.Parent, &folder);
  }

  void Take(const TFolder& folder, int depth) {
    if (!taken.insert(folder.Key).second) return;
    Taken.push_back(folder);
    Taken.back().Depth = depth;
    Take_Below(folder.Key, depth + 1);
  }
  void Take_Below(std::string_view parent, int depth) {
    const auto [first, last] = by_parent.equal_range(parent);
    for (auto folder = first; folder != last; ++folder) Take(*folder->second, depth);
  }

  std::vector<TFolder> Taken;

 private:
  std::multimap<std::string_view, const TFolder*> by_parent;
  std::set<std::string_view> taken;
};

struct TPlace {
  std::string Name, Book, Parent;
  int Type = 0;
};

std::vector<std::string> Directly_In(std::string_view folder) {
  std::vector<std::string> content;
  TTable table(Contacts_Table, "ParentandGroup", {"Key"});
  table.SetRange({folder}, {folder});
  for (table.First(); !table.Eof(); table.Next()) content.emplace_back(table.Text(table.Field("Key")));
  return content;
}

std::optional<TPlace> Place_Of(std::string_view key) {
  TTable table(Contacts_Table, "Key", {"DisplayName", "Book", "Parent", "Type"});
  if (!table.FindKey({key})) return {};
  return TPlace{std::string(table.Text(table.Field("DisplayName"))),
                std::string(table.Text(table.Field("Book"))), std::string(table.Text(table.Field("Parent"))),
                static_cast<int>(table.Integer(table.Field("Type")))};
}

std::optional<TPlace> Folder_Place(std::string_view key) {
  auto place = Place_Of(key);
  if (place && place->Type != Contact_Type_Folder) return {};
  return place;
}

void Set_Parent(std::string_view key, std::string_view parent) {
  TTable table(Contacts_Table, "Key");
  if (!table.FindKey({key})) return;
  table.Edit();
  table.Set(table.Field("Parent"), parent);
  PostUpdate(table);
}

}  // namespace

std::vector<TFolder> List_Folders(std::string_view book) {
  std::vector<TFolder> folders = Read_Folders(book);
  std::erase_if(folders, [](const TFolder& one) { return !Access_Allowed(one.Key, Access_See); });
  std::set<std::string> keys;
  for (const TFolder& one : folders) keys.insert(one.Key);
  for (TFolder& one : folders) {
    if (!keys.contains(one.Parent)) one.Parent.clear();
  }
  TDescent descent(folders);
  descent.Take_Below({}, 0);
  for (const TFolder& one : folders) descent.Take(one, 0);
  return std::move(descent.Taken);
}

std::string Owner_Of_Place(std::string_view book, std::string_view folder) {
  return std::string(folder.empty() ? book : folder);
}

std::optional<TFolder> Find_Folder(std::string_view book, std::string_view key) {
  const auto place = Folder_Place(key);
  if (!place || place->Book != book) return {};
  return TFolder{std::string(key), place->Name, place->Parent};
}

std::vector<std::string> Get_SubGroups(std::string_view folder) {
  const auto place = Folder_Place(folder);
  if (!place) return {};
  const std::vector<TFolder> folders = Read_Folders(place->Book);
  TDescent descent(folders);
  descent.Take_Below(folder, 0);
  std::vector<std::string> below;
  for (TFolder& one : descent.Taken) {
    if (one.Key != folder) below.push_back(std::move(one.Key));
  }
  return below;
}

TFolder_Content Content_Of_Folder(std::string_view folder) {
  TFolder_Content content;
  const auto place = Folder_Place(folder);
  if (!place) return content;
  TTable table(Contacts_Table, "TypeBookandParent", {"Key"});
  for (const auto& [type, count] :
       {std::pair(Contact_Type_Contact, &content.Contacts), {Contact_Type_Folder, &content.Folders}}) {
    table.SetRange({type, place->Book, folder}, {type, place->Book, folder});
    *count = table.Record_Count();
  }
  return content;
}

bool Is_Folder_Name_Taken(std::string_view book, std::string_view parent, std::string_view name,
                          std::string_view own_key) {
  const auto folders = Read_Folders(book);
  return std::any_of(folders.begin(), folders.end(), [&](const TFolder& one) {
    return one.Key != own_key && one.Parent == parent && Kt_util_01::CompareText(one.Name, name) == 0;
  });
}

bool May_Remove_Folder(std::string_view folder) {
  const auto place = Folder_Place(folder);
  if (!place || !Access_Allowed(folder, Access_Delete)) return false;
  const std::vector<std::string> content = Directly_In(folder);
  return content.empty() ||
         (Access_Allowed(Folder_Place(place->Parent) ? place->Parent : place->Book, Access_Create) &&
          std::all_of(content.begin(), content.end(), May_Be_Moved));
}

bool May_Be_Moved(std::string_view key) {
  // Elsewhere others may see it, or do more with it.
  return Access_Allowed(key, Access_Update) && Access_Allowed(key, Access_Delete);
}

bool Remove_Folder(std::string_view folder) {
  const auto place = Folder_Place(folder);
  if (!place) return false;
  const std::vector<std::string> content = Directly_In(folder);
  // A damaged one may lie in itself.
  const std::string_view parent = place->Parent == folder ? std::string_view() : place->Parent;
  for (const std::string& key : content) Set_Parent(key, parent);
  Delete_Rows("KT_Rights", "Owner", folder);
  Delete_Rows("KT_Contacts", "Key", folder);
  return true;
}

TMove Move_To_Folder(std::string_view key, std::string_view folder) {
  const auto moved = Place_Of(key), target = folder.empty() ? TPlace{} : Folder_Place(folder);
  if (!moved || !target || moved->Type == Contact_Type_Calendar) return TMove::Gone;
  if (!folder.empty() && target->Book != moved->Book) return TMove::Other_Book;
  if (moved->Type == Contact_Type_Folder) {
    const auto below = Get_SubGroups(key);
    if (key == folder || std::find(below.begin(), below.end(), folder) != below.end())
      return TMove::Into_Itself;
  }
  if (moved->Parent == folder) return TMove::Done;
  Set_Parent(key, folder);
  if (moved->Type == Contact_Type_Contact)
    Note_Change(key, folder.empty() ? "Moved to no folder" : "Moved to the folder \"" + target->Name + "\"");
  return TMove::Done;
}

}  // namespace Kt_data_01
