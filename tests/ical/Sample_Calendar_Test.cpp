#include "Sample_Calendar.h"

#include "Database_Test.h"
#include "Store_Check.h"

namespace {

using Sample = TDatabase_Test;

TEST_F(Sample, Lies_Around_The_Day_It_Is_Made_On) {
  const std::string text = Plexidex::Sample_Calendar(Monday);
  EXPECT_EQ(text.find('{'), std::string::npos);
  // The Monday after this one, a week later; ten days ago; in three days.
  for (const char* date : {"EXDATE:20240129T", "DATE:20240105", "DATE:20240118"})
    EXPECT_NE(text.find(date), std::string::npos) << date;
  EXPECT_NE(Plexidex::Sample_Calendar(Monday - 1).find("EXDATE:20240122T"), std::string::npos);
}

TEST_F(Sample, Fills_A_Book_Once) {
  for (int times = 0; times < 2; ++times) {
    const auto report = Plexidex::Fill_With_Sample({}, Monday);
    EXPECT_EQ(report.Book + " " + std::to_string(report.Contacts), times == 0 ? "Home 20" : "Home 0");
    EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events_Data WHERE EventDate BETWEEN 45306 AND 45306.99"),
              6);
    EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events"), 15);
    EXPECT_EQ(Query_Rows("c.DisplayName, e.Title",
                         "KT_Contacts c JOIN KT_Events_Data d ON d.Contact = c.Key "
                         "JOIN KT_Events e ON e.Key = d.Event WHERE c.Type = 0"),
              "Maria Lind|Lunch with Maria, Jonas Weber|Call Jonas about the trip");
    EXPECT_EQ(Query_Rows("c.DisplayName, d.Field6",
                         "KT_Contacts c JOIN KT_Contacts_Data d ON d.Contact = c.Key JOIN KT_Templates t ON "
                         "t.Key = d.Template WHERE t.AddressStyle > 0"),
              "Susan Miller|1200 Lake Shore Drive\nApartment 4B\nSpringfield, IL 62701\nUSA, "
              "Ann Carter|Rose Cottage\n14 Mill Lane\nLittle Marlow\nSL7 3XX\nUnited Kingdom, "
              "Miller & Sons|8 Harbor Road\nPortland, ME 04101\nUSA");
    EXPECT_EQ(Query_Rows("count(*), (SELECT count(*) FROM KT_Categories), (SELECT count(*) FROM KT_Links), "
                         "(SELECT count(*) FROM KT_Flags)",
                         "KT_Contacts WHERE Type = 1"),
              "5|4|7|2");
    EXPECT_TRUE(Check_Store().empty());
  }
}

}  // namespace
