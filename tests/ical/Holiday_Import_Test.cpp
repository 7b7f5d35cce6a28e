#include "Holiday_Import.h"

#include "Import_Fixture.h"

namespace {

using Holidays = Import_Fixture;

TEST_F(Holidays, Every_Day_Of_Every_Event_Once) {
  const std::string file = File(Data("holidays"));
  options.Has_Until = true;
  options.Until = Encode_Date(2027, 12, 31);
  const auto report = Import_Holidays(file, "Utopia", options);
  EXPECT_EQ(
      Query_Rows("Name, date(HolidayDate + 2415018.5)",
                 "KT_Holidays WHERE Country = 'Utopia' ORDER BY HolidayDate"),
      "Carnival|2024-02-12, Easter|2024-03-31, Easter|2024-04-01, Labour Day|2024-05-01, "
      "Thanksgiving|2024-11-28, Carnival|2025-03-03, Thanksgiving|2025-11-27, Labour Day|2026-05-02, Labour "
      "Day|2027-05-01");
  EXPECT_EQ(std::make_pair(report.Read, report.Added), std::make_pair(7L, 9L));
  EXPECT_EQ(Remarks(report.Unused), "(no title) (5): is a task, not a holiday\nNever (6): has no start\n");
  EXPECT_EQ(Counts(), "0 0 0");

  const std::string before = Dump();
  EXPECT_EQ(Import_Holidays(file, "Utopia", options).Known, 9);
  EXPECT_EQ(Dump(), before);
  EXPECT_EQ(Import_Holidays(file, "Arcadia", options).Added, 9);
  options.Most_Entries = 8;
  EXPECT_EQ(
      Remarks(report.Left_Out) + Remarks(Import_Holidays(file, "Erewhon", options).Left_Out),
      "Carnival (4): would bring more than the 8 entries that a file may bring; only its first date was "
      "written; a higher limit of entries allows more\n");
  EXPECT_THROW(Import_Holidays(file, "", options), EImport_Error);
}

TEST_F(Holidays, Stand_Among_Those_Of_The_Chosen_Countries_Once) {
  seams.Settings.Write("Calendar", "Holiday Countries", "IT,AT");
  Import_Holidays(File(Calendar(Event("UID:1|DTSTART;VALUE=DATE:20250602|SUMMARY:Republic day") +
                                Event("UID:2|DTSTART;VALUE=DATE:20250609|SUMMARY:Fair"))),
                  "Italy", options);
  TEventKey_List list;
  Build_Holidays_Data(list, Encode_Date(2025, 6, 2), Encode_Date(2025, 6, 9) + 0.5);
  std::string texts;
  for (const auto& each : list) texts += each->FirstText.Str() + FormatDateTime(" d; ", each->EventDate);
  EXPECT_EQ(texts, "Republic day (Italy) 2; Fair (Italy) 9; Whit Monday (Austria) 9; ");
}

}  // namespace
