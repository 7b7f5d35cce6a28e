#include "Holiday_Import.h"

#include "Import_Fixture.h"

namespace {

using namespace Plexidex;

using Holidays = Kt_test::Import_Fixture;

TEST_F(Holidays, Every_Day_Of_Every_Event_Once) {
  const std::string file = File(Calendar(
      Event({"UID:1", "SUMMARY:Easter", "DTSTART;VALUE=DATE:20240331", "DTEND;VALUE=DATE:20240402"}) +
      Event({"UID:2", "SUMMARY:Labour Day", "DTSTART;VALUE=DATE:20240501", "RRULE:FREQ=YEARLY",
             "EXDATE;VALUE=DATE:20250501"}) +
      Event({"UID:2", "SUMMARY:Labour Day", "RECURRENCE-ID;VALUE=DATE:20260501",
             "DTSTART;VALUE=DATE:20260502"}) +
      Event({"UID:3", "SUMMARY:Thanksgiving", "DTSTART;VALUE=DATE:20241128",
             "RRULE:FREQ=YEARLY;BYMONTH=11;BYDAY=4TH;COUNT=2"}) +
      Event({"UID:4", "SUMMARY:Carnival", "DTSTART:20240212T110000", "RDATE:20250303T110000"}) +
      Task({"UID:5", "DUE:20240101"}) + Event({"UID:6", "SUMMARY:Never"})));
  m_Options.Has_Until = true;
  m_Options.Until = Kt_util_01::Encode_Date(2027, 12, 31);
  const auto report = Import_Holidays(file, "Utopia", m_Options);
  EXPECT_EQ(
      Rows("SELECT Name || ' ' || date(HolidayDate + 2415018.5) || Country FROM KT_Holidays ORDER BY "
           "HolidayDate"),
      (std::vector<std::string>{
          "Carnival 2024-02-12Utopia", "Easter 2024-03-31Utopia", "Easter 2024-04-01Utopia",
          "Labour Day 2024-05-01Utopia", "Thanksgiving 2024-11-28Utopia", "Carnival 2025-03-03Utopia",
          "Thanksgiving 2025-11-27Utopia", "Labour Day 2026-05-02Utopia", "Labour Day 2027-05-01Utopia"}));
  EXPECT_EQ(report.Read, 7);
  EXPECT_EQ(report.Added, 9);
  EXPECT_EQ(Remarks(report.Unused), "6: has no start\n5: is a task, not a holiday\n");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events"), 0);

  const std::string before = Dump();
  const auto again = Import_Holidays(file, "Utopia", m_Options);
  EXPECT_EQ(again.Added, 0);
  EXPECT_EQ(again.Known, 9);
  EXPECT_EQ(Dump(), before);
  EXPECT_EQ(Import_Holidays(file, "Arcadia", m_Options).Added, 9);
  EXPECT_THROW(Import_Holidays(file, "", m_Options), EImport_Error);
}

}  // namespace
