#include "Store_Check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"

using namespace Kt_data_01;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

class Store_Check_Test : public testing::Test {
 protected:
  Store_Check_Test() {
    KTReminds::TNew_Event event = New_Event("Watering", Kt_util_01::Encode_Date(2024, 1, 16), 3);
    event.Alarm.On = true;
    occurrence = KTReminds::Create_Event(event, master);
    EXPECT_EQ(Plexidex::Check_Store(), std::vector<std::string>());
    Run_Sql("PRAGMA foreign_keys = OFF");
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
  std::string master, occurrence;
};

TEST_F(Store_Check_Test, Occurrences_Without_Master) {
  Run_Sql("DELETE FROM KT_Events");
  EXPECT_THAT(Plexidex::Check_Store(), Contains(AllOf(HasSubstr("3 occurrences belong"), HasSubstr(master))));
}

TEST_F(Store_Check_Test, Alarm_Without_Occurrence) {
  Run_Sql("DELETE FROM KT_Events_Data WHERE Key = '" + occurrence + "'");
  EXPECT_THAT(Plexidex::Check_Store(), Contains(AllOf(HasSubstr("alarm"), HasSubstr(occurrence))));
}

TEST_F(Store_Check_Test, Master_Without_Occurrence) {
  Run_Sql("DELETE FROM KT_Alarms");
  Run_Sql("DELETE FROM KT_Events_Data");
  EXPECT_THAT(Plexidex::Check_Store(), testing::ElementsAre(AllOf(HasSubstr("Watering"), HasSubstr(master))));
}

TEST_F(Store_Check_Test, Damage_Of_The_File) {
  // The index loses what the table has.
  Run_Sql("PRAGMA writable_schema = ON");
  Run_Sql(
      "UPDATE sqlite_schema SET sql = sql || ' WHERE Title <> ''Watering''' WHERE name = "
      "'KT_Events_EventType'");
  Run_Sql("PRAGMA writable_schema = OFF");
  database.Reopen();
  EXPECT_THAT(Plexidex::Check_Store(), Contains(HasSubstr("In the file: ")));
}

TEST_F(Store_Check_Test, Many_Findings_Are_Counted) {
  for (int i = 0; i < 60; ++i)
    Run_Sql("INSERT INTO KT_Alarms (Key) VALUES ('lost " + std::to_string(i) + "')");
  const auto findings = Plexidex::Check_Store();
  EXPECT_THAT(findings, Contains(HasSubstr("60 times")));
  EXPECT_THAT(findings, Contains(HasSubstr("And 10 more")));
  EXPECT_THAT(findings, SizeIs(52));
}

}  // namespace
