#include "Contact_Criteria.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

#include "Event_Criteria.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// The journal's type of each field from Search_First_Journal on; never renumber. Type 8 is not searched.
constexpr std::array Journal_Types = {0, 19, 1, 13, 14, 15, 16, 17, 18, 20, 21,
                                      2, 3,  4, 5,  6,  7,  9,  10, 11, 12};

constexpr int Fields_Of_Templates = 20, Other_Fields = 8;

// Fields of templates by their codes, from one to another.
struct TField_Range {
  int First, Last;
};

TField_Range Fields_Of_Kind(int field) {
  switch (field) {
    case Search_Any_Telephone:
      return {12, 16};
    case Search_Any_Mail:
      return {17, 18};
    case Search_Any_Web:
      return {19, 19};
    default:
      return {1, Fields_Of_Templates};
  }
}

bool Is_General(int field) {
  return field == Search_Any_Text || field == Search_Any_Field;
}

bool Is_Between(int field, int first, int last) {
  return field >= first && field <= last;
}

// What a search reads besides the contacts themselves.
enum class TDetails { Nothing, Notes, Fields, All };

TDetails Details_Of(const TSearchRecord& search) {
  bool notes = false, fields = false;
  for (const TSearchItem& item : search.Items) {
    const bool any = !item.Has_Template() && Is_Between(item.SearchType, Search_Any_Text, Search_Any_Field);
    notes =
        notes || (!item.Has_Template() && (item.SearchType == Search_Notes || Is_General(item.SearchType)));
    fields = fields || any || item.Has_Template() ||
             Is_Between(item.SearchType, Search_First_Other, Search_Last_Other);
  }
  if (notes) return fields ? TDetails::All : TDetails::Notes;
  return fields ? TDetails::Fields : TDetails::Nothing;
}

TTable Details_Cursor(TDetails details) {
  constexpr auto columns_of_fields = [](auto... more) {
    return TTable(Contacts_Data, "Contact",
                  {"Template", "Field1",  "Field2",  "Field3",  "Field4",  "Field5",  "Field6",  "Field7",
                   "Field8",   "Field9",  "Field10", "Field11", "Field12", "Field13", "Field14", "Field15",
                   "Field16",  "Field17", "Field18", "Field19", "Field20", "Other_1", "Other_2", "Other_3",
                   "Other_4",  "Other_5", "Other_6", "Other_7", "Other_8", more...});
  };
  if (details == TDetails::All) return columns_of_fields("Notes");
  if (details == TDetails::Fields) return columns_of_fields();
  return TTable(Contacts_Data, "Contact", {"Notes"});
}

TTable Contacts_Cursor(const TSearchRecord& search) {
  const bool asks_for_changes =
      std::any_of(search.Items.begin(), search.Items.end(), [](const TSearchItem& item) {
        return Is_Between(item.SearchType, Search_Modified_By, Search_Modified);
      });
  if (asks_for_changes) return TTable(Contacts_Table, {"DisplayName", "ModifiedBy", "ModifiedAt"});
  return TTable(Contacts_Table, {"DisplayName"});
}

// The key texts of one column of the rows in a range.
std::set<std::string, std::less<>> Keys_In(TTable& table, std::string_view column) {
  std::set<std::string, std::less<>> keys;
  const TField field = table.Field(column);
  for (table.First(); !table.Eof(); table.Next()) keys.emplace(table.Text(field));
  return keys;
}

}  // namespace

class TContact_Criteria::TImpl {
 public:
  TImpl(const TSearchRecord& search, TDateTime now, std::string_view user)
      : contacts(Contacts_Cursor(search)), read(Details_Of(search)), details(Details_Cursor(read)) {
    matchers.reserve(search.Items.size());
    for (const TSearchItem& item : search.Items) {
      matchers.emplace_back(item, now);
      if (!item.Has_Template()) Read_Ahead(item, user);
    }
    for (int i = 1; i <= Fields_Of_Templates; ++i)
      fields.push_back(details.Field("Field" + std::to_string(i)));
    for (int i = 1; i <= Other_Fields; ++i) others.push_back(details.Field("Other_" + std::to_string(i)));
    if (read != TDetails::Nothing) contacts.Prefetch(key_field, details);
    occurrences.Prefetch(Occurrence_Columns().Event, events);
    Set_Cache(contacts);
    Look_At_Names_First();
  }

  std::int64_t Take_Passed() { return by_name.empty() ? 1 : std::exchange(passed, 0); }

  bool Meets() {
    key = contacts.Text(key_field);
    has_details = read != TDetails::Nothing && details.FindKey({key});
    return std::all_of(matchers.begin(), matchers.end(),
                       [this](const TMatcher& each) { return Meets(each); });
  }

  TTable contacts;

 private:
  using TKeys = std::set<std::string, std::less<>>;

  // All criteria must be met, so what a name decides is decided where the names are read.
  void Look_At_Names_First() {
    for (const TMatcher& matcher : matchers) {
      if (!matcher.Item().Has_Template() && matcher.Item().SearchType == Search_Contact_Name)
        by_name.push_back(&matcher);
    }
    if (by_name.empty()) return;
    contacts.Set_Text_Test(name_field, [this](std::string_view name) {
      ++passed;
      return std::all_of(by_name.begin(), by_name.end(),
                         [name](const TMatcher* matcher) { return matcher->Text(name); });
    });
  }

  // What is few enough to be held for the whole walk.
  void Read_Ahead(const TSearchItem& item, std::string_view user) {
    if (item.SearchType == Search_Contact_Status) {
      TTable flags(Flags_Table, "User");
      flags.SetRange({user}, {user});
      if (!tagged) tagged = std::make_unique<TKeys>(Keys_In(flags, "Contact"));
    } else if (item.SearchType == Search_Category) {
      // By category, with "" for all of them.
      const bool one = item.Action == Action_Member || item.Action == Action_Not_Member;
      const std::string category = one ? item.KeyValue : std::string();
      if (members.contains(category) || (one && category.empty())) return;
      TTable in_use(Categories_InUse, one ? "KeyandContact" : "Contact");
      if (one) in_use.SetRange({category}, {category});
      members.emplace(category, Keys_In(in_use, "Contact"));
    }
  }

  bool Meets(const TMatcher& matcher) {
    const TSearchItem& item = matcher.Item();
    const int field = item.SearchType;
    if (item.Has_Template()) return Meets_Template(matcher);
    switch (field) {
      case Search_Contact_Name:
        return matcher.Text(contacts.Text(name_field));
      case Search_Modified_By:
        return matcher.Text(names.Of(contacts.Text(modified_by_field)));
      case Search_Modified:
        return matcher.Date(contacts.DateTime(modified_field));
      case Search_Contact_Status:
        return item.Action == Action_Tagged ? tagged->contains(key)
                                            : item.Action == Action_Not_Tagged && !tagged->contains(key);
      case Search_Category:
        return Meets_Category(item);
      case Search_Notes:
        return Meets_Notes(item);
      case Search_Journal_Description:
        return Meets_Description(matcher);
      case Search_Link_Title:
      case Search_Link_Target:
      case Search_Link_Status:
        return Meets_Link(matcher);
      default:
        break;
    }
    if (Is_Between(field, Search_First_Journal, Search_Last_Journal)) return Meets_Journal(matcher);
    if (Is_Between(field, Search_First_Other, Search_Last_Other))
      return matcher.Text(Detail(others, field - Search_First_Other));
    if (Is_Between(field, Search_Any_Text, Search_Any_Field)) return Meets_Any(matcher);
    if (Is_Between(field, Search_Event_Date, Search_Event_Priority))
      return Meets_Event(matcher, TEntry_Type::Event);
    if (Is_Between(field, Search_Task_Description, Search_Task_Priority))
      return Meets_Event(matcher, TEntry_Type::Task);
    return false;
  }

  std::string_view Detail(const std::vector<TField>& of, int position) const {
    return has_details ? details.Text(of.at(static_cast<std::size_t>(position))) : std::string_view();
  }

  bool Meets_Template(const TMatcher& matcher) const {
    const TSearchItem& item = matcher.Item();
    return has_details && !item.KeyValue.empty() && details.Text(template_field) == item.KeyValue &&
           Is_Between(item.SearchType, 1, Fields_Of_Templates) &&
           matcher.Text(Detail(fields, item.SearchType - 1));
  }

  bool Is_Member(const std::string& category) const {
    const auto found = members.find(category);
    return found != members.end() && found->second.contains(key);
  }

  bool Meets_Category(const TSearchItem& item) const {
    switch (item.Action) {
      case Action_Member:
        return !item.KeyValue.empty() && Is_Member(item.KeyValue);
      case Action_Not_Member:
        return item.KeyValue.empty() || !Is_Member(item.KeyValue);
      case Action_In_A_Category:
        return Is_Member({});
      case Action_In_No_Category:
        return !Is_Member({});
      default:
        return false;
    }
  }

  bool Meets_Notes(const TSearchItem& item) const {
    TNotes_Control& control = Search_Notes_Control();
    control.Set_Text(has_details ? details.Text(notes_field) : std::string_view());
    const auto finds = [&](std::size_t limit) {
      return control.Find(item.Value, limit, item.MatchCase, item.WholeWord);
    };
    switch (item.Action) {
      case Action_Contains:
        return finds(std::string_view::npos);
      case Action_Does_Not_Contain:
        return !finds(std::string_view::npos);
      // The same: the notes begin with it.
      case Action_Equals:
      case Action_Starts_With:
        return finds(Count_Characters(item.Value));
      case Action_Blank:
        return control.Is_Empty();
      case Action_Not_Blank:
        return !control.Is_Empty();
      default:
        return false;
    }
  }

  // Whether some row of a table is as wanted, among those with these leading columns of its index.
  template <class TIs_Wanted>
  static bool Any_Row(TTable& table, TValues leading, TIs_Wanted is_wanted) {
    table.SetRange(leading, leading);
    for (table.First(); !table.Eof(); table.Next()) {
      if (is_wanted()) return true;
    }
    return false;
  }

  bool Meets_Description(const TMatcher& matcher) {
    journal.Set_Index("Contact");
    return Any_Row(journal, {key}, [&] {
      const std::string_view owner = journal.Text(private_field);
      return (owner.empty() || owner == User_Key()) && matcher.Text(journal.Text(description_field));
    });
  }

  bool Meets_Journal(const TMatcher& matcher) {
    const TSearchItem& item = matcher.Item();
    const int type = Journal_Types.at(static_cast<std::size_t>(item.SearchType - Search_First_Journal));
    journal.Set_Index("ContactandType");
    bool is_there = false;
    const bool met = Any_Row(journal, {key, type}, [&] {
      is_there = true;
      return matcher.Date(journal.DateTime(date_field));
    });
    // What was never done was not done in these days either.
    const bool denies =
        item.Action == Action_Never || item.Action == Action_Not_In_Next || item.Action == Action_Not_In_Last;
    return met || (!is_there && denies);
  }

  bool Meets_Link(const TMatcher& matcher) {
    const TSearchItem& item = matcher.Item();
    if (item.SearchType == Search_Link_Status) {
      const bool has = Any_Row(links, {key}, [&] { return links.Boolean(has_link_field); });
      return item.Action == Action_Has_Link ? has : item.Action == Action_Has_No_Link && !has;
    }
    const TField field = item.SearchType == Search_Link_Title ? title_field : target_field;
    return Any_Row(links, {key}, [&] { return matcher.Text(links.Text(field)); });
  }

  bool Meets_Any(const TMatcher& matcher) {
    const int field = matcher.Item().SearchType;
    if (Is_General(field) && (matcher.Text(contacts.Text(name_field)) || Meets_Notes(matcher.Item())))
      return true;
    const TField_Range kind = Fields_Of_Kind(field);
    for (int code = kind.First; code <= kind.Last; ++code) {
      if (matcher.Text(Detail(fields, code - 1))) return true;
    }
    if (!Is_General(field)) return false;
    for (int other = 0; other < Other_Fields; ++other) {
      if (matcher.Text(Detail(others, other))) return true;
    }
    return Meets_Description(matcher);
  }

  bool Meets_Event(const TMatcher& matcher, TEntry_Type type) {
    const TOccurrence_Columns& column = Occurrence_Columns();
    const TSearchItem& item = matcher.Item();
    if (item.SearchType == Search_Event_Status) return Meets_Status(item);
    const bool is_of_master = Is_Of_Master(item.SearchType);
    std::unordered_map<std::string, bool> decided;  // a set comes with each of its dates
    return Any_Row(occurrences, {key}, [&] {
      const std::string_view event = occurrences.Text(column.Event);
      if (!events.FindKey({event}) || Read_Entry_Type(events) != type) return false;
      if (!is_of_master) return matcher.Date(occurrences.DateTime(column.EventDate));
      const auto [at, is_new] = decided.try_emplace(std::string(event));
      if (is_new) at->second = Meets_Master(matcher, events, names);
      return at->second;
    });
  }

  // Of all events of the contact: "Has no ..." is said of none of them.
  bool Meets_Status(const TSearchItem& item) {
    const TOccurrence_Columns& column = Occurrence_Columns();
    const bool about_alarms = item.Action == Action_Event_Alarm || item.Action == Action_Event_No_Alarm;
    if (!Is_Between(item.Action, Action_Event_Alarm, Action_Event_None_Outstanding)) return false;
    const bool has = Any_Row(occurrences, {key}, [&] {
      if (!events.FindKey({occurrences.Text(column.Event)}) || Read_Entry_Type(events) != TEntry_Type::Event)
        return false;
      return about_alarms ? !Is_Hidden(events) && alarms.FindKey({occurrences.Text(column.Key)})
                          : !occurrences.Boolean(column.Actioned);
    });
    return has == (item.Action == Action_Event_Alarm || item.Action == Action_Event_Outstanding);
  }

  std::vector<TMatcher> matchers;
  const TDetails read;
  TTable details;
  TTable journal{Log_Table, {"Contact", "Type", "LogDate", "Description", "PrivateTo"}};
  TTable links{Links_Table, "Contact", {"Title", "FileOrUrl", "HasLink"}};
  TTable occurrences{Events_Data, "ContactandDate", {"Key", "Event", "Actioned", "EventDate"}};
  TTable events = Searched_Events("Key");
  TTable alarms{Alarms_Table, "Key", {"Key"}};
  TUser_Names names;
  std::unique_ptr<TKeys> tagged;
  std::map<std::string, TKeys> members;
  std::vector<TField> fields, others;
  const TField key_field = contacts.Field("Key"), name_field = contacts.Field("DisplayName"),
               modified_by_field = contacts.Field("ModifiedBy"),
               modified_field = contacts.Field("ModifiedAt"), template_field = details.Field("Template"),
               notes_field = details.Field("Notes"), description_field = journal.Field("Description"),
               private_field = journal.Field("PrivateTo"), date_field = journal.Field("LogDate"),
               title_field = links.Field("Title"), target_field = links.Field("FileOrUrl"),
               has_link_field = links.Field("HasLink");
  std::vector<const TMatcher*> by_name;
  std::int64_t passed = 0;
  std::string_view key;  // of the current contact
  bool has_details = false;
};

TContact_Criteria::TContact_Criteria(const TSearchRecord& search, TDateTime now, std::string_view user)
    : impl(std::make_unique<TImpl>(search, now, user)) {}

TContact_Criteria::~TContact_Criteria() = default;

TTable& TContact_Criteria::Contacts() {
  return impl->contacts;
}

bool TContact_Criteria::Meets() {
  return impl->Meets();
}

std::int64_t TContact_Criteria::Take_Passed() {
  return impl->Take_Passed();
}

}  // namespace KTReminds
