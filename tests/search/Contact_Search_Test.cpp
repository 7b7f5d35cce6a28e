#include "Contact_Search.h"

#include "Contacts.h"
#include "Current_Search.h"
#include "Templates.h"
#include "Test_Events.h"

namespace {

struct TCriterion {
  int Field, Action;
  std::string Value = {};
  int Group = 0;
  std::string Template = {};
  bool Case = false, Word = false;
};

struct Contact_Search : TDatabase_Test {
  Contact_Search() {
    Make("Ann", {.Notes = "Likes tea.\n" + std::string(300, '-') + " Knows Bob"});
    Make("Bob", {.Notes = "Tea or coffee"});
    Make("cleo", {});
    In_Update([&] {
      TContact_Details details = Read_Contact_Details(Key("Ann"));
      details.Fields[12] = "030 123";
      details.Fields[18] = "ann@work.test";
      details.Fields[19] = "ann.test";
      details.Other[1] = "size 42";
      Write_Contact_Details(Key("Ann"), details);
    });
  }
  ~Contact_Search() override { CurrentSearch.reset(); }
  void Make(const std::string& name, const TContact_Details& details) const {
    In_Update([&] { Write_Contact_Details(Create_Contact(database.Book().Key, name), details); });
  }
  static std::string Key(const std::string& name) {
    return Query_Text("SELECT Key FROM KT_Contacts WHERE DisplayName = '" + name + "'");
  }
  /// Runs statements in which @Ann and so on stand for keys, and @book for the book's.
  void Sql(std::string statements) const {
    for (std::size_t at = 0; (at = statements.find('@')) != std::string::npos;) {
      const std::size_t end = statements.find_first_of("', )", at);
      const std::string name = statements.substr(at + 1, end - at - 1);
      statements.replace(at, end - at, name == "book" ? database.Book().Key : Key(name));
    }
    Run_Sql(statements);
  }
  std::string Found(const std::vector<TCriterion>& criteria, TProgress_Bar* progress = nullptr) {
    Clear_Search();
    for (const TCriterion& each : criteria)
      CurrentSearch->Add_Field(each.Group, each.Field, each.Action, each.Value, each.Template, each.Case,
                               each.Word);
    return Run(progress);
  }
  std::string Run(TProgress_Bar* progress = nullptr, int type = Contact_Type_Contact) {
    TTree tree;
    TTree_Node& node = tree.Add(tree.Root(), std::make_unique<TTree_Node>());
    std::int64_t elapsed = -1;
    done = SearchContacts(database.Book().Key, "", node, tree, elapsed, type, progress);
    EXPECT_GE(elapsed, 0);
    std::string names;
    for (const auto& child : node.Children) {
      EXPECT_EQ(child->Key, Key(child->Text.Str()));
      names += (names.empty() ? "" : " ") + child->Text.Str();
    }
    return names;
  }
  void Expect(const std::vector<std::pair<TCriterion, std::string>>& cases) {
    for (const auto& [criterion, expected] : cases)
      EXPECT_EQ(Found({criterion}), expected)
          << criterion.Field << " " << criterion.Action << " " << criterion.Value;
  }

  bool done = false;
};

TEST_F(Contact_Search, What_The_Contact_Itself_Holds) {
  Sql("UPDATE KT_Contacts SET ModifiedBy = '', ModifiedAt = CASE Key WHEN '@Bob' THEN 45305.7 ELSE 0 END");
  Sql("INSERT INTO KT_Flags (User, Contact) VALUES ('" + User_Key() + "', '@Ann'), ('other', '@Bob')");
  Sql("INSERT INTO KT_Categories (Key, Book, Name) VALUES ('c1', '@book', 'Club'), ('c2', '@book', 'Team')");
  Sql("INSERT INTO KT_Categories_InUse (Category, Contact) VALUES ('c1', '@Ann'), ('c2', '@Ann'), ('c2', "
      "'@Bob')");
  Sql("DELETE FROM KT_Contacts_Data WHERE Contact = '@cleo'");
  Expect({{{1, Action_Starts_With, "B"}, "Bob"},
          {{1, Action_Does_Not_Contain, "o"}, "Ann"},
          {{2, Action_Not_Blank}, ""},
          {{3, Action_Yesterday}, "Bob"},
          {{3, Action_Never}, "Ann cleo"},
          {{4, Action_Tagged}, "Ann"},
          {{4, Action_Not_Tagged}, "Bob cleo"},
          {{4, Action_Contains, "x"}, ""},
          {{5, Action_Member, "Club"}, "Ann"},
          {{5, Action_Not_Member, "Club"}, "Bob cleo"},
          {{5, Action_Member, "Gone"}, ""},
          {{5, Action_Not_Member, "Gone"}, "Ann Bob cleo"},
          {{5, Action_In_A_Category}, "Ann Bob"},
          {{5, Action_In_No_Category}, "cleo"},
          {{6, Action_Contains, "tea"}, "Ann Bob"},
          {{.Field = 6, .Action = Action_Contains, .Value = "tea", .Case = true}, "Ann"},
          {{6, Action_Contains, "knows"}, "Ann"},
          {{.Field = 6, .Action = Action_Contains, .Value = "know", .Word = true}, ""},
          {{6, Action_Does_Not_Contain, "knows"}, "Bob cleo"},
          {{6, Action_Equals, "likes"}, "Ann"},
          {{6, Action_Starts_With, "tea"}, "Bob"},
          {{6, Action_Blank}, "cleo"},
          {{6, Action_Not_Blank}, "Ann Bob"},
          {{41, Action_Contains, "42"}, "Ann"},
          {{42, Action_Blank}, "Ann Bob cleo"},
          {{60, Action_Contains, "42"}, "Ann"},
          {{64, Action_Contains, "coffee"}, "Bob"},
          {{64, Action_Equals, "CLEO"}, "cleo"},
          {{61, Action_Contains, "test"}, "Ann"},
          {{62, Action_Contains, "test"}, ""},
          {{62, Action_Starts_With, "030"}, "Ann"},
          {{63, Action_Equals, "ann.test"}, "Ann"},
          {{.Field = 12, .Action = Action_Not_Blank, .Group = 9, .Template = "Person"}, "Ann"},
          {{.Field = 12, .Action = Action_Blank, .Group = 9, .Template = "Person"}, "Bob"},
          {{.Field = 12, .Action = Action_Blank, .Group = 9, .Template = "Company"}, ""},
          {{.Field = 12, .Action = Action_Blank, .Group = 9, .Template = "Gone"}, ""}});
  for (const int field : {7, 8, 9, 32, 39, 48, 49, 53, 59, 65, 69, 76, 80, 89, 102, 110, 120, 121})
    EXPECT_EQ(Found({{field, Action_Blank}}), "") << field;
}

TEST_F(Contact_Search, What_Belongs_To_The_Contact) {
  Sql("INSERT INTO KT_Log (Contact, Type, LogDate, Description) VALUES ('@Ann', 0, 45300, 'Called'), "
      "('@Ann', 0, 45306.4, ''), ('@Bob', 0, 45200, 'Called back'), ('@Bob', 12, 45306, ''), "
      "('@cleo', 8, 45306, 'x')");
  Sql("INSERT INTO KT_Links (Contact, Title, FileOrUrl, HasLink) VALUES ('@Ann', 'Photo', 'ann.png', 1), "
      "('@Bob', 'Empty', '', 0)");
  const auto add = [&](const std::string& name, const std::string& title, double date, int days, bool task) {
    TNew_Event event = New_Event(title, date, days);
    event.Owner.Contact = Key(name);
    event.Record.Location = "here";
    event.Record.EventType = task ? TEntry_Type::Task : TEntry_Type::Event;
    event.Record.Progress = {TTask_Status::In_Progress, 40, 45300, 0, 1250, 250};
    return Write(event);
  };
  const std::string first = add("Ann", "Tennis", Monday, 3, false);
  add("Bob", "Tennis", Monday + 9, 1, true);
  Sql("INSERT INTO KT_Alarms (Key, User, Offset) VALUES ('" + first + "', 'u', 15)");
  Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE Contact = '@Ann' AND EventDate > 45306");
  Expect({{{10, Action_Today}, "Ann"},
          {{10, Action_In_Last, "6"}, "Ann"},
          {{10, Action_Not_In_Last, "30"}, "Bob cleo"},
          {{10, Action_Never}, "cleo"},
          {{10, Action_On_Or_Before, "1/1/2024"}, "Bob"},
          {{30, Action_Today}, "Bob"},
          {{29, Action_Today}, ""},
          {{31, Action_Contains, "called"}, "Ann Bob"},
          {{31, Action_Does_Not_Contain, "called"}, "Ann Bob cleo"},
          {{64, Action_Contains, "back"}, "Bob"},
          {{61, Action_Contains, "back"}, ""},
          {{50, Action_Equals, "photo"}, "Ann"},
          {{51, Action_Blank}, "Bob"},
          {{52, Action_Has_Link}, "Ann"},
          {{52, Action_Has_No_Link}, "Bob cleo"},
          {{70, Action_Tomorrow}, "Ann"},
          {{71, Action_Starts_With, "ten"}, "Ann"},
          {{72, Action_Equals, "here"}, "Ann"},
          {{73, Action_Equals, "owner"}, "Ann"},
          {{74, Action_Event_Alarm}, "Ann"},
          {{74, Action_Event_No_Alarm}, "Bob cleo"},
          {{74, Action_Event_Outstanding}, "Ann"},
          {{74, Action_Event_None_Outstanding}, "Bob cleo"},
          {{75, Action_Number_Equals, "5"}, "Ann"},
          {{90, Action_Starts_With, "ten"}, "Bob"},
          {{91, Action_In_Next, "9"}, "Bob"},
          {{92, Action_In_Next, "8"}, ""},
          {{93, Action_In_Last, "6"}, "Bob"},
          {{94, Action_Never}, "Bob"},
          {{95, 91}, "Bob"},
          {{96, Action_Greater, "39"}, "Bob"},
          {{97, Action_Number_Equals, "1250"}, "Bob"},
          {{98, Action_Less, "251"}, "Bob"},
          {{99, Action_Number_Equals, "10"}, "Bob"},
          {{100, Action_Equals, "owner"}, "Bob"},
          {{101, Action_Less, "5"}, ""}});
  // Each journal field finds entries of its own type alone.
  Sql("DELETE FROM KT_Log; DELETE FROM KT_Contacts_Data");
  for (int type = 0; type <= 21; ++type) {
    const std::string name = std::to_string(type);
    Make(name, {});
    Sql("INSERT INTO KT_Log (Contact, Type, LogDate) VALUES ('@" + name + "', " + name + ", 45200)");
  }
  std::string types;
  for (int field = 10; field <= 30; ++field) types += Found({{field, Action_On, "2023-10-01"}}) + " ";
  EXPECT_EQ(types, "0 19 1 13 14 15 16 17 18 20 21 2 3 4 5 6 7 9 10 11 12 ");
}

TEST_F(Contact_Search, All_Criteria_Folders_And_Rights) {
  EXPECT_EQ(Found({}), "Ann Bob cleo");
  EXPECT_EQ(Found({{6, Action_Not_Blank}, {1, Action_Contains, "b"}}), "Bob");
  EXPECT_EQ(Found({{80, Action_Anytime}, {1, Action_Contains, "b"}}), "");
  EXPECT_EQ(Found({{5, Action_Not_Member, "Gone"}, {5, Action_In_No_Category}}), "Ann Bob cleo");
  std::string folder, inner;
  In_Update([&] {
    folder = Create_Contact(database.Book().Key, "Folder", {}, Contact_Type_Folder);
    inner = Create_Contact(database.Book().Key, "Inner", folder, Contact_Type_Folder);
    Create_Contact(database.Book().Key, "Dora", folder);
    Create_Contact(database.Book().Key, "ada", inner);
    Set_Contact_Deleted(Key("Bob"), true);
  });
  EXPECT_EQ(Found({}), "ada Ann cleo Dora");
  CurrentSearch->Group = folder;
  EXPECT_EQ(Run(), "ada Dora");
  EXPECT_EQ(Run(nullptr, Contact_Type_Folder), "Inner");
  CurrentSearch->SubGroups = false;
  EXPECT_EQ(Run(), "Dora");
  In_Update([&] {
    const std::string user = Create_User("Bert", false);
    Set_Rights(Key("cleo"), user, {.See = true});
    Set_User_Key(user);
  });
  EXPECT_EQ(Found({}), "cleo");
  CurrentSearch.reset();
  EXPECT_EQ(Run(), "cleo") << "without a search";
  Run_Sql("ALTER TABLE KT_Contacts_Data RENAME TO Elsewhere");
  seams.Prompts.Expect_Unread("no such table: KT_Contacts_Data",
                              "Search_Engine:SearchContacts [KT_Contacts/KT_Contacts_Data]");
  EXPECT_EQ(Found({{6, Action_Blank}}), "");
  EXPECT_FALSE(done);
}

TEST_F(Contact_Search, A_Tree_Tells_Of_What_It_Gets) {
  struct TTold : TTree_Observer {
    void Update_Begins(const TTree_Node& below) override { Told += "begin " + below.Text.Str() + " "; }
    void Update_Ends(const TTree_Node& below) override {
      Told += "end " + std::to_string(below.Children.size()) + " ";
    }
    void Node_Added(const TTree_Node& node) override { Told += "added " + node.Text.Str() + " "; }
    std::string Told;
  } told;
  struct TStop : TProgress_Bar {
    void Set_Max(std::int64_t) override {}
    void Set_Position(std::int64_t) override { throw EAlready_Reported(); }
  } stop;
  Run_Sql(
      "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 40000) INSERT INTO "
      "KT_Contacts "
      "(Key, DisplayName, Book) SELECT 'k' || i, 'Number ' || i, '" +
      database.Book().Key + "' FROM n");
  TTree tree;
  tree.Set_Observer(&told);
  auto node = std::make_unique<TTree_Node>();
  node->Text = "Results";
  TTree_Node& results = tree.Add(tree.Root(), std::move(node));
  std::int64_t elapsed = 0;
  Clear_Search();
  EXPECT_FALSE(SearchContacts(database.Book().Key, "", results, tree, elapsed, Contact_Type_Contact, &stop));
  const std::size_t found = results.Children.size();
  EXPECT_TRUE(found > 0 && found < 40'000);
  EXPECT_EQ(results.Children[0]->Parent, &results);
  tree.Begin_Update(results);
  tree.Clear(results);
  tree.End_Update();
  EXPECT_EQ(told.Told, "added Results begin Results end " + std::to_string(found) + " begin Results end 0 ");
}

}  // namespace
