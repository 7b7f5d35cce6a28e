#include "Search_Record.h"

#include <utility>

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr std::string_view Between_Dates = " AND ";

bool Refuse(const std::string& text) {
  Raise_Error("Invalid Value Field", text);
  return false;
}

std::string Shown_Date(TDateTime date) {
  return FormatDateTime("ddddd", date);
}

}  // namespace

bool Extract_Range(const std::string& Text, TDateTime& Date1, TDateTime& Date2) {
  const std::string upper = UpperCase(Text);
  const std::size_t at = upper.find(Between_Dates);
  TDateTime first = 0, second = 0;
  if (at == std::string::npos || !Str2Date(upper.substr(0, at + 1), first) ||
      !Str2Date(upper.substr(at + Between_Dates.size()), second))
    return false;
  Date1 = first;
  Date2 = second;
  return true;
}

TValue_Fault Parse_Value(std::string& Value, int Action, std::int32_t& IntegerValue, TDateTime& Date1,
                         TDateTime& Date2) {
  IntegerValue = 0;
  Date1 = Date2 = 0;
  switch (Action) {
    case Action_Contains:
    case Action_Equals:
    case Action_Does_Not_Contain:
    case Action_Starts_With:
      return Value.empty() ? TValue_Fault::No_Text : TValue_Fault::None;
    case Action_In_Next:
    case Action_In_Last:
    case Action_Not_In_Next:
    case Action_Not_In_Last:
    case Action_Number_Equals:
    case Action_Less:
    case Action_Greater: {
      std::int64_t number = 0;
      if (!Str2Int(Value, number) || !std::in_range<std::int32_t>(number)) return TValue_Fault::No_Number;
      IntegerValue = static_cast<std::int32_t>(number);
      return TValue_Fault::None;
    }
    case Action_On:
    case Action_On_Or_After:
    case Action_On_Or_Before:
      if (!Str2Date(Value, Date1)) return TValue_Fault::No_Date;
      Value = Shown_Date(Date1);
      return TValue_Fault::None;
    case Action_Between:
      if (!Extract_Range(Value, Date1, Date2)) return TValue_Fault::No_Range;
      Value = Shown_Date(Date1) + " and " + Shown_Date(Date2);
      return TValue_Fault::None;
    case Action_Member:
    case Action_Not_Member:
      return Value.empty() ? TValue_Fault::No_Category : TValue_Fault::None;
    default:
      return TValue_Fault::None;
  }
}

bool Validate_Value(std::string& Value, int, int, int Action, std::int32_t& IntegerValue, TDateTime& Date1,
                    TDateTime& Date2) {
  const std::string format = Shown_Format(Format_Settings().ShortDateFormat);
  switch (Parse_Value(Value, Action, IntegerValue, Date1, Date2)) {
    case TValue_Fault::No_Text:
      return Refuse("The text to be found must be specified in the Value Field before continuing");
    case TValue_Fault::No_Number:
      return Refuse(
          "The value entered is not a valid whole number. Please specify a number before continuing");
    case TValue_Fault::No_Date:
      return Refuse("The Date specified is invalid. Please specify a date in the format \"" + format +
                    "\" before continuing");
    case TValue_Fault::No_Range:
      return Refuse("The Date Range specified is invalid. Please specify a date range in the format \"" +
                    format + " and " + format + "\" before continuing");
    case TValue_Fault::No_Category:
      return false;  // silent: there is a button to choose one
    case TValue_Fault::None:
      break;
  }
  return true;
}

TSearchItem::TSearchItem(int field, int search_type, int action, std::string value, std::string template_name,
                         bool match_case, bool whole_word)
    : Field(field),
      Action(action),
      SearchType(search_type),
      Value(std::move(value)),
      Template(std::move(template_name)),
      MatchCase(match_case),
      WholeWord(whole_word) {
  Validate_Value(Value, Field, SearchType, Action, IntegerValue, Date1Value, Date2Value);
}

void TSearchRecord::Add_Field(int Field, int SearchType, int Action, const std::string& Value,
                              const std::string& Template, bool MatchCase, bool WholeWord) {
  Items.emplace_back(Field, SearchType, Action, Value, Template, MatchCase, WholeWord);
}

void TSearchRecord::Delete(int Index) {
  if (Item(Index)) Items.erase(Items.begin() + Index);
}

void TSearchRecord::Clear_Search() {
  *this = TSearchRecord();
}

void TSearchRecord::Clear_Fields() {
  Items.clear();
}

const TSearchItem* TSearchRecord::Item(int index) const {
  return index >= 0 && std::cmp_less(index, Items.size()) ? &Items[static_cast<std::size_t>(index)] : nullptr;
}

template <class TValue>
TValue TSearchRecord::Get(int index, TValue TSearchItem::*field, TValue otherwise) const {
  const TSearchItem* item = Item(index);
  return item ? item->*field : otherwise;
}

int TSearchRecord::Get_Field(int Index) const {
  return Get(Index, &TSearchItem::Field, -1);
}

int TSearchRecord::Get_Action(int Index) const {
  return Get(Index, &TSearchItem::Action, -1);
}

int TSearchRecord::Get_SearchType(int Index) const {
  return Get(Index, &TSearchItem::SearchType, -1);
}

std::int32_t TSearchRecord::Get_IntegerValue(int Index) const {
  return Get(Index, &TSearchItem::IntegerValue, 0);
}

TDateTime TSearchRecord::Get_Date1Value(int Index) const {
  return Get(Index, &TSearchItem::Date1Value, 0.0);
}

TDateTime TSearchRecord::Get_Date2Value(int Index) const {
  return Get(Index, &TSearchItem::Date2Value, 0.0);
}

std::string TSearchRecord::Get_Value(int Index) const {
  return Get(Index, &TSearchItem::Value, {});
}

std::string TSearchRecord::Get_Template(int Index) const {
  return Get(Index, &TSearchItem::Template, {});
}

std::string TSearchRecord::Get_KeyValue(int Index) const {
  return Get(Index, &TSearchItem::KeyValue, {});
}

bool TSearchRecord::Get_MatchCase(int Index) const {
  return Get(Index, &TSearchItem::MatchCase, false);
}

bool TSearchRecord::Get_WholeWord(int Index) const {
  return Get(Index, &TSearchItem::WholeWord, false);
}

void TSearchRecord::Set_KeyValue(int Index, const std::string& Text) {
  if (Item(Index)) Items[static_cast<std::size_t>(Index)].KeyValue = Text;
}

std::string TSearchRecord::Get_SearchType_Name(int Index, const std::string& Book) const {
  const TSearchItem* item = Item(Index);
  if (!item) return std::string(Search_Field_Error);
  return item->Has_Template() ? Get_Template_Field_Name(Book, item->Template, item->SearchType)
                              : Get_Field_Name(item->SearchType, Book);
}

std::string TSearchRecord::Get_Search_Criteria(int Index, const std::string& Book) const {
  const TSearchItem* item = Item(Index);
  if (!item) return {};
  std::string text = Get_Group_Name(item->Field, item->Template) + ": " + Get_SearchType_Name(Index, Book) +
                     "  --  " + Get_Action_Name(item->Action);
  if (!item->Value.empty()) text += ":  " + item->Value;
  return text;
}

void TSearchRecord::PreProcess_Criteria(const std::string& Book) {
  for (TSearchItem& item : Items) {
    item.KeyValue.clear();
    if (item.Has_Template()) {
      TTable templates = Template_Names();
      if (Find_Template(templates, Book, item.Template)) item.KeyValue = templates.Text(Template_Key);
    } else if (item.Action == Action_Member || item.Action == Action_Not_Member) {
      TTable categories(Categories_Table, "BookandName", {"Key"});
      if (categories.FindKey({Book, item.Value})) item.KeyValue = categories.Text(categories.Field("Key"));
    }
  }
}

}  // namespace KTReminds
