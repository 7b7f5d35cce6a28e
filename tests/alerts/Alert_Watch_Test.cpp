#include "Alert_Fixture.h"
#include "Event_Rows.h"
#include "Marking.h"

namespace {

using Alert_Watch_Test = TAlert_Test;

TEST_F(Alert_Watch_Test, Each_Goes_Off_At_Its_Moment_Until_It_Is_Answered) {
  Add("Tea", 10, 0, 15);
  Add("Past", 8, 10, 15);  // was over when it was written
  TNew_Event task = New_Event("Task", Monday + 1);
  task.Record.EventType = TEntry_Type::Task;
  task.Record.AllDay = true;
  task.Alarm.On = true;
  task.Alarm.Offset = 14 * 60;  // 10:00 on the day before
  Write(task);
  Add("Silent", 9, 50, 15);
  Run_Sql("UPDATE KT_Alarms SET User = 'somebody'; UPDATE KT_Alarms SET User = '" + User_Key() + "'");
  EXPECT_EQ(Look(), " | ");
  EXPECT_EQ(Look(), "-") << "no news";
  At(9, 34);
  EXPECT_EQ(Look(), "-");
  EXPECT_LE(watch->Wait(), 5000);
  At(9, 35);
  EXPECT_EQ(Look(), "Silent | Silent");
  At(9, 45);
  EXPECT_EQ(Look(), "Silent, Tea | Tea");
  EXPECT_EQ(Look_After_Restart(), "Silent, Tea | Silent, Tea") << "unanswered, so not lost";
  EXPECT_TRUE(TAlert_Watch::Dismiss({Shown()[0]}));
  EXPECT_EQ(Look(), "Tea | ");
  At(10, 0);
  EXPECT_EQ(Look_After_Restart(), "Tea, Task | Tea, Task");
  EXPECT_TRUE(TAlert_Watch::Put_Off({Shown()[0]}, 20));
  EXPECT_EQ(Look(), "Task | ");
  EXPECT_EQ(Query_Text("SELECT count(*) FROM KT_Alarms WHERE NextTime > 0"), "1");
  At(10, 19);
  EXPECT_EQ(Look_After_Restart(), "Task | Task");
  At(10, 20);
  EXPECT_EQ(Look(), "Task, Tea | Tea");
  EXPECT_TRUE(TAlert_Watch::Mark_Done(Shown()[0]));
  EXPECT_TRUE(TAlert_Watch::Dismiss({Shown()[1]}));
  EXPECT_EQ(Look_After_Restart(), " | ");
  Mark_Occurrence(
      Query_Text("SELECT Key FROM KT_Events_Data WHERE EventDate = " + std::to_string(Monday + 1)), false);
  EXPECT_EQ(Look(), " | ") << "an answer holds";
  const std::string early = Add("Early", 11, 0, 0), snoozed = Add("Snoozed", 10, 30, 0);
  At(10, 30);
  EXPECT_EQ(Look(), "Snoozed | Snoozed");
  EXPECT_TRUE(TAlert_Watch::Put_Off(Shown(), 20));
  Mark_Occurrence(snoozed, true);
  EXPECT_EQ(Query_Text("SELECT count(*) FROM KT_Alarms WHERE NextTime > 0"), "0");
  Mark_Occurrence(snoozed, false);
  Mark_Occurrence(early, true);
  At(11, 0);
  EXPECT_EQ(Look(), " | ") << "done before it was due";
  EXPECT_EQ(Query_Text("SELECT count(*) FROM KT_Alerts WHERE NOT Dismissed AND Due <= " +
                       std::to_string(seams.Clock.Value)),
            "0");
}

TEST_F(Alert_Watch_Test, What_Happens_To_The_Event_Meanwhile_Counts) {
  const std::string moved = Add("Moved", 9, 0, 0), gone = Add("Gone", 9, 0, 0), done = Add("Done", 9, 0, 0),
                    later = Add("Later", 9, 0, 0), kept = Add("Kept", 9, 0, 0, 3);
  At(9, 0);
  EXPECT_EQ(Look().size(), 2 * std::string("Moved, Gone, Done, Later, Kept").size() + 3);
  const std::vector<TAlert_Entry> shown = Shown();
  In_Update([&] {
    auto rows = *Find_Occurrence(gone);
    Delete_Event(rows);
  });
  Mark_Occurrence(done, true);
  Move(moved, 9, 30);
  EXPECT_EQ(Look(), "Later, Kept | ");
  // An answer to what was shown before does not reach what it was moved to, and one to what is gone nobody.
  EXPECT_TRUE(TAlert_Watch::Dismiss(shown));
  EXPECT_TRUE(TAlert_Watch::Put_Off({shown[1]}, 5));
  At(9, 30);
  EXPECT_EQ(Look(), "Moved | Moved");
  EXPECT_TRUE(TAlert_Watch::Put_Off(Shown(), 60));
  const auto before = Shown();
  Move(moved, 9, 45);
  EXPECT_TRUE(TAlert_Watch::Put_Off(before, 5)) << "an answer to what is not due any more";
  EXPECT_EQ(Query_Text("SELECT count(*) FROM KT_Alarms WHERE NextTime <> 0"), "0");
  In_Update([&] {
    Write_Alarm_Users(Query_Text("SELECT Event FROM KT_Events_Data WHERE Key = '" + moved + "'"), User_Key());
  });
  At(9, 45);
  EXPECT_EQ(Look(), "Moved | Moved") << "what was put off and is moved goes off at its new time";
  EXPECT_TRUE(TAlert_Watch::Dismiss(Shown()));
  Move(moved, 9, 40);
  EXPECT_EQ(Look(), " | ") << "into the past";
  // What was put off waits for that, though its event is moved or its alarm made earlier, all in the past.
  const std::string soon = Add("Soon", 10, 5, 15);
  At(9, 51);
  EXPECT_EQ(Look(), "Soon | Soon");
  EXPECT_TRUE(TAlert_Watch::Put_Off(Shown(), 10));
  At(9, 52);
  Move(soon, 10, 6);
  Change(Alarms_Table, soon, Alarm_Columns().Offset, 60);
  EXPECT_EQ(Look(), " | ");
  At(10, 2);
  EXPECT_EQ(Look(), "Soon | Soon");
  Move(soon, 10, 7);
  EXPECT_EQ(Look(), " | ") << "it was over";
  // A change that does not move it leaves the answer.
  Run_Sql("UPDATE KT_Alarms SET WAVFile = ''");
  Change(Alarms_Table, later, Alarm_Columns().WAVFile, "x.wav");
  Change(Alarms_Table, later, Alarm_Columns().Offset, 0);
  EXPECT_EQ(Look(), " | ");
  seams.Clock.Value = Monday + 2 + 9 * 60 * Minute;
  EXPECT_EQ(Look(), "Kept, Kept | Kept, Kept") << "each date of a set by itself, also after days";
  In_Update([&] {
    TTable contacts(Contacts_Table, "Key");
    ASSERT_TRUE(contacts.FindKey({database.Book().Calendar}));
    contacts.Edit();
    contacts.Set(contacts.Field("Deleted"), true);
    PostUpdate(contacts);
  });
  EXPECT_EQ(Look(), " | ");
}

TEST_F(Alert_Watch_Test, A_Clock_That_Is_Changed_Neither_Loses_Nor_Repeats) {
  const std::string early = Add("Early", 9, 0, 0), late = Add("Late", 12, 0, 0);
  At(13, 0);
  EXPECT_EQ(Look(), "Early, Late | Early, Late");
  EXPECT_TRUE(TAlert_Watch::Dismiss({Shown()[0]}));
  At(11, 30);
  EXPECT_EQ(Look(), "Late | ") << "is still unanswered, as in the hour that comes twice";
  Add("Between", 11, 45, 0);
  EXPECT_EQ(Look(), "Late | ");
  At(11, 45);
  EXPECT_EQ(Look(), "Between, Late | Between");
  EXPECT_TRUE(TAlert_Watch::Dismiss({Shown()[0]}));
  At(-13, 1);
  EXPECT_EQ(Look(), "Late | ") << "the longest journey to the west";
  At(-14, 0);
  for (const std::string& key : {early, late}) Mark_Occurrence(key, true), Mark_Occurrence(key, false);
  EXPECT_EQ(Look(), " | ") << "not due after all";
  At(9, 0);
  EXPECT_EQ(Look(), "-") << "was answered";
  At(12, 0);
  EXPECT_EQ(Look(), "Late | Late");
}

TEST_F(Alert_Watch_Test, One_Program_Shows_Them_For_Each_User_And_Nobody_Those_Of_Others) {
  Add("Tea", 9, 0, 0);
  At(9, 0);
  EXPECT_EQ(Look(), "Tea | Tea");
  auto second = std::make_unique<TAlert_Watch>();
  EXPECT_EQ(Look(*second), "-");
  EXPECT_TRUE(second->Is_Elsewhere());
  watch.reset();
  EXPECT_EQ(Look(*second), "Tea | Tea") << "takes over";
  const std::string owner = User_Key();
  In_Update([&] {
    Create_User("Ann", true);
    Set_User_Key(Create_User("Bob", false));
  });
  EXPECT_EQ(Look_After_Restart(), " | ") << "another user's own";
  Run_Sql("UPDATE KT_Alerts SET User = '" + User_Key() + "'");
  EXPECT_EQ(Look_After_Restart(), " | ") << "no right to see it";
  In_Update([&] { Set_Rights(database.Book().Key, Global_User, {.See = true}); });
  EXPECT_EQ(Look_After_Restart(), "Tea | Tea");
  EXPECT_FALSE(Shown()[0].May_Change);
  EXPECT_TRUE(TAlert_Watch::Mark_Done(Shown()[0]))
      << "nothing to try again, as when the right was taken away meanwhile";
  EXPECT_EQ(seams.Prompts.Notices,
            std::vector<std::string>{"\"Tea\" cannot be marked as done: you may not change it."});
  EXPECT_EQ(Dates(), "0.375");
  ASSERT_TRUE(Start_Update());
  At(9, 1);
  EXPECT_EQ(Look_After_Restart(), "-") << "not while something is being written";
  EndUpdate();
}

TEST_F(Alert_Watch_Test, Texts) {
  TAlert_Entry entry;
  entry.EventDate = Monday + 10.0 / 24;
  const auto at = [&](double minutes) { return Lateness_Text(entry, entry.EventDate + minutes * Minute); };
  EXPECT_EQ(
      at(-15) + ", " + at(-0.5) + ", " + at(0) + ", " + at(0.5) + ", " + at(1) + ", " + at(119) + ", " +
          at(121) + ", " + at(3000) + ", " + at(-2880),
      "in 15 minutes, in 1 minute, now, now, 1 minute late, 119 minutes late, 2 hours late, 2 days late, "
      "in 2 days");
  entry.Timeless = true;
  EXPECT_EQ(at(0) + ", " + at(-1440) + ", " + at(-2880) + ", " + at(1440),
            "today, tomorrow, in 2 days, 1 day late");
  std::string read;
  for (const char* text :
       {"5", "20 m", " 2 Hours ", "1 day", "2 weeks", "0", "-5", "soon", "5 x", "", "9999 w"})
    read += std::to_string(Delay_From_Text(text).value_or(-1)) + " ";
  EXPECT_EQ(read, "5 20 120 1440 20160 -1 -1 -1 -1 -1 -1 ");
  std::string usual;
  for (const int delay : Usual_Delays()) {
    EXPECT_EQ(Delay_From_Text(Delay_Text(delay)), delay);
    usual += Delay_Text(delay) + ", ";
  }
  EXPECT_EQ(
      usual,
      "5 minutes, 10 minutes, 15 minutes, 30 minutes, 1 hour, 2 hours, 4 hours, 1 day, 2 days, 7 days, ");
}

}  // namespace
