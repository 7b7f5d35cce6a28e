#include "Import_Fixture.h"

namespace {

using namespace Kt_util_01;
using namespace Plexidex;
using TStrings = std::vector<std::string>;

using Importing = Kt_test::Import_Fixture;

TEST_F(Importing, An_Event_Keeps_What_It_Says) {
  const auto report =
      Import(Event({"UID:a", "DTSTART:20240105T101530", "DTEND:20240105T120000", "SUMMARY:Tea\\, with\\nGrün",
                    "LOCATION:Room\\; 5", "DESCRIPTION:one\\ntwo", "PRIORITY:2", "CLASS:CONFIDENTIAL"}) +
             Event({"UID:b", "DTSTART;VALUE=DATE:20240106", "SUMMARY:Day", "PRIORITY:0", "CLASS:PUBLIC"}));
  EXPECT_EQ(report.Read, 2);
  EXPECT_EQ(report.Events, 2);
  EXPECT_EQ(report.Occurrences, 2);
  EXPECT_EQ(Remarks(report.Unused) + Remarks(report.Left_Out), "");
  EXPECT_EQ(Rows("SELECT Title || '|' || Location || '|' || CAST(coalesce(Notes, '') AS TEXT) || '|' || "
                 "Priority || Private || AllDay || "
                 "Freq || EventType || '|' || Type FROM KT_Events ORDER BY row_id"),
            (TStrings{"Tea, with Grün|Room; 5|one\ntwo|21000|-1", "Day|||50100|-1"}));
  EXPECT_EQ(Dates("Tea, with Grün"), TStrings{"2024-01-05T10:15:30"});
  EXPECT_EQ(Dates("Day"), TStrings{"2024-01-06T00:00:00"});
  // They belong to the book's calendar, are the user's, and are outstanding though they are past.
  EXPECT_EQ(Rows("SELECT DISTINCT Contact || Book || Actioned FROM KT_Events_Data"),
            TStrings{m_Database.Book().Calendar + m_Database.Book().Key + "0"});
  EXPECT_EQ(Rows("SELECT DISTINCT User FROM KT_Events"), TStrings{User_Key()});
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Alarms"), 0);
}

TEST_F(Importing, The_Book_Is_The_Named_One_Or_The_First_Or_A_New_One) {
  const std::string text = Event({"UID:a", "DTSTART:20240105T101530", "SUMMARY:A"});
  m_Options.Book = "Nowhere";
  EXPECT_THROW(Import(text), EImport_Error);
  In_Update([] { Kt_data_01::Create_Book("Other"); });
  m_Options.Book = "Other";
  Import(text);
  EXPECT_EQ(Query_Text("SELECT BookName FROM KT_Books b JOIN KT_Events_Data d ON d.Book = b.Key"), "Other");

  Run_Sql(
      "DELETE FROM KT_Alarms; DELETE FROM KT_Events_Data; DELETE FROM KT_Imports; DELETE FROM KT_Contacts; "
      "DELETE FROM KT_Books");
  m_Database.Reopen();
  m_Options.Book = "";
  Import("");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Books"), 0);
  Import(text);
  EXPECT_EQ(Query_Text("SELECT BookName FROM KT_Books b JOIN KT_Events_Data d ON d.Book = b.Key"),
            "My Calendar");
}

constexpr auto Pacific_Zone =
    "BEGIN:VTIMEZONE\r\nTZID:Our "
    "Office\r\nBEGIN:STANDARD\r\nDTSTART:19701101T020000\r\nTZOFFSETFROM:-0700\r\n"
    "TZOFFSETTO:-0800\r\nRRULE:FREQ=YEARLY;BYMONTH=11;BYDAY=1SU\r\nEND:STANDARD\r\nBEGIN:DAYLIGHT\r\n"
    "DTSTART:19700308T020000\r\nTZOFFSETFROM:-0800\r\nTZOFFSETTO:-0700\r\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY="
    "2SU\r\n"
    "END:DAYLIGHT\r\nEND:VTIMEZONE\r\n";

TEST_F(Importing, Times_Become_Local) {
  const auto at = [](const char* start) { return Event({"UID:a", "SUMMARY:A", start}); };
  const struct {
    const char *Start, *Local;
  } cases[] = {
      {"DTSTART:20240701T100000", "2024-07-01T10:00:00"},
      {"DTSTART:20240701T100000Z", "2024-07-01T12:00:00"},
      {"DTSTART;TZID=America/New_York:20240701T200000", "2024-07-02T02:00:00"},
      {"DTSTART;TZID=/example.org/v1/America/New_York:20240701T200000", "2024-07-02T02:00:00"},
      {"DTSTART;TZID=Our Office:20240701T100000", "2024-07-01T19:00:00"},
      {"DTSTART;TZID=Our Office:20240320T100000",
       "2024-03-20T18:00:00"},  // daylight time there, not yet here
      {"DTSTART;TZID=Our Office:20480715T100000", "2048-07-15T19:00:00"},
      {"DTSTART;TZID=Our Office:20480115T100000", "2048-01-15T19:00:00"},
  };
  for (const auto& test : cases) {
    const auto report = Import(Pacific_Zone + at(test.Start));
    EXPECT_EQ(Dates("A"), TStrings{test.Local}) << test.Start;
    EXPECT_EQ(Remarks(report.Left_Out), "");
  }
  // A zone whose clock would change every second.
  const auto endless = Import(
      "BEGIN:VTIMEZONE\r\nTZID:Mad\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0000\r\n"
      "TZOFFSETTO:+0000\r\nRRULE:FREQ=SECONDLY\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n" +
      at("DTSTART;TZID=Mad:20240701T110000"));
  EXPECT_EQ(Dates("A"), TStrings{"2024-07-01T11:00:00"});
  EXPECT_EQ(endless.Left_Out.size(), 1u);
  const auto report = Import(at("DTSTART;TZID=Atlantis:20240701T100000"));
  EXPECT_EQ(Dates("A"), TStrings{"2024-07-01T10:00:00"});
  EXPECT_EQ(Remarks(report.Left_Out),
            "a: the time zone \"Atlantis\" is not known; its times were taken as local\n");
}

TEST_F(Importing, Rules_In_Zones_Over_The_Change_Of_The_Clock) {
  const auto weekly = [](const char* uid, const char* start, const char* rule) {
    return Event({uid, uid, start, (std::string("SUMMARY:") + (uid + 4)).c_str(), rule});
  };
  const auto report =
      Import(weekly("UID:Berlin", "DTSTART;TZID=Europe/Berlin:20240317T023000", "RRULE:FREQ=WEEKLY;COUNT=4") +
             weekly("UID:York", "DTSTART;TZID=America/New_York:20240304T200000",
                    "RRULE:FREQ=WEEKLY;BYDAY=MO;COUNT=5") +
             weekly("UID:Summer", "DTSTART;TZID=America/New_York:20240603T200000",
                    "RRULE:FREQ=WEEKLY;BYDAY=MO,SU;COUNT=4"));
  // The user's own zone is not converted, not even in the hour that the clock skips on 31 March.
  EXPECT_EQ(Dates("Berlin"), (TStrings{"2024-03-17T02:30:00", "2024-03-24T02:30:00", "2024-03-31T02:30:00",
                                       "2024-04-07T02:30:00"}));
  EXPECT_EQ(Of("Berlin", "Freq"), "2");
  // Their clock changes on 10 March, three weeks before ours.
  EXPECT_EQ(Dates("York"), (TStrings{"2024-03-05T02:00:00", "2024-03-12T01:00:00", "2024-03-19T01:00:00",
                                     "2024-03-26T01:00:00", "2024-04-02T02:00:00"}));
  EXPECT_EQ(Of("York", "max(Freq)"), "0");
  EXPECT_EQ(Dates("Summer"), (TStrings{"2024-06-04T02:00:00", "2024-06-10T02:00:00", "2024-06-11T02:00:00",
                                       "2024-06-17T02:00:00"}));
  EXPECT_EQ(Of("Summer", "Freq || P1 || P2 || P7"), "2110");
  EXPECT_EQ(report.Sets, 2);
  EXPECT_EQ(report.Events, 5);
  EXPECT_EQ(Remarks(report.Left_Out),
            "York: no recurring set has the dates of its rule; its 5 dates were written as single events\n");
}

TEST_F(Importing, Excluded_And_Further_Dates) {
  const auto report =
      Import(Event({"UID:set", "SUMMARY:Set", "DTSTART;TZID=Europe/Berlin:20240101T090000",
                    "RRULE:FREQ=DAILY;COUNT=6", "EXDATE:20240101T090000,20240102T080000Z",
                    "EXDATE;VALUE=DATE:20240103", "EXDATE:20240104T100000",
                    "RDATE:20240106T090000,20240110T090000", "RDATE;VALUE=PERIOD:20240111T090000/PT1H"}) +
             Event({"UID:day", "SUMMARY:Day", "DTSTART;VALUE=DATE:20240101", "RRULE:FREQ=DAILY;COUNT=3",
                    "EXDATE:20240101T000000", "EXDATE:20240102T120000"}) +
             Event({"UID:free", "SUMMARY:Free", "DTSTART:20240101T090000",
                    "RDATE:20240105T090000,20240103T090000"}) +
             Event({"UID:gone", "SUMMARY:Gone", "DTSTART:20240101T090000", "RRULE:FREQ=DAILY;COUNT=2",
                    "EXDATE:20240101T090000,20240102T090000"}));
  EXPECT_EQ(Dates("Set"), (TStrings{"2024-01-04T09:00:00", "2024-01-05T09:00:00", "2024-01-06T09:00:00",
                                    "2024-01-10T09:00:00", "2024-01-11T09:00:00"}));
  EXPECT_EQ(Dates("Day"), TStrings{"2024-01-03T00:00:00"});
  EXPECT_EQ(Dates("Free"), (TStrings{"2024-01-01T09:00:00", "2024-01-03T09:00:00", "2024-01-05T09:00:00"}));
  EXPECT_EQ(Rows("SELECT Title || Freq FROM KT_Events ORDER BY 1"),
            (TStrings{"Day1", "Free0", "Free0", "Free0", "Set1"}));
  EXPECT_EQ(Remarks(report.Unused), "gone: all its dates are excluded\n");
  EXPECT_EQ(Remarks(report.Left_Out),
            "set: it excludes 2024-01-04T10:00:00, which is none of its dates\n"
            "free: its dates follow no rule; its 3 dates were written as single events\n");
  EXPECT_EQ(report.Occurrences, 9);
  EXPECT_EQ(Unsound_Rows(), 0);
}

TEST_F(Importing, Dates_That_Differ_From_Their_Rule) {
  const auto change = [](TLines lines) { return Event(lines); };
  const std::string alarm = "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-PT10M\r\nEND:VALARM";
  const auto report = Import(
      change({"UID:s", "SUMMARY:Set", "RECURRENCE-ID:20240102T090000", "DTSTART:20240102T150000"}) +
      Event({"UID:s", "SUMMARY:Set", "DTSTART:20240101T090000", "RRULE:FREQ=DAILY;COUNT=7"}) +
      change({"UID:s", "SUMMARY:Other", "RECURRENCE-ID:20240103T090000", "DTSTART:20240103T090000"}) +
      change({"UID:s", "SUMMARY:Set", "RECURRENCE-ID:20240104T080000Z", "DTSTART:20240104T080000Z",
              "STATUS:CANCELLED"}) +
      change({"UID:s", "SUMMARY:Set", "RECURRENCE-ID;RANGE=THISANDFUTURE:20240105T090000",
              "DTSTART:20240105T090000", alarm.c_str()}) +
      change({"UID:s", "SUMMARY:Set", "RECURRENCE-ID:20240120T090000", "DTSTART:20240121T090000"}) +
      change({"UID:s", "SUMMARY:Set", "RECURRENCE-ID:20240106T090000", "DTSTART:20240106T110000",
              "SEQUENCE:2"}) +
      change({"UID:s", "SUMMARY:Set", "RECURRENCE-ID:20240106T090000", "DTSTART:20240106T120000",
              "SEQUENCE:1"}) +
      change({"UID:orphan", "SUMMARY:Orphan", "RECURRENCE-ID:20240106T090000", "DTSTART:20240107T090000"}));
  EXPECT_EQ(Dates("Set"), (TStrings{"2024-01-01T09:00:00", "2024-01-02T15:00:00", "2024-01-05T09:00:00",
                                    "2024-01-06T11:00:00", "2024-01-07T09:00:00", "2024-01-21T09:00:00"}));
  EXPECT_EQ(Dates("Other"), TStrings{"2024-01-03T09:00:00"});
  EXPECT_EQ(Dates("Orphan"), TStrings{"2024-01-07T09:00:00"});
  EXPECT_EQ(Rows("SELECT Title || Freq || count(*) FROM KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key "
                 "GROUP BY e.Key ORDER BY 1"),
            (TStrings{"Orphan01", "Other01", "Set01", "Set15"}));
  EXPECT_EQ(Rows("SELECT EventDate || ' ' || Offset FROM KT_Alarms a JOIN KT_Events_Data d ON d.Key = a.Key"),
            TStrings{"45296.375 10"});
  EXPECT_EQ(Remarks(report.Unused), "s: another version of it counts\n");
  EXPECT_EQ(Remarks(report.Left_Out),
            "s: a change of a date and all later ones was applied to that date only\n"
            "s: it changes 2024-01-20T09:00:00, which is none of its dates; the change was written as an "
            "entry of its own\n");
  EXPECT_EQ(Unsound_Rows(), 0);
}

TEST_F(Importing, Several_Days) {
  const std::string alarm = "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-P1D\r\nEND:VALARM";
  const auto report =
      Import(Event({"UID:trip", "SUMMARY:Trip", "DTSTART;VALUE=DATE:20240228", "DTEND;VALUE=DATE:20240302",
                    alarm.c_str()}) +
             Event({"UID:week", "SUMMARY:Week", "DTSTART;VALUE=DATE:20240101", "DURATION:P2D",
                    "RRULE:FREQ=MONTHLY;COUNT=2"}) +
             Event({"UID:night", "SUMMARY:Night", "DTSTART:20240101T200000", "DTEND:20240103T080000"}));
  EXPECT_EQ(Dates("Trip"), (TStrings{"2024-02-28T00:00:00", "2024-02-29T00:00:00", "2024-03-01T00:00:00"}));
  EXPECT_EQ(Of("Trip", "Freq || Period || PeriodDefault || AllDay"), "1111");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Alarms"), 1);
  EXPECT_EQ(
      Query_Text("SELECT EventDate || ' ' || Offset FROM KT_Alarms a JOIN KT_Events_Data d ON d.Key = a.Key"),
      "45350.0 1440");
  EXPECT_EQ(Dates("Week"), (TStrings{"2024-01-01T00:00:00", "2024-01-02T00:00:00", "2024-02-01T00:00:00",
                                     "2024-02-02T00:00:00"}));
  EXPECT_EQ(Dates("Night"), TStrings{"2024-01-01T20:00:00"});
  EXPECT_EQ(report.Sets, 3);
  EXPECT_EQ(report.Occurrences, 8);
}

TEST_F(Importing, The_Earliest_Alarm_No_Later_Than_The_Start_Counts) {
  const struct {
    TLines Alarms;  // triggers
    const char* Offset;
    const char* Remark;
  } cases[] = {
      {{"TRIGGER:-PT15M"}, "15", ""},
      {{"TRIGGER:PT0S"}, "0", ""},
      {{"TRIGGER:-PT15M", "TRIGGER:-PT2H"}, "120", "one of two alarms was left out"},
      {{"TRIGGER:PT5M"}, "", "after the start"},
      {{"TRIGGER:-PT90S"}, "2", ""},
      {{"TRIGGER;RELATED=END:-PT90M"}, "30", ""},
      {{"TRIGGER;VALUE=DATE-TIME:20240105T080000Z"}, "60", ""},
      {{"TRIGGER:-P1W"}, "10080", ""},
      {{"TRIGGER:-PT5M\r\nREPEAT:3\r\nDURATION:PT1M"}, "5", "repetition"},
      {{"SUMMARY:none"}, "", "does not say when"},
      {{"TRIGGER:-P999999W"}, "", "hundred years"},
      {{"TRIGGER:-PT5M\r\nACTION:NONE"}, "", ""},
  };
  for (const auto& test : cases) {
    std::string alarms;
    for (const char* trigger : test.Alarms) alarms += Component("VALARM", {trigger});
    SCOPED_TRACE(alarms);
    const auto report = Import(Event({"UID:a", "SUMMARY:A", "DTSTART:20240105T100000",
                                      "DTEND:20240105T110000", alarms.substr(0, alarms.size() - 2).c_str()}));
    EXPECT_EQ(Query_Text("SELECT Offset FROM KT_Alarms"), test.Offset);
    EXPECT_EQ(report.Left_Out.size(), *test.Remark ? 1u : 0u) << Remarks(report.Left_Out);
    EXPECT_NE(Remarks(report.Left_Out).find(test.Remark), std::string::npos) << Remarks(report.Left_Out);
  }
  EXPECT_EQ(Query_Text("SELECT WAVFile || NextTime || Actioned FROM KT_Alarms"), "");
  Import(Event(
      {"UID:b", "SUMMARY:B", "DTSTART:20240105T100000", "BEGIN:VALARM", "TRIGGER:-PT1M", "END:VALARM"}));
  EXPECT_EQ(Query_Text("SELECT WAVFile || '|' || NextTime || Actioned || User FROM KT_Alarms"),
            "<Default Sound>|0.00" + User_Key());
}

TEST_F(Importing, Tasks) {
  const auto report =
      Import(Task({"UID:1", "SUMMARY:Open", "DUE:20240120T170000", "DTSTART:20240118T090000", "PRIORITY:1",
                   "BEGIN:VALARM", "TRIGGER;RELATED=END:-PT30M", "END:VALARM"}) +
             Task({"UID:2", "SUMMARY:Half", "DUE;VALUE=DATE:20240120", "PERCENT-COMPLETE:40"}) +
             Task({"UID:3", "SUMMARY:Done", "DTSTART;VALUE=DATE:20240110", "STATUS:COMPLETED",
                   "COMPLETED:20240111T233000Z", "BEGIN:VALARM", "TRIGGER:-PT60M", "END:VALARM"}) +
             Task({"UID:4", "SUMMARY:Off", "DUE;VALUE=DATE:20240120", "STATUS:CANCELLED",
                   "DTSTART;VALUE=DATE:20240125"}) +
             Task({"UID:5", "SUMMARY:Weekly", "DTSTART:20240101T090000", "DUE:20240103T090000",
                   "RRULE:FREQ=WEEKLY;COUNT=2"}) +
             Task({"UID:6", "SUMMARY:Sometime"}));
  EXPECT_EQ(Dates("Open"), TStrings{"2024-01-20T00:00:00"});
  EXPECT_EQ(Dates("Done"), TStrings{"2024-01-10T00:00:00"});
  EXPECT_EQ(Dates("Weekly"), (TStrings{"2024-01-03T00:00:00", "2024-01-10T00:00:00"}));
  const auto facts = [&](const char* title) {
    return Of(
        title,
        "EventType || ' ' || AllDay || ' ' || Status || ' ' || Percentage || ' ' || Completed || ' ' || "
        "CAST(FirstDate AS INTEGER) || ' ' || (SELECT group_concat(Actioned) FROM KT_Events_Data WHERE Event "
        "= KT_Events.Key)");
  };
  // Due at five in the afternoon, half an hour before which is 990 minutes after that day's midnight.
  EXPECT_EQ(Query_Text("SELECT Offset FROM KT_Alarms WHERE NOT Actioned"), "-990");
  EXPECT_EQ(facts("Open"), "3 1 0 0 0 45309 0");
  EXPECT_EQ(facts("Half"), "3 1 1 40 0 45311 0");
  EXPECT_EQ(facts("Done"), "3 1 2 100 45303 45301 1");
  EXPECT_EQ(facts("Off"), "3 1 5 0 0 45311 0");
  EXPECT_EQ(Query_Text("SELECT Offset FROM KT_Alarms WHERE Actioned"), "60");
  EXPECT_EQ(report.Tasks, 6);
  EXPECT_EQ(Remarks(report.Unused), "6: has no date\n");
}

TEST_F(Importing, What_Cannot_Be_Used_Is_Named) {
  const auto report =
      Import(Event({"UID:a", "SUMMARY:A", "DTSTART:20240101T090000", "STATUS:CANCELLED"}) +
             Component("VJOURNAL", {"UID:b"}) + Component("VFREEBUSY", {"SUMMARY:no uid"}) +
             Event({"UID:c", "SUMMARY:C"}) + Event({"SUMMARY:D", "DTSTART:20240231T090000"}) +
             Event({"UID:e", "SUMMARY:E1", "DTSTART:20240101T090000", "SEQUENCE:1"}) +
             Event({"UID:e", "SUMMARY:E2", "DTSTART:20240102T090000"}) +
             Event({"UID:f", "SUMMARY:F", "DTSTART:20240101T090000", "RRULE:FREQ=NEVER", "LOCATION:"}));
  EXPECT_EQ(Remarks(report.Unused),
            "b: is neither an event nor a task, but VJOURNAL\n"
            "no uid: is neither an event nor a task, but VFREEBUSY\n"
            "a: is cancelled\n"
            "c: has no start\n"
            "D: has no start\n"
            "e: another version of it counts\n");
  EXPECT_EQ(report.Read, 8);
  EXPECT_EQ(report.Events, 2);
  EXPECT_EQ(Rows("SELECT Title FROM KT_Events"), (TStrings{"E1", "F"}));
  ASSERT_EQ(report.Left_Out.size(), 1u) << Remarks(report.Left_Out);
  EXPECT_NE(report.Left_Out[0].Why.find("RRULE"), std::string::npos);
}

constexpr auto Alarm_Lines = "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-PT10M\r\nEND:VALARM";

TEST_F(Importing, A_Second_Import_Changes_Nothing_And_A_Changed_Event_Replaces) {
  const auto text = [](const char* title, const char* stamp) {
    return Event({"UID:set", (std::string("SUMMARY:") + title).c_str(), stamp, "DTSTART:20240101T090000",
                  "RRULE:FREQ=DAILY;COUNT=4", "EXDATE:20240102T090000", Alarm_Lines}) +
           Event({"SUMMARY:No UID", "DTSTART:20240101T090000"}) +
           Task({"UID:task", "SUMMARY:Task", "DUE;VALUE=DATE:20240101"}) +
           Event({"UID:gone", "DTSTART:20240101T090000", "EXDATE:20240101T090000"});
  };
  EXPECT_EQ(Import(text("Old", "DTSTAMP:20240101T000000Z")).Unchanged, 0);
  const std::string before = Dump();
  const auto second = Import(text("Old", "DTSTAMP:20240109T000000Z"));
  EXPECT_EQ(Dump(), before);
  EXPECT_EQ(second.Unchanged, 3);
  EXPECT_EQ(second.Sets + second.Events + second.Tasks + second.Replaced, 0);

  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate = 45294.375");  // 3 January, 9:00
  const auto third = Import(text("New", "DTSTAMP:20240109T000000Z"));
  EXPECT_EQ(third.Unchanged, 2);
  EXPECT_EQ(third.Replaced, 1);
  EXPECT_EQ(Dates("Old"), TStrings{});
  EXPECT_EQ(Dates("New"), (TStrings{"2024-01-01T09:00:00", "2024-01-03T09:00:00", "2024-01-04T09:00:00"}));
  EXPECT_EQ(Rows("SELECT EventDate || d.Actioned || a.Actioned FROM KT_Events_Data d JOIN KT_Alarms a ON "
                 "a.Key = d.Key ORDER BY 1"),
            (TStrings{"45292.37500", "45294.37511", "45295.37500"}));
  EXPECT_EQ(Unsound_Rows(), 0);

  // What the user completed, or deleted, stays so.
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate = 45292.0");
  Run_Sql("UPDATE KT_Events SET Status = 2, Completed = 45290 WHERE EventType = 3");
  Import(Task({"UID:task", "SUMMARY:Task", "DUE;VALUE=DATE:20240101", "PRIORITY:1"}));
  EXPECT_EQ(Of("Task", "Status || Percentage || Completed || Priority"), "2100452901");
  Run_Sql("DELETE FROM KT_Events_Data WHERE Event IN (SELECT Key FROM KT_Events WHERE EventType = 3)");
  Run_Sql("DELETE FROM KT_Events WHERE EventType = 3");
  m_Database.Reopen();
  Import(Task({"UID:task", "SUMMARY:Task", "DUE;VALUE=DATE:20240101", "PRIORITY:1"}));
  EXPECT_EQ(Dates("Task"), TStrings{});

  // Cancelled now: what it brought goes.
  const auto cancelled =
      Import(Event({"UID:set", "SUMMARY:New", "DTSTART:20240101T090000", "STATUS:CANCELLED"}));
  EXPECT_EQ(cancelled.Replaced, 1);
  EXPECT_EQ(Dates("New"), TStrings{});
  EXPECT_EQ(Unsound_Rows(), 0);
}

TEST_F(Importing, Another_Last_Day_Is_A_Change) {
  const std::string text = Event({"UID:a", "SUMMARY:A", "DTSTART:20240101T090000", "RRULE:FREQ=YEARLY"});
  Import(text);
  EXPECT_EQ(Dates("A").size(), 11u);
  m_Seams.Clock.Value += 400;
  EXPECT_EQ(Import(text).Unchanged, 1);
  m_Options.Has_Until = true;
  m_Options.Until = Encode_Date(2026, 6, 1);
  EXPECT_EQ(Import(text).Replaced, 1);
  EXPECT_EQ(Dates("A").size(), 3u);
  EXPECT_EQ(Import(text).Unchanged, 1);
}

}  // namespace
