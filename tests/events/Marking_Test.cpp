#include "Reminder_Utils.h"
#include "Test_Events.h"

namespace {

struct Marking : TDatabase_Test {
  void Make(int event_type, int journal) {
    TNew_Event event = New_Event("Title", Monday + 2);
    event.Alarm.On = true;
    event.Record.EventType = static_cast<TEntry_Type>(event_type);
    event.Record.Activity = journal;
    occurrence = Write(event);
    Build_Reminder_DayView("", database.Book().Key, list, Monday + 2, true, true);
    ASSERT_EQ(list.Count(), 1u);
  }
  void Mark(bool done, bool sound = true) { Set_Event_as_Actioned(list[0], done, sound, 118, 110, 117, 116); }
  /// The marks of occurrence and alarm, the task's progress; then the item.
  std::string State() {
    return Query_Rows("d.Actioned || a.Actioned, e.Status, e.Percentage, e.Completed",
                      "KT_Events_Data d, KT_Events e, KT_Alarms a") +
           (list[0].Data->Done ? "; done " : "; open ") + std::to_string(list[0].Image) + " " +
           list[0].Data->FirstText.Str();
  }
  static std::string Journal() {
    return Query_Rows("Type, Occurrence, Contact, Title, LogDate, Description, Minutes, SecondDate",
                      "KT_Log");
  }

  TItem_List list;
  std::string occurrence;
};

TEST_F(Marking, An_Event_And_Its_Alarm_Go_Done_And_Back_With_A_Journal_Entry) {
  Make(0, 18);
  Mark(true);
  EXPECT_EQ(State(), "11|0|0|0; done 118 Title");
  EXPECT_EQ(Journal(), "18|" + occurrence + "|" + database.Book().Calendar +
                           "|Title|45306.5|Event Marked Completed: 1/15/2024,12:00 PM|0|45308.0");
  Mark(false);
  EXPECT_EQ(State(), "00|0|0|0; open 110 Title");
  EXPECT_EQ(Journal(), "");
  Mark(true, false);
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{3, 1}));
}

TEST_F(Marking, A_Task_Takes_Its_Status_Along) {
  Make(3, 5);
  Mark(true);
  EXPECT_EQ(State(), "11|2|100|45306; done 117 Completed");
  EXPECT_TRUE(list[0].Data->SecondText == "Title");
  EXPECT_EQ(Journal(), "5|" + occurrence + "|" + database.Book().Calendar +
                           "|Title|45306.5|Task Marked Completed: 1/15/2024,12:00 PM|0|45306.5");
  Mark(false);
  EXPECT_EQ(State(), "00|0|0|0; open 116 Not Started");
}

TEST_F(Marking, Without_An_Activity_There_Is_No_Journal_And_Other_Kinds_Keep_Their_Image) {
  Make(1, -1);
  Mark(true);
  EXPECT_EQ(State(), "11|0|0|0; done -1 Title");
  EXPECT_EQ(Journal(), "");
}

TEST_F(Marking, The_Item_Changes_Although_The_Update_Was_Refused) {
  Make(3, 18);
  database.Reopen_Read_Only();
  Mark(true);
  EXPECT_EQ(State(), "00|0|0|0; done 117 Not Started");
}

TEST_F(Marking, A_Failure_Changes_Neither_Rows_Nor_Item_And_A_Missing_Occurrence_Does_Nothing) {
  Make(3, 18);
  Plant("INSERT ON KT_Log");
  seams.Prompts.Expect_Undone("planted fault",
                              "Reminder_Utils:Set_Event_As_Actioned [KT_Events/KT_Events_Data/KT_Alarms]");
  Mark(true);
  EXPECT_EQ(State(), "00|0|0|0; open 16 Not Started");
  Unplant();
  Run_Sql("DELETE FROM KT_Alarms; DELETE FROM KT_Events_Data");
  Mark(true);
  EXPECT_EQ(State(), "; open 16 Not Started");
  EXPECT_TRUE(seams.Sounds.Played.empty());
}

}  // namespace
