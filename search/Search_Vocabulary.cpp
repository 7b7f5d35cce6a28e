#include "Search_Vocabulary.h"

#include <algorithm>
#include <iterator>

#include "Kt_update.h"

namespace KTReminds {

using namespace Kt_data_01;

namespace {

enum class TAction_Set {
  None,
  Text,
  Date,
  Tag,
  Category,
  Link,
  Contact_Event_Status,
  Number,
  Calendar_Event_Status,
  Task_Status
};

struct TGroup {
  int Code;
  const char* Name;
};

constexpr TGroup Groups[] = {{Group_Calendar_Types, "All Calendar Type Events"},
                             {Group_Holidays, "National Holidays"},
                             {Group_Contact, "Contact Details"},
                             {Group_Contact_Events, "Contact Events"},
                             {Group_Tasks, "Tasks"},
                             {Group_Other_Fields, "Other Fields"},
                             {Group_Links, "Document Links"},
                             {Group_Journal, "Contact Journal"},
                             {Group_Field_Types, "By Field Type"},
                             {Group_Calendar_Events, "Calendar Events"}};

struct TField_Def {
  int Code, Group;
  const char* Name;
  TAction_Set Actions;
};

constexpr TField_Def Fields[] = {
    {Search_Contact_Name, Group_Contact, "Contact Name", TAction_Set::Text},
    {Search_Modified_By, Group_Contact, "Contact Last Modified By", TAction_Set::Text},
    {Search_Modified, Group_Contact, "Contact Last Modified", TAction_Set::Date},
    {Search_Contact_Status, Group_Contact, "Contact Status", TAction_Set::Tag},
    {Search_Category, Group_Contact, "Category Membership", TAction_Set::Category},
    {Search_Notes, Group_Contact, "Contact Notes", TAction_Set::Text},
    {Search_First_Journal, Group_Journal, "Phone Call Made", TAction_Set::Date},
    {11, Group_Journal, "Phone Call Received", TAction_Set::Date},
    {12, Group_Journal, "EMail Sent", TAction_Set::Date},
    {13, Group_Journal, "EMail Received", TAction_Set::Date},
    {14, Group_Journal, "Fax Sent", TAction_Set::Date},
    {15, Group_Journal, "Fax Received", TAction_Set::Date},
    {16, Group_Journal, "Letter Sent", TAction_Set::Date},
    {17, Group_Journal, "Letter Received", TAction_Set::Date},
    {18, Group_Journal, "Meeting", TAction_Set::Date},
    {19, Group_Journal, "Conversation", TAction_Set::Date},
    {20, Group_Journal, "Other Journal Event", TAction_Set::Date},
    {21, Group_Journal, "Internet Visit", TAction_Set::Date},
    {22, Group_Journal, "Contact Imported", TAction_Set::Date},
    {23, Group_Journal, "Contact Created", TAction_Set::Date},
    {24, Group_Journal, "Contact Updated", TAction_Set::Date},
    {25, Group_Journal, "Contact Deleted", TAction_Set::Date},
    {26, Group_Journal, "Contact Restored", TAction_Set::Date},
    {27, Group_Journal, "Owner Changed", TAction_Set::Date},
    {28, Group_Journal, "Link Added", TAction_Set::Date},
    {29, Group_Journal, "Link Opened", TAction_Set::Date},
    {Search_Last_Journal, Group_Journal, "Link Removed", TAction_Set::Date},
    {Search_Journal_Description, Group_Journal, "Journal Description", TAction_Set::Text},
    // Those of the user bear labels of the book's own.
    {Search_First_Other, Group_Other_Fields, "Other 1", TAction_Set::Text},
    {41, Group_Other_Fields, "Other 2", TAction_Set::Text},
    {42, Group_Other_Fields, "Other 3", TAction_Set::Text},
    {43, Group_Other_Fields, "Other 4", TAction_Set::Text},
    {44, Group_Other_Fields, "Other 5", TAction_Set::Text},
    {45, Group_Other_Fields, "Other 6", TAction_Set::Text},
    {46, Group_Other_Fields, "Other 7", TAction_Set::Text},
    {Search_Last_Other, Group_Other_Fields, "Other 8", TAction_Set::Text},
    {Search_Link_Title, Group_Links, "Link Title", TAction_Set::Text},
    {Search_Link_Target, Group_Links, "Document File or URL Name", TAction_Set::Text},
    {Search_Link_Status, Group_Links, "Link Status", TAction_Set::Link},
    {Search_Any_Text, Group_Field_Types, "Any Text Field", TAction_Set::Text},
    {Search_Any_Mail, Group_Field_Types, "Any EMail Address", TAction_Set::Text},
    {Search_Any_Telephone, Group_Field_Types, "Any Telephone Number", TAction_Set::Text},
    {Search_Any_Web, Group_Field_Types, "Any Web Address", TAction_Set::Text},
    {Search_Any_Field, Group_Field_Types, "Any Field", TAction_Set::Text},
    {Search_Event_Date, Group_Contact_Events, "Event Date", TAction_Set::Date},
    {Search_Event_Description, Group_Contact_Events, "Event Description", TAction_Set::Text},
    {Search_Event_Location, Group_Contact_Events, "Event Location", TAction_Set::Text},
    {Search_Event_Owner, Group_Contact_Events, "Event Owner", TAction_Set::Text},
    {Search_Event_Status, Group_Contact_Events, "Event Status", TAction_Set::Contact_Event_Status},
    {Search_Event_Priority, Group_Contact_Events, "Event Priority", TAction_Set::Number},
    {Search_Calendar_Date, Group_Calendar_Events, "Event Date", TAction_Set::Date},
    {Search_Calendar_Description, Group_Calendar_Events, "Event Description", TAction_Set::Text},
    {Search_Calendar_Location, Group_Calendar_Events, "Event Location", TAction_Set::Text},
    {Search_Calendar_Owner, Group_Calendar_Events, "Event Owner", TAction_Set::Text},
    {Search_Calendar_Status, Group_Calendar_Events, "Event Status", TAction_Set::Calendar_Event_Status},
    {Search_Calendar_Priority, Group_Calendar_Events, "Event Priority", TAction_Set::Number},
    {Search_Task_Description, Group_Tasks, "Task Description", TAction_Set::Text},
    {Search_Task_Start, Group_Tasks, "Scheduled Start Date", TAction_Set::Date},
    {Search_Task_End, Group_Tasks, "Scheduled End Date", TAction_Set::Date},
    {Search_Task_Started, Group_Tasks, "Actual Start Date", TAction_Set::Date},
    {Search_Task_Completed, Group_Tasks, "Actual Completion Date", TAction_Set::Date},
    {Search_Task_Status, Group_Tasks, "Task Status", TAction_Set::Task_Status},
    {Search_Task_Percentage, Group_Tasks, "Percentage Complete", TAction_Set::Number},
    {Search_Task_Budget, Group_Tasks, "Budget Allowed", TAction_Set::Number},
    {Search_Task_Worked, Group_Tasks, "Actual Worked", TAction_Set::Number},
    {Search_Task_Remaining, Group_Tasks, "Budget Remaining", TAction_Set::Number},
    {Search_Task_Owner, Group_Tasks, "Task Owner", TAction_Set::Text},
    {Search_Task_Priority, Group_Tasks, "Task Priority", TAction_Set::Number},
    {Search_Holiday_Date, Group_Holidays, "Holiday Date", TAction_Set::Date},
    {Search_Holiday_Description, Group_Holidays, "Holiday Description", TAction_Set::Text},
    {Search_Holiday_Country, Group_Holidays, "Country", TAction_Set::Text},
    {Search_Any_Date, Group_Calendar_Types, "Date", TAction_Set::Date},
    {Search_Any_Description, Group_Calendar_Types, "Description", TAction_Set::Text}};

// What an action takes besides the field.
enum TTakes : unsigned {
  Takes_Nothing = 0,
  Takes_Value = 1,
  Takes_Case = 2,
  Takes_Word = 4,
  Takes_Choice = 8
};

struct TAction_Def {
  int Code;
  TAction_Set Set;
  const char* Name;
  unsigned Takes;
};

constexpr TAction_Def Actions[] = {
    {Action_Contains, TAction_Set::Text, "Contains", Takes_Value | Takes_Case | Takes_Word},
    {Action_Equals, TAction_Set::Text, "Equals", Takes_Value | Takes_Case},
    {Action_Does_Not_Contain, TAction_Set::Text, "Doesn't Contain", Takes_Value | Takes_Case | Takes_Word},
    {Action_Blank, TAction_Set::Text, "Is Blank", Takes_Nothing},
    {Action_Not_Blank, TAction_Set::Text, "Is not Blank", Takes_Nothing},
    {Action_Starts_With, TAction_Set::Text, "Starts With", Takes_Value | Takes_Case},
    {Action_Anytime, TAction_Set::Date, "Anytime", Takes_Nothing},
    {Action_Never, TAction_Set::Date, "Never", Takes_Nothing},
    {Action_Yesterday, TAction_Set::Date, "Yesterday", Takes_Nothing},
    {Action_Today, TAction_Set::Date, "Today", Takes_Nothing},
    {Action_Tomorrow, TAction_Set::Date, "Tomorrow", Takes_Nothing},
    {Action_In_Next, TAction_Set::Date, "In the next (x) Days", Takes_Value},
    {Action_In_Last, TAction_Set::Date, "In the last (x) Days", Takes_Value},
    {Action_Not_In_Next, TAction_Set::Date, "Not in the next (x) Days", Takes_Value},
    {Action_Not_In_Last, TAction_Set::Date, "Not in the last (x) Days", Takes_Value},
    {Action_On, TAction_Set::Date, "On the", Takes_Value},
    {Action_On_Or_After, TAction_Set::Date, "On or after the", Takes_Value},
    {Action_On_Or_Before, TAction_Set::Date, "On or before the", Takes_Value},
    {Action_Between, TAction_Set::Date, "Between", Takes_Value},
    {Action_Tagged, TAction_Set::Tag, "Is Tagged", Takes_Nothing},
    {Action_Not_Tagged, TAction_Set::Tag, "Is Not Tagged", Takes_Nothing},
    {Action_Member, TAction_Set::Category, "Is a Member of", Takes_Value | Takes_Choice},
    {Action_Not_Member, TAction_Set::Category, "Is not a Member of", Takes_Value | Takes_Choice},
    {Action_In_No_Category, TAction_Set::Category, "Is not in any Category", Takes_Nothing},
    {Action_In_A_Category, TAction_Set::Category, "Is in a Category", Takes_Nothing},
    {Action_Has_Link, TAction_Set::Link, "Has a Link Attached", Takes_Nothing},
    {Action_Has_No_Link, TAction_Set::Link, "Has no Links Attached", Takes_Nothing},
    {Action_Event_Alarm, TAction_Set::Contact_Event_Status, "Has an Alarm Set", Takes_Nothing},
    {Action_Event_No_Alarm, TAction_Set::Contact_Event_Status, "Has no Alarms Set", Takes_Nothing},
    {Action_Event_Outstanding, TAction_Set::Contact_Event_Status, "Has an Event Outstanding", Takes_Nothing},
    {Action_Event_None_Outstanding, TAction_Set::Contact_Event_Status, "Has no Outstanding Events",
     Takes_Nothing},
    {Action_Number_Equals, TAction_Set::Number, "Equals", Takes_Value},
    {Action_Less, TAction_Set::Number, "Less than", Takes_Value},
    {Action_Greater, TAction_Set::Number, "Greater than", Takes_Value},
    {Action_Calendar_Alarm, TAction_Set::Calendar_Event_Status, "Has an Alarm Set", Takes_Nothing},
    {Action_Calendar_No_Alarm, TAction_Set::Calendar_Event_Status, "Does not have an Alarm Set",
     Takes_Nothing},
    {Action_Calendar_Outstanding, TAction_Set::Calendar_Event_Status, "Is Outstanding", Takes_Nothing},
    {Action_Calendar_Complete, TAction_Set::Calendar_Event_Status, "Is marked Complete", Takes_Nothing},
    {Action_First_Task_Status, TAction_Set::Task_Status, "Not Started", Takes_Nothing},
    {91, TAction_Set::Task_Status, "In Progress", Takes_Nothing},
    {92, TAction_Set::Task_Status, "Completed", Takes_Nothing},
    {93, TAction_Set::Task_Status, "Pending", Takes_Nothing},
    {94, TAction_Set::Task_Status, "Postponed", Takes_Nothing},
    {Action_Last_Task_Status, TAction_Set::Task_Status, "Cancelled", Takes_Nothing}};

constexpr int Address_Column = 6, Style_Column = 25;  // of Templates_Table, counted from 1
constexpr int Whole_Address = 6, First_After_Address = 12, Last_Behind_Address = 19;
// Column 25 of a template. Any other number has the address as one text.
constexpr std::int64_t Style_With_ZIP = 2, Style_With_Postcode = 3;

constexpr TSearch_Template_Field Template_Fields[] = {{1, 38, ""},
                                                      {2, 39, ""},
                                                      {3, 40, ""},
                                                      {4, 4, ""},
                                                      {5, 5, ""},
                                                      {Whole_Address, Address_Column, "Whole Address"},
                                                      {7, Address_Column, "Street"},
                                                      {8, Address_Column, "City"},
                                                      {9, Address_Column, "State"},
                                                      {10, Address_Column, "ZIP Code"},
                                                      {11, Address_Column, "Postcode"},
                                                      {First_After_Address, 7, ""},
                                                      {13, 8, ""},
                                                      {14, 9, ""},
                                                      {15, 10, ""},
                                                      {16, 11, ""},
                                                      {17, 29, ""},
                                                      {18, 30, ""},
                                                      {Last_Behind_Address, 31, ""},
                                                      {20, Address_Column, "Country"}};

constexpr std::string_view Template_Prefix = "Template ";

template <class TRows>
auto Find_Code(const TRows& rows, int code) -> decltype(std::begin(rows)) {
  const auto found =
      std::find_if(std::begin(rows), std::end(rows), [code](const auto& row) { return row.Code == code; });
  return found == std::end(rows) ? nullptr : found;
}

template <class TRows>
std::string Name_Of(const TRows& rows, int code) {
  const auto* found = Find_Code(rows, code);
  return found ? found->Name : std::string(Search_Field_Error);
}

bool Takes(int action, unsigned what) {
  const TAction_Def* found = Find_Code(Actions, action);
  return ((found ? found->Takes : Takes_Value) & what) != 0;
}

TField Counted_Column(int number) {
  return {number - 1};
}

std::string With_Part(std::string text, const char* part) {
  return *part ? text + " [" + part + "]" : text;
}

// The codes of a template's address, by its style; in one style some parts cannot be searched.
std::vector<int> Address_Codes(std::int64_t style) {
  if (style == Style_With_ZIP) return {Whole_Address, 7, 8, 9, 10, 20};
  if (style == Style_With_Postcode) return {Whole_Address, 11, 20};
  return {Whole_Address};
}

void Add_Template_Fields(const TTable& templates, TSearch_Choices& list) {
  const std::vector<int> address = Address_Codes(templates.Integer(Counted_Column(Style_Column)));
  const auto add = [&](int code) {
    const TSearch_Template_Field& field = *Find_Template_Field(code);
    const bool is_part = field.Label_Column == Address_Column && address.size() > 1;
    list.push_back({code, With_Part(std::string(templates.Text(Counted_Column(field.Label_Column))),
                                    is_part ? field.Part : "")});
  };
  for (int code = 1; code < Whole_Address; ++code) add(code);
  for (const int code : address) add(code);
  for (int code = First_After_Address; code <= Last_Behind_Address; ++code) add(code);
}

void Fill(TSearch_Choices& list, const char* routine, const char* table, auto add) {
  list.clear();
  if (!Read(std::string("Search_Record:") + routine + " [" + table + "]", add)) list.clear();
}

}  // namespace

const TSearch_Template_Field* Find_Template_Field(int code) {
  return Find_Code(Template_Fields, code);
}

TTable Template_Names() {
  return TTable(Templates_Table, "BookandName");
}

bool Find_Template(TTable& templates, std::string_view book, std::string_view name) {
  return templates.FindKey({book, name});
}

std::string Get_Group_Name(int group, std::string_view template_name) {
  if (group >= First_Template_Group)
    return std::string(template_name.empty() ? Search_Field_Error : Template_Prefix) +
           std::string(template_name);
  return Name_Of(Groups, group);
}

std::string Get_Field_Name(int code, std::string_view book) {
  if (code >= Search_First_Other && code <= Search_Last_Other) {
    const auto label = Read("Search_Record:Get_Field_Name [KT_Fields]", [&] {
      TTable fields(Fields_Table, "Book");
      const std::string column = "Other_" + std::to_string(code - Search_First_Other + 1);
      return fields.FindKey({book}) ? std::string(fields.Text(fields.Field(column))) : std::string();
    });
    if (label && !label->empty()) return *label;
  }
  return Name_Of(Fields, code);
}

std::string Get_Action_Name(int code) {
  return Name_Of(Actions, code);
}

std::string Get_Template_Field_Name(std::string_view book, std::string_view template_name, int code) {
  const std::string error(Search_Field_Error);
  return Read("Search_Record:Get_SearchType_Name [KT_Templates]",
              [&] {
                const TSearch_Template_Field* field = Find_Template_Field(code);
                TTable templates = Template_Names();
                if (!field || !Find_Template(templates, book, template_name)) return error;
                const bool is_whole =
                    code == Whole_Address && templates.Integer(Counted_Column(Style_Column)) < Style_With_ZIP;
                return With_Part(std::string(templates.Text(Counted_Column(field->Label_Column))) + " Field",
                                 is_whole ? "" : field->Part);
              })
      .value_or(error);
}

void Populate_Search_Fields(const std::string& Book, TSearch_Choices& List) {
  Fill(List, "Populate_Search_Fields", "KT_Templates", [&] {
    for (int group = Group_Contact; group <= Group_Field_Types; ++group)
      List.push_back({group, Get_Group_Name(group, {})});
    TTable templates = Template_Names();
    const TField name = templates.Field("Name");
    templates.SetRange({Book}, {Book});
    int group = First_Template_Group;
    for (templates.First(); !templates.Eof(); templates.Next())
      List.push_back({group++, std::string(Template_Prefix) + std::string(templates.Text(name))});
  });
}

void Populate_Type_Fields(int Group, TSearch_Choices& List, const std::string& Book,
                          const std::string& GroupText) {
  Fill(List, "Populate_Type_Fields", "KT_Templates/KT_Fields", [&] {
    if (Group >= First_Template_Group) {
      std::string name;
      Get_Template_Name(Group, GroupText, Book, name, false);
      TTable templates = Template_Names();
      if (Find_Template(templates, Book, name)) Add_Template_Fields(templates, List);
      return;
    }
    for (const TField_Def& field : Fields) {
      if (field.Group == Group) List.push_back({field.Code, Get_Field_Name(field.Code, Book)});
    }
  });
}

void Populate_Search_Actions(TSearch_Choices& List, int Field, int Group) {
  List.clear();
  const TField_Def* field = Find_Code(Fields, Field);
  const TAction_Set set = Group >= First_Template_Group ? TAction_Set::Text
                          : field                       ? field->Actions
                                                        : TAction_Set::None;
  for (const TAction_Def& action : Actions) {
    if (action.Set == set) List.push_back({action.Code, action.Name});
  }
}

void Populate_Value_List(const std::string& Book, int Field, TSearch_Choices& List) {
  Fill(List, "Populate_Value_List", "KT_Categories", [&] {
    if (Field != Search_Category) return;
    TTable categories(Categories_Table, "Book", {"Name"});
    const TField name = categories.Field("Name");
    categories.SetRange({Book}, {Book});
    for (categories.First(); !categories.Eof(); categories.Next())
      List.push_back({0, std::string(categories.Text(name))});
  });
}

void Get_Template_Name(int Group, const std::string& GroupText, const std::string& Book, std::string& Name,
                       bool Check) {
  Name.clear();
  if (Group < First_Template_Group || GroupText.size() < Template_Prefix.size()) return;
  Name = Trimmed(std::string_view(GroupText).substr(Template_Prefix.size() - 1));
  if (!Check) return;
  const auto found = Read("Search_Record:Get_Template_Name [KT_Templates]", [&] {
    TTable templates = Template_Names();
    return Find_Template(templates, Book, Name);
  });
  if (!found.value_or(false)) Name.clear();
}

bool Show_Value_Field(int Action) {
  return Takes(Action, Takes_Value);
}

bool Show_Selection_Button(int Action) {
  return Takes(Action, Takes_Choice);
}

bool Show_MatchCase_Box(int Action) {
  return Takes(Action, Takes_Case);
}

bool Show_WholeWord_Box(int Action) {
  return Takes(Action, Takes_Word);
}

}  // namespace KTReminds
