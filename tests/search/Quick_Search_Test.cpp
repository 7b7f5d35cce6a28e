#include "Quick_Search.h"

#include <regex>

#include "Contacts.h"
#include "Test_Events.h"

namespace {

struct Quick_Search : TDatabase_Test {
  static void Add(const std::string& title, double day, int days = 1, TEntry_Type type = TEntry_Type::Event) {
    TNew_Event event = New_Event(title, Monday + day, days);
    event.Record.EventType = type;
    Write(event);
  }
  void Add_Contact(const std::string& name, const std::string& notes) const {
    In_Update([&] { Write_Contact_Details(Create_Contact(database.Book().Key, name), {.Notes = notes}); });
  }
  /// "Title day ..., " of events, tasks and contacts.
  std::string Found(const std::string& text) {
    search.Look_For(text);
    return Rest();
  }
  std::string Rest() {
    while (search.Step()) {
    }
    std::string shown;
    for (const auto group : {TQuick_Search::Events, TQuick_Search::Tasks, TQuick_Search::Contacts}) {
      for (const auto& row : search.Found(group).Rows) {
        shown += row.Title.Str();
        if (row.Date != 0) shown += " " + std::to_string(static_cast<int>(row.Date - Monday));
        shown += ", ";
      }
      shown += std::to_string(search.Found(group).Count) + "|";
    }
    return shown;
  }

  TQuick_Search search;
};

TEST_F(Quick_Search, Finds_Each_Event_Once_By_Its_Next_Or_Last_Date_And_Contacts_By_Name_And_Notes) {
  Add("Tea with Ann", -3.0, 30);
  Add("Tea long ago", -20.0);
  Add("Tea ceremony", -9.0, 5);
  Add("High tea", 9.0);
  Add("Buy tea", 1.0, 1, TEntry_Type::Task);
  Add("Secret tea", 2.0);
  Run_Sql("UPDATE KT_Events SET Private = 1, User = 'somebody' WHERE Title = 'Secret tea'");
  Add_Contact("Bob", "Likes TEA");
  Add_Contact("Tess Tea", "");
  Add_Contact("Teal", "tea, too");
  Add_Contact("Cleo", std::string(260, '-') + "tea");
  const std::string all =
      "Tea with Ann 0, High tea 9, Tea ceremony -5, Tea long ago -20, 4|Buy tea 1, 1|Teal, Tess Tea, Bob, "
      "Cleo, 4|";
  EXPECT_EQ(Found(" tea "), all);
  EXPECT_EQ(Found("tea c"), "Tea ceremony -5, 1|0|0|");
  EXPECT_EQ(Found(""), "0|0|0|");
  search.Look_For("tea");
  search.Step();
  In_Update([&] {
    Set_Contact_Deleted(Query_Text("SELECT Key FROM KT_Contacts WHERE DisplayName = 'Bob'"), true);
  });
  EXPECT_EQ(Rest(), std::regex_replace(all, std::regex("Bob, Cleo, 4"), "Cleo, 3"))
      << "what changes meanwhile counts";
}

TEST_F(Quick_Search, Of_Many_The_Nearest_Are_Shown_And_All_Are_Counted) {
  for (int i = 0; i < 30; ++i) Add("Run", 30.0 - i);
  const std::string found = Found("run");
  EXPECT_EQ(found.substr(0, 12) + found.substr(found.find('|') - 12), "Run 1, Run 2, Run 20, 30|0|0|");
}

}  // namespace
