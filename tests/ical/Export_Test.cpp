#include <cstdlib>
#include <filesystem>
#include <random>

#include "Calendar_Export.h"
#include "Event_Rows.h"
#include "Import_Fixture.h"
#include "Test_Events.h"

namespace {

struct Exporting : Import_Fixture {
  std::string Out() const { return folder.File("out.ics"); }

  std::string Exported() const {
    Export_Calendar(Out(), "");
    return File_Content(Out());
  }

  // What the book holds: each date with all that belongs to it.
  static std::string Held() {
    return Query_Rows(
        "round(EventDate,5), Title, Location, d.Actioned, Priority, EventType, Type, AllDay, Private, "
        "Percentage, "
        "Started, Completed, Status, Budget, Worked, CAST(Notes AS TEXT), Offset || WAVFile",
        "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key LEFT JOIN KT_Alarms a ON a.Key = d.Key ORDER "
        "BY 1");
  }

  // Into an empty database of its own, in which the test goes on.
  TImport_Report Move_To_New_Database() {
    Export_Calendar(Out(), "");
    Open_Database(folder.File("second.db"), TDatabase::TMode::Create_If_Missing);
    return Import_Calendar(Out(), options);
  }

  std::string Create(const std::string& title, const char* first, const TRecurrence_Pattern& pattern,
                     int offset = -1) {
    TNew_Event event = New_Event(title, 0);
    EXPECT_TRUE(Str2DateTime(first, event.Record.FirstDate));
    event.Record.Pattern = pattern;
    event.Alarm = {offset >= 0, offset, Sound_File("ding; and, ü.wav"), 0};
    std::string key;
    EXPECT_NE(Create_Event(event, key), "");
    return key;
  }
  static TRecurrence_Pattern Monthly(bool plain, TDateTime last) {
    return {TFrequency::Monthly, 1, plain, 0, 0, 0, last};
  }
};

TEST_F(Exporting, The_Agenda_Comes_Back_From_A_File) {
  Import_Text(Data("agenda"));
  const std::string drifting =
      Create("Drift", "2024-01-31T08:00:00", Monthly(true, Encode_Date(2024, 12, 31)), 30);
  Run_Sql(
      "UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate < 45300 AND Event IN (SELECT Key FROM "
      "KT_Events WHERE EventType = 0)");
  // Two occurrences of a set at one moment.
  Run_Sql("UPDATE KT_Events_Data SET EventDate = (SELECT max(EventDate) FROM KT_Events_Data WHERE Event = '" +
          drifting + "') WHERE EventDate = (SELECT min(EventDate) FROM KT_Events_Data WHERE Event = '" +
          drifting + "') AND Event = '" + drifting + "'");
  database.Reopen();

  const std::string held = Held();
  ASSERT_EQ(Query_Number("SELECT count(*) FROM KT_Events_Data"), 32);
  const auto report = Move_To_New_Database();
  std::istringstream lines(File_Content(Out()));
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 76u) << line;
  EXPECT_EQ(Held(), held);
  EXPECT_EQ(Remarks(report.Unused) + Of("Set", "max(Freq || P1 || P3)") + Of("Trip", "Freq"), "2111");
  EXPECT_TRUE(Is_Sound());
}

TEST_F(Exporting, Every_Pattern_Comes_Back) {
  std::mt19937 random(7);
  const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
  const char* const starts[] = {"2024-01-01T09:00:00", "2024-01-31T23:30:00", "2024-02-29T00:00:00",
                                "2024-03-05T07:15:00"};
  for (int i = 0; i < 120; ++i) {
    const int freq = 1 + below(4);
    // The 30th of February is no date to start a year's pattern from.
    const int start = freq == 4 ? 3 : below(4);
    TRecurrence_Pattern pattern{static_cast<TFrequency>(freq), 1 + below(3), below(2) == 0};
    pattern.P = static_cast<std::uint16_t>(freq <= 2 ? 1 + below(127) : 1 << below(10));
    pattern.Instance = below(5);
    pattern.Month = below(12);
    pattern.LastDate = Encode_Date(2024 + (freq == 4 ? 8 : 1), 6, 30);
    Create("Pattern " + std::to_string(i), starts[start], pattern);
  }
  const std::string held = Held();
  const auto exported = Export_Calendar(Out(), "Home");
  Move_To_New_Database();
  EXPECT_EQ(Held(), held);
  // Only those that drift at the ends of months have no rule.
  EXPECT_GT(exported.Rules, 90);
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events WHERE Freq > 0"), exported.Rules);
}

TEST_F(Exporting, A_Rule_Is_Used_Where_It_Says_The_Dates) {
  TRecurrence_Pattern second_tuesdays = Monthly(false, Encode_Date(2024, 6, 30));
  second_tuesdays.Set_Flag(5);
  second_tuesdays.Instance = 1;
  const std::string key = Create("Set", "2024-01-02T09:00:00", second_tuesdays);
  const auto expect = [&](const std::string& lines) {
    const std::string text = Exported();
    EXPECT_NE(text.find(Replaced(lines, "\\|", "\r\n")), std::string::npos) << text;
  };
  // Its first date is none of the pattern.
  expect(
      "DTSTART:20240102T090000|RRULE:FREQ=MONTHLY;BYDAY=2TU;UNTIL=20240611T090000|EXDATE:20240109T090000|"
      "RDATE:20240102T090000|");
  expect("PRODID:-//Plexidex//KTReminds//EN|");
  expect("UID:" + key + "|");

  Run_Sql("DELETE FROM KT_Events_Data WHERE EventDate < 45310");
  Run_Sql("UPDATE KT_Events_Data SET EventDate = EventDate + 1 WHERE EventDate > 45440");
  database.Reopen();
  expect(
      "DTSTART:20240213T090000|RRULE:FREQ=MONTHLY;BYDAY=2TU;UNTIL=20240612T090000|EXDATE:20240611T090000|"
      "RDATE:20240612T090000|");

  // Of three dates one was moved: as many exceptions as dates, but it stays a set.
  Run_Sql("DELETE FROM KT_Events_Data WHERE EventDate < 45370");
  database.Reopen();
  ASSERT_EQ(Counts(), "1 3 0");
  EXPECT_EQ(Export_Calendar(Out(), "").Rules, 1);

  Run_Sql("UPDATE KT_Events_Data SET EventDate = EventDate + 1");
  database.Reopen();
  EXPECT_EQ(Exported().find("RRULE"), std::string::npos);
  EXPECT_EQ(Export_Calendar(Out(), "").Dates, 1);
}

TEST_F(Exporting, Coming_Back_Into_The_Same_Book_Replaces) {
  Import(Event("UID:mine|SUMMARY:Imported|DTSTART:20240105T100000") +
         Event("UID:many|SUMMARY:Ends|DTSTART:20240131T090000|RRULE:FREQ=MONTHLY;COUNT=3"));
  Create("Own", "2024-01-31T09:00:00", Monthly(true, Encode_Date(2024, 4, 5)), 15);
  const std::string held = Held();
  EXPECT_NE(Exported().find("UID:mine\r\n"), std::string::npos);
  EXPECT_EQ(Import_Calendar(Out(), options).Replaced, 1) << "what was imported is as it came";
  EXPECT_EQ(Held(), held);
  EXPECT_EQ(Import_Calendar(Out(), options).Unchanged, 3);
  std::string contact;
  In_Update([&] { contact = Create_Contact(database.Book().Key, "Contact"); });
  Run_Sql("UPDATE KT_Events_Data SET Contact = '" + contact + "'; UPDATE KT_Events SET User = 'ann'");
  Run_Sql("INSERT INTO KT_Cards (UID, Contact, Birthday) SELECT 'c', '" + contact +
          "', Key FROM KT_Events WHERE Title = 'Own' LIMIT 1");
  database.Reopen();
  const std::string changed = std::regex_replace(Exported(), std::regex("SUMMARY:"), "SUMMARY:New ");
  std::ofstream(Out()) << changed;
  EXPECT_EQ(Import_Calendar(Out(), options).Replaced, 3);
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events_Data WHERE Contact <> '" + contact + "'"), 0);
  EXPECT_EQ(Query_Text("SELECT DISTINCT User FROM KT_Events"), "ann") << "whose they were";
  EXPECT_EQ(Query_Text("SELECT Title FROM KT_Events e JOIN KT_Cards c ON c.Birthday = e.Key"), "New Own");
}

TEST_F(Exporting, Whatever_Was_Changed_Here_Comes_Out) {
  const char* const of_set = " WHERE Key = (SELECT Event FROM KT_Events_Data WHERE Key = '%')";
  const std::string changes[] = {
      "UPDATE KT_Events_Data SET EventDate = EventDate + 1 WHERE Key = '%'",
      std::string("UPDATE KT_Events SET Title = 'New; title', Notes = 'Other', Priority = 2") + of_set,
      "UPDATE KT_Events_Data SET Actioned = 1 WHERE Key = '%' AND Event IN (SELECT Key FROM KT_Events WHERE "
      "EventType = 0)",
      std::string("UPDATE KT_Events SET Status = 2, Percentage = 100, Completed = 45300") + of_set +
          " AND EventType = 3; UPDATE KT_Events_Data SET Actioned = 1 WHERE Key = '%'",
      "INSERT OR REPLACE INTO KT_Alarms (Key, Offset, WAVFile) VALUES ('%', 25, '<Default Sound>')",
      "DELETE FROM KT_Alarms WHERE Key = '%'",
      std::string("UPDATE KT_Events SET FirstDate = FirstDate + 1") + of_set +
          "; UPDATE KT_Events_Data SET EventDate = EventDate + 1 WHERE Event = (SELECT Event FROM "
          "KT_Events_Data WHERE Key = '%')"};
  const int rounds = std::getenv("KT_LONG_TESTS") != nullptr ? 300 : 6;
  std::mt19937 random(3);
  for (int round = 0; round < rounds; ++round) {
    for (const char* name : {"agenda", "changed_dates", "everything", "excluded_dates", "rules_in_zones",
                             "several_days", "tasks"}) {
      SCOPED_TRACE(name + (" " + std::to_string(round)));
      Open_Database(folder.File(name + std::to_string(round)), TDatabase::TMode::Create_If_Missing);
      Import_Text(Data(name));
      for (auto left = 1 + random() % 4; left > 0; --left) {
        const std::string key = Query_Text("SELECT Key FROM KT_Events_Data ORDER BY row_id LIMIT 1 OFFSET " +
                                           std::to_string(random() % 7));
        const auto what = random() % (std::size(changes) + 2);
        if (key.empty()) continue;
        if (what < std::size(changes)) {
          Run_Sql(Replaced(changes[what], "%", key.c_str()));
          Open_Database(folder.File(name + std::to_string(round)), TDatabase::TMode::Must_Exist);
        } else {
          In_Update([&] {
            auto rows = Find_Occurrence(key);
            if (what == std::size(changes)) return Delete_Event(*rows);
            Delete_Set(std::string(rows->Event.Text(Event_Columns().Key)));
          });
        }
      }
      EXPECT_EQ(
          Query_Rows("t.UID",
                     "KT_Import_Texts t WHERE NOT EXISTS (SELECT 1 FROM KT_Events e JOIN KT_Import_Events "
                     "i ON i.Event = e.Key WHERE i.UID = t.UID)"),
          "")
          << "the text of what was deleted is still there";
      const std::string held = Held();
      Export_Calendar(Out(), "");
      Open_Database(folder.File("second" + std::string(name) + std::to_string(round)),
                    TDatabase::TMode::Create_If_Missing);
      Import_Calendar(Out(), options);
      ASSERT_EQ(Held(), held) << File_Content(Out());
    }
  }
}

// Of what was changed, all else stays: zones, ends, and what no table holds.
TEST_F(Exporting, What_Was_Not_Changed_Is_As_It_Came) {
  const std::string zone =
      "BEGIN:VTIMEZONE|TZID:Office|BEGIN:STANDARD|DTSTART:19700101T000000|TZOFFSETFROM:-0700|TZOFFSETTO:-"
      "0800|"
      "END:STANDARD|END:VTIMEZONE|";
  const std::string set =
      "BEGIN:VEVENT|UID:set|DTSTAMP:20240101T000000Z|DTSTART;TZID=Office:20240101T090000|"
      "DTEND;TZID=Office:20240101T100000|RRULE:FREQ=DAILY;COUNT=3|SUMMARY:Set|GEO:1;2|X-ALT-DESC:N|"
      "CATEGORIES:A,B|ATTENDEE;CN=\"A:"
      " B\":mailto:a|"
      "X-OWN;P=1:value|BEGIN:VALARM|ACTION:EMAIL|TRIGGER:-PT10M|END:VALARM|BEGIN:X-PART|X-IN:1|END:X-PART|"
      "END:VEVENT|";
  const auto lines = [](const std::string& text) { return Replaced(text, "\\|", "\r\n"); };
  Import(lines(zone + set));
  Install_Time_Zone("Asia/Tokyo");
  EXPECT_NE(Exported().find(lines(zone + set + "END:VCALENDAR|")), std::string::npos) << Exported();

  Run_Sql("UPDATE KT_Events SET Title = 'New', Location = 'There'");
  Run_Sql("UPDATE KT_Events_Data SET EventDate = EventDate + 0.0625 WHERE EventDate > 45294");
  database.Reopen();
  std::string changed = Replaced(set, "SUMMARY:Set", "SUMMARY:New");
  changed = Replaced(changed, "20240101T000000Z", "20240115T110000Z");
  changed = Replaced(changed, "GEO:1;2\\|", "");
  changed = Replaced(changed, "BEGIN:VALARM",
                     "LOCATION:There|RDATE:20240103T183000Z|EXDATE:20240103T170000Z|BEGIN:VALARM");
  EXPECT_NE(Exported().find(lines(changed)), std::string::npos) << Exported();
}

TEST_F(Exporting, Only_What_The_User_Sees_And_A_File_Can_Hold) {
  std::string events;
  for (const char* title : {"Seen", "Secret", "Early", "Hidden"})
    events +=
        Event(std::string("UID:") + title + "|SUMMARY:" + title + "|DTSTART:20240105T100000|CLASS:PRIVATE");
  Import(events);
  std::string deleted;
  In_Update([&] {
    deleted = Create_Contact(database.Book().Key, "Gone");
    Set_Contact_Deleted(deleted, true);
  });
  Run_Sql("UPDATE KT_Events SET User = 'somebody' WHERE Title = 'Secret'");
  const std::string of = " WHERE Event = (SELECT Key FROM KT_Events WHERE Title = ";
  Run_Sql("UPDATE KT_Events_Data SET EventDate = -800000" + of + "'Early')");
  Run_Sql("UPDATE KT_Events_Data SET Contact = '" + deleted + "'" + of + "'Hidden')");
  database.Reopen();
  const auto report = Export_Calendar(Out(), "Home");
  EXPECT_EQ(std::make_pair(report.Events, report.Left_Out), std::make_pair(1L, 1L));
  const std::string text = Exported();
  EXPECT_NE(text.find("SUMMARY:Seen"), std::string::npos);
  EXPECT_EQ(text.rfind("SUMMARY:"), text.find("SUMMARY:Seen"));
}

TEST_F(Exporting, A_Failed_Export_Leaves_The_Old_File) {
  std::ofstream(Out()) << "old";
  EXPECT_THROW(Export_Calendar(Out(), "Nowhere"), EExport_Error);
  for (const char* no_file : {"no/such/folder.ics", "."})
    EXPECT_THROW(Export_Calendar(folder.File(no_file), ""), EExport_Error);
  Import(Event("UID:a|DTSTART:20240105T100000"));
  Run_Sql("ALTER TABLE KT_Alarms RENAME TO Elsewhere");
  EXPECT_THROW(Export_Calendar(Out(), ""), EExport_Error);
  Run_Sql("ALTER TABLE Elsewhere RENAME TO KT_Alarms");
  EXPECT_EQ(File_Content(Out()), "old");
  // The imported file, and the old one.
  const std::filesystem::directory_iterator files(folder.File("."));
  EXPECT_EQ(std::distance(begin(files), end(files)), 2);
}

}  // namespace
