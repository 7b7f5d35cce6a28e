#include "Task_Rules.h"

#include "Test_Events.h"

namespace {

struct Task_Rules : TDatabase_Test {
  Task_Rules() { CurrentDate = 45310; }
  bool Open(TTask_Rules& rules, const std::string& key = {}) {
    return rules.Open(key, {database.Book().Key, {}}, "Report", false);
  }
  static std::string Shown(const TTask_Rules& rules) {
    const auto day = [](bool visible, TDateTime date) {
      return visible ? std::to_string(static_cast<int>(date)) : "-";
    };
    return std::to_string(static_cast<int>(rules.Status)) + " " + rules.Percentage_Text + " " +
           day(rules.Started_Visible(), rules.Started) + " " +
           day(rules.Completed_Visible(), rules.Completed);
  }
};

TEST_F(Task_Rules, Status_Percentage_And_Dates_Go_Together) {
  TTask_Rules rules;
  ASSERT_TRUE(Open(rules));
  const auto choose = [&](int status) {
    rules.Status = static_cast<TTask_Status>(status);
    rules.Set_Status();
    return Shown(rules);
  };
  const auto type = [&](const char* percentage) {
    rules.Percentage_Text = percentage;
    rules.Percentage_Changed();
    return Shown(rules);
  };
  EXPECT_EQ(choose(0), "0 0 - -");
  EXPECT_EQ(choose(3), "3 0 - -") << "pending, not started";
  EXPECT_EQ(choose(1), "1 0 45306 -");
  EXPECT_EQ(choose(4), "4 0 45306 -") << "postponed after it was started";
  EXPECT_EQ(choose(2), "2 100 45306 45306");
  EXPECT_EQ(choose(5), "5 100 45306 -");
  EXPECT_EQ(type("40"), "1 40 45306 -");
  EXPECT_EQ(type("0"), "0 0 - -");
  EXPECT_EQ(rules.Started, 0) << "forgotten";
  EXPECT_EQ(type("100"), "2 100 45306 45306");
  EXPECT_EQ(type(""), "2  45306 45306") << "half-typed numbers change nothing";
  rules.Started = 45300;
  EXPECT_EQ(choose(2), "2 100 45300 45306") << "a date that is set stays";
  EXPECT_TRUE(rules.Percentage_Enabled());
  choose(3);
  EXPECT_FALSE(rules.Percentage_Enabled());
  rules.Percentage_Text = "x";
  EXPECT_EQ(choose(4), "4 0 45300 -") << "what is no number is not left where it cannot be mended";
  rules.Budget_Text = "10";
  rules.Worked_Text = "2.5";
  EXPECT_EQ(rules.Remaining_Text(), "7.50");
  rules.Worked_Text = "2.";
  EXPECT_NO_THROW(rules.Remaining_Text());
  Install_Locale("de_DE");
  rules.Worked_Text = "2,5";
  EXPECT_EQ(rules.Remaining_Text(), "7,50");
  rules.Discard();
}

TEST_F(Task_Rules, Is_Saved_And_Loaded_Again) {
  TTask_Rules rules;
  ASSERT_TRUE(Open(rules));
  EXPECT_EQ(rules.Day, 45310);
  EXPECT_EQ(rules.Alarm_Day, 45309);
  EXPECT_EQ(rules.Alarm_Time_Text, "8:00 AM") << "proposed for the day before";
  rules.Start_Day = 45305;
  rules.Status = TTask_Status::In_Progress;
  rules.Set_Status();
  rules.Percentage_Text = "30";
  rules.Budget_Text = "12.25";
  rules.Worked_Text = "3";
  rules.Alarm.On = true;
  rules.Alarm_Time_Text = "9:30 AM";
  ASSERT_TRUE(rules.Validate().Empty());
  ASSERT_TRUE(rules.Process_Update());
  EXPECT_EQ(Query_Rows("Title, FirstDate, EventType, Started, Completed, Percentage, Status, Budget, Worked, "
                       "AllDay, Freq",
                       "KT_Events"),
            "Report|45305.0|3|45306|0|30|1|1225|300|1|0");
  EXPECT_EQ(Query_Rows("EventDate, d.Actioned, Offset", "KT_Events_Data d JOIN KT_Alarms USING (Key)"),
            "45310.0|0|870");
  TTask_Rules again;
  ASSERT_TRUE(Open(again, Query_Text("SELECT Key FROM KT_Events_Data")));
  EXPECT_EQ(Shown(again), "1 30 45306 -");
  EXPECT_EQ(again.Budget_Text + " " + again.Worked_Text + " " + again.Alarm_Time_Text, "12.25 3 9:30 AM");
  EXPECT_EQ(again.Alarm_Day, 45309);
  EXPECT_EQ(again.Start_Day, 45305);
  again.Alarm.On = false;
  again.Alarm.WAVFile = "<Standard Beep>";
  EXPECT_TRUE(again.Validate().Empty() && again.Alarm.Offset == 15 && again.Alarm.WAVFile.empty());
}

TEST_F(Task_Rules, Completing_One_Marks_It_Done_And_Writes_The_Journal_Once) {
  TTask_Rules rules;
  ASSERT_TRUE(Open(rules));
  rules.Journal = true;
  rules.Activity = 9;
  rules.Status = TTask_Status::Completed;
  rules.Set_Status();
  ASSERT_TRUE(rules.Validate().Empty());
  ASSERT_TRUE(rules.Process_Update());
  EXPECT_EQ(Query_Rows("Type, Title, LogDate, Description, SecondDate, Actioned",
                       "KT_Log JOIN KT_Events_Data d ON d.Key = Occurrence"),
            "9|Report|45306.5|Task Marked Completed: 1/15/2024,12:00 PM|45306.5|1");
  TTask_Rules done;
  ASSERT_TRUE(Open(done, Query_Text("SELECT Key FROM KT_Events_Data")));
  EXPECT_TRUE(done.Read_Only());
}

TEST_F(Task_Rules, One_Of_An_Imported_Set_Leaves_The_End_Of_The_Set) {
  TNew_Event event = New_Event("Water the plants", 45306, 3);
  event.Record.EventType = TEntry_Type::Task;
  TTask_Rules rules;
  ASSERT_TRUE(Open(rules, Write(event)));
  ASSERT_TRUE(rules.Validate().Empty());
  ASSERT_TRUE(rules.Process_Update());
  EXPECT_EQ(Query_Rows("Freq, LastDate", "KT_Events"), "1|45308.0");
}

TEST_F(Task_Rules, Inputs_Are_Refused_In_Their_Order) {
  TTask_Rules rules;
  ASSERT_TRUE(Open(rules));
  const auto refusal = [&] {
    const TRefusal refused = rules.Validate();
    return refused.Caption + "/" + refused.Control;
  };
  rules.Subject = " ";
  rules.Start_Day = rules.Day + 1;
  rules.Started = 45306;
  rules.Completed = 45305;
  rules.Alarm.On = true;
  rules.Alarm_Time_Text = "x";
  rules.Alarm_Day = rules.Day + 1;
  rules.Owner.clear();
  rules.Percentage_Text = "half";
  rules.Budget_Text = "much";
  EXPECT_EQ(refusal(), "Validation Failed/Edit1");
  rules.Subject = "Report";
  EXPECT_EQ(refusal(), "Validation Failed/StartDate");
  rules.Start_Day = rules.Day;
  EXPECT_EQ(refusal(), "Validation Failed/DateStarted");
  rules.Completed = 0;
  EXPECT_EQ(refusal(), "Invalid Time/AlarmTime") << "tested only when both dates are set";
  rules.Alarm_Time_Text = "23:59";
  EXPECT_EQ(refusal(), "Validation Failed/AlarmDate");
  rules.Alarm_Day = rules.Day;
  EXPECT_EQ(refusal(), "User's Name Required/UserBox");
  rules.Owner = User_Key();
  EXPECT_EQ(refusal(), "Validation Failed/PercentBox");
  rules.Percentage_Text = "50";
  EXPECT_EQ(refusal(), "Validation Failed/BudgetBox");
  rules.Budget_Text = "1e99";
  EXPECT_EQ(refusal(), "Validation Failed/BudgetBox");
  rules.Budget_Text = "5";
  EXPECT_EQ(refusal(), "/");
  EXPECT_EQ(rules.Alarm.Offset, -1439) << "on the due day, after its midnight";
  rules.Discard();
  EXPECT_EQ(Counts(), "0 0 0");
}

}  // namespace
