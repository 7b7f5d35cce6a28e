#include <QCalendarWidget>
#include <QCheckBox>
#include <QDateEdit>
#include <QPlainTextEdit>

#include "Editor_Fixture.h"
#include "Kt_forms.h"
#include "fm_Reminder.h"

using namespace KTReminds;
using namespace Kt_data_01;

namespace {

constexpr auto Changed_Caption = "Recurring Event Changed";
constexpr auto Changed_Text =
    "Warning: Changing the properties of this Event Set will reset all events within the Set. \r\n\r\nThis "
    "means that any changes made, by individually editing an event, will be lost and any events marked "
    "complete will be reinstated\r\n\r\nPlease confirm you wish to do this";

class Reminder_Form : public TEditor_Fixture {
 protected:
  bool Properties(const std::string& key, const std::string& subject = {}) const {
    return Reminder_Properties(key, {}, database.Book().Key, subject, false);
  }
};

TEST_F(Reminder_Form, A_New_Event_Is_Filled_In_By_Keyboard_And_Saved) {
  TModal_Driver driver([](QWidget* form) {
    EXPECT_TRUE(QTest::qWaitForWindowActive(form));
    EXPECT_EQ(form->windowTitle(), QStringLiteral("Create New Event"));
    EXPECT_EQ(Focused(form), "Edit1");
    EXPECT_EQ(Control<QLineEdit>(form, "Edit1")->text(), QStringLiteral("Lunch"));
    EXPECT_EQ(Control<QLabel>(form, "ContactPanel")->text(), QStringLiteral("Home"));
    EXPECT_FALSE(Control<QWidget>(form, "AlarmBox")->isVisible());
    EXPECT_EQ(Make_Checks(form), "");
    Picture(form, QStringLiteral("event_new"));
    QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(form->focusWidget(), QStringLiteral("Canteen"));
    QTest::keyClick(form, Qt::Key_T, Qt::AltModifier);
    EXPECT_EQ(Focused(form), "SetTimeBox");
    Type(form, "SetTimeBox", "2:30 pm");
    Click(form, "AlarmCheck");
    EXPECT_TRUE(Control<QWidget>(form, "AlarmBox")->isVisible());
    Control<QComboBox>(form, "AlarmBox")->setCurrentText(QStringLiteral("2 h"));
    Control<QPlainTextEdit>(form, "Memo1")->setPlainText(QStringLiteral("Bring money"));
    Control<QComboBox>(form, "PriorityBox")->setCurrentIndex(1);
    QTest::keyClick(form, Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([form] { return Control<QCheckBox>(form, "PrivateBox")->isChecked(); }));
    Control<QTabWidget>(form, "PageControl1")->setCurrentIndex(3);
    Click(form, "JournalBox");
    Control<QComboBox>(form, "ActivityBox")->setCurrentText(QStringLiteral("Meeting"));
    QTest::keyClick(form, Qt::Key_Return);
  });
  EXPECT_TRUE(Properties("", "Lunch"));
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{2, 3}));
  EXPECT_EQ(Query_Text("SELECT Title || Location || Priority || Private || Freq || Type || CAST(Notes AS "
                       "TEXT) FROM KT_Events"),
            "LunchCanteen2105Bring money");
  EXPECT_EQ(Query_Text("SELECT Offset FROM KT_Alarms"), "120");
  EXPECT_EQ(Dates(), "0.604");
  EXPECT_EQ(Counts(), "1 1 1 0");
}

TEST_F(Reminder_Form, Cancel_Leaves_Nothing_Behind) {
  for (const auto leave :
       {+[](QWidget* form) { QTest::keyClick(form, Qt::Key_Escape); }, +[](QWidget* form) { form->close(); },
        +[](QWidget* form) {
          Control<QWidget>(form, "CancelBtn")->setFocus();
          QTest::keyClick(form->focusWidget(), Qt::Key_Return);
        }}) {
    TModal_Driver driver([leave](QWidget* form) {
      EXPECT_EQ(Counts(), "1 1 0 1");
      leave(form);
    });
    EXPECT_FALSE(Properties("", "Lunch"));
    EXPECT_EQ(Counts(), "0 0 0 0");
  }
}

TEST_F(Reminder_Form, What_Cannot_Be_Saved_Is_Refused_In_Order_And_Focused) {
  TReminder_Rules rules;
  Open(rules, "", " \t");
  TReminder_Frm form(rules);
  Show(form);
  const auto refused = [&](const char* caption, const std::string& text) {
    seams.Prompts.Expect_Error(caption, text);
    Click(&form, "OKBtn");
    EXPECT_TRUE(form.isVisible());
    return Page(&form) + "/" + Focused(&form);
  };
  Click(&form, "RecurBtn");
  EXPECT_EQ(Page(&form), "Recurrence");
  Click(&form, "DailyOn");
  Click(&form, "DailyMonday");
  Control<QLineEdit>(&form, "DailyNumber")->setText(QStringLiteral("x"));
  Control<QLineEdit>(&form, "SetTimeBox")->setText(QStringLiteral("noon"));
  Click(&form, "AlarmCheck");
  Control<QComboBox>(&form, "AlarmBox")->setCurrentText(QStringLiteral("5 weeks"));
  Control<QComboBox>(&form, "UserBox")->setCurrentIndex(-1);
  EXPECT_EQ(refused("Validation Failed", "A subject for this event is required."), "Recurrence/Edit1");
  Type(&form, "Edit1", "Lunch");
  EXPECT_EQ(refused("Invalid Date",
                    "The Time entered is invalid. Please specify a valid time in the format h:mm ampm"),
            "Recurrence/SetTimeBox");
  Click(&form, "TimeBox");
  EXPECT_FALSE(Control<QWidget>(&form, "TimePanel")->isVisible());
  EXPECT_EQ(refused("Invalid Reminder Specified",
                    "The offset for the Reminder is invalid.\r\n\r\nPlease specify an offset in one of the "
                    "following formats: - \r\n\r\n     ? minutes ( or ? )\r     ? hours ( or ? h)\r     ? "
                    "days ( or ? d )"),
            "Recurrence/AlarmBox");
  EXPECT_EQ(Control<QComboBox>(&form, "AlarmBox")->currentText(), QStringLiteral("5 s before"))
      << "rewritten, yet refused";
  Control<QComboBox>(&form, "AlarmBox")->setCurrentText(QStringLiteral("5"));
  EXPECT_EQ(refused("User's Name Required", "A User's Name must be specified before continuing"),
            "Access/UserBox");
  Picture(&form, QStringLiteral("event_access"));
  Control<QComboBox>(&form, "UserBox")->setCurrentIndex(0);
  EXPECT_EQ(refused("Invalid Period",
                    "The Repeat Period specified is invalid. Please enter a valid number before continuing"),
            "Recurrence/DailyNumber");
  Type(&form, "DailyNumber", "1");
  EXPECT_EQ(
      refused("Daily Criteria Invalid", "Please specify which day, or days, this event should be set for"),
      "Recurrence/DailyMonday");
  Click(&form, "WeeklyBtn");
  Click(&form, "WeeklyMonday");
  EXPECT_EQ(
      refused("Weekly Criteria Invalid", "Please specify which day, or days, this event should be set for"),
      "Recurrence/WeeklyMonday");
  Click(&form, "WeeklyMonday");
  Control<QDateEdit>(&form, "EndDate")->setDate(QDate(2024, 1, 29));
  Click(&form, "OKBtn");
  EXPECT_EQ(form.result(), QDialog::Accepted);
  EXPECT_EQ(Dates(), "0.0 7.0 14.0");
}

TEST_F(Reminder_Form, A_New_Set_Of_Each_Frequency_Has_Its_Dates) {
  struct TCase {
    const char* Freq;
    std::function<void(QWidget*)> Choose;
    const char* Dates;
  };
  const auto number = [](const char* name, const char* text) {
    return [=](QWidget* form) { Type(form, name, text); };
  };
  const TCase cases[] = {
      {"DailyBtn", number("DailyNumber", "9"), "0.0 9.0 18.0 27.0"},
      {"DailyBtn",
       [](QWidget* form) {
         Click(form, "DailyOn");
         for (const char* day : {"DailyMonday", "DailyFriday"}) Click(form, day);
       },
       "0.0 4.0 11.0 18.0 25.0"},
      {"WeeklyBtn", number("WeeklyNumber", "2"), "0.0 14.0 28.0"},
      {"MonthlyBtn", number("MonthlyNumber", "1"), "0.0"},
      {"MonthlyBtn",
       [](QWidget* form) {
         Click(form, "MonthlyOn");
         Control<QComboBox>(form, "MonthlyInstance")->setCurrentText(QStringLiteral("second"));
         Control<QComboBox>(form, "MonthlyPattern")->setCurrentText(QStringLiteral("Monday"));
       },
       "0.0 28.0"},
      {"YearlyBtn", number("YearlyNumber", "1"), "0.0"},
  };
  for (const TCase& one : cases) {
    SCOPED_TRACE(one.Dates);
    TReminder_Rules rules;
    Open(rules, "", "Set");
    TReminder_Frm form(rules);
    Show(form);
    Click(&form, "TimeBox");
    Click(&form, "RecurBtn");
    Click(&form, one.Freq);
    one.Choose(&form);
    Control<QDateEdit>(&form, "EndDate")->setDate(QDate(2024, 2, 13));
    EXPECT_EQ(Make_Checks(&form), "");
    Picture(&form, QStringLiteral("event_recur_%1_%2")
                       .arg(QString::fromLatin1(one.Freq), QString::fromLatin1(one.Dates).left(6)));
    Click(&form, "OKBtn");
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(Dates(), one.Dates);
    Run_Sql("DELETE FROM KT_Events_Data; DELETE FROM KT_Events");
  }
}

TEST_F(Reminder_Form, Recurrence_Comes_And_Goes_And_Follows_The_Date) {
  TReminder_Rules rules;
  Open(rules, "", "Set");
  TReminder_Frm form(rules);
  Show(form);
  auto* button = Control<QAbstractButton>(&form, "RecurBtn");
  EXPECT_EQ(Page(&form), "Notes");
  Click(&form, "RecurBtn");
  EXPECT_EQ(button->text(), QStringLiteral("Remove Recurrence"));
  EXPECT_EQ(button->accessibleName(), button->text());
  EXPECT_EQ(Control<QDateEdit>(&form, "EndDate")->date(), QDate(2025, 1, 15));
  Click(&form, "MonthlyBtn");
  const auto kinds = [&form](const char* instance, const char* pattern) {
    return (Control<QComboBox>(&form, instance)->currentText() + QLatin1Char(' ') +
            Control<QComboBox>(&form, pattern)->currentText())
        .toStdString();
  };
  EXPECT_EQ(kinds("MonthlyInstance", "MonthlyPattern"), "third Monday");
  Control<QDateEdit>(&form, "EventDate")->setDate(QDate(2024, 2, 6));
  EXPECT_EQ(kinds("MonthlyInstance", "MonthlyPattern"), "first Tuesday");
  EXPECT_EQ(kinds("YearlyInstance", "YearlyPattern"), "first Tuesday");
  EXPECT_TRUE(Control<QAbstractButton>(&form, "MonthlyBtn")->isChecked()) << "what was chosen stays";
  Click(&form, "RecurBtn");
  EXPECT_EQ(button->text(), QStringLiteral("Make Recurring"));
  EXPECT_EQ(Page(&form), "Notes");
  Click(&form, "OKBtn");
  EXPECT_EQ(Dates(), "22.542") << "a plain event again";
}

TEST_F(Reminder_Form, Tab_Comes_To_What_Is_Chosen) {
  TReminder_Rules rules;
  Open(rules, Make(5));
  rules.Open_Whole_Set();
  rules.Pages.Freq = TFrequency::Monthly;
  rules.Pages.Monthly_Every = false;
  TReminder_Frm form(rules);
  Show(form);
  Control<QWidget>(&form, "qt_tabwidget_tabbar")->setFocus();
  for (const char* next : {"MonthlyBtn", "MonthlyOn", "MonthlyInstance"}) {
    QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Focused(&form), next);
  }
}

TEST_F(Reminder_Form, The_Calendar_Of_A_Date_Begins_With_The_Users_First_Day) {
  for (const auto& [locale, first] : {std::pair("de_DE", Qt::Monday), {"en_US", Qt::Sunday}}) {
    Kt_util_01::Install_Locale(locale);
    TReminder_Rules rules;
    Open(rules, Make(1));
    TReminder_Frm form(rules);
    Show(form);
    auto* date = Control<QDateEdit>(&form, "EventDate");
    QTest::mouseClick(date, Qt::LeftButton, {}, QPoint(date->width() - 6, date->height() / 2));
    EXPECT_TRUE(date->calendarWidget()->isVisible());
    EXPECT_EQ(date->calendarWidget()->firstDayOfWeek(), first) << locale;
  }
}

TEST_F(Reminder_Form, One_Of_A_Set_Is_Opened_Alone_Or_The_Whole_Or_Not_At_All) {
  const std::string key = Make(5);
  {
    TModal_Driver driver([](QWidget* question) {
      EXPECT_EQ(question->windowTitle(), QStringLiteral("Open Recurring Event"));
      QTest::keyClick(question, Qt::Key_Escape);
    });
    EXPECT_FALSE(Properties(key));
  }
  {
    auto editor = std::make_shared<std::unique_ptr<TModal_Driver>>();
    TModal_Driver question([editor](QWidget* asked) {
      *editor = std::make_unique<TModal_Driver>([](QWidget* form) {
        EXPECT_EQ(form->windowTitle(), QStringLiteral("Edit Recurring Event Set"));
        QTest::keyClick(form, Qt::Key_Escape);
      });
      Click(asked, "RadioButton1");
      static_cast<QDialog*>(asked)->accept();
    });
    EXPECT_FALSE(Properties(key));
  }
  {
    TReminder_Rules rules;
    Open(rules, key);
    TReminder_Frm form(rules);
    Show(form);
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Edit Single Event from Recurring Set"));
    EXPECT_EQ(Page(&form), "Notes");
    EXPECT_FALSE(Control<QWidget>(&form, "RecurBtn")->isVisible());
    EXPECT_FALSE(Control<QWidget>(&form, "PrivateBox")->isEnabled());
    Picture(&form, QStringLiteral("event_single"));
    Control<QDateEdit>(&form, "EventDate")->setDate(QDate(2024, 2, 1));
    Click(&form, "OKBtn");
    EXPECT_EQ(Dates(), "0.5 1.5 3.5 4.5 17.5");
  }
  TReminder_Rules rules;
  Open(rules, key);
  rules.Open_Whole_Set();
  TReminder_Frm form(rules);
  Show(form);
  EXPECT_EQ(form.windowTitle(), QStringLiteral("Edit Recurring Event Set"));
  EXPECT_EQ(Page(&form), "Recurrence");
  EXPECT_EQ(Control<QDateEdit>(&form, "EventDate")->date(), QDate(2024, 1, 15));
  Picture(&form, QStringLiteral("event_set"));
  Type(&form, "Edit1", "New");
  Click(&form, "OKBtn");
  EXPECT_EQ(Dates(), "0.5 1.5 3.5 4.5 17.5") << "nothing is asked, no date touched";
  EXPECT_EQ(Query_Text("SELECT Title FROM KT_Events"), "New");
}

TEST_F(Reminder_Form, A_Changed_Rule_Is_Applied_Whatever_The_Answer_But_Only_Yes_Closes) {
  TReminder_Rules rules;
  Open(rules, Make(5));
  rules.Open_Whole_Set();
  TReminder_Frm form(rules);
  Show(form);
  Type(&form, "DailyNumber", "2");
  seams.Prompts.Expect_Question(Changed_Caption, Changed_Text, Kt_util_01::Answer_No);
  Click(&form, "OKBtn");
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(Dates(), "0.5 2.5 4.5");
  Type(&form, "DailyNumber", "4");
  seams.Prompts.Expect_Question(Changed_Caption, Changed_Text, Kt_util_01::Answer_Yes);
  Click(&form, "OKBtn");
  EXPECT_EQ(form.result(), QDialog::Accepted);
  EXPECT_EQ(Dates(), "0.5 4.5");
}

TEST_F(Reminder_Form, A_Long_Set_Is_Saved_And_One_Beyond_All_Measure_Asked_About) {
  TReminder_Rules rules;
  Open(rules, "", "Set");
  TReminder_Frm form(rules);
  Show(form);
  Click(&form, "RecurBtn");
  auto* until = Control<QDateEdit>(&form, "EndDate");
  until->setDate(QDate(2054, 1, 15));
  seams.Prompts.Expect_Question("Many Events",
                                "This Event Set consists of 10959 events, and saving it will take a "
                                "while.\r\n\r\nPlease confirm you wish to do this",
                                Kt_util_01::Answer_No);
  Click(&form, "OKBtn");
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(Counts(), "1 1 0 1") << "nothing was written";
  until->setDate(QDate(2026, 10, 10));
  Click(&form, "OKBtn");
  EXPECT_EQ(form.result(), QDialog::Accepted);
  EXPECT_EQ(Counts(), "1 1000 0 0");
}

TEST_F(Reminder_Form, A_Failed_Save_Tells_Why_And_Keeps_The_Inputs) {
  const std::string key = Make(1);
  {
    TReminder_Rules rules;
    Open(rules, key);
    TReminder_Frm form(rules);
    Show(form);
    Fail_To_Save(&form, "fm_Reminders");
    Run_Sql("DROP TRIGGER planted");
    Click(&form, "OKBtn");
    EXPECT_EQ(form.result(), QDialog::Accepted) << "saved once the fault is gone";
  }
  TSqlite_Options read_only;
  read_only.Read_Only = true;
  database.Reopen(read_only);
  TReminder_Rules rules;
  Open(rules, key);
  TReminder_Frm form(rules);
  Show(form);
  Type(&form, "Edit1", "Newer");
  Click(&form, "OKBtn");
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(seams.Prompts.Notices.size(), 1u);
  EXPECT_EQ(Control<QLineEdit>(&form, "Edit1")->text(), QStringLiteral("Newer"));
  EXPECT_FALSE(Properties("")) << "no new event can be begun";
}

TEST_F(Reminder_Form, Privacy_Is_One_Field_In_Two_Places) {
  TReminder_Rules rules;
  Open(rules, "", "x");
  TReminder_Frm form(rules);
  Show(form);
  auto* box = Control<QCheckBox>(&form, "PrivateBox");
  auto* restricted = Control<QAbstractButton>(&form, "RestrictBtn");
  auto* allowed = Control<QAbstractButton>(&form, "AllowBtn");
  EXPECT_TRUE(allowed->isChecked());
  Click(&form, "PrivateBox");
  EXPECT_TRUE(restricted->isChecked());
  Control<QTabWidget>(&form, "PageControl1")->setCurrentIndex(2);
  Click(&form, "AllowBtn");
  EXPECT_FALSE(box->isChecked());
  Click(&form, "RestrictBtn");
  EXPECT_TRUE(box->isChecked());
  Click(&form, "OKBtn");
  EXPECT_EQ(Query_Text("SELECT Private FROM KT_Events"), "1");
}

TEST_F(Reminder_Form, What_May_Only_Be_Read_Closes_Unsaved_And_What_Is_Denied_Stays_Open) {
  const std::string key = Make(1);
  const std::string before = Query_Text("SELECT Title || Priority FROM KT_Events");
  {
    TReminder_Rules rules;
    Open(rules, key, {}, true);  // as a page does with another user's private event
    TReminder_Frm form(rules);
    Show(form);
    EXPECT_TRUE(Control<QLineEdit>(&form, "Edit1")->isReadOnly());
    EXPECT_TRUE(Control<QPlainTextEdit>(&form, "Memo1")->isReadOnly());
    for (const char* name : {"PriorityBox", "AlarmCheck", "PrivateBox", "UserBox", "JournalBox"})
      EXPECT_FALSE(Control<QWidget>(&form, name)->isEnabled()) << name;
    Picture(&form, QStringLiteral("event_read_only"));
    Control<QLineEdit>(&form, "Edit1")->clear();
    Click(&form, "OKBtn");
    EXPECT_EQ(form.result(), QDialog::Accepted) << "nothing is validated";
    EXPECT_EQ(Query_Text("SELECT Title || Priority FROM KT_Events"), before);
  }
  std::string bert;
  In_Update([&] {
    bert = Create_User("Bert", false);
    Set_Rights(database.Book().Key, bert, {.See = true});
  });
  Kt_util_01::Set_User_Key(bert);
  TReminder_Rules rules;
  Open(rules, "");
  TReminder_Frm form(rules);
  Show(form);
  seams.Prompts.Expect_Error("Access Denied",
                             "Request denied as you do not have the required permission for \"Home\"");
  Click(&form, "OKBtn");
  EXPECT_TRUE(form.isVisible()) << "asked before the missing subject";
  rules.Discard();
}

TEST_F(Reminder_Form, The_Alarm_Is_Configured_In_Its_Own_Window) {
  TReminder_Rules rules;
  Open(rules, "", "x");
  TReminder_Frm form(rules);
  Show(form);
  Click(&form, "AlarmCheck");
  auto* box = Control<QComboBox>(&form, "AlarmBox");
  box->setCurrentText(QStringLiteral("2 h"));
  {
    TModal_Driver driver([](QWidget* alarm) {
      EXPECT_EQ(Control<QComboBox>(alarm, "Alarmbox")->currentText(), QStringLiteral("2 hours before"));
      EXPECT_EQ(Control<QLabel>(alarm, "TimeLabel")->text(),
                QStringLiteral("at 11:00 AM on Monday, 15 January 2024"));
      Control<QComboBox>(alarm, "Alarmbox")->setCurrentText(QStringLiteral("1 d"));
      Control<QComboBox>(alarm, "WAVBox")->setCurrentIndex(1);
      QTest::keyClick(alarm, Qt::Key_Return);
    });
    Click(&form, "ConfigureBtn");
  }
  EXPECT_EQ(box->currentText(), QStringLiteral("1 day before"));
  Picture(&form, QStringLiteral("event_alarm"));
  Click(&form, "OKBtn");
  EXPECT_EQ(Query_Text("SELECT Offset || WAVFile FROM KT_Alarms"), "1440<Standard Beep>");
}

TEST_F(Reminder_Form, The_Contact_Opens_Where_The_Host_Has_Pages_For_It) {
  std::string opened;
  const std::string known = database.Book().Calendar;
  Kt_forms::Install_Contact_Opener({[&known](const std::string& contact) { return contact == known; },
                                    [&opened](const std::string& contact) { opened = contact; }});
  TReminder_Rules rules;
  Open(rules, "", "x");
  {
    TReminder_Frm form(rules);
    Show(form);
    EXPECT_EQ(Make_Checks(&form), "");
    Click(&form, "ContactBtn");
    EXPECT_EQ(opened, database.Book().Calendar);
  }
  rules.Discard();
  const std::string key = Make(1);
  TReminder_Rules hidden;
  Open(hidden, key, {}, true);
  TReminder_Frm form(hidden);
  Show(form);
  EXPECT_FALSE(Control<QWidget>(&form, "ContactBtn")->isVisible());
  Kt_forms::Install_Contact_Opener({});
  TReminder_Frm without(rules);
  Show(without);
  EXPECT_FALSE(Control<QWidget>(&without, "ContactBtn")->isVisible());
}

}  // namespace
