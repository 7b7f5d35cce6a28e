#include "Journal.h"

#include "Categories.h"
#include "Database_Test.h"
#include "Links.h"
#include "Tags.h"

namespace {

struct Journal : TDatabase_Test {
  Journal() {
    In_Update([&] { anna = Create_Contact(database.Book().Key, "Anna"); });
  }
  std::string Shown() const {
    std::string shown;
    for (const TJournal_Entry& entry : List_Journal(anna))
      shown += Journal_Type_Name(entry.Type) + ":" + entry.Title + "/" + entry.Text + "|";
    return shown;
  }

  std::string anna;
};

TEST_F(Journal, Names_The_Types_By_The_Numbers_That_Searches_Know) {
  std::string names;
  for (int type = 0; type <= 22; ++type) {
    names +=
        std::to_string(type) + (Is_By_Hand({.Type = type}) ? "*" : "") + " " + Journal_Type_Name(type) + "|";
  }
  EXPECT_EQ(names,
            "0* Phone Call Made|1* E-Mail Sent|2* Internet Visit|3 Contact Imported|4 Contact Created|"
            "5 Contact Updated|6 Contact Deleted|7 Contact Restored|8 Journal Entry 8|9 Owner Changed|"
            "10 Link Added|11 Link Opened|12 Link Removed|13* E-Mail Received|14* Fax Sent|"
            "15* Fax Received|16* Letter Sent|17* Letter Received|18* Meeting|19* Phone Call Received|"
            "20* Conversation|21* Other|22 Journal Entry 22|");
}

TEST_F(Journal, Tells_What_Is_Done_To_A_Contact) {
  std::string user;
  const TLink site{"Site", "example.org"}, page{"Page", "example.org/a"};
  const struct {
    std::function<void()> Do;
    const char* Entry;
  } steps[] = {
      {[] {}, "Contact Created:Anna/"},
      {[&] { Write_Contact(anna, "Anna", {{"x"}}); }, "Contact Updated:Anna/"},
      {[&] { Write_Contact(anna, "Anna", {{"x"}}); }, ""},
      {[&] { Write_Contact(anna, "Berta", {{"y"}}); }, "Contact Updated:Berta/Renamed from Anna"},
      {[&] { Set_Contact_Deleted(anna, true); }, "Contact Deleted:Berta/"},
      {[&] { Set_Contact_Deleted(anna, true); }, ""},
      {[&] { Set_Contact_Deleted(anna, false); }, "Contact Restored:Berta/"},
      {[&] { Set_Contact_Owner(anna, user = Create_User("Bert", true)); }, "Owner Changed:Berta/To Bert"},
      {[&] { Add_Link(anna, site); }, "Link Added:Site/example.org"},
      {[&] { Log_Link_Opened(anna, site); }, "Link Opened:Site/example.org"},
      {[&] { EXPECT_TRUE(Change_Link(anna, site, page)); }, "Contact Updated:Berta/Link changed: Page"},
      {[&] { EXPECT_FALSE(Change_Link(anna, site, page) || Remove_Link(anna, site)); }, ""},
      {[&] { EXPECT_TRUE(Remove_Link(anna, page)); }, "Link Removed:Page/example.org/a"},
  };
  std::size_t entries = 0;
  for (const auto& step : steps) {
    In_Update(step.Do);
    entries += *step.Entry ? 1 : 0;
    EXPECT_EQ(List_Journal(anna).size(), entries) << step.Entry;
    if (*step.Entry) {
      EXPECT_EQ(Shown().substr(0, Shown().find('|')), step.Entry);
    }
  }
  EXPECT_EQ(Query_Text("SELECT User FROM KT_Contacts WHERE Key = '" + anna + "'"), user);
}

TEST_F(Journal, Entries_Made_By_Hand_Alone_Are_Changed_And_Removed) {
  const TJournal_Entry call{0, Monday + 0.25, 0, "", "About the trip", "", 5};
  TJournal_Entry meeting = call;
  meeting.Type = 18;
  meeting.Date = Monday + 1;
  In_Update([&] {
    LogJournal(18, "o1", anna, "Lunch", Monday, "Event Marked Completed", 0, Monday);
    Add_Journal_Entry(anna, call);
    EXPECT_TRUE(Change_Journal_Entry(anna, call, meeting));
    EXPECT_FALSE(Change_Journal_Entry(anna, call, meeting)) << "is not there any more";
    Add_Journal_Entry(anna, call);
    for (const TJournal_Entry& entry : List_Journal(anna))
      EXPECT_EQ(Remove_Journal_Entry(anna, entry), entry.Text == call.Text) << entry.Text;
  });
  EXPECT_EQ(Shown(), "Contact Created:Anna/|Meeting:Lunch/Event Marked Completed|");
}

TEST_F(Journal, Links_Have_A_Target_Or_Not_And_Tags_Belong_To_A_User) {
  In_Update([&] {
    Add_Link(anna, {"Contract", "/home/a.pdf"});
    Add_Link(anna, {"To come", ""});
    for (const bool tagged : {true, true, false, true}) Set_Tagged(anna, tagged);
  });
  EXPECT_EQ(Query_Rows("Title, HasLink", "KT_Links"), "Contract|1, To come|0");
  EXPECT_EQ(List_Links(anna), (std::vector<TLink>{{"Contract", "/home/a.pdf"}, {"To come", ""}}));
  EXPECT_EQ(Tagged_Contacts(), std::unordered_set<std::string>{anna});
  Set_User_Key("somebody");
  EXPECT_FALSE(Is_Tagged(anna) || !Tagged_Contacts().empty());
}

TEST_F(Journal, What_Another_User_Has_Made_Private_Is_Not_Told) {
  Run_Sql("INSERT INTO KT_Events (Key, Title, User, Private) VALUES ('e', 'Secret', 'boss', 1)");
  Run_Sql("INSERT INTO KT_Events_Data (Key, Event, Contact) VALUES ('o', 'e', '" + anna + "')");
  In_Update([&] { LogJournal(18, "o", anna, "Secret", Monday, "Marked", 0, Monday); });
  for (const auto& [user, told] : {std::pair("boss", "Secret/Marked"), {"somebody", "Private/"}}) {
    Set_User_Key(user);
    const TJournal_Entry entry = List_Journal(anna).back();
    EXPECT_EQ(entry.Title + "/" + entry.Text, told);
  }
  TTable events(Events_Table, "Key");
  ASSERT_TRUE(events.FindKey({"e"}));
  for (const auto& [is_private, told] : {std::pair(false, "Secret"), {true, "Private"}}) {
    In_Update([&] {
      events.Edit();
      events.Set(events.Field("Private"), is_private);
      PostUpdate(events);
    });
    EXPECT_EQ(List_Journal(anna).back().Title, told) << "as the entry is made later on";
  }
}

TEST_F(Journal, Categories_Are_Found_In_Any_Case_And_Their_Members_Kept) {
  const std::string book = database.Book().Key;
  std::string friends, club, other;
  In_Update([&] {
    friends = Find_Or_Add_Category(book, "Friends");
    club = Find_Or_Add_Category(book, "club");
    other = Find_Or_Add_Category(Create_Book("Other").Key, "Club");
    EXPECT_EQ(Find_Or_Add_Category(book, "CLUB"), club);
    EXPECT_TRUE(Set_Categories(anna, {friends, club}));
    EXPECT_FALSE(Set_Categories(anna, {club, friends})) << "in any order";
    EXPECT_TRUE(Rename_Category(club, "Choir"));
    EXPECT_TRUE(Rename_Category(club, "CHOIR"));
    EXPECT_FALSE(Rename_Category("gone", "Gone"));
  });
  EXPECT_EQ(Names_Of(Categories_Of(anna)) + "/" + Names_Of(List_Categories(book)),
            "CHOIR, Friends/CHOIR, Friends");
  EXPECT_EQ(Members_Of(club), 1);
  In_Update([&] {
    Change_Categories(anna, {club});
    Remove_Category(club);
    Change_Categories(anna, {});
  });
  EXPECT_EQ(Shown(), "Contact Updated:Anna/Categories: CHOIR|Contact Created:Anna/|");
  EXPECT_EQ(Query_Rows("Name", "KT_Categories ORDER BY Name") +
                Query_Text("SELECT count(*) FROM KT_Categories_InUse"),
            "Club, Friends0");
}

}  // namespace
