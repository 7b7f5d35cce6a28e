#include "View_Rules.h"

#include <gtest/gtest.h>

#include "Kt_util_01.h"
#include "Reminder_Utils.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace KTReminds;
using namespace Kt_data_01;

namespace {

class View_Rules : public testing::Test {
 protected:
  TList_Item Item(TEntry_Type type, int image, bool hidden = false) const {
    TList_Item item;
    item.Image = image;
    item.Data = std::make_unique<TEventKey>();
    item.Data->EventType = type;
    item.Data->Private = hidden;
    item.Data->Contact = database.Book().Calendar;
    return item;
  }
  /// The commands that are offered, T + or - for marking done or outstanding.
  static std::string Offered(const TList_Item& item) {
    const TView_Buttons buttons = Buttons_For(&item);
    EXPECT_TRUE(buttons.Add);
    std::string offered = buttons.Open ? "O" : "";
    if (buttons.Toggle) offered += "T";
    if (buttons.Toggle_To == TToggle::Mark_Done) offered += "+";
    if (buttons.Toggle_To == TToggle::Mark_Outstanding) offered += "-";
    return offered + (buttons.Delete ? "D" : "");
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
};

TEST_F(View_Rules, Commands_Follow_Kind_State_And_Privacy) {
  EXPECT_EQ(Offered(Item(TEntry_Type::Event, Image_Open_Event)), "OT+D");
  EXPECT_EQ(Offered(Item(TEntry_Type::Event, Image_Done_Event)), "OT-D");
  EXPECT_EQ(Offered(Item(TEntry_Type::Task, Image_Open_Task)), "OT+D");
  EXPECT_EQ(Offered(Item(TEntry_Type::Task, Image_Done_Task)), "OT-D");
  EXPECT_EQ(Offered(Item(TEntry_Type::Event, -1)), "OTD") << "of unknown state";
  EXPECT_EQ(Offered(Item(TEntry_Type::Task, Image_Open_Task, true)), "O");
  EXPECT_EQ(Offered(Item(TEntry_Type::Other, Image_Holiday)), "");
  EXPECT_EQ(Offered({}), "");
  EXPECT_FALSE(Buttons_For(nullptr).Open);
}

TEST_F(View_Rules, Commands_Follow_The_Rights_On_The_Owner) {
  std::string anna;
  In_Update([&] { anna = Create_User("Anna", false); });
  Kt_util_01::Set_User_Key(anna);
  const auto with = [&](const TRights& rights) {
    In_Update([&] { Set_Rights(database.Book().Key, anna, rights); });
    return Offered(Item(TEntry_Type::Event, Image_Open_Event));
  };
  EXPECT_EQ(with({.Create = true, .See = true}), "O");
  EXPECT_EQ(with({.Update = true}), "OT+");
  EXPECT_EQ(with({.Delete = true}), "OD");
}

TEST_F(View_Rules, A_Failed_Look_At_The_Rights_Refuses_And_Is_Reported) {
  In_Update([] { Kt_util_01::Set_User_Key(Create_User("Anna", false)); });
  Run_Sql("DROP TABLE KT_Rights");
  seams.Prompts.Expect_Error("Read Failed",
                             "The data could not be read: find KT_Rights: no such table: KT_Rights\n\n"
                             "View_Rules:Buttons_For [KT_Rights/KT_Users]");
  EXPECT_EQ(Offered(Item(TEntry_Type::Event, Image_Open_Event)), "O");
}

TEST_F(View_Rules, Texts) {
  const TToggle_Texts done = Toggle_Texts(TToggle::Mark_Done),
                      open = Toggle_Texts(TToggle::Mark_Outstanding, "Task");
  EXPECT_EQ(done.Hint + "/" + done.Caption + "/" + done.Long_Hint,
            "Mark Complete/&Mark Complete/Marks the selected item as being complete");
  EXPECT_EQ(open.Hint + "/" + open.Caption + "/" + open.Long_Hint,
            "Mark Outstanding/&Mark Outstanding/Marks the selected Task as still being outstanding");
  EXPECT_EQ(Day_Title(45306.9), " Monday, 15 January 2024");
  const TNotice prior = No_Entry_Notice(true, " A"), later = No_Entry_Notice(false, " A");
  EXPECT_EQ(prior.Caption + ": " + prior.Text,
            "No Prior Events: No eligible calendar events found prior to the period A");
  EXPECT_EQ(later.Caption + ": " + later.Text,
            "No Later Events: No eligible calendar events found after the period A");
}

TEST_F(View_Rules, A_Sort_Label_Sorts_Or_Turns_Round) {
  int key = 2;
  bool ascending = false;
  const auto click = [&](int column) {
    Click_Sort_Label(column, key, ascending);
    return std::to_string(key) + (ascending ? "up" : "down");
  };
  EXPECT_EQ(click(3), "3up");
  EXPECT_EQ(click(3), "3down");
  EXPECT_EQ(click(3), "3up");
  EXPECT_EQ(click(4), "4up");
}

TEST_F(View_Rules, Rows_In_Words) {
  const double now = Kt_util_01::Now();
  TEventKey entry;
  entry.Description = "Dentist";
  entry.EventDate = now;
  EXPECT_EQ(Spoken_Row(entry, now), "Dentist, 12:00 PM, outstanding") << "not overdue at that moment";
  EXPECT_EQ(Spoken_Row(entry, now + 1e-6), "Dentist, 12:00 PM, overdue");
  entry.Private = entry.Timeless = entry.Done = true;
  EXPECT_EQ(Spoken_Row(entry, now + 1), "Private, completed");
  entry = {};
  entry.Description = "Holiday";
  entry.EventType = TEntry_Type::Other;
  entry.Timeless = true;
  EXPECT_EQ(Spoken_Row(entry, now), "Holiday");
}

}  // namespace
