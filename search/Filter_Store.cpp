#include "Filter_Store.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>

#include "Kt_update.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr std::int32_t Version = 1;
constexpr std::string_view Everybody = "GLOBAL";
// Four numbers, two texts, a number, two dates and two flags.
constexpr std::size_t Least_Item = 4 * 4 + 2 * 4 + 4 + 2 * 8 + 2;

std::string Owner_Of(bool global) {
  return global ? std::string(Everybody) : User_Key();
}

bool May(const std::string& book, int level, bool global) {
  return !global ||
         Read("Filter_Store:May [KT_Rights]", [&] { return Access_Allowed(book, level); }).value_or(false);
}

// Little-endian, whatever the machine.
class TBytes_Out {
 public:
  template <class TNumber>
  void Number(TNumber number) {
    for (std::size_t i = 0; i < sizeof number; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
  }
  void Integer(std::int32_t number) { Number(static_cast<std::uint32_t>(number)); }
  void Date(TDateTime date) { Number(std::bit_cast<std::uint64_t>(date)); }
  void Flag(bool flag) { bytes += flag ? '\1' : '\0'; }
  void Text(std::string_view text) {
    Integer(static_cast<std::int32_t>(text.size()));
    bytes += text;
  }
  std::string Take() { return std::move(bytes); }

 private:
  std::string bytes;
};

class TBytes_In {
 public:
  explicit TBytes_In(std::string_view bytes) : bytes(bytes) {}

  template <class TNumber>
  TNumber Number() {
    TNumber number = 0;
    const std::string_view taken = Take(sizeof number);
    for (std::size_t i = 0; i < sizeof number; ++i)
      number |= static_cast<TNumber>(static_cast<unsigned char>(taken[i])) << (8 * i);
    return number;
  }
  std::int32_t Integer() { return static_cast<std::int32_t>(Number<std::uint32_t>()); }
  TDateTime Date() { return std::bit_cast<TDateTime>(Number<std::uint64_t>()); }
  bool Flag() { return Take(1)[0] != '\0'; }
  std::string Text() {
    const std::int32_t length = Integer();
    return length > 0 ? Valid_UTF8(Take(static_cast<std::size_t>(length))) : std::string();
  }
  std::size_t Left() const { return bytes.size(); }

 private:
  std::string_view Take(std::size_t count) {
    if (count > bytes.size()) throw EFilter_Error("its stored settings are cut short");
    const std::string_view taken = bytes.substr(0, count);
    bytes.remove_prefix(count);
    return taken;
  }

  std::string_view bytes;
};

TSearchItem Read_Item(TBytes_In& in) {
  TSearchItem item;
  in.Integer();
  item.Field = in.Integer();
  item.Action = in.Integer();
  item.SearchType = in.Integer();
  item.Value = in.Text();
  item.Template = in.Text();
  item.IntegerValue = in.Integer();
  item.Date1Value = in.Date();
  item.Date2Value = in.Date();
  item.MatchCase = in.Flag();
  item.WholeWord = in.Flag();
  return item;
}

TTable Filters() {
  return TTable(Filters_Table, "User");
}

}  // namespace

std::string Stored_Settings(const TSearchRecord& record) {
  TBytes_Out out;
  out.Integer(Version);
  out.Text(record.Group);
  out.Flag(record.SubGroups);
  out.Integer(static_cast<std::int32_t>(record.Items.size()));
  for (const TSearchItem& item : record.Items) {
    out.Integer(Version);
    out.Integer(item.Field);
    out.Integer(item.Action);
    out.Integer(item.SearchType);
    out.Text(item.Value);
    out.Text(item.Template);
    out.Integer(item.IntegerValue);
    out.Date(item.Date1Value);
    out.Date(item.Date2Value);
    out.Flag(item.MatchCase);
    out.Flag(item.WholeWord);
  }
  return out.Take();
}

void Read_Settings(std::string_view bytes, TSearchRecord& record) {
  TBytes_In in(bytes);
  TSearchRecord read;
  in.Integer();
  read.Group = in.Text();
  read.SubGroups = in.Flag();
  const std::int32_t count = in.Integer();
  if (count < 0 || std::cmp_greater(count, in.Left() / Least_Item))
    throw EFilter_Error("its stored settings hold fewer criteria than they say");
  for (std::int32_t i = 0; i < count; ++i) read.Items.push_back(Read_Item(in));
  read.Name = std::move(record.Name);
  record = std::move(read);
}

TSearchRecord::TSearchRecord(const std::string& Book, const std::string& Name, bool Global) {
  Load(Book, Name, Global);
}

TFilter_Load TSearchRecord::Load(const std::string& Book, const std::string& Filter, bool Global) {
  std::string bytes;
  const auto found = Read("Search_Record:Load [KT_Filters]", [&] {
    const TSnapshot snapshot;
    if (Global && !Access_Allowed(Book, Access_See)) return false;
    TTable filters = Filters();
    if (!filters.FindKey({Owner_Of(Global), Book, Filter})) return false;
    bytes = filters.Blob(filters.Field("Settings"));
    return true;
  });
  if (!found) return TFilter_Load::Refused;
  if (!*found) return TFilter_Load::Missing;
  try {
    Read_Settings(bytes, *this);
  } catch (const EFilter_Error& e) {
    Raise_Error("Load Search Filter",
                "The Search Filter \"" + Filter + "\" cannot be loaded: " + e.what() + ".");
    return TFilter_Load::Refused;
  }
  Name = Filter;
  return TFilter_Load::Loaded;
}

bool TSearchRecord::SavetoTable(const std::string& Book, const std::string& New_Name, bool Global) {
  if (!May_Save_Filter(Book, New_Name, Global)) {
    Sound(5);
    return false;
  }
  Name = New_Name;
  const std::string user = Owner_Of(Global);
  return bool(Update("Search_Record: SavetoTable [KT_Filters]", [&] {
    TTable filters = Filters();
    if (filters.FindKey({user, Book, Name})) {
      filters.Edit();
    } else {
      filters.Insert();
      filters.Set(filters.Field("BookKey"), Book);
      filters.Set(filters.Field("User"), user);
      filters.Set(filters.Field("Name"), Name);
    }
    filters.Set_Blob(filters.Field("Settings"), Stored_Settings(*this));
    PostUpdate(filters);
  }));
}

std::vector<std::string> Filter_Names(const std::string& book, bool global) {
  return Read("fm_Filters:Populate_Filter_List [KT_Filters]",
              [&] {
                std::vector<std::string> names;
                if (global && !Access_Allowed(book, Access_See)) return names;
                const std::string user = Owner_Of(global);
                TTable filters(Filters_Table, "User", {"Name"});
                const TField name = filters.Field("Name");
                filters.SetRange({user, book}, {user, book});
                for (filters.First(); !filters.Eof(); filters.Next()) names.emplace_back(filters.Text(name));
                std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
                  return Kt_util_01::CompareText(a, b) < 0;
                });
                return names;
              })
      .value_or(std::vector<std::string>());
}

bool Has_Filter(const std::string& book, const std::string& name, bool global) {
  return Read("fm_Filters:Process_Action [KT_Filters]",
              [&] {
                return Filters().FindKey({Owner_Of(global), book, name});
              })
      .value_or(false);
}

bool May_Save_Filter(const std::string& book, const std::string& name, bool global) {
  return May(book, Has_Filter(book, name, global) ? Access_Update : Access_Create, global);
}

bool May_Delete_Filter(const std::string& book, bool global) {
  return May(book, Access_Delete, global);
}

bool Delete_Filter(const std::string& book, const std::string& name, bool global) {
  if (!May_Delete_Filter(book, global)) {
    Sound(5);
    return false;
  }
  if (!Has_Filter(book, name, global)) return true;
  return bool(Update("fm_Filters:DelBtnClick [KT_Filters]", [&] {
    TTable filters = Filters();
    if (filters.FindKey({Owner_Of(global), book, name})) filters.Delete();
  }));
}

}  // namespace KTReminds
