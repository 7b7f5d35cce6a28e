#include <QDateEdit>
#include <QPlainTextEdit>

#include "Editor_Fixture.h"
#include "Form_Controls.h"
#include "fm_Task.h"

using namespace KTReminds;

namespace {

constexpr auto Alarm_Too_Late =
    "The Reminder Date cannot be later that the Date the Task is Due. Please respecify before continuing";

class Task_Form : public TEditor_Fixture {
 protected:
  static void Type_Percent(QWidget* form, const char* text) {
    auto* box = Control<TUpDown_Edit>(form, "PercentBox");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QString::fromLatin1(text));
  }
  static void Choose(QWidget* form, const char* status) {
    Control<QComboBox>(form, "StatusBox")->setCurrentText(QString::fromLatin1(status));
  }
  static void Set_Date(QWidget* form, const char* picker, const QDate& date) {
    Control<QDateEdit>(form, picker)->setDate(date);
  }
  // Status, percentage, and the two dates or what stands in their place.
  static std::string State(QWidget* form) {
    std::string state = Control<QComboBox>(form, "StatusBox")->currentText().toStdString() + "|" +
                        Control<TUpDown_Edit>(form, "PercentBox")->text().toStdString();
    for (const auto& [picker, label] :
         {std::pair("DateStarted", "NotStarted"), std::pair("DateCompleted", "NotCompleted")}) {
      const auto* date = Control<QDateEdit>(form, picker);
      const auto* instead = Control<QLabel>(form, label);
      EXPECT_NE(date->isVisible(), instead->isVisible()) << picker;
      state += "|" + (date->isVisible() ? date->text() : instead->text()).toStdString();
    }
    return state;
  }
};

TEST_F(Task_Form, Status_Percentage_And_Dates_Follow_Each_Other) {
  TTask_Rules rules;
  Open(rules, "", "Report");
  TTask_Frm form(rules);
  Show(form);
  const std::string fresh = "Not Started|0|Not Yet Started|Not Yet Complete";
  EXPECT_EQ(form.windowTitle(), QStringLiteral("Create New Task"));
  EXPECT_EQ(Page(&form), "Details");
  EXPECT_EQ(Focused(&form), "Edit1");
  EXPECT_EQ(State(&form), fresh);
  EXPECT_EQ(Make_Checks(&form), "");
  Picture(&form, QStringLiteral("task_new"));
  Type_Percent(&form, "40");
  EXPECT_EQ(State(&form), "In Progress|40|1/15/2024|Not Yet Complete");
  Set_Date(&form, "DateStarted", QDate(2024, 1, 10));
  Type_Percent(&form, "100");
  EXPECT_EQ(State(&form), "Completed|100|1/10/2024|1/15/2024") << "a date that is set stays";
  EXPECT_EQ(Make_Checks(&form), "");
  Picture(&form, QStringLiteral("task_completed"));
  QTest::keyClick(Control<QWidget>(&form, "PercentBox"), Qt::Key_Down);
  EXPECT_EQ(State(&form), "In Progress|99|1/10/2024|Not Yet Complete");
  auto* percent = Control<TUpDown_Edit>(&form, "PercentBox");
  Choose(&form, "Postponed");
  EXPECT_EQ(State(&form), "Postponed|99|1/10/2024|Not Yet Complete");
  EXPECT_FALSE(percent->isEnabled());
  Choose(&form, "Not Started");
  EXPECT_EQ(State(&form), fresh);
  EXPECT_TRUE(percent->isEnabled());
  Choose(&form, "Pending");
  EXPECT_EQ(State(&form), "Pending|0|Not Yet Started|Not Yet Complete");
  Choose(&form, "Completed");
  EXPECT_EQ(State(&form), "Completed|100|1/15/2024|1/15/2024");
  Type(&form, "BudgetBox", "10");
  Type(&form, "WorkedBox", "2.5");
  EXPECT_EQ(Control<QLabel>(&form, "RemainingBox")->text(), QStringLiteral("7.50"));
  Type(&form, "WorkedBox", "-");
  EXPECT_EQ(Control<QLabel>(&form, "RemainingBox")->text(), QStringLiteral("10.00"))
      << "half-typed numbers count as 0";
  rules.Discard();
}

TEST_F(Task_Form, What_Cannot_Be_Saved_Is_Refused_In_Order_And_Focused) {
  TTask_Rules rules;
  Open(rules, "");
  TTask_Frm form(rules);
  Show(form);
  const auto refused = [&](const char* caption, const char* text) {
    seams.Prompts.Expect_Error(caption, text);
    Click(&form, "OKBtn");
    EXPECT_TRUE(form.isVisible());
    return Page(&form) + "/" + Focused(&form);
  };
  Set_Date(&form, "StartDate", QDate(2024, 1, 16));
  Choose(&form, "Completed");
  Set_Date(&form, "DateStarted", QDate(2024, 1, 20));
  Click(&form, "AlarmCheck");
  Type(&form, "AlarmTime", "soon");
  Set_Date(&form, "AlarmDate", QDate(2024, 1, 16));
  Control<QComboBox>(&form, "UserBox")->setCurrentIndex(-1);
  Type(&form, "BudgetBox", "x");
  Type_Percent(&form, "much");
  EXPECT_EQ(refused("Validation Failed", "A subject for this task is required."), "Details/Edit1");
  Type(&form, "Edit1", "1234567890123456789012345678901234567890123456789012345678901234567890");
  EXPECT_EQ(refused("Validation Failed",
                    "The Start Date cannot be later that the Date Due. Please respecify before continuing"),
            "Details/StartDate");
  Set_Date(&form, "StartDate", QDate(2024, 1, 15));
  EXPECT_EQ(refused("Validation Failed",
                    "The Date the Task Started cannot be later that the Date the Task Completed. Please "
                    "respecify before continuing"),
            "Details/DateStarted");
  Set_Date(&form, "DateStarted", QDate(2024, 1, 14));
  EXPECT_EQ(refused("Invalid Time",
                    "The Time entered is invalid. Please specify a valid time in the format h:mm ampm"),
            "Details/AlarmTime");
  Type(&form, "AlarmTime", "9:00 am");
  EXPECT_EQ(refused("Validation Failed", Alarm_Too_Late), "Details/AlarmDate");
  Set_Date(&form, "AlarmDate", QDate(2024, 1, 15));
  EXPECT_EQ(refused("User's Name Required", "A User's Name must be specified before continuing"),
            "Access/UserBox");
  Control<QComboBox>(&form, "UserBox")->setCurrentIndex(0);
  constexpr auto no_number = "The value specified is not a valid number. Please respecify before continuing";
  EXPECT_EQ(refused("Validation Failed", no_number), "Details/PercentBox");
  Type_Percent(&form, "100");
  EXPECT_EQ(refused("Validation Failed", no_number), "Details/BudgetBox");
  Type(&form, "BudgetBox", "1");
  Click(&form, "OKBtn");
  EXPECT_EQ(form.result(), QDialog::Accepted);
  EXPECT_EQ(Query_Text("SELECT length(Title) || ' ' || EventType FROM KT_Events"), "60 3");
  EXPECT_EQ(Query_Text("SELECT Offset FROM KT_Alarms"), "-540") << "on the due day is allowed";
}

TEST_F(Task_Form, A_Task_Is_Saved_Shown_Again_And_Its_Completion_Recorded) {
  {
    TModal_Driver driver([&](QWidget* form) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(form));
      Set_Date(form, "EventDate", QDate(2024, 1, 23));
      EXPECT_EQ(Control<QDateEdit>(form, "AlarmDate")->date(), QDate(2024, 1, 22)) << "proposed anew";
      Click(form, "AlarmCheck");
      Set_Date(form, "EventDate", QDate(2024, 1, 22));
      EXPECT_EQ(Control<QDateEdit>(form, "AlarmDate")->date(), QDate(2024, 1, 22)) << "set, so it stays";
      Set_Date(form, "AlarmDate", QDate(2024, 1, 20));
      Type(form, "AlarmTime", "6:30 pm");
      Type_Percent(form, "30");
      Type(form, "BudgetBox", "12.25");
      Type(form, "WorkedBox", "3");
      Control<QPlainTextEdit>(form, "Memo1")->setPlainText(QStringLiteral("Two pages"));
      QTest::keyClick(form, Qt::Key_Return);
    });
    EXPECT_TRUE(Task_Properties("", {}, database.Book().Key, "Report", false));
  }
  EXPECT_EQ(Counts(), "1 1 1 0");
  EXPECT_EQ(Dates(), "7.0");
  const std::string key = Query_Text("SELECT Key FROM KT_Events_Data");
  {
    TTask_Rules rules;
    Open(rules, key);
    TTask_Frm form(rules);
    Show(form);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Edit Task"));
    EXPECT_EQ(State(&form), "In Progress|30|1/15/2024|Not Yet Complete");
    EXPECT_EQ(Control<QDateEdit>(&form, "AlarmDate")->date(), QDate(2024, 1, 20));
    EXPECT_EQ(Control<QLineEdit>(&form, "AlarmTime")->text(), QStringLiteral("6:30 PM"));
    EXPECT_EQ(Control<QLabel>(&form, "RemainingBox")->text(), QStringLiteral("9.25"));
    EXPECT_EQ(Control<QPlainTextEdit>(&form, "Memo1")->toPlainText(), QStringLiteral("Two pages"));
    Picture(&form, QStringLiteral("task_stored"));
    Choose(&form, "Completed");
    Control<QTabWidget>(&form, "PageControl1")->setCurrentIndex(3);
    Click(&form, "JournalBox");
    Picture(&form, QStringLiteral("task_journal"));
    Click(&form, "OKBtn");
    EXPECT_EQ(form.result(), QDialog::Accepted);
  }
  EXPECT_EQ(Query_Text("SELECT Actioned FROM KT_Events_Data"), "1");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Log"), 1);
  TTask_Rules rules;
  Open(rules, key);
  TTask_Frm form(rules);
  Show(form);
  EXPECT_TRUE(Control<QLineEdit>(&form, "Edit1")->isReadOnly()) << "done is read-only";
  EXPECT_FALSE(Control<QWidget>(&form, "StatusBox")->isEnabled());
  EXPECT_FALSE(Control<QWidget>(&form, "PercentBox")->isEnabled());
  Picture(&form, QStringLiteral("task_read_only"));
  Click(&form, "OKBtn");
  EXPECT_EQ(form.result(), QDialog::Accepted);
}

TEST_F(Task_Form, What_A_Task_Brought_Along_Is_Kept_Unless_Changed) {
  const std::string key = Make(1, 3);
  Run_Sql(
      "UPDATE KT_Events SET Title = printf('%.80c', 'x'), Notes = CAST('a' || char(160) || 'b' || char(13, "
      "10) || 'c' AS BLOB)");
  const auto stored = [] { return Query_Text("SELECT Title || hex(Notes) FROM KT_Events"); };
  const std::string before = stored();
  TTask_Rules rules;
  Open(rules, key);
  TTask_Frm form(rules);
  Show(form);
  Type(&form, "Edit2", "Office");
  Click(&form, "OKBtn");
  EXPECT_EQ(Query_Text("SELECT Location FROM KT_Events"), "Office");
  EXPECT_EQ(stored(), before) << "a long subject, hard blanks and line ends";
}

TEST_F(Task_Form, The_Alarm_Is_Configured_As_A_Day_And_Time_And_Cancel_Removes_The_Task) {
  TModal_Driver driver([](QWidget* form) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(form));
    EXPECT_FALSE(Control<QWidget>(form, "AlarmDate")->isVisible());
    Click(form, "AlarmCheck");
    EXPECT_EQ(Control<QDateEdit>(form, "AlarmDate")->date(), QDate(2024, 1, 14));
    {
      TModal_Driver inner([](QWidget* alarm) {
        EXPECT_TRUE(Control<QWidget>(alarm, "When2")->isVisible());
        EXPECT_EQ(Control<QLineEdit>(alarm, "AlarmTime")->text(), QStringLiteral("8:00 AM"));
        Control<QDateEdit>(alarm, "AlarmDate")->setDate(QDate(2024, 1, 13));
        QTest::keyClick(alarm, Qt::Key_Return);
      });
      Click(form, "ConfigureBtn");
    }
    EXPECT_EQ(Control<QDateEdit>(form, "AlarmDate")->date(), QDate(2024, 1, 13));
    EXPECT_EQ(Control<QLineEdit>(form, "AlarmTime")->text(), QStringLiteral("8:00 AM"));
    QTest::keyClick(form, Qt::Key_Escape);
  });
  EXPECT_FALSE(Task_Properties("", {}, database.Book().Key, "Report", false));
  EXPECT_EQ(Counts(), "0 0 0 0");
}

TEST_F(Task_Form, A_Failed_Save_Is_Reported_Once_And_Keeps_The_Inputs) {
  TTask_Rules rules;
  Open(rules, Make(1, 3));
  TTask_Frm form(rules);
  Show(form);
  Fail_To_Save(&form, "fm_Task");
  EXPECT_EQ(Query_Text("SELECT Title FROM KT_Events"), "Old");
}

}  // namespace
