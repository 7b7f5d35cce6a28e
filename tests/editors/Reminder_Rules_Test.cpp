#include "Reminder_Rules.h"

#include "Test_Events.h"

namespace {

struct Reminder_Rules : TDatabase_Test {
  Reminder_Rules() { CurrentDate = Monday; }

  /// A daily set with alarms; the key of the one in the middle.
  static std::string Make(int days, double first = Monday + 0.5) {
    TNew_Event event = New_Event("Old", first, days);
    event.Alarm = {true, 30, "", 0};
    Write(event);
    return Query_Text("SELECT Key FROM KT_Events_Data ORDER BY EventDate LIMIT 1 OFFSET " +
                      std::to_string(days / 2));
  }
  bool Open(TReminder_Rules& rules, const std::string& key, const std::string& subject = {}) const {
    return rules.Open(key, {database.Book().Key, {}}, subject, false);
  }
  void Open_Set(TReminder_Rules& rules, const std::string& key) const {
    ASSERT_TRUE(Open(rules, key));
    rules.Open_Whole_Set();
    EXPECT_EQ(rules.Day, Monday) << "the first date, whichever was clicked";
  }
  // Validates, asks whether the dates change, and saves.
  static std::string Save(TReminder_Rules& rules) {
    const TRefusal refusal = rules.Validate();
    if (!refusal.Empty()) return refusal.Caption + "/" + refusal.Control;
    const bool changed = rules.Check_If_Recurrence_Changed();
    return !rules.Process_Update() ? "failed" : changed ? "rewritten" : "saved";
  }
};

TEST_F(Reminder_Rules, A_New_Event_Stands_On_A_Temporary_Row_And_Becomes_A_Real_One) {
  TReminder_Rules rules;
  ASSERT_TRUE(Open(rules, "", "Lunch"));
  EXPECT_EQ(Counts(), "1 1 0 +1");
  EXPECT_TRUE(rules.Is_New() && !rules.Read_Only() && rules.May_Change_Privacy());
  EXPECT_EQ(rules.Subject, "Lunch");
  EXPECT_EQ(rules.Day, 45306);
  EXPECT_EQ(rules.Time_Text, "1:00 PM") << "the next full hour";
  rules.Location = "Canteen";
  rules.Notes = "Bring money";
  rules.Priority = 2;
  rules.Private = true;
  rules.Journal = true;
  rules.Activity = 7;
  rules.Alarm = {true, 0, "<Standard Beep>", 0};
  rules.Alarm_Text = "2 h";
  rules.Time_Text = "2:30 pm";
  EXPECT_EQ(Save(rules), "saved");
  EXPECT_EQ(rules.Alarm_Text, "2 hours before");
  rules.Discard();
  EXPECT_EQ(
      Query_Rows("Title, Location, Priority, Private, AllDay, Freq, Type, CAST(Notes AS TEXT), FirstDate = "
                 "LastDate",
                 "KT_Events"),
      "Lunch|Canteen|2|1|0|0|7|Bring money|1");
  EXPECT_EQ(Query_Rows("Offset, WAVFile, NextTime, Actioned", "KT_Alarms"), "120|<Standard Beep>|0.0|0");
  EXPECT_EQ(Counts(), "1 1 1");
  EXPECT_EQ(Dates(), "0.604");
  TReminder_Rules next;
  ASSERT_TRUE(Open(next, ""));
  EXPECT_TRUE(next.Journal && next.Activity == 7) << "the journal options are remembered";
  next.Discard();
  EXPECT_EQ(Counts(), "1 1 1") << "cancel leaves nothing behind";
}

TEST_F(Reminder_Rules, A_New_Event_Late_In_The_Evening_Begins_At_Midnight_But_Not_In_The_Past) {
  seams.Clock.Value = Monday + 23.5 / 24;
  for (const auto& [shown, begins] : {std::pair(Monday, Monday + 1), {Monday + 5, Monday + 5}}) {
    CurrentDate = shown;
    TReminder_Rules rules;
    ASSERT_TRUE(Open(rules, ""));
    EXPECT_EQ(rules.Shown_Moment(), begins);
    rules.Discard();
  }
}

TEST_F(Reminder_Rules, A_New_Event_Has_The_Reminder_That_The_User_Prefers) {
  const std::string stored = Make(1);
  for (const auto& [minutes, on, text] : {std::tuple(120, true, "2 hours before"),
                                          {-1, false, "15 minutes before"},
                                          {999'999'999, false, "15 minutes before"}}) {
    Write_New_Reminder(minutes);
    TReminder_Rules rules;
    ASSERT_TRUE(Open(rules, ""));
    EXPECT_EQ(rules.Alarm.On, on);
    EXPECT_EQ(rules.Alarm_Text, text);
    rules.Discard();
    ASSERT_TRUE(Open(rules, stored));
    EXPECT_EQ(rules.Alarm.Offset, 30) << "a stored one keeps its own";
  }
}

TEST_F(Reminder_Rules, Inputs_Are_Refused_In_Their_Order_And_Nothing_Is_Written) {
  TReminder_Rules rules;
  ASSERT_TRUE(Open(rules, "", " \t "));
  rules.Time_Text = "noon";
  rules.Alarm.On = true;
  rules.Alarm_Text = "soon";
  rules.Owner.clear();
  rules.Set_Recurring(true);
  rules.Pages.Daily_Number = "x";
  EXPECT_EQ(Save(rules), "Validation Failed/Edit1");
  rules.Subject = "Lunch";
  EXPECT_EQ(Save(rules), "Invalid Date/SetTimeBox");
  rules.No_Time = true;
  EXPECT_EQ(Save(rules), "Invalid Reminder Specified/AlarmBox");
  rules.Alarm_Text = "5";
  EXPECT_EQ(Save(rules), "User's Name Required/UserBox");
  rules.Owner = User_Key();
  EXPECT_EQ(Save(rules), "Invalid Period/DailyNumber");
  rules.Pages.Daily_Number = "1";
  rules.Pages.Until = 45308;
  EXPECT_EQ(Save(rules), "saved");
  EXPECT_EQ(Counts(), "1 3 3");
  EXPECT_EQ(Dates(), "0.0 1.0 2.0") << "no time: the days alone";
}

TEST_F(Reminder_Rules, One_Occurrence_Changes_Alone_But_For_What_Belongs_To_The_Set) {
  const std::string key = Make(5);
  TReminder_Rules rules;
  ASSERT_TRUE(Open(rules, key));
  EXPECT_TRUE(rules.Belongs_To_Set() && rules.Mode() == TEditor_Mode::Single_Occurrence &&
              !rules.May_Change_Privacy());
  EXPECT_EQ(rules.Day, 45308);
  rules.Subject = "New";
  rules.Day = 45320;
  rules.Alarm.On = false;
  EXPECT_EQ(Save(rules), "saved");
  EXPECT_EQ(Dates(), "0.5 1.5 3.5 4.5 14.5");
  EXPECT_EQ(Counts(), "1 5 4");
  EXPECT_EQ(Query_Rows("Title, Freq, FirstDate - 45306, LastDate - 45306", "KT_Events"), "New|1|0.5|4.5");
}

TEST_F(Reminder_Rules, A_Whole_Set_Is_Written_Anew_Only_When_Its_Dates_Or_Alarms_Change) {
  const std::string key = Make(5);
  const std::string keys = Query_Rows("Key", "KT_Events_Data");
  {
    TReminder_Rules rules;
    Open_Set(rules, key);
    rules.Subject = "New";
    EXPECT_EQ(Save(rules), "saved");
    EXPECT_EQ(Dates(), "0.5 1.5 2.5 3.5 4.5");
    EXPECT_EQ(Query_Rows("Key", "KT_Events_Data"), keys);
  }
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate < 45307");
  {
    TReminder_Rules rules;
    Open_Set(rules, key);
    rules.Pages.Daily_Number = "2";
    EXPECT_EQ(Save(rules), "rewritten");
    EXPECT_EQ(Dates(), "0.5 2.5 4.5") << "outstanding throughout";
    EXPECT_EQ(Counts(), "1 3 3");
    EXPECT_EQ(Query_Text("SELECT Key FROM KT_Events_Data ORDER BY EventDate"), key)
        << "the clicked row is the first date now";
  }
  for (const auto change : {+[](TReminder_Rules& rules) { rules.Alarm.On = false; },
                            +[](TReminder_Rules& rules) { rules.Alarm.On = true, rules.Alarm_Text = "7"; },
                            +[](TReminder_Rules& rules) { rules.Alarm.WAVFile = "other.wav"; },
                            +[](TReminder_Rules& rules) { rules.Pages.Until += 1; },
                            +[](TReminder_Rules& rules) { rules.Time_Text = "1:15 PM"; },
                            +[](TReminder_Rules& rules) { rules.Pages.Freq = TFrequency::Weekly; }}) {
    TReminder_Rules rules;
    Open_Set(rules, key);
    change(rules);
    EXPECT_EQ(Save(rules), "rewritten");
    rules.Location += "Canteen";
    EXPECT_EQ(Save(rules), "saved") << "has not changed since";
  }
}

TEST_F(Reminder_Rules, Seconds_That_The_Time_Does_Not_Show_Are_No_Change) {
  const std::string key = Make(3, Monday + 0.5 + 30.0 / 86400);
  const std::string before = Query_Rows("EventDate", "KT_Events_Data ORDER BY EventDate");
  for (const bool whole : {false, true}) {
    TReminder_Rules rules;
    ASSERT_TRUE(Open(rules, key));
    if (whole) rules.Open_Whole_Set();
    EXPECT_EQ(Save(rules), "saved");
    EXPECT_EQ(Query_Rows("EventDate", "KT_Events_Data ORDER BY EventDate"), before);
  }
}

TEST_F(Reminder_Rules, A_New_Set_Of_Each_Frequency_Has_Its_Dates) {
  const char* const dates[] = {"0.0 1.0", "0.0 7.0", "0.0 31.0", "0.0 366.0"};
  for (int freq = 1; const int days : {1, 8, 40, 400}) {
    TReminder_Rules rules;
    ASSERT_TRUE(Open(rules, "", "Set"));
    rules.No_Time = true;
    rules.Set_Recurring(true);
    rules.Pages.Freq = static_cast<TFrequency>(freq);
    rules.Pages.Until = Monday + days;
    EXPECT_EQ(Save(rules), "saved");
    EXPECT_EQ(Dates(), dates[freq++ - 1]);
    EXPECT_EQ(rules.Occurrences_To_Write(10), 2);
    EXPECT_EQ(rules.Occurrences_To_Write(0), 1) << "counted no further";
    Run_Sql("DELETE FROM KT_Events_Data; DELETE FROM KT_Events");
  }
}

TEST_F(Reminder_Rules, A_Set_Is_Proposed_From_The_Date_When_It_Is_First_Made) {
  TReminder_Rules rules;
  ASSERT_TRUE(Open(rules, "", "Set"));
  rules.Day = 45400;
  rules.Set_Recurring(true);
  EXPECT_EQ(rules.Pages.Until, 45400 + 365);
  rules.Pages.Weekly_Number = "3";
  rules.Set_Recurring(false);
  rules.Set_Recurring(true);
  EXPECT_EQ(rules.Pages.Weekly_Number, "3") << "what was typed comes back";
  TReminder_Rules last;
  ASSERT_TRUE(Open(last, "", "Set"));
  last.Day = Encode_Date(9999, 6, 1);
  last.Set_Recurring(true);
  EXPECT_EQ(last.Pages.Until, last.Day) << "there is no year after it";
}

TEST_F(Reminder_Rules, A_Failure_Reports_Once_With_Its_Tag_And_Changes_Nothing) {
  constexpr auto saving = "fm_Reminders:Process_Update:1 [KT_Events/KT_Events_Data/KT_Alarms]";
  TReminder_Rules rules, homeless;
  Open_Set(rules, Make(5));
  rules.Pages.Daily_Number = "2";
  const std::string before = Dates();
  Plant("INSERT ON KT_Events_Data");
  seams.Prompts.Expect_Undone("planted fault", saving);
  EXPECT_EQ(Save(rules), "failed");
  EXPECT_EQ(Dates(), before);
  Plant("DELETE ON KT_Alarms");
  seams.Prompts.Expect_Undone("planted fault", "fm_Reminder:Clear_Out:1 [KT_Events_Data/KT_Alarms]");
  EXPECT_EQ(Save(rules), "failed");
  EXPECT_EQ(Dates(), before);
  Unplant();
  EXPECT_EQ(Save(rules), "rewritten") << "the same record can be saved once the fault is gone";

  ASSERT_TRUE(homeless.Open({}, {"removed by another program", database.Book().Calendar}, "Lunch", false));
  seams.Prompts.Expect_Undone("the book has been removed meanwhile", saving);
  EXPECT_EQ(Save(homeless), "failed");
  homeless.Discard();
  EXPECT_EQ(Counts(), "1 3 3");
}

TEST_F(Reminder_Rules, Rights_Decide_What_May_Be_Opened_Changed_And_Given_Away_With_All_Alarms) {
  std::string anna, bert;
  const std::string key = Make(40);
  In_Update([&] {
    anna = Create_User("Anna", false);
    bert = Create_User("Bert", false);
    Set_Rights(database.Book().Key, anna, {.Update = true, .See = true});
    Set_Rights(database.Book().Key, bert, {.Create = true, .See = true});
  });
  Set_User_Key(anna);
  TReminder_Rules annas;
  ASSERT_TRUE(Open(annas, "", "x"));
  EXPECT_EQ(annas.Check_Right().Text,
            "Request denied as you do not have the required permission for \"Home\"")
      << "a calendar's event asks for right 1";
  annas.Owner = bert;
  EXPECT_EQ(annas.Validate().Caption, "Access Permission Error");
  annas.Discard();
  Set_User_Key(bert);
  TReminder_Rules berts, stored;
  ASSERT_TRUE(Open(berts, "", "x"));
  EXPECT_TRUE(berts.Check_Right().Empty());
  EXPECT_EQ(Save(berts), "saved") << "to create one's own is enough";
  ASSERT_TRUE(Open(stored, key));
  EXPECT_TRUE(stored.Read_Only()) << "no right to update";
  EXPECT_EQ(stored.Users().size(), 2u);
  In_Update([&] { Set_User_Key(Create_User("Carl", true)); });
  TReminder_Rules carls;
  Open_Set(carls, key);
  carls.Owner = anna;
  EXPECT_EQ(Save(carls), "saved");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Alarms WHERE User = '" + anna + "'"), 40);
}

TEST_F(Reminder_Rules, What_Was_Put_Off_While_It_Is_Edited_Stays_So_Unless_It_Is_Moved) {
  const std::string key = Make(1, Monday + 0.75);
  const auto due = [] {
    return Query_Rows("a.NextTime > 0, round((d.Due - 45306) * 48), Dismissed",
                      "KT_Alarms a JOIN KT_Alerts d ON d.Occurrence = a.Key");
  };
  TReminder_Rules kept, moved;
  ASSERT_TRUE(Open(kept, key) && Open(moved, key));
  seams.Clock.Value = Monday + 0.75;
  In_Update([&] {
    TTable alarms(Alarms_Table, "Key");
    ASSERT_TRUE(alarms.FindKey({key}));
    alarms.Edit();
    alarms.Set(alarms.Field("NextTime"), Monday + 20.0 / 24);
    PostUpdate(alarms);
  });
  kept.Subject = "New";
  EXPECT_EQ(Save(kept), "saved");
  EXPECT_EQ(due(), "1|40.0|0");
  moved.Time_Text = "9:00 pm";
  EXPECT_EQ(Save(moved), "saved");
  EXPECT_EQ(due(), "0|41.0|0");
}

TEST_F(Reminder_Rules, Done_And_Private_Entries_Are_Read_Only_And_What_Is_Gone_Does_Not_Open) {
  const std::string key = Make(1);
  TReminder_Rules hidden, done, gone;
  ASSERT_TRUE(hidden.Open(key, {database.Book().Key, {}}, {}, true));
  EXPECT_TRUE(hidden.Read_Only() && hidden.No_Contact());
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1");
  ASSERT_TRUE(Open(done, key));
  EXPECT_TRUE(done.Read_Only());
  EXPECT_FALSE(Open(gone, "no such occurrence"));
}

TEST_F(Reminder_Rules, A_Refused_Database_Opens_No_New_Entry_And_Saves_Nothing) {
  const std::string key = Make(1);
  database.Reopen_Read_Only();
  TReminder_Rules fresh, stored;
  EXPECT_FALSE(Open(fresh, ""));
  ASSERT_TRUE(Open(stored, key));
  stored.Subject = "New";
  EXPECT_EQ(Save(stored), "failed");
  EXPECT_EQ(seams.Prompts.Notices.size(), 2u) << "the user is told why, each time";
}

TEST_F(Reminder_Rules, What_A_Dead_Editor_Left_Is_Removed_At_The_Next_Start) {
  const std::string kept = Make(1);
  {
    TReminder_Rules fresh, stored;
    ASSERT_TRUE(Open(fresh, "", "typed but never saved") && Open(stored, kept));
    stored.Subject = "half a tho";
  }
  EXPECT_EQ(Counts(), "2 2 1 +1");
  database.Reopen();
  Remove_Abandoned_Events();
  EXPECT_EQ(Counts(), "1 1 1");
  EXPECT_EQ(Query_Rows("Title, d.Key", "KT_Events, KT_Events_Data d"), "Old|" + kept);
}

}  // namespace
