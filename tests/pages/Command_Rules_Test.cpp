#include "Command_Rules.h"

#include "Database_Test.h"

using namespace KTReminds;

namespace {

struct Command_Rules : TDatabase_Test {
  TList_Item Item(TEntry_Type type, bool done = false, bool hidden = false) const {
    TList_Item item;
    item.Data = std::make_unique<TEventKey>();
    item.Data->EventType = type;
    item.Data->Done = done;
    item.Data->Private = hidden;
    item.Data->Contact = database.Book().Calendar;
    return item;
  }
  /// The commands that are offered, + or - for marking done or outstanding.
  static std::string Offered(const TList_Item* item) {
    const TToggle toggle = Toggle_For(item);
    return std::string(May_Open(item) ? "O" : "") + (toggle == TToggle::Mark_Done ? "+" : "") +
           (toggle == TToggle::Mark_Outstanding ? "-" : "") + (May_Delete(item) ? "D" : "");
  }
  static std::string Offered(const TList_Item& item) { return Offered(&item); }
};

TEST_F(Command_Rules, Commands_Follow_Kind_State_And_Privacy) {
  EXPECT_EQ(Offered(Item(TEntry_Type::Event)), "O+D");
  EXPECT_EQ(Offered(Item(TEntry_Type::Task, true)), "O-D");
  EXPECT_EQ(Offered(Item(TEntry_Type::Task, false, true)), "O");
  EXPECT_EQ(Offered(Item(TEntry_Type::Other, true)), "");
  EXPECT_EQ(Offered(Item(static_cast<TEntry_Type>(7))), "") << "a damaged row";
  EXPECT_EQ(Offered(TList_Item()), "");
  EXPECT_EQ(Offered(nullptr), "");
}

TEST_F(Command_Rules, Commands_Follow_The_Rights_On_The_Owner) {
  std::string anna;
  In_Update([&] { anna = Create_User("Anna", false); });
  Set_User_Key(anna);
  const auto with = [&](const TRights& rights) {
    In_Update([&] { Set_Rights(database.Book().Key, anna, rights); });
    return Offered(Item(TEntry_Type::Event));
  };
  EXPECT_EQ(with({.Create = true, .See = true}), "O");
  EXPECT_EQ(with({.Update = true}), "O+");
  EXPECT_EQ(with({.Delete = true}), "OD");
  In_Update([] { Set_User_Key(Create_User("Bob", false)); });
  Run_Sql("DROP TABLE KT_Rights");
  seams.Prompts.Expect_Unread("no such table: KT_Rights", "Command_Rules:May [KT_Rights/KT_Users]");
  EXPECT_EQ(Offered(Item(TEntry_Type::Event)), "O") << "a failed look refuses";
}

TEST_F(Command_Rules, Texts) {
  const TToggle_Texts done = Toggle_Texts(TToggle::Mark_Done, "item"),
                      open = Toggle_Texts(TToggle::Mark_Outstanding, "Task");
  EXPECT_EQ(done.Hint + "/" + done.Caption + "/" + done.Long_Hint,
            "Mark Complete/&Mark Complete/Marks the selected item as being complete");
  EXPECT_EQ(open.Hint + "/" + open.Caption + "/" + open.Long_Hint,
            "Mark Outstanding/&Mark Outstanding/Marks the selected Task as still being outstanding");
}

TEST_F(Command_Rules, A_Sort_Label_Sorts_Or_Turns_Round) {
  int key = 2;
  bool ascending = true;
  std::string told;
  for (const int column : {3, 3, 4, 2}) {
    Click_Sort_Label(column, key, ascending);
    told += std::to_string(key) + (ascending ? "up " : "down ");
  }
  EXPECT_EQ(told, "3up 3down 4up 2up ");
}

}  // namespace
