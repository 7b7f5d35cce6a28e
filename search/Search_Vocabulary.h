#pragma once

// What can be asked of a search: groups of fields, their fields, and what a field is compared by. The codes
// are stored in filters: never renumber.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_data_01.h"

namespace KTReminds {

/// Groups. From First_Template_Group on a group is a template of contacts, which is known by its name.
enum TSearch_Group : int {
  Group_Calendar_Types = -1,
  Group_Holidays = 0,
  Group_Contact = 1,
  Group_Contact_Events = 2,
  Group_Tasks = 3,
  Group_Other_Fields = 4,
  Group_Links = 5,
  Group_Journal = 6,
  Group_Field_Types = 7,
  Group_Calendar_Events = 8,
  First_Template_Group = 9
};

enum TSearch_Field : int {
  Search_Contact_Name = 1,
  Search_Modified_By = 2,
  Search_Modified = 3,
  Search_Contact_Status = 4,
  Search_Category = 5,
  Search_Notes = 6,
  Search_First_Journal = 10,
  Search_Last_Journal = 30,
  Search_Journal_Description = 31,
  Search_First_Other = 40,
  Search_Last_Other = 47,
  Search_Link_Title = 50,
  Search_Link_Target = 51,
  Search_Link_Status = 52,
  Search_Any_Text = 60,
  Search_Any_Mail = 61,
  Search_Any_Telephone = 62,
  Search_Any_Web = 63,
  Search_Any_Field = 64,
  Search_Event_Date = 70,
  Search_Event_Description = 71,
  Search_Event_Location = 72,
  Search_Event_Owner = 73,
  Search_Event_Status = 74,
  Search_Event_Priority = 75,
  Search_Calendar_Date = 80,
  Search_Calendar_Description = 81,
  Search_Calendar_Location = 82,
  Search_Calendar_Owner = 83,
  Search_Calendar_Status = 84,
  Search_Calendar_Priority = 85,
  Search_Task_Description = 90,
  Search_Task_Start = 91,
  Search_Task_End = 92,
  Search_Task_Started = 93,
  Search_Task_Completed = 94,
  Search_Task_Status = 95,
  Search_Task_Percentage = 96,
  Search_Task_Budget = 97,
  Search_Task_Worked = 98,
  Search_Task_Remaining = 99,
  Search_Task_Owner = 100,
  Search_Task_Priority = 101,
  Search_Holiday_Date = 110,
  Search_Holiday_Description = 111,
  Search_Holiday_Country = 112,
  Search_Any_Date = 120,
  Search_Any_Description = 121
};

enum TSearch_Action : int {
  Action_Contains = 1,
  Action_Equals = 2,
  Action_Does_Not_Contain = 3,
  Action_Blank = 4,
  Action_Not_Blank = 5,
  Action_Starts_With = 6,
  Action_Anytime = 10,
  Action_Never = 11,
  Action_Yesterday = 12,
  Action_Today = 13,
  Action_Tomorrow = 14,
  Action_In_Next = 15,
  Action_In_Last = 16,
  Action_Not_In_Next = 17,
  Action_Not_In_Last = 18,
  Action_On = 19,
  Action_On_Or_After = 20,
  Action_On_Or_Before = 21,
  Action_Between = 22,
  Action_Tagged = 30,
  Action_Not_Tagged = 31,
  Action_Member = 40,
  Action_Not_Member = 41,
  Action_In_No_Category = 42,
  Action_In_A_Category = 43,
  Action_Has_Link = 50,
  Action_Has_No_Link = 51,
  Action_Event_Alarm = 60,
  Action_Event_No_Alarm = 61,
  Action_Event_Outstanding = 62,
  Action_Event_None_Outstanding = 63,
  Action_Number_Equals = 70,
  Action_Less = 71,
  Action_Greater = 72,
  Action_Calendar_Alarm = 80,
  Action_Calendar_No_Alarm = 81,
  Action_Calendar_Outstanding = 82,
  Action_Calendar_Complete = 83,
  Action_First_Task_Status = 90,  // and then in the order of the statuses
  Action_Last_Task_Status = 95
};

/// What stands for a code that there is not.
inline constexpr std::string_view Search_Field_Error = "<Search Field Error>";

/// An entry of a list to choose from.
struct TSearch_Choice {
  int Code;
  std::string Name;
  friend bool operator==(const TSearch_Choice&, const TSearch_Choice&) = default;
};
using TSearch_Choices = std::vector<TSearch_Choice>;

/// One of the fields of a template.
struct TSearch_Template_Field {
  int Code;          // 1..20, that of the column of Contacts_Data
  int Label_Column;  // of Templates_Table, counted from 1
  const char* Part;  // of the address, in brackets behind its label; empty for another field and the whole
};
/// Null for a code that there is not.
const TSearch_Template_Field* Find_Template_Field(int code);

/// A template found by its name, on whose row the cursor then stands.
bool Find_Template(Kt_data_01::TTable& templates, std::string_view book, std::string_view name);
Kt_data_01::TTable Template_Names();
inline constexpr Kt_data_01::TField Template_Key{0};

/// `template_name` is that of a template group, and empty for the others.
std::string Get_Group_Name(int group, std::string_view template_name);
/// Of all but the fields of templates. The book is asked for its labels of the "Other" fields.
std::string Get_Field_Name(int code, std::string_view book);
std::string Get_Action_Name(int code);
/// The name of a template's field in the text of a criterion; Search_Field_Error when template or code are
/// not there.
std::string Get_Template_Field_Name(std::string_view book, std::string_view template_name, int code);

// These clear the list first, and leave it empty after a failed read, which is reported.

/// The groups of contacts, and each template of the book as one; not those of the calendar.
void Populate_Search_Fields(const std::string& Book, TSearch_Choices& List);
/// The fields of a group. GroupText is its name as Populate_Search_Fields gives it, for the template.
void Populate_Type_Fields(int Group, TSearch_Choices& List, const std::string& Book,
                          const std::string& GroupText);
/// What a field can be compared by; nothing for a field that there is not.
void Populate_Search_Actions(TSearch_Choices& List, int Field, int Group);
/// The categories of the book, for the field of categories alone. They have no codes.
void Populate_Value_List(const std::string& Book, int Field, TSearch_Choices& List);
/// The name of the template in the name of a group; empty for the other groups, and with Check for a template
/// that the book has not.
void Get_Template_Name(int Group, const std::string& GroupText, const std::string& Book, std::string& Name,
                       bool Check);

// What an action asks for besides the field. For a code that there is not: a value and nothing else.

bool Show_Value_Field(int Action);
bool Show_Selection_Button(int Action);
bool Show_MatchCase_Box(int Action);
bool Show_WholeWord_Box(int Action);

}  // namespace KTReminds
