// The command that searches, and keeps searches as filters.

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <unordered_set>

#include "Agenda.h"
#include "Calendar_Search.h"
#include "Commands_Run.h"
#include "Console_Text.h"
#include "Contact_Search.h"
#include "Contacts_Output.h"
#include "Criteria_Rules.h"
#include "Criterion_Text.h"
#include "Current_Search.h"
#include "Entry_Walk.h"
#include "Filter_Store.h"
#include "Kt_util_01.h"
#include "Page_Numbers.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;
using KTReminds::CurrentSearch;
using KTReminds::TSearchRecord;

namespace {

struct TBook_Search {
  TBook Book;
  TSearchRecord Record;
};

struct TKept_Filter {
  TBook Book;
  std::string Name;
  bool Shared;
};

std::string Quoted_List(std::vector<std::string> names) {
  std::sort(names.begin(), names.end(),
            [](const std::string& a, const std::string& b) { return CompareText(a, b) < 0; });
  names.erase(std::unique(names.begin(), names.end()), names.end());
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + ('"' + name + '"');
  return list;
}

std::vector<TBook> Books_Of(const TSearch_Command& command) {
  if (!command.Book.empty()) return {Known_Book(command.Book)};
  std::vector<TBook> books = Visible_Books();
  if (books.empty()) throw ECommand_Error("There are no books yet.");
  return books;
}

// By name; with `only_shared` without those of the user alone.
std::vector<TKept_Filter> Kept_Filters(const std::vector<TBook>& books, bool only_shared) {
  std::vector<TKept_Filter> filters;
  for (const TBook& book : books) {
    for (const bool shared : {false, true}) {
      if (only_shared && !shared) continue;
      for (std::string& name : KTReminds::Filter_Names(book.Key, shared))
        filters.push_back({book, std::move(name), shared});
    }
  }
  std::stable_sort(filters.begin(), filters.end(), [](const TKept_Filter& a, const TKept_Filter& b) {
    return CompareText(a.Name, b.Name) < 0;
  });
  return filters;
}

[[noreturn]] void Refuse_Filter(const std::string& name, const std::vector<TBook>& books, bool only_shared) {
  std::vector<std::string> names;
  for (const TKept_Filter& filter : Kept_Filters(books, only_shared)) names.push_back(filter.Name);
  throw ECommand_Error(
      std::string("There is no ") + (only_shared ? "shared " : "") + "filter \"" + name + "\"; " +
      (names.empty() ? "there are none yet." : "the filters are " + Quoted_List(names) + "."));
}

// ---- what is searched for ------------------------------------------------------------------------------

// The filter in each book that has it. One that is damaged is reported and left out.
std::vector<TBook_Search> Filter_Searches(const TSearch_Command& command, const std::vector<TBook>& books) {
  using KTReminds::TFilter_Load;
  std::vector<TBook_Search> searches;
  bool is_there = false;
  for (const TBook& book : books) {
    TBook_Search search{book, {}};
    TFilter_Load end = TFilter_Load::Missing;
    if (!command.Shared) end = search.Record.Load(book.Key, command.Filter, false);
    if (end == TFilter_Load::Missing) end = search.Record.Load(book.Key, command.Filter, true);
    is_there = is_there || end != TFilter_Load::Missing;
    if (end == TFilter_Load::Loaded) searches.push_back(std::move(search));
  }
  if (!is_there) Refuse_Filter(command.Filter, books, command.Shared);
  return searches;
}

// The criteria in each book whose templates, labels and categories they name.
std::vector<TBook_Search> Typed_Searches(const TSearch_Command& command, const std::vector<TBook>& books) {
  std::vector<TBook_Search> searches;
  std::string why;
  for (const TBook& book : books) {
    TBook_Search search{book, {}};
    try {
      for (const std::string& criterion : command.Criteria)
        search.Record.Items.push_back(KTReminds::Read_Criterion(criterion, book.Key));
      searches.push_back(std::move(search));
    } catch (const KTReminds::ECriterion_Error& e) {
      if (why.empty()) why = e.what();
    }
  }
  if (searches.empty()) throw ECommand_Error(why);
  return searches;
}

// A folder by its name, or by the end of its path; nothing when the book has none.
std::optional<std::string> Find_Folder_Named(const TBook& book, const std::string& name) {
  const std::string wanted = UpperCase(name);
  std::vector<std::pair<std::string, std::string>> found;
  for (const auto& [key, path] : Folder_Paths(book.Key)) {
    const std::string upper = UpperCase(path);
    if (upper == wanted) return key;
    if (upper.ends_with("/" + wanted)) found.emplace_back(key, path);
  }
  if (found.empty()) return std::nullopt;
  if (found.size() == 1) return found.front().first;
  std::vector<std::string> paths;
  for (const auto& [key, path] : found) paths.push_back(path);
  throw ECommand_Error("Several folders are called \"" + name + "\": " + Quoted_List(paths) + ".");
}

void Narrow_To_Folder(const TSearch_Command& command, std::vector<TBook_Search>& searches) {
  std::vector<TBook_Search> narrowed;
  std::vector<std::string> known;
  for (TBook_Search& search : searches) {
    for (const auto& [key, path] : Folder_Paths(search.Book.Key)) known.push_back(path);
    const auto folder = Find_Folder_Named(search.Book, command.Folder);
    if (!folder) continue;
    search.Record.Group = *folder;
    search.Record.SubGroups = !command.No_Subfolders;
    narrowed.push_back(std::move(search));
  }
  if (narrowed.empty()) {
    throw ECommand_Error(
        "There is no folder \"" + command.Folder + "\"; " +
        (known.empty() ? "there are none yet." : "the folders are " + Quoted_List(known) + "."));
  }
  searches = std::move(narrowed);
}

std::vector<TBook_Search> Searches_Of(const TSearch_Command& command, const std::vector<TBook>& books) {
  if (command.Filter.empty() && command.Criteria.empty() && command.Folder.empty())
    throw ECommand_Error("The command search needs a CRITERION, --filter, --folder, --list or --delete.");
  auto searches = command.Filter.empty() ? Typed_Searches(command, books) : Filter_Searches(command, books);
  if (!command.Folder.empty() && !searches.empty()) Narrow_To_Folder(command, searches);
  return searches;
}

// ---- searching -----------------------------------------------------------------------------------------

struct TWhat {
  int Page;
  const char* Name;
};
constexpr TWhat Whats[] = {{KTReminds::Page_Contact_Results, "contacts"},
                           {KTReminds::Page_Calendar_Results, "calendar"},
                           {KTReminds::Page_Task_Results, "tasks"}};

const TWhat& What_To_Find(const std::string& find, const TSearchRecord& record) {
  const auto found = [&](const auto& is) { return std::find_if(std::begin(Whats), std::end(Whats), is); };
  if (find.empty()) {
    CurrentSearch = std::make_unique<TSearchRecord>(record);
    const int page = KTReminds::Results_Of_Search();
    return *found([page](const TWhat& what) { return what.Page == page; });
  }
  const auto* what = found([&find](const TWhat& each) { return find == each.Name; });
  if (what == std::end(Whats))
    throw ECommand_Error("--find: \"" + find + "\" is none of contacts, calendar and tasks.");
  return *what;
}

bool Can_Be_Asked(int group, int page) {
  switch (group) {
    case KTReminds::Group_Tasks:
      return true;
    case KTReminds::Group_Calendar_Types:
      return page != KTReminds::Page_Contact_Results;
    case KTReminds::Group_Calendar_Events:
    case KTReminds::Group_Holidays:
      return page == KTReminds::Page_Calendar_Results;
    default:
      return page == KTReminds::Page_Contact_Results;
  }
}

// A search would pass over a criterion that is not about what it looks through.
void Check_Criteria(const TBook_Search& search, const TWhat& what) {
  for (std::size_t i = 0; i < search.Record.Items.size(); ++i) {
    if (Can_Be_Asked(search.Record.Items[i].Field, what.Page)) continue;
    throw ECommand_Error(
        "\"" + KTReminds::Criterion_Text(search.Record, static_cast<int>(i), search.Book.Key) +
        "\" cannot be asked of " +
        (what.Page == KTReminds::Page_Calendar_Results ? "the calendar." : what.Name + std::string(".")));
  }
}

std::vector<TListed_Contact> Found_Contacts(const TConsole& console, const TBook& book) {
  TTree tree;
  std::int64_t elapsed = 0;
  KTReminds::SearchContacts(book.Key, {}, tree.Root(), tree, elapsed, Contact_Type_Contact, console.Progress);
  std::unordered_set<std::string> keys;
  for (const auto& node : tree.Root().Children) keys.insert(node->Key.Str());
  return Read_Listed_Contacts(book, keys);
}

void Add_Found_Entries(const TConsole& console, const TBook& book, bool only_tasks, bool with_holidays,
                       std::vector<TAgenda_Entry>& entries) {
  TItem_List list;
  std::int64_t elapsed = 0;
  KTReminds::SearchCalendar(book.Key, list, elapsed, console.Progress);
  const TSnapshot snapshot;
  TTable occurrences(Events_Data, "Key", {"Event"}), events = KTReminds::Entry_Events("Key");
  Set_Cache(occurrences);
  Set_Cache(events);
  for (std::size_t i = 0; i < list.Count(); ++i) {
    auto& data = list[i].Data;
    if (data->Is_Holiday() ? !with_holidays || only_tasks : only_tasks && !data->Is_Task()) continue;
    // What another program has deleted meanwhile is not shown.
    if (!data->Is_Holiday() && (!occurrences.FindKey({data->Key}) ||
                                !events.FindKey({occurrences.Text(KTReminds::Occurrence_Columns().Event)})))
      continue;
    entries.push_back(Agenda_Entry(std::move(data), events));
  }
}

int Find(const TConsole& console, const TSearch_Command& command, std::vector<TBook_Search> searches) {
  const bool as_json = Is_Json(command.Format);
  if (searches.empty()) return 1;
  const TWhat what = What_To_Find(command.Find, searches.front().Record);
  const bool of_contacts = what.Page == KTReminds::Page_Contact_Results;
  if (!of_contacts && !command.Folder.empty())
    throw ECommand_Error("--folder belongs to a search for contacts.");
  if (command.Filter.empty()) {
    for (const TBook_Search& search : searches) Check_Criteria(search, what);
  }
  std::vector<TListed_Contact> contacts;
  std::vector<TAgenda_Entry> entries;
  TAgenda_Range range;
  for (TBook_Search& search : searches) {
    const bool is_first = range.Books.empty();
    range.Books.push_back(search.Book);
    CurrentSearch = std::make_unique<TSearchRecord>(std::move(search.Record));
    if (of_contacts) {
      for (TListed_Contact& contact : Found_Contacts(console, search.Book))
        contacts.push_back(std::move(contact));
    } else {
      Add_Found_Entries(console, search.Book, what.Page == KTReminds::Page_Task_Results, is_first, entries);
    }
  }
  if (console.Prompts.Failed()) return 1;
  if (of_contacts) {
    (as_json ? Write_Contacts_Json : Write_Contacts_Text)(console.Out, contacts);
  } else if (as_json) {
    Sort_Agenda(entries);
    Write_Agenda_Json(console.Out, entries);
  } else if (entries.empty()) {
    console.Out << (what.Page == KTReminds::Page_Task_Results ? "No tasks.\n" : "No entries.\n");
  } else {
    Sort_Agenda(entries);
    Write_Agenda_Text(console.Out, range, entries, command.Keys);
  }
  return 0;
}

// ---- filters -------------------------------------------------------------------------------------------

int Save(const TConsole& console, const TSearch_Command& command) {
  const std::string name(Trimmed(*command.Save));
  if (name.empty() || name.starts_with('<'))
    throw ECommand_Error("--save: \"" + *command.Save + "\" is no name for a filter.");
  const TBook book = Books_Of(command).front();
  auto searches = Searches_Of(command, {book});
  if (searches.empty()) return 1;
  if (KTReminds::Has_Filter(book.Key, name, command.Shared))
    throw ECommand_Error("There is a filter \"" + name + "\" already; --delete removes it.");
  if (!KTReminds::May_Save_Filter(book.Key, name, command.Shared))
    throw ECommand_Error("You may not save shared filters in the book \"" + book.Name + "\".");
  TSearchRecord& record = searches.front().Record;
  if (!record.SavetoTable(book.Key, name, command.Shared)) return 1;
  console.Out << "Saved: " << Printable(name) << ", "
              << Counted(static_cast<std::int64_t>(record.Items.size()), "criterion", "criteria") << '\n';
  return 0;
}

int Delete(const TConsole& console, const TSearch_Command& command) {
  const std::vector<TBook> books = Books_Of(command);
  std::vector<std::string> having;
  const TBook* book = nullptr;
  bool is_shared = false;
  for (const TBook& each : books) {
    is_shared = is_shared || KTReminds::Has_Filter(each.Key, command.Delete, true);
    if (!KTReminds::Has_Filter(each.Key, command.Delete, command.Shared)) continue;
    having.push_back(each.Name);
    book = &each;
  }
  if (!book && is_shared)
    throw ECommand_Error("The filter \"" + command.Delete + "\" is shared; delete it with --shared.");
  if (!book) Refuse_Filter(command.Delete, books, command.Shared);
  if (having.size() > 1)
    throw ECommand_Error("Several books have a filter \"" + command.Delete + "\", " + Quoted_List(having) +
                         "; choose one with --book.");
  if (!KTReminds::May_Delete_Filter(book->Key, command.Shared))
    throw ECommand_Error("You may not delete shared filters of the book \"" + book->Name + "\".");
  if (!KTReminds::Delete_Filter(book->Key, command.Delete, command.Shared)) return 1;
  console.Out << "Deleted: " << Printable(command.Delete) << '\n';
  return 0;
}

int List(const TConsole& console, const TSearch_Command& command) {
  const bool as_json = Is_Json(command.Format);
  const std::vector<TBook> books = Books_Of(command);
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  std::string text;
  for (const TKept_Filter& filter : Kept_Filters(books, command.Shared)) {
    TSearchRecord record;
    if (record.Load(filter.Book.Key, filter.Name, filter.Shared) != KTReminds::TFilter_Load::Loaded) continue;
    std::string folder;
    if (!record.Group.empty()) {
      const auto paths = Folder_Paths(filter.Book.Key);
      const auto found = paths.find(record.Group);
      folder = found == paths.end() ? "a folder that is gone" : found->second;
    }
    std::vector<std::string> criteria;
    for (int i = 0; std::cmp_less(i, record.Items.size()); ++i)
      criteria.push_back(KTReminds::Criterion_Text(record, i, filter.Book.Key));

    std::string remarks = books.size() > 1 ? filter.Book.Name : "";
    const auto add = [&remarks](const std::string& remark) {
      remarks += (remarks.empty() ? "" : ", ") + remark;
    };
    if (filter.Shared) add("shared");
    if (!folder.empty()) add(folder + (record.SubGroups ? "" : " without sub-folders"));
    text += Printable(filter.Name + (remarks.empty() ? "" : " (" + remarks + ")")) + '\n';
    for (std::string& criterion : criteria) {
      text += "  " + Printable(criterion) + '\n';
      criterion = Valid_UTF8(criterion);
    }
    list.push_back({{"name", Valid_UTF8(filter.Name)},
                    {"book", Valid_UTF8(filter.Book.Name)},
                    {"shared", filter.Shared},
                    {"folder", Valid_UTF8(folder)},
                    {"subfolders", record.SubGroups},
                    {"criteria", criteria}});
  }
  if (!as_json) {
    console.Out << (text.empty() ? "No filters.\n" : text);
    return 0;
  }
  // A terminal may obey what JSON lets stand in a text.
  constexpr bool ascii_only = true;
  console.Out << '[';
  for (const auto& object : list)
    console.Out << (&object == &list.front() ? "\n" : ",\n") << object.dump(-1, ' ', ascii_only);
  console.Out << (list.empty() ? "]\n" : "\n]\n");
  return 0;
}

struct TSearch_End {
  ~TSearch_End() { CurrentSearch.reset(); }
};

}  // namespace

int Run_Search(const TConsole& console, const TSearch_Command& command) {
  const TSearch_End end;
  if (!command.Criteria.empty() && (command.List || !command.Delete.empty() || !command.Filter.empty()))
    throw ECommand_Error("Criteria do not go with --filter, --list or --delete.");
  if (command.List) return List(console, command);
  if (!command.Delete.empty()) return Delete(console, command);
  if (command.Save) return Save(console, command);
  return Find(console, command, Searches_Of(command, Books_Of(command)));
}

}  // namespace Plexidex
