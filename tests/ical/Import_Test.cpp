#include "Alerts.h"
#include "Import_Fixture.h"

namespace {

struct Importing : Import_Fixture {
  // Everything that the report tells.
  std::string Import_Data(const std::string& name) const {
    const auto report = Import_Text(Data(name));
    EXPECT_TRUE(Is_Sound());
    return Told(report) + "\n" + Remarks(report.Unused) + Remarks(report.Left_Out);
  }
  static std::string Alarms() {
    return Query_Rows("EventDate, Offset", "KT_Alarms a JOIN KT_Events_Data d ON d.Key = a.Key");
  }
};

TEST_F(Importing, An_Event_Keeps_What_It_Says) {
  EXPECT_EQ(Import_Data("events"), "read 2, events 2, occurrences 2\n");
  EXPECT_EQ(
      Query_Rows("Title, Location, CAST(Notes AS TEXT), Priority, Private, AllDay, Freq, EventType, Type",
                 "KT_Events ORDER BY row_id"),
      "Tea, with Grün|Room; 5|one\ntwo|2|1|0|0|0|-1, Day|||5|0|1|0|0|-1");
  EXPECT_EQ(Dates_Of("Tea, with Grün") + Dates_Of("Day"), "20240105T10153020240106T000000");
  // They belong to the book's calendar, are the user's, and are outstanding though they are past.
  const std::string owner = database.Book().Calendar + "|" + database.Book().Key + "|0|" + User_Key();
  EXPECT_EQ(
      Query_Rows("Contact, Book, Actioned, User", "KT_Events_Data d JOIN KT_Events e ON e.Key = d.Event"),
      owner + ", " + owner);
}

TEST_F(Importing, What_Comes_Again_Keeps_What_Waits_For_An_Answer_And_What_Is_Private) {
  const auto import = [&](const std::string& title) {
    EXPECT_EQ(Import(Event("UID:1|SUMMARY:" + title +
                           "|DTSTART:20240115T123000|BEGIN:VALARM|ACTION:DISPLAY|TRIGGER:-PT15M|END:VALARM"))
                  .Replaced,
              title == "New" ? 0 : 1);
    return Query_Rows("Private, NextTime > 0", "KT_Events, KT_Alarms") + "/" +
           std::to_string(Due_Alerts(Now()).size());
  };
  EXPECT_EQ(import("New"), "0|0/0");
  Run_Sql("UPDATE KT_Events SET Private = 1");
  database.Reopen();
  seams.Clock.Value += 20.0 / 1440;
  EXPECT_EQ(import("Waiting"), "1|0/1");
  In_Update([] { Put_Off_Alert(Due_Alerts(Now()).at(0), Now() + 1.0 / 1440); });
  EXPECT_EQ(import("Put off"), "1|1/0");
  seams.Clock.Value += 5.0 / 1440;
  EXPECT_EQ(import("Waiting again").substr(1), "|1/1");
  In_Update([] { Dismiss_Alert(Due_Alerts(Now()).at(0)); });
  EXPECT_EQ(import("Answered"), "1|0/0");
}

TEST_F(Importing, The_Book_Is_The_Named_One) {
  const std::string text = Event("UID:a|DTSTART:20240105T101530|SUMMARY:A");
  options.Book = "Nowhere";
  EXPECT_THROW(Import(text), EImport_Error);
  In_Update([] { Create_Book("Other"); });
  options.Book = "Other";
  Import(text);
  EXPECT_EQ(Query_Rows("BookName", "KT_Books b JOIN KT_Events_Data d ON d.Book = b.Key"), "Other");
}

TEST_F(Importing, Times_Become_Local) {
  EXPECT_EQ(Import_Data("times"),
            "read 11, events 11, occurrences 11\n"
            "20240701T110000 (8): the time zone \"Mad\" is not known; its times were taken as local\n"
            "20240701T100000 (9): the time zone \"Atlantis\" is not known; its times were taken as local\n"
            "20240701T100000 (10): the time zone \"Never\" is not known; its times were taken as local\n")
      << "the clock of one would change every second, that of another never";
  // Each title says what its event's time is here.
  EXPECT_EQ(Query_Rows("Title, EventDate",
                       "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key WHERE Title <> "
                       "strftime('%Y%m%dT%H%M%S', EventDate + 2415018.5)"),
            "");
}

TEST_F(Importing, Rules_In_Zones_Over_The_Change_Of_The_Clock) {
  EXPECT_EQ(
      Import_Data("rules_in_zones"),
      "read 5, sets 2, events 15, occurrences 23\n"
      "York (York): no recurring set has the dates of its rule; its 5 dates were written as single events\n"
      "Fold (Fold): no recurring set has the dates of its rule; its 5 dates were written as single events\n"
      "Gap (Gap): no recurring set has the dates of its rule; its 5 dates were written as single events\n");
  // The user's own zone is not converted, not even in the hour that the clock skips on 31 March.
  EXPECT_EQ(Dates_Of("Berlin"), "20240317T023000 20240324T023000 20240331T023000 20240407T023000");
  // Their clock changes on 10 March, three weeks before ours.
  EXPECT_EQ(Dates_Of("York"),
            "20240305T020000 20240312T010000 20240319T010000 20240326T010000 20240402T020000");
  EXPECT_EQ(Dates_Of("Summer"), "20240604T020000 20240610T020000 20240611T020000 20240617T020000");
  // Hours that a change of the clock brings to one local time are both kept.
  EXPECT_EQ(Dates_Of("Fold"),
            "20241027T010000 20241027T020000 20241027T020000 20241027T030000 20241027T040000");
  EXPECT_EQ(Dates_Of("Gap"),
            "20240331T000000 20240331T010000 20240331T030000 20240331T030000 20240331T040000");
  EXPECT_EQ(Of("Berlin", "Freq") + Of("York", "max(Freq)") + Of("Summer", "Freq, P1, P2, P7"), "202|1|1|0");
}

TEST_F(Importing, Excluded_And_Further_Dates) {
  EXPECT_EQ(Import_Data("excluded_dates"),
            "read 4, sets 2, events 3, occurrences 9\n"
            "Gone (gone): all its dates are excluded\n"
            "Set (set): it excludes 2024-01-04T10:00:00, which is none of its dates\n"
            "Free (free): its dates follow no rule; its 3 dates were written as single events\n");
  EXPECT_EQ(Dates_Of("Set"),
            "20240104T090000 20240105T090000 20240106T090000 20240110T090000 20240111T090000");
  EXPECT_EQ(Dates_Of("Day") + " " + Dates_Of("Free"),
            "20240103T000000 20240101T090000 20240103T090000 20240105T090000");
  EXPECT_EQ(Query_Rows("Title, Freq", "KT_Events ORDER BY Title"), "Day|1, Free|0, Free|0, Free|0, Set|1");
}

TEST_F(Importing, Dates_That_Differ_From_Their_Rule) {
  EXPECT_EQ(
      Import_Data("changed_dates"),
      "read 9, sets 1, events 3, occurrences 8\n"
      "Set (s): another version of it counts\n"
      "Set (s): a change of a date and all later ones was applied to that date only\n"
      "Set (s): it changes 2024-01-20T09:00:00, which is none of its dates; the change was written as an "
      "entry of its own\n");
  EXPECT_EQ(Query_Rows("Title, Freq, group_concat(strftime('%d %H',EventDate + 2415018.5))",
                       "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key GROUP BY e.Key ORDER BY 1"),
            "Orphan|0|07 09, Other|0|03 09, Set|0|21 09, Set|1|01 09,02 15,05 09,06 11,07 09");
  EXPECT_EQ(Alarms(), "45296.375|10");
}

TEST_F(Importing, Several_Days) {
  EXPECT_EQ(Import_Data("several_days"), "read 3, sets 3, events 1, occurrences 8\n");
  EXPECT_EQ(Dates_Of("Trip"), "20240228T000000 20240229T000000 20240301T000000");
  EXPECT_EQ(Of("Trip", "Freq, Period, PeriodDefault, AllDay"), "1|1|1|1");
  EXPECT_EQ(Alarms(), "45350.0|1440");
  EXPECT_EQ(Dates_Of("Week"), "20240101T000000 20240102T000000 20240201T000000 20240202T000000");
  EXPECT_EQ(Dates_Of("Night"), "20240101T200000");
}

TEST_F(Importing, The_Earliest_Alarm_No_Later_Than_The_Start_Counts) {
  const struct {
    const char *Alarm, *Offset, *Remark;
  } cases[] = {
      {"TRIGGER:-PT15M", "15", ""},
      {"TRIGGER:PT0S", "0", ""},
      {"TRIGGER:-PT15M|END:VALARM|BEGIN:VALARM|TRIGGER:-PT2H", "120", "one of two alarms was left out"},
      {"TRIGGER:PT5M", "", "after the start"},
      {"TRIGGER:-PT90S", "2", ""},
      {"TRIGGER;RELATED=END:-PT90M", "30", ""},
      {"TRIGGER;VALUE=DATE-TIME:20240105T080000Z", "60", ""},
      {"TRIGGER:-P1W", "10080", ""},
      {"TRIGGER:-PT5M|REPEAT:3|DURATION:PT1M", "5", "repetition"},
      {"SUMMARY:none", "", "does not say when"},
      {"TRIGGER:-P999999W", "", "hundred years"},
      {"TRIGGER:-PT5M|ACTION:NONE", "", ""}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.Alarm);
    const auto report =
        Import(Event("UID:a|SUMMARY:A|DTSTART:20240105T100000|DTEND:20240105T110000|"
                     "BEGIN:VALARM|" +
                     std::string(test.Alarm) + "|END:VALARM"));
    EXPECT_EQ(Query_Rows("Offset, WAVFile, NextTime, Actioned, User", "KT_Alarms"),
              *test.Offset ? test.Offset + ("|<Default Sound>|0.0|0|" + User_Key()) : "");
    EXPECT_EQ(report.Left_Out.size(), *test.Remark ? 1u : 0u) << Remarks(report.Left_Out);
    EXPECT_NE(Remarks(report.Left_Out).find(test.Remark), std::string::npos) << Remarks(report.Left_Out);
  }
}

TEST_F(Importing, Tasks) {
  EXPECT_EQ(Import_Data("tasks"),
            "read 6, tasks 7, occurrences 7\nSometime (6): has no date; it was made due on the day of the "
            "import\n");
  EXPECT_EQ(Dates_Of("Weekly"), "20240103T000000 20240110T000000");
  EXPECT_EQ(
      Query_Rows("Title, EventType, AllDay, Status, Percentage, Completed, CAST(FirstDate AS INTEGER), "
                 "Actioned, EventDate",
                 "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key WHERE Title <> 'Weekly' ORDER BY "
                 "e.row_id"),
      "Open|3|1|0|0|0|45309|0|45311.0, Half|3|1|1|40|0|45311|0|45311.0, "
      "Done|3|1|2|100|45303|45301|1|45301.0, Off|3|1|5|0|0|45311|0|45311.0, "
      "Sometime|3|1|0|0|0|45306|0|45306.0");
  // Due at five in the afternoon, half an hour before which is 990 minutes after that day's midnight.
  EXPECT_EQ(Query_Rows("Offset, Actioned", "KT_Alarms ORDER BY Offset"), "-990|0, 60|1");
}

TEST_F(Importing, Nothing_Lies_After_The_Last_Year) {
  const auto report =
      Import(Task("UID:t|SUMMARY:T|DTSTART:99981230T090000|DUE:99990105T090000|RRULE:FREQ=YEARLY;COUNT=2") +
             Event("UID:e|SUMMARY:E|DTSTART;VALUE=DATE:99991015|DTEND;VALUE=DATE:99991114|"
                   "RRULE:FREQ=MONTHLY;COUNT=3"));
  EXPECT_EQ(Remarks(report.Left_Out),
            "T (t): what it has after the year 9999 was left out\nE (e): what it has after the year 9999 was "
            "left out\n");
  EXPECT_EQ(Told(report), "read 2, sets 2, tasks 1, occurrences 61");
  EXPECT_TRUE(Is_Sound());
}

TEST_F(Importing, A_Sound_Is_One_Of_The_Programs) {
  const std::string bell = Sound_File("Bell.wav");
  for (const auto& [named, taken] : {std::pair("/elsewhere/Bell.wav", bell),
                                     {"C:\\\\Sounds\\\\Bell.wav", bell},
                                     {"<Standard Beep>", std::string("<Standard Beep>")},
                                     {"/dev/zero", "<Default Sound>"},
                                     {"in.ics", "<Default Sound>"}}) {
    const auto report =
        Import(Event("UID:a|SUMMARY:A|DTSTART:20240105T100000|BEGIN:VALARM|TRIGGER:-PT5M|X-PLEXIDEX-SOUND:" +
                     std::string(named) + "|END:VALARM"));
    EXPECT_EQ(Query_Rows("WAVFile", "KT_Alarms"), taken) << named;
    EXPECT_EQ(report.Left_Out.size(), taken == "<Default Sound>" ? 1u : 0u);
  }
}

TEST_F(Importing, What_Cannot_Be_Used_Is_Named) {
  const auto report = Import(Event("UID:a|SUMMARY:A|DTSTART:20240101T090000|STATUS:CANCELLED") +
                             Component("VJOURNAL", "UID:b") + Component("VFREEBUSY", "SUMMARY:no uid") +
                             Event("UID:c|SUMMARY:C") + Event("SUMMARY:D|DTSTART:20240231T090000") +
                             Event("UID:e|SUMMARY:E1|DTSTART:20240101T090000|SEQUENCE:1") +
                             Event("UID:e|SUMMARY:E2|DTSTART:20240102T090000") +
                             Event("UID:e|SUMMARY:E3|DTSTART:20240102T090000|SEQUENCE:1") +
                             Event("UID:f|SUMMARY:F|DTSTART:20240101T090000|RRULE:FREQ=NEVER|LOCATION:"));
  EXPECT_EQ(Remarks(report.Unused),
            "A (a): is cancelled\n"
            "b: is neither an event nor a task, but VJOURNAL\n"
            "no uid: is neither an event nor a task, but VFREEBUSY\n"
            "C (c): has no start\n"
            "D: has no start\n"
            "E2 (e): another version of it counts\n"
            "E1 (e): another version of it counts\n");
  EXPECT_EQ(Told(report), "read 9, events 2, occurrences 2");
  EXPECT_EQ(Query_Rows("Title", "KT_Events"), "E3, F") << "of equal versions the last counts";
  EXPECT_NE(Remarks(report.Left_Out).find("RRULE"), std::string::npos);
}

TEST_F(Importing, A_Second_Import_Changes_Nothing_And_A_Changed_Event_Replaces) {
  const auto text = [](const std::string& title, const std::string& stamp) {
    return Event("UID:set|SUMMARY:" + title + "|DTSTAMP:" + stamp +
                 "|DTSTART:20240101T090000|RRULE:FREQ=DAILY;COUNT=4|EXDATE:20240102T090000|BEGIN:VALARM|"
                 "TRIGGER:-PT10M|END:VALARM") +
           Event("SUMMARY:No UID|DTSTART:20240101T090000") +
           Task("UID:task|SUMMARY:Task|DUE;VALUE=DATE:20240101") +
           Event("UID:gone|DTSTART:20240101T090000|EXDATE:20240101T090000");
  };
  Import(text("Old", "20240101T000000Z"));
  const std::string before = Dump();
  EXPECT_EQ(Told(Import(text("Old", "20240109T000000Z"))), "read 4, unchanged 3");
  EXPECT_EQ(Dump(), before);

  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate = 45294.375");  // 3 January, 9:00
  EXPECT_EQ(Told(Import(text("New", "20240109T000000Z"))),
            "read 4, sets 1, occurrences 3, unchanged 2, replaced 1");
  EXPECT_EQ(
      Query_Rows(
          "Title, EventDate, d.Actioned, a.Actioned",
          "KT_Events e LEFT JOIN KT_Events_Data d ON e.Key = d.Event LEFT JOIN KT_Alarms a ON a.Key = d.Key "
          "WHERE EventType = 0 AND Title <> 'No UID' ORDER BY EventDate"),
      "New|45292.375|0|0, New|45294.375|1|1, New|45295.375|0|0");

  // What the user completed, or deleted, stays so.
  const std::string task = Task("UID:task|SUMMARY:Task|DUE;VALUE=DATE:20240101|PRIORITY:1");
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate = 45292.0");
  Run_Sql("UPDATE KT_Events SET Status = 2, Completed = 45290 WHERE EventType = 3");
  Import(task);
  EXPECT_EQ(Of("Task", "Status, Percentage, Completed, Priority"), "2|100|45290|1");
  Run_Sql("DELETE FROM KT_Events_Data WHERE Event IN (SELECT Key FROM KT_Events WHERE EventType = 3)");
  Run_Sql("DELETE FROM KT_Events WHERE EventType = 3");
  database.Reopen();
  Import(task);
  EXPECT_EQ(Dates_Of("Task"), "");

  // Cancelled now: what it brought goes.
  EXPECT_EQ(Told(Import(Event("UID:set|SUMMARY:New|DTSTART:20240101T090000|STATUS:CANCELLED"))),
            "read 1, replaced 1");
  EXPECT_EQ(Query_Rows("Title", "KT_Events"), "No UID");
  EXPECT_TRUE(Is_Sound());
}

TEST_F(Importing, Another_Local_Zone_Is_A_Change) {
  const std::string text = Event("UID:a|SUMMARY:A|DTSTART:20240105T090000Z|DTEND:20240105T100000Z") +
                           Event("UID:b|SUMMARY:B|DTSTART:20240105T090000");
  EXPECT_EQ(Import(text).Ends, 1);
  Install_Time_Zone("America/New_York");
  EXPECT_EQ(Told(Import(text)), "read 2, events 1, occurrences 1, unchanged 1, replaced 1");
  EXPECT_EQ(Dates_Of("A") + Dates_Of("B"), "20240105T04000020240105T090000");
}

TEST_F(Importing, Another_Definition_Of_A_Zone_Is_A_Change_And_So_Is_A_Withdrawal) {
  const auto zone = [](const std::string& name, const std::string& offset) {
    return Component("VTIMEZONE", "TZID:" + name + "|BEGIN:STANDARD|DTSTART:19700101T000000|TZOFFSETFROM:" +
                                      offset + "|TZOFFSETTO:" + offset + "|END:STANDARD");
  };
  const std::string text = Event("UID:a|SUMMARY:A|DTSTART;TZID=Ours:20240105T090000") +
                           Event("UID:b|SUMMARY:B|DTSTART;TZID=America/New_York:20240105T090000");
  Import(text + zone("Ours", "+0100") + zone("America/New_York", "-0500"));
  const std::string later = text + zone("Ours", "+0300") + zone("America/New_York", "-0400");
  EXPECT_EQ(Told(Import(later)), "read 2, events 1, occurrences 1, unchanged 1, replaced 1");
  EXPECT_EQ(Dates_Of("A"), "20240105T070000");
  EXPECT_EQ(Told(Import("METHOD:CANCEL\r\n" + later)), "read 2, replaced 2");
}

TEST_F(Importing, Another_Last_Day_Is_A_Change) {
  const std::string text = Event("UID:a|SUMMARY:A|DTSTART:20240101T090000|RRULE:FREQ=YEARLY");
  EXPECT_EQ(Import(text).Occurrences, 11);
  seams.Clock.Value += 400;
  EXPECT_EQ(Told(Import(text)), "read 1, unchanged 1");
  options.Has_Until = true;
  options.Until = Encode_Date(2026, 6, 1);
  EXPECT_EQ(Told(Import(text)), "read 1, sets 1, occurrences 3, replaced 1");
  EXPECT_EQ(Told(Import(text)), "read 1, unchanged 1");
}

}  // namespace
