#include "Editor_Fixture.h"
#include "fm_Task.h"

namespace {

struct Task_Form : TOf_An_Editor<TTask_Rules, TTask_Frm> {
  /// Acts on the editor; what then stands in the controls that depend on each other.
  std::string After(const std::string& inputs) {
    return Seen_After(inputs, form.get(),
                      "StatusBox PercentBox DateStarted NotStarted DateCompleted NotCompleted");
  }
};

TEST_F(Task_Form, Status_Percentage_And_Dates_Follow_Each_Other) {
  QWidget* editor = Edit("", "Report");
  EXPECT_EQ(editor->windowTitle().toStdString() + "/" + Where(editor), "Create New Task/Details/Edit1");
  EXPECT_EQ(After("PercentBox=40"), "In Progress|40|1/15/2024|hidden|hidden|Not Yet Complete");
  EXPECT_EQ(After("DateStarted=2024-01-10|PercentBox=100"),
            "Completed|100|1/10/2024|hidden|1/15/2024|hidden");
  QTest::keyClick(Control<QWidget>(editor, "PercentBox"), Qt::Key_Down);
  EXPECT_EQ(After("StatusBox=Postponed"), "Postponed|(99)|1/10/2024|hidden|hidden|Not Yet Complete");
  EXPECT_EQ(Seen_After("BudgetBox=10|WorkedBox=2.5", editor, "RemainingBox"), "7.50");
}

TEST_F(Task_Form, What_Is_Refused_Is_Focused_And_A_Long_Subject_Cut) {
  QWidget* editor = Edit("");
  seams.Prompts.Expect_Error("Validation Failed",
                             "The value specified is not a valid number. Please respecify before continuing");
  Act(editor, "Edit1=" + std::string(70, 'x') + "|BudgetBox=x|PageControl1=1|OKBtn");
  EXPECT_EQ(Where(editor), "Details/BudgetBox");
  Act(editor, "BudgetBox=1|OKBtn");
  EXPECT_EQ(Query_Text("SELECT length(Title) || ' ' || EventType FROM KT_Events"), "60 3");
}

TEST_F(Task_Form, A_Task_Is_Saved_Shown_Again_And_Its_Completion_Recorded) {
  EXPECT_TRUE(With_Dialog(
      [](QWidget* editor) {
        EXPECT_EQ(Seen(editor, "AlarmDate AlarmTime"), "hidden|hidden");
        EXPECT_EQ(Seen_After("EventDate=2024-01-23|AlarmCheck", editor, "AlarmDate AlarmTime"),
                  "1/22/2024|8:00 AM")
            << "proposed anew";
        EXPECT_EQ(Seen_After("EventDate=2024-01-22", editor, "AlarmDate"), "1/22/2024") << "set, so it stays";
        Act(editor, "AlarmDate=2024-01-20|AlarmTime=9:00");
        With_Dialog(
            [](QWidget* alarm) {
              EXPECT_EQ(Seen(alarm, "AlarmDate AlarmTime"), "1/20/2024|9:00 AM");
              Confirm_With("AlarmTime=6:30 pm")(alarm);
            },
            [&] { Act(editor, "ConfigureBtn"); });
        Confirm_With("StartDate=2024-01-12|PercentBox=30|BudgetBox=12.25|WorkedBox=3|Memo1=Two pages")(
            editor);
      },
      [this] { return Task_Properties("", {}, database.Book().Key, "Report", false); }));
  EXPECT_EQ(Counts() + "/" + Dates(), "1 1 1/7.0");
  const std::string key = Query_Text("SELECT Key FROM KT_Events_Data");
  QWidget* editor = Edit(key);
  EXPECT_EQ(editor->windowTitle().toStdString() + Seen_After("PageControl1=1", editor, "Memo1"),
            "Edit TaskTwo pages");
  EXPECT_EQ(After("PageControl1=0"), "In Progress|30|1/15/2024|hidden|hidden|Not Yet Complete");
  EXPECT_EQ(Seen(editor, "AlarmDate AlarmTime StartDate BudgetBox WorkedBox RemainingBox"),
            "1/20/2024|6:30 PM|1/12/2024|12.25|3|9.25");
  Act(editor, "StatusBox=Completed|PageControl1=3|JournalBox|OKBtn");
  EXPECT_EQ(Query_Text("SELECT Actioned || count(*) FROM KT_Events_Data, KT_Log"), "11");
  Edit(key);
  EXPECT_EQ(After("PageControl1=0"), "(Completed)|(100)|(1/15/2024)|hidden|(1/15/2024)|hidden");
}

TEST_F(Task_Form, What_A_Task_Brought_Along_Is_Kept_Unless_Changed) {
  const std::string key = Make(1, 3);
  Run_Sql(
      "UPDATE KT_Events SET Title = printf('%.80c', 'x'), Notes = CAST('a' || char(160) || 'b' || char(13, "
      "10) || 'c' AS BLOB)");
  const auto stored = [] { return Query_Text("SELECT Location || Title || hex(Notes) FROM KT_Events"); };
  const std::string before = stored();
  Act(Edit(key), "Edit2=Office|OKBtn");
  EXPECT_EQ(stored(), "Office" + before) << "a long subject, hard blanks and line ends";
}

}  // namespace
