#include "Event_Deletion.h"
#include "Test_Events.h"

namespace {

struct Deletion : TDatabase_Test {
  static std::string Make(int days) {
    TNew_Event event = New_Event("", Monday, days);
    event.Alarm.On = true;
    event.Record.EventType = TEntry_Type::Task;
    return Write(event);
  }
};

TEST_F(Deletion, A_One_Off_Event_Goes_With_Its_Occurrence_And_Alarm_Whatever_Was_Chosen) {
  Make(5);
  for (const bool whole : {false, true}) {
    Delete_Occurrence(Make(1), whole);
    EXPECT_EQ(Counts(), "1 5 5");
  }
}

TEST_F(Deletion, One_Of_A_Set_Leaves_The_Others_And_The_Last_Takes_The_Set_Along) {
  Make(3);
  for (const char* left : {"1 2 2", "1 1 1", "0 0 0"}) {
    Delete_Occurrence(Query_Text("SELECT Key FROM KT_Events_Data ORDER BY EventDate DESC"), false);
    EXPECT_EQ(Counts(), left);
  }
}

TEST_F(Deletion, A_Whole_Set_Goes_With_All_Its_Alarms_And_No_Other) {
  Make(4);
  const std::string long_set = Make(300);
  Run_Sql("DELETE FROM KT_Alarms WHERE row_id % 7 = 5");
  Delete_Occurrence(long_set, true);
  EXPECT_EQ(Counts(), "1 4 4");
  Events_Data.First();
  EXPECT_FALSE(Events_Data.Eof()) << "the range is cancelled";
}

TEST_F(Deletion, What_Fails_Is_Refused_Or_Is_Gone_Changes_Nothing) {
  const std::string key = Make(10);
  const auto question = Ask_About_Deletion(key);
  EXPECT_TRUE(question && question->Is_Task && question->Is_Recurring);
  Plant("DELETE ON KT_Events_Data WHEN (SELECT count(*) FROM KT_Events_Data) = 4");
  seams.Prompts.Expect_Undone("planted fault",
                              "fm_Delete_Reminder:Button2Click [KT_EVENTS/KT_EVENTS_DATA/KT_ALARMS]");
  Delete_Occurrence(key, true);
  Events_Data.First();
  EXPECT_FALSE(Events_Data.Eof());
  EXPECT_FALSE(Ask_About_Deletion("unknown"));
  database.Reopen_Read_Only();
  Delete_Occurrence("unknown", true);
  Delete_Occurrence(key, true);
  EXPECT_EQ(Counts(), "1 10 10");
  EXPECT_EQ(seams.Prompts.Notices.size(), 1u) << "nothing is updated for what is gone";
}

}  // namespace
