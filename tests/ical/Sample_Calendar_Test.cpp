#include "Sample_Calendar.h"

#include <gtest/gtest.h>

#include <string>

#include "Temporary_Database.h"
#include "Test_Seams.h"

namespace {

constexpr double Monday = 45306;

TEST(Sample_Calendar, Lies_Around_The_Day_It_Is_Made_On) {
  const Kt_test::TTest_Seams seams;
  const std::string text = Plexidex::Sample_Calendar(Monday);
  EXPECT_EQ(text.find('{'), std::string::npos);
  // The Monday after this one, a week later; ten days ago; in three days.
  for (const char* date : {"EXDATE:20240129T", "DATE:20240105", "DATE:20240118"})
    EXPECT_NE(text.find(date), std::string::npos) << date;
  EXPECT_NE(Plexidex::Sample_Calendar(Monday - 1).find("EXDATE:20240122T"), std::string::npos);
}

TEST(Sample_Calendar, Fills_A_Book_Once) {
  const Kt_test::TTest_Seams seams;
  const TTemporary_Database database;
  for (int times = 0; times < 2; ++times) {
    Plexidex::Fill_With_Sample(database.Book().Name, Monday);
    EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events"), 11);
    EXPECT_EQ(
        Query_Text("SELECT group_concat(c.DisplayName || ': ' || e.Title, '; ') FROM KT_Contacts c JOIN "
                   "KT_Events_Data d ON d.Contact = c.Key JOIN KT_Events e ON e.Key = d.Event WHERE "
                   "c.Type = 0"),
        "Maria Lind: Lunch with Maria; Jonas Weber: Call Jonas about the trip");
  }
}

}  // namespace
