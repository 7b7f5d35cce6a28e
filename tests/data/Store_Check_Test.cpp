#include "Store_Check.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "Database_Test.h"

using namespace testing;

namespace {

struct Store_Check : TDatabase_Test {
  // Two events, one with two occurrences of which the first has an alarm.
  Store_Check() {
    Run_Sql(
        "INSERT INTO KT_Events (Key, Title) VALUES ('e1', 'Watering'), ('e2', 'Trip');"
        "INSERT INTO KT_Events_Data (Key, Event) VALUES ('o1', 'e1'), ('o2', 'e1'), ('o3', 'e2');"
        "INSERT INTO KT_Alarms (Key) VALUES ('o1'); INSERT INTO KT_Alerts (Occurrence) VALUES ('o1')");
    EXPECT_EQ(Check_Store(), std::vector<std::string>());
    Run_Sql("PRAGMA foreign_keys = OFF");
  }
};

TEST_F(Store_Check, What_Does_Not_Belong_Together_Is_Named) {
  Run_Sql("DELETE FROM KT_Events_Data WHERE Key IN ('o1', 'o3')");
  EXPECT_THAT(Check_Store(), ElementsAre("In the file: a row of KT_Alarms refers to a row of KT_Events_Data "
                                         "that is not there.",
                                         "There is an alarm for the occurrence \"o1\", which is not there.",
                                         "The event \"e2\" (Trip) has no occurrence."));
  Run_Sql(
      "DELETE FROM KT_Alarms; DELETE FROM KT_Alerts; DELETE FROM KT_Events; INSERT INTO KT_Events_Data (Key) "
      "VALUES ('o4'), "
      "('o5')");
  EXPECT_THAT(Check_Store(), ElementsAre(HasSubstr("that is not there (3 times)."),
                                         "2 occurrences belong to the event \"\", which is not there.",
                                         "1 occurrence belongs to the event \"e1\", which is not there."));
}

TEST_F(Store_Check, Contacts_And_Templates_That_Miss_Something_Are_Named) {
  Run_Sql(
      "INSERT INTO KT_Contacts (Key, DisplayName, Type) VALUES ('c1', 'Anna', 0), ('c2', 'Folder', 1);"
      "INSERT INTO KT_Contacts (Key, Book) SELECT 'c3', Key FROM KT_Books;"
      "INSERT INTO KT_Contacts_Data (Contact, Template) VALUES ('c3', 't2');"
      "INSERT INTO KT_Templates (Key, Book, Name) VALUES ('t1', 'b2', 'Club');"
      "INSERT INTO KT_Categories (Key, Book, Name) VALUES ('k1', 'b2', 'Choir');"
      "INSERT INTO KT_Categories_InUse VALUES ('k1', 'c9', NULL), ('k2', 'c3', NULL);"
      "INSERT INTO KT_Links (Contact) VALUES ('c8'); INSERT INTO KT_Log (Contact) VALUES ('c7');"
      "INSERT INTO KT_Flags (Contact) VALUES ('c6');"
      "UPDATE KT_Contacts SET Parent = 'f' WHERE Key = 'c1'; UPDATE KT_Contacts SET Parent = Key, "
      "Type = 1 WHERE Key = 'c2'");
  EXPECT_THAT(Check_Store(),
              ElementsAre(HasSubstr("KT_Contacts refers"),
                          "The template \"Club\" belongs to the book \"b2\", which is not there.",
                          "The contact \"c3\" has the template \"t2\", which is not there.",
                          "The contact \"c1\" (Anna) has no details.",
                          "The category \"Choir\" belongs to the book \"b2\", which is not there.",
                          "The contact \"c3\" belongs to the category \"k2\", which is not there.",
                          "There is a membership of a category of the contact \"c9\", which is not there.",
                          "There is a link of the contact \"c8\", which is not there.",
                          "There is a journal entry of the contact \"c7\", which is not there.",
                          "There is a tag of the contact \"c6\", which is not there.",
                          "\"c1\" (Anna) lies in the folder \"f\", which is not there.",
                          "The folder \"c2\" lies in itself."));
}

TEST_F(Store_Check, Dates_That_Are_None_Are_Named) {
  for (const char* date : {"1e300", "-1e300", "'tomorrow'", "2958466"}) {
    Run_Sql("UPDATE KT_Events_Data SET EventDate = " + std::string(date) + " WHERE Key = 'o2'");
    EXPECT_THAT(Check_Store(), Contains("The occurrence \"o2\" has no date of the years 1 to 9999.")) << date;
  }
}

TEST_F(Store_Check, Alarms_That_Do_Not_Go_Off_As_They_Say_Are_Named) {
  const std::string alarm = "The alarm of the occurrence \"o1\" ",
                    at_another_time = "goes off at another time than its own.";
  const std::pair<const char*, std::string> faults[] = {
      {"UPDATE KT_Alerts SET User = 'u'", alarm + "goes off for another user than its own."},
      {"UPDATE KT_Events_Data SET EventDate = 45306", alarm + at_another_time},
      {"UPDATE KT_Alarms SET NextTime = 45306.5", alarm + at_another_time},
      {"UPDATE KT_Alerts SET Due = 45306", alarm + at_another_time},
      {"DROP INDEX KT_Alerts_Occurrence; INSERT INTO KT_Alerts SELECT *, NULL FROM (SELECT Occurrence, User, "
       "Moment, NextTime, Due, 1 FROM KT_Alerts)",
       alarm + "goes off 2 times."},
      {"DELETE FROM KT_Alerts", alarm + "never goes off: nothing says when it is due."},
      {"DELETE FROM KT_Alarms", "Something is due for the occurrence \"o1\", which has no alarm."}};
  for (const auto& [damage, finding] : faults) {
    ASSERT_TRUE(Start_Update());
    Run_Sql(damage);
    EXPECT_THAT(Check_Store(), ElementsAre(finding)) << damage;
    database.Reopen();
  }
}

TEST_F(Store_Check, Damage_Of_The_File) {
  // The index loses what the table has, by a connection without defences.
  sqlite3* connection = nullptr;
  sqlite3_open(database.Path().c_str(), &connection);
  sqlite3_exec(connection,
               "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = sql || ' WHERE Title <> "
               "''Watering''' WHERE name = 'KT_Events_EventType'",
               nullptr, nullptr, nullptr);
  sqlite3_close(connection);
  database.Reopen();
  EXPECT_THAT(Check_Store(), Contains(AllOf(HasSubstr("In the file: "), HasSubstr("KT_Events_EventType"))));
}

TEST_F(Store_Check, Many_Findings_Are_Counted) {
  for (int i = 0; i < 60; ++i) Run_Sql("INSERT INTO KT_Alarms (Key) VALUES (" + std::to_string(i) + ")");
  const auto findings = Check_Store();
  ASSERT_THAT(findings, SizeIs(52));
  EXPECT_THAT(findings.front(), HasSubstr("(60 times)"));
  EXPECT_EQ(findings.back(), "And 10 more alarms without an occurrence.");
}

}  // namespace
