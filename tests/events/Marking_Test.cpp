#include <gtest/gtest.h>

#include "Kt_util_01.h"
#include "Reminder_Utils.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"

using namespace KTReminds;
using namespace Kt_data_01;

namespace {

constexpr TDateTime Day = 45306;  // 15 January 2024

class Marking : public testing::Test {
 protected:
  void Make(int event_type, int journal) {
    TNew_Event event = New_Event("Title", Day + 2);
    event.Alarm.On = true;
    event.Record.EventType = static_cast<TEntry_Type>(event_type);
    event.Record.Activity = journal;
    occurrence = Write(event);
    Build_Reminder_DayView("", database.Book().Key, list, Day + 2, true, true);
    ASSERT_EQ(list.Count(), 1u);
  }
  void Mark(bool done, bool sound = true) { Set_Event_as_Actioned(list[0], done, sound, 118, 110, 117, 116); }
  static std::string Stored() {
    return Query_Text(
        "SELECT d.Actioned || a.Actioned || ' ' || e.Status || ' ' || e.Percentage || ' ' || e.Completed "
        "FROM "
        "KT_Events_Data d, KT_Events e, KT_Alarms a");
  }
  static std::string Journal() {
    return Query_Text(
        "SELECT coalesce(group_concat(Type || '|' || Occurrence || '|' || Contact || '|' || Title || '|' || "
        "LogDate "
        "|| '|' || Description || '|' || Minutes || '|' || SecondDate), '') FROM KT_Log");
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
  TItem_List list;
  std::string occurrence;
};

TEST_F(Marking, An_Event_And_Its_Alarm_Go_Done_And_Back_With_A_Journal_Entry) {
  Make(0, 18);
  Mark(true);
  EXPECT_EQ(Stored(), "11 0 0 0");
  EXPECT_TRUE(list[0].Data->Done);
  EXPECT_EQ(list[0].Image, 118);
  EXPECT_EQ(Journal(), "18|" + occurrence + "|" + database.Book().Calendar +
                           "|Title|45306.5|Event Marked Completed: 1/15/2024,12:00 PM|0|45308.0");
  Mark(false);
  EXPECT_EQ(Stored(), "00 0 0 0");
  EXPECT_FALSE(list[0].Data->Done);
  EXPECT_EQ(list[0].Image, 110);
  EXPECT_EQ(Journal(), "");
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{3, 1}));
  Mark(true, false);
  EXPECT_EQ(seams.Sounds.Played.size(), 2u);
}

TEST_F(Marking, A_Task_Takes_Its_Status_Along) {
  Make(3, 5);
  Mark(true);
  EXPECT_EQ(Stored(), "11 2 100 45306");
  EXPECT_EQ(list[0].Image, 117);
  EXPECT_TRUE(list[0].Data->FirstText == "Completed" && list[0].Data->SecondText == "Title");
  EXPECT_EQ(Journal(), "5|" + occurrence + "|" + database.Book().Calendar +
                           "|Title|45306.5|Task Marked Completed: 1/15/2024,12:00 PM|0|45306.5");
  Mark(false);
  EXPECT_EQ(Stored(), "00 0 0 0");
  EXPECT_EQ(list[0].Image, 116);
  EXPECT_TRUE(list[0].Data->FirstText == "Not Started");
  EXPECT_EQ(Journal(), "");
}

TEST_F(Marking, Without_An_Activity_There_Is_No_Journal_And_Other_Kinds_Keep_Their_Image) {
  Make(1, -1);
  Mark(true);
  EXPECT_EQ(Stored(), "11 0 0 0");
  EXPECT_EQ(Journal(), "");
  EXPECT_EQ(list[0].Image, -1);
}

TEST_F(Marking, The_Item_Changes_Although_The_Update_Was_Refused) {
  Make(3, 18);
  TSqlite_Options read_only;
  read_only.Read_Only = true;
  database.Reopen(read_only);
  Mark(true);
  EXPECT_EQ(Stored(), "00 0 0 0");
  EXPECT_TRUE(list[0].Data->Done);
  EXPECT_EQ(list[0].Image, 117);
  EXPECT_TRUE(list[0].Data->FirstText == "Not Started");
}

TEST_F(Marking, A_Failure_Changes_Neither_Rows_Nor_Item_And_A_Missing_Occurrence_Does_Nothing) {
  Make(3, 18);
  Run_Sql("CREATE TRIGGER planted BEFORE INSERT ON KT_Log BEGIN SELECT RAISE(ABORT, 'planted fault'); END");
  seams.Prompts.Expect_Error(
      "Update Failed",
      "The change could not be saved and has been undone: write KT_Log: planted fault\n\n"
      "Reminder_Utils:Set_Event_As_Actioned [KT_Events/KT_Events_Data/KT_Alarms]");
  Mark(true);
  EXPECT_EQ(Stored(), "00 0 0 0");
  EXPECT_FALSE(list[0].Data->Done);
  EXPECT_TRUE(list[0].Data->FirstText == "Not Started");
  EXPECT_EQ(list[0].Image, 16);
  EXPECT_TRUE(seams.Sounds.Played.empty());

  Run_Sql("DROP TRIGGER planted; DELETE FROM KT_Alarms; DELETE FROM KT_Events_Data");
  Mark(true);
  EXPECT_FALSE(list[0].Data->Done);
  EXPECT_TRUE(seams.Sounds.Played.empty());
}

}  // namespace
