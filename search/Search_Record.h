#pragma once

// A search as the pages edit it, the engine runs it and a filter stores it.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_dates.h"
#include "Search_Vocabulary.h"

namespace KTReminds {

using Kt_util_01::TDateTime;

/// What a typed value is not, though the action needs it.
enum class TValue_Fault { None, No_Text, No_Number, No_Date, No_Range, No_Category };
/// What Validate_Value does, without telling anybody.
TValue_Fault Parse_Value(std::string& Value, int Action, std::int32_t& IntegerValue, TDateTime& Date1,
                         TDateTime& Date2);
/// Takes a typed value apart as the action needs it, and writes dates as the user's short date format has
/// them. False for a value that the action cannot be asked with; the user is told why, but for a category
/// that was not chosen.
bool Validate_Value(std::string& Value, int Field, int SearchType, int Action, std::int32_t& IntegerValue,
                    TDateTime& Date1, TDateTime& Date2);
/// Two dates with the word "and" between blanks. False leaves the dates as they are.
bool Extract_Range(const std::string& Text, TDateTime& Date1, TDateTime& Date2);

/// One criterion.
class TSearchItem {
 public:
  TSearchItem() = default;
  /// Validates the value.
  TSearchItem(int field, int search_type, int action, std::string value, std::string template_name,
              bool match_case, bool whole_word);

  std::int32_t Field = 0;       // the code of the group
  std::int32_t Action = 0;      // a code of TSearch_Action
  std::int32_t SearchType = 0;  // the code of the field
  std::string Value;
  std::string Template;  // the name of a template group's template
  std::string KeyValue;  // of the template or category, while a search runs
  TDateTime Date1Value = 0, Date2Value = 0;
  std::int32_t IntegerValue = 0;
  bool MatchCase = false, WholeWord = false;

  bool Has_Template() const { return Field >= First_Template_Group; }
};

inline constexpr std::string_view New_Filter_Name = "<New Filter>";

/// How a stored filter was loaded. Refused: it could not be read, or is damaged, which the user was told.
enum class TFilter_Load { Loaded, Missing, Refused };

/// The criteria of one search, in the order in which they were added.
class TSearchRecord {
 public:
  TSearchRecord() = default;
  /// A stored filter, of the current user or, when it is global, of all; empty unless it was loaded.
  TSearchRecord(const std::string& Book, const std::string& Name, bool Global);

  std::string Name{New_Filter_Name};
  std::string Group;      // key of the folder searched; empty: the whole book
  bool SubGroups = true;  // and those below it
  std::vector<TSearchItem> Items;

  /// Stores the search under a name, which becomes its own. Nothing is written when an update is refused; a
  /// failed one is undone and reported. False then.
  bool SavetoTable(const std::string& Book, const std::string& New_Name, bool Global);
  /// Unless the filter was loaded, the record stays as it is.
  TFilter_Load Load(const std::string& Book, const std::string& Filter, bool Global);

  /// Validates the value, but adds the criterion whatever it is.
  void Add_Field(int Field, int SearchType, int Action, const std::string& Value, const std::string& Template,
                 bool MatchCase, bool WholeWord);
  /// Ignores an index out of range, as Set_KeyValue does.
  void Delete(int Index);
  void Clear_Search();
  void Clear_Fields();

  // Out of range these give -1, 0, an empty text, or false.

  int Get_Field(int Index) const;
  int Get_Action(int Index) const;
  int Get_SearchType(int Index) const;
  std::int32_t Get_IntegerValue(int Index) const;
  TDateTime Get_Date1Value(int Index) const;
  TDateTime Get_Date2Value(int Index) const;
  std::string Get_Value(int Index) const;
  std::string Get_Template(int Index) const;
  std::string Get_KeyValue(int Index) const;
  bool Get_MatchCase(int Index) const;
  bool Get_WholeWord(int Index) const;
  void Set_KeyValue(int Index, const std::string& Text);
  /// The name of the field. The book is asked for its labels and templates; a failed read is reported.
  std::string Get_SearchType_Name(int Index, const std::string& Book) const;
  /// The criterion as one line.
  std::string Get_Search_Criteria(int Index, const std::string& Book) const;

  /// Finds the keys of the templates and categories that the criteria name. Throws EData_Error.
  void PreProcess_Criteria(const std::string& Book);

 private:
  const TSearchItem* Item(int index) const;
  template <class TValue>
  TValue Get(int index, TValue TSearchItem::*field, TValue otherwise) const;
};

}  // namespace KTReminds
