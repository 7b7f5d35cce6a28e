#include <gtest/gtest.h>

#include "Event_Deletion.h"
#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"

using namespace KTReminds;
using namespace Kt_data_01;

namespace {

class Deletion : public testing::Test {
 protected:
  std::string Make(int days, int event_type = 0) {
    TNew_Event event = New_Event("", 45306, days);
    event.Alarm.On = true;
    event.Record.EventType = static_cast<TEntry_Type>(event_type);
    return Write(event);
  }
  static std::string Counts() {
    return Query_Text(
        "SELECT (SELECT count(*) FROM KT_Events) || ' ' || (SELECT count(*) FROM KT_Events_Data) || ' ' || "
        "(SELECT count(*) FROM KT_Alarms)");
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
};

TEST_F(Deletion, A_One_Off_Event_Goes_With_Its_Occurrence_And_Alarm_Whatever_Was_Chosen) {
  Make(5);
  for (const bool whole : {false, true}) {
    const std::string key = Make(1);
    EXPECT_EQ(Counts(), "2 6 6");
    Delete_Occurrence(key, whole);
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
  Run_Sql("DELETE FROM KT_Alarms WHERE row_id % 7 = 0");
  const std::string alarms = Query_Text("SELECT count(*) FROM KT_Alarms WHERE row_id <= 4");
  Delete_Occurrence(long_set, true);
  EXPECT_EQ(Counts(), "1 4 " + alarms);
  Events_Data.First();
  EXPECT_FALSE(Events_Data.Eof()) << "the range is cancelled";
}

TEST_F(Deletion, A_Failure_Undoes_All_And_Reports_With_Its_Tag) {
  const std::string key = Make(10);
  Run_Sql(
      "CREATE TRIGGER planted BEFORE DELETE ON KT_Events_Data WHEN (SELECT count(*) FROM KT_Events_Data) = 4 "
      "BEGIN "
      "SELECT RAISE(ABORT, 'planted fault'); END");
  seams.Prompts.Expect_Error(
      "Update Failed",
      "The change could not be saved and has been undone: delete KT_Events_Data: planted fault\n\n"
      "fm_Delete_Reminder:Button2Click [KT_EVENTS/KT_EVENTS_DATA/KT_ALARMS]");
  Delete_Occurrence(key, true);
  EXPECT_EQ(Counts(), "1 10 10");
  Events_Data.First();
  EXPECT_FALSE(Events_Data.Eof());
}

TEST_F(Deletion, What_Is_Gone_Or_Refused_Changes_Nothing) {
  const std::string key = Make(2, 3);
  const auto question = Ask_About_Deletion(key);
  EXPECT_TRUE(question && question->Is_Task && question->Is_Recurring);
  EXPECT_FALSE(Ask_About_Deletion("unknown"));
  Delete_Occurrence("unknown", true);
  EXPECT_EQ(Counts(), "1 2 2");
  TSqlite_Options read_only;
  read_only.Read_Only = true;
  database.Reopen(read_only);
  Delete_Occurrence(key, true);
  EXPECT_EQ(Counts(), "1 2 2");
  EXPECT_EQ(seams.Prompts.Notices.size(), 1u);
}

}  // namespace
