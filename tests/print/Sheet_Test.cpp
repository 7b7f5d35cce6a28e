#include "Sheet.h"

#include "Test_Events.h"

using namespace Plexidex;

namespace {

struct Sheet : TDatabase_Test {
  // One of everything on Tuesday the 16th, written against the order of the sheet.
  void Fill() {
    TNew_Event salary = New_Event("Salary", Tuesday + 0.75);
    salary.Record.User = "somebody else";
    salary.Record.Location = "Office";
    salary.Record.Private = true;
    Write(salary);
    TNew_Event late = New_Event("Late", Tuesday + 0.99999999);
    late.Record.Location = "Home";
    Write(late);
    TNew_Event task = New_Event("Tax return", Tuesday);
    task.Record.EventType = TEntry_Type::Task;
    task.Record.AllDay = true;
    task.Record.Location = "Desk";
    Write(task);
    task.Record.EventType = TEntry_Type::Event;
    task.Record.Title = "Ferien";
    Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE Key = '" + Write(task) + "'");
    Write(New_Event("Set", Tuesday + 4.5, 3));
    for (const char* holiday : {"45307, 'Bright Day'", "45309, 'Dark Day'"})
      Run_Sql("INSERT INTO KT_Holidays (HolidayDate, Name, Country) VALUES (" + std::string(holiday) +
              ", '')");
  }
  // Title/range/whose, and each day with its lines: marks h, a, t and d, time, text and location.
  static std::string Text(const TSheet& sheet) {
    std::string text = sheet.Title + "/" + sheet.Range + "/" + sheet.Whose;
    for (const TSheet_Day& day : sheet.Days) {
      if (day.Lines.empty()) continue;
      text += "\n" + day.Heading + ":";
      for (const TSheet_Line& line : day.Lines)
        text += std::string(" [") + (line.Holiday ? "h" : "") + (line.All_Day ? "a" : "") +
                (line.Task ? "t" : "") + (line.Done ? "d" : "") + line.Time + " " + line.Text.Str() + "," +
                line.Location.Str() + "]";
    }
    return text;
  }
  TSheet_Request Request(TSheet_Kind kind, TDateTime date) const {
    return {kind, {database.Book().Key, database.Book().Calendar}, true, date, {}, {}};
  }
  std::string Built(TSheet_Kind kind, TDateTime date) const {
    return Text(Build_Sheet(Request(kind, date), nullptr));
  }

  static constexpr double Tuesday = Monday + 1;
};

TEST_F(Sheet, Holds_The_Days_Of_Its_Kind_In_Order_And_Hides_What_Is_Private) {
  Fill();
  const std::string entries =
      " [ad Ferien,Desk] [at Tax return,Desk] [6:00 PM Private,] [11:59 PM Late,Home]";
  const std::string with_holiday = " [ha Bright Day,]" + entries;
  EXPECT_EQ(Built(TSheet_Kind::Day, Tuesday + 0.9),
            "Tuesday, 16 January 2024//Home\nTuesday, January 16, 2024:" + with_holiday);
  const std::string week =
      "15 January 2024 - 21 January 2024/Week 3/Home\nTuesday, 16 January 2024:" + with_holiday +
      "\nThursday, 18 January 2024: [ha Dark Day,]" +
      "\nSaturday, 20 January 2024: [12:00 PM Set,]\nSunday, 21 January 2024: [12:00 PM Set,]";
  EXPECT_EQ(Built(TSheet_Kind::Week, Monday), week);
  EXPECT_EQ(Built(TSheet_Kind::Week, Monday + 6.5), week) << "a Sunday belongs to the week that it ends";
  EXPECT_EQ(Built(TSheet_Kind::Month, Tuesday),
            "January 2024//Home\n16:" + entries +
                "\n20: [12:00 PM Set,]\n21: [12:00 PM Set,]\n22: [12:00 PM Set,]");
  EXPECT_EQ(Build_Sheet(Request(TSheet_Kind::Month, Encode_Date(2024, 2, 10)), nullptr).Days.size(), 29U);
  EXPECT_EQ(Built(TSheet_Kind::Week, Encode_Date(2027, 1, 3)),
            "28 December 2026 - 03 January 2027/Week 53/Home");
  EXPECT_EQ(Built(TSheet_Kind::Week, Encode_Date(9999, 12, 31)), "27 December 9999 - /Week 52/Home");
}

TEST_F(Sheet, A_List_Has_The_Days_With_Entries_And_May_Be_Cut) {
  EXPECT_EQ(Built(TSheet_Kind::List, 0), "All Events//Home");
  Fill();
  const std::string list = Built(TSheet_Kind::List, 0);
  EXPECT_EQ(list.substr(0, list.find(" [")),
            "All Events/16 January 2024 - 22 January 2024/Home\nTuesday, January 16, 2024:");
  EXPECT_EQ(list.find(" Day,"), std::string::npos) << "holidays, which the view does not list";
  TSheet_Request cut = Request(TSheet_Kind::List, 0);
  cut.From = Tuesday + 1;
  cut.To = Tuesday + 4;
  EXPECT_EQ(Text(Build_Sheet(cut, nullptr)),
            "Events/17 January 2024 - 20 January 2024/Home\nSaturday, January 20, 2024: [12:00 PM Set,]");
}

TEST_F(Sheet, Is_Refused_When_Nobody_Would_Read_It) {
  Write(New_Event("Often", Monday));
  Run_Sql(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200000) INSERT INTO "
      "KT_Events_Data (Key, Contact, Book, Event, EventDate) SELECT i, Contact, Book, Event, EventDate + i % "
      "9 FROM n, "
      "KT_Events_Data");
  try {
    Built(TSheet_Kind::List, 0);
    FAIL();
  } catch (const ESheet_Error& e) {
    EXPECT_STREQ(e.what(), "There are 200001 entries to print, and at most 200000 can be printed at once.");
  }
}

TEST_F(Sheet, Of_A_Contact_Holds_No_More_Than_The_Contacts_Own) {
  Fill();
  TNew_Event lunch = New_Event("Lunch", Monday + 0.5);
  In_Update([&] { lunch.Owner.Contact = Create_Contact(database.Book().Key, "Anna"); });
  Write(lunch);
  TSheet_Request request = Request(TSheet_Kind::Month, Monday);
  request.Owner = lunch.Owner;
  request.By_Book = false;
  EXPECT_EQ(Text(Build_Sheet(request, nullptr)), "January 2024//Anna\n15: [12:00 PM Lunch,]");
}

}  // namespace
