#include "Templates.h"

#include <regex>
#include <sstream>

#include "Contact_List.h"
#include "Database_Test.h"

namespace {

constexpr auto International = TAddress_Style::International, US = TAddress_Style::US,
               UK = TAddress_Style::UK;

// Fields by their codes: "1 Dr|12 0160".
TContact_Fields Fields(const std::string& written) {
  TContact_Fields fields;
  std::istringstream all(written);
  for (std::string one; std::getline(all, one, '|');)
    fields[std::stoi(one)] = std::regex_replace(one.substr(one.find(' ') + 1), std::regex("/"), "\n");
  return fields;
}

std::string Written(const TContact_Fields& fields) {
  std::string written;
  for (int code = 1; code <= static_cast<int>(Contact_Fields); ++code) {
    if (!fields[code].empty())
      written += (written.empty() ? "" : "|") + std::to_string(code) + " " + fields[code];
  }
  return std::regex_replace(written, std::regex("\n"), "/");
}

TEST(Addresses, Are_Written_In_Their_Style_And_Turned_Into_Another) {
  const std::string springfield = "7 1 Elm St/Apt 2|8 Springfield|9 IL|10 62701|20 USA",
                    written = "6 1 Elm St/Apt 2/Springfield, IL 62701/USA";
  const std::string in_us = written + "|" + springfield;
  struct {
    std::string Fields;
    TAddress_Style Style;
    std::string Expected;
  } const cases[] = {
      {"6 Am Markt 1/12345 Dorf//", International, "6 Am Markt 1/12345 Dorf"},
      {springfield, US, in_us},
      {in_us, US, in_us},
      {in_us, International, written},
      {in_us, UK,
       "6 1 Elm St/Apt 2/Springfield, IL/62701/USA|7 1 Elm St/Apt 2/Springfield, IL|11 62701|20 USA"},
      {"7 1 High St/Leeds|11 LS1 4AP|20 England", UK,
       "6 1 High St/Leeds/LS1 4AP/England|7 1 High St/Leeds|11 LS1 4AP|20 England"},
      {"7 1 High St/Leeds|11 LS1 4AP", US, "6 1 High St/Leeds/LS1 4AP|7 1 High St/Leeds|10 LS1 4AP"},
      {"8 Reno|10 89501", US, "6 Reno, 89501|8 Reno|10 89501"},
      {"6 Am Markt 1/Dorf", US, "6 Am Markt 1/Dorf|7 Am Markt 1/Dorf"},
      // The whole was changed by something that does not know the parts.
      {"6 Elsewhere|7 1 Elm St|8 Springfield", UK, "6 Elsewhere|7 Elsewhere"},
      {"", US, ""},
  };
  for (const auto& one : cases)
    EXPECT_EQ(Written(With_Address_In(Fields(one.Fields), one.Style)), one.Expected) << one.Fields;
}

struct Templates : TDatabase_Test {
  TTemplate Of(const char* name) const {
    for (const TTemplate& one : List_Templates(database.Book().Key)) {
      if (one.Name == name) return one;
    }
    throw std::runtime_error(name);
  }
};

TEST_F(Templates, Keep_Their_Labels_In_The_Columns_That_Searches_Read) {
  TTemplate club{{}, database.Book().Key, "Club", {}, UK};
  for (std::size_t i = 0; i < club.Labels.size(); ++i)
    club.Labels[i] = std::to_string(Template_Fields[i].Code);
  In_Update([&] { EXPECT_TRUE(Write_Template(club)); });
  EXPECT_EQ(Query_Rows("Field38, Field39, Field40, Field4, Field5, Field6, Field7, Field8, Field9, Field10, "
                       "Field11, Field29, Field30, Field31, AddressStyle",
                       "KT_Templates WHERE Name = 'Club'"),
            "1|2|3|4|5|6|12|13|14|15|16|17|18|19|3");
  In_Update([&] {
    club.Name = "Choir";
    EXPECT_TRUE(Write_Template(club));
    TTemplate nobodys{"no key", club.Book, "Other", {}, {}};
    EXPECT_FALSE(Write_Template(nobodys));
  });
  EXPECT_EQ(Find_Template(club.Key).value().Labels, club.Labels);
  EXPECT_EQ(Find_Template(club.Key).value().Address_Style, UK);
  club.Name = "PERSON";
  In_Update([&] { EXPECT_THROW(Write_Template(club), EData_Error); });
  EXPECT_EQ(Of("Choir").Key, club.Key);
}

TEST_F(Templates, Another_One_Takes_What_Has_A_Place_There_And_Names_The_Rest) {
  const TTemplate person = Of("Person");
  TTemplate company = Of("Company");
  struct {
    const char *Fields, *Expected, *Left;
  } const cases[] = {
      {"12 home|13 mobile|15 fax|17 mail|19 web", "12 home|13 mobile|15 fax|17 mail|19 web", ""},
      // Work has no label there and takes the place that is free.
      {"13 mobile|14 work", "12 work|13 mobile", ""},
      {"12 a|13 b|14 c|15 d|17 e|18 f", "12 a|13 b|15 d|17 e", "Work: c\nE-mail at work: f"},
      {"1 Dr.|4 unlabelled|6 Am Markt", "6 Am Markt", "Title: Dr.\nText 4: unlabelled"},
  };
  for (const auto& one : cases) {
    const TFitted fitted = Fit(Fields(one.Fields), person, company);
    EXPECT_EQ(Written(fitted.Fields) + "/" + Notes_With({}, fitted),
              one.Expected + std::string("/") + one.Left);
  }
  company.Labels.back().clear();
  company.Labels[4] = "TITLE";
  const TFitted fitted = Fit(Fields("1 Dr.|6 Am Markt/Dorf"), person, company);
  EXPECT_EQ(Written(fitted.Fields) + "/" + Notes_With("Note", fitted), "5 Dr./Note\nAddress: Am Markt\nDorf");
}

TEST_F(Templates, A_Removed_One_Leaves_Its_Contacts_To_Another) {
  std::string anna;
  In_Update([&] {
    TTemplate person = Of("Person");
    person.Address_Style = US;
    Write_Template(person);
    anna = Create_Contact(database.Book().Key, "Anna");
    Write_Contact(anna, "Anna", {{}, "Note", {}, Fields("1 Dr.|12 0160|7 1 Elm St|8 Reno")});
    Set_Contact_Deleted(anna, true);
  });
  EXPECT_EQ(Contacts_With(Of("Person").Key), 1);
  In_Update([&] { Remove_Template(Of("Person"), Of("Company")); });
  const TContact_Details details = Read_Contact_Details(anna);
  EXPECT_EQ(details.Template, Of("Company").Key);
  EXPECT_EQ(Written(details.Fields) + "/" + details.Notes, "6 1 Elm St/Reno|12 0160/Note\nTitle: Dr.");
  EXPECT_THROW(Of("Person"), std::runtime_error);
}

TEST_F(Templates, The_Contacts_Are_Listed_With_What_They_Have_Sorted_And_Narrowed) {
  In_Update([&] {
    const auto add = [&](const char* name, const char* fields, const char* kind) {
      Write_Contact(Create_Contact(database.Book().Key, name), name, {{}, {}, Of(kind).Key, Fields(fields)});
    };
    add("Zoë", "13 0160 555|18 zoe@example.org", "Person");
    add("anna", "16 030-1", "Company");
    add("Bert", "17 bert@example.org|12 030-2", "Person");
    Set_Contact_Deleted(Create_Contact(database.Book().Key, "Gone"), true);
  });
  TContact_List list;
  list.Set_Rows(Read_Contact_Rows(database.Book().Key, false));
  const auto shown = [&] {
    std::string names;
    for (std::size_t i = 0; i < list.Count(); ++i) names += list.Row(i).Name + " ";
    return names;
  };
  EXPECT_EQ(shown() + list.Row(2).Telephone + list.Row(2).Mail, "anna Bert Zoë 0160 555zoe@example.org");
  const auto sorted = [&](TContact_Column column, bool ascending) {
    list.Sort(column, ascending);
    return shown();
  };
  EXPECT_EQ(sorted(TContact_Column::Name, false), "Zoë Bert anna ");
  EXPECT_EQ(sorted(TContact_Column::Telephone, true), "Zoë anna Bert ");
  EXPECT_EQ(sorted(TContact_Column::Mail, true), "Bert Zoë anna ") << "who has none comes last";
  EXPECT_EQ(sorted(TContact_Column::Mail, false), "Zoë Bert anna ");
  EXPECT_EQ(sorted(TContact_Column::Template, true), "anna Bert Zoë ") << "equal ones by name";
  for (const auto& [typed, left] : {std::pair("e", "Bert Zoë "),
                                    {"er", "Bert "},
                                    {"ert", "Bert "},
                                    {"", "anna Bert Zoë "},
                                    {"ZOË", "Zoë "},
                                    {"030", "anna Bert "},
                                    {"0302", "Bert "},
                                    {" org EXAMPLE ", "Bert Zoë "},
                                    {"pany", ""},
                                    {"x y", ""}}) {
    list.Narrow(typed);
    EXPECT_EQ(shown(), left) << typed;
  }
  list.Narrow("e");
  EXPECT_EQ(sorted(TContact_Column::Name, false), "Zoë Bert ") << "stays narrowed";
  EXPECT_EQ(list.Position_Of(list.Row(1).Key).value(), 1U);
  EXPECT_FALSE(list.Position_Of("gone"));
}

}  // namespace
