#include "Editor_Fixture.h"
#include "fm_Reminder.h"

namespace {

struct Reminder_Form : TOf_An_Editor<TReminder_Rules, TReminder_Frm> {
  bool Properties(const std::string& key, const std::function<void(QWidget*)>& act) const {
    return With_Dialog(act,
                       [&] { return Reminder_Properties(key, {}, database.Book().Key, "Lunch", false); });
  }
  TReminder_Frm* Edit_Set(const std::string& key) {
    return Edit(key, {}, false, &TReminder_Rules::Open_Whole_Set);
  }
};

TEST_F(Reminder_Form, A_New_Event_Is_Filled_In_By_Keyboard_And_Saved) {
  EXPECT_TRUE(Properties("", [](QWidget* editor) {
    EXPECT_EQ(editor->windowTitle().toStdString() + "/" + Where(editor), "Create New Event/Notes/Edit1");
    EXPECT_EQ(Seen(editor, "Edit1 ContactPanel AlarmBox"), "Lunch|Home|hidden");
    QTest::keyClick(editor->focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(editor->focusWidget(), QStringLiteral("Canteen"));
    QTest::keyClick(editor, Qt::Key_T, Qt::AltModifier);
    EXPECT_EQ(Where(editor), "Notes/SetTimeBox");
    QTest::keyClick(editor, Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([editor] { return Seen(editor, "PrivateBox") == "+"; }));
    Act(editor, "SetTimeBox=2:30 pm|AlarmCheck|AlarmBox=2 h|Memo1=Bring money|PriorityBox=Priority 2");
    With_Dialog(
        [](QWidget* alarm) {
          EXPECT_EQ(Seen(alarm, "Alarmbox TimeLabel"),
                    "2 hours before|at 12:30 PM on Monday, 15 January 2024");
          Confirm_With("Alarmbox=1 d|WAVBox=<Standard Beep>")(alarm);
        },
        [&] { Act(editor, "ConfigureBtn"); });
    Confirm_With("PageControl1=3|JournalBox|ActivityBox=Meeting")(editor);
  }));
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{2, 3, 2}));
  EXPECT_EQ(Query_Rows("Title, Location, Priority, Private, Freq, Type, Notes, Offset, WAVFile",
                       "KT_Events, KT_Alarms"),
            "Lunch|Canteen|2|1|0|18|Bring money|1440|<Standard Beep>");
  EXPECT_EQ(Dates() + "/" + Counts(), "0.604/1 1 1");
  EXPECT_FALSE(Properties("", [](QWidget* editor) { Act(editor, "CancelBtn"); }));
  EXPECT_EQ(Counts(), "1 1 1") << "nothing is left behind";
}

TEST_F(Reminder_Form, What_Is_Refused_Is_Shown_As_It_Was_Read_And_Focused_On_Its_Page) {
  QWidget* editor = Edit("", "Lunch");
  Act(editor, "AlarmCheck|AlarmBox=5 weeks|UserBox=");
  seams.Prompts.Expect_Error("Invalid Reminder Specified", Offset_Refused);
  Act(editor, "OKBtn");
  EXPECT_EQ(Where(editor) + Seen(editor, "AlarmBox"), "Notes/AlarmBox5 s before");
  seams.Prompts.Expect_Error("User's Name Required", "A User's Name must be specified before continuing");
  Act(editor, "AlarmBox=5|OKBtn");
  EXPECT_EQ(Where(editor), "Access/UserBox");
  EXPECT_TRUE(editor->isVisible());
}

TEST_F(Reminder_Form, A_Typed_Date_That_Is_None_Is_Refused_And_A_Distant_One_Asked_About) {
  QWidget* editor = Edit("");
  seams.Prompts.Expect_Error("Validation Failed", "A subject for this event is required.");
  seams.Prompts.Expect_Error(
      "Invalid Date", "The Date entered is invalid. Please specify a valid date in the format M/d/yyyy");
  Act(editor, "TimeBox|EventDate=2/30/2024|OKBtn|Edit1=Lunch|OKBtn");
  EXPECT_EQ(Where(editor) + Seen(editor, "EventDate"), "Notes/EventDate2/30/2024");
  const auto expect_question = [this](int answer) {
    seams.Prompts.Expect_Question("Distant Date",
                                  "The date 2/3/1124 is more than a hundred years from today.\r\n\r\nPlease "
                                  "confirm that it is right",
                                  answer);
  };
  for (const int answer : {Answer_No, Answer_Yes}) {
    expect_question(answer);
    Act(editor, "EventDate=2/3/1124|OKBtn");
    EXPECT_EQ(editor->isVisible(), answer == Answer_No);
  }
  Edit(Query_Text("SELECT Key FROM KT_Events_Data"));
  Act(form.get(), "Edit2=Here|OKBtn");
  EXPECT_FALSE(form->isVisible()) << "it was so before";
  CurrentDate = Encode_Date(1124, 2, 3);
  expect_question(Answer_No);
  Act(Edit("", "New"), "OKBtn");
}

TEST_F(Reminder_Form, A_New_Set_Of_Each_Frequency_Has_Its_Dates) {
  const std::pair<const char*, const char*> cases[] = {
      {"DailyBtn|DailyNumber=9", "0.0 9.0 18.0 27.0"},
      {"DailyBtn|DailyOn|DailyMonday|DailyFriday", "0.0 4.0 11.0 18.0 25.0"},
      {"WeeklyBtn|WeeklyNumber=2", "0.0 14.0 28.0"},
      {"MonthlyBtn|MonthlyOn|MonthlyInstance=second|MonthlyPattern=Monday", "0.0 28.0"},
      {"YearlyBtn|YearlyNumber=1", "0.0"},
  };
  for (const auto& [inputs, dates] : cases) {
    SCOPED_TRACE(inputs);
    QWidget* editor = Edit("", "Set");
    Act(editor, std::string("TimeBox|RecurBtn|") + inputs + "|EndDate=2024-02-13|OKBtn");
    EXPECT_EQ(Dates(), dates);
    Run_Sql("DELETE FROM KT_Events_Data; DELETE FROM KT_Events");
  }
}

TEST_F(Reminder_Form, Recurrence_Comes_And_Goes_And_Follows_The_Date) {
  QWidget* editor = Edit("", "Set");
  EXPECT_EQ(Seen_After("RecurBtn|MonthlyBtn", editor, "RecurBtn EndDate MonthlyInstance MonthlyPattern"),
            "Remove Recurrence|1/15/2025|(third)|(Monday)");
  Act(editor, "MonthlyOn");
  Control<QWidget>(editor, "qt_tabwidget_tabbar")->setFocus();
  for (const char* next : {"MonthlyBtn", "MonthlyOn", "MonthlyInstance"}) {
    QTest::keyClick(editor->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Where(editor), std::string("Recurrence/") + next) << "to what is chosen";
  }
  EXPECT_EQ(Seen_After("EventDate=2024-02-06", editor, "MonthlyInstance MonthlyPattern MonthlyBtn"),
            "first|Tuesday|+");
  EXPECT_EQ(Seen_After("YearlyBtn", editor, "YearlyInstance YearlyPattern"), "(first)|(Tuesday)");
  seams.Prompts.Expect_Question(
      "Discard changes?", "The changes in \"Create New Event\" have not been saved.\r\n\r\nDiscard them?",
      Answer_No);
  Cancel(editor);
  EXPECT_EQ(Seen_After("EndDate=1/1/3000|RecurBtn", editor, "RecurBtn RecurrencePage"),
            "Make Recurring|(hidden)");
  EXPECT_EQ(Control<QWidget>(editor, "RecurBtn")->accessibleName(), QStringLiteral("Make Recurring"));
  Act(editor, "OKBtn");
  EXPECT_EQ(Dates(), "22.542") << "a plain event again";
}

TEST_F(Reminder_Form, One_Of_A_Set_Is_Opened_Alone_Or_The_Whole_Or_Not_At_All) {
  const std::string key = Make(5);
  EXPECT_FALSE(Properties(key, Cancel));
  std::unique_ptr<TModal_Driver> next;
  EXPECT_FALSE(Properties(key, [&](QWidget* question) {
    EXPECT_EQ(
        question->windowTitle().toStdString() + Seen(question, "Label1 Label2 RadioButton1 RadioButton2"),
        "Open Recurring Eventhidden|This Event is part of a Recurring Set. Do you wish to open just this "
        "event or the whole set?|-|+");
    EXPECT_EQ(Control<QWidget>(question, "RadioButton1")->accessibleName(), "Open all Events in the Set");
    next = std::make_unique<TModal_Driver>([](QWidget* editor) {
      EXPECT_EQ(editor->windowTitle(), QStringLiteral("Edit Recurring Event Set"));
      Cancel(editor);
    });
    Confirm_With("RadioButton1")(question);
  }));
  QWidget* editor = Edit(key);
  EXPECT_EQ(editor->windowTitle().toStdString() + "/" + Where(editor),
            "Edit Single Event from Recurring Set/Notes/Edit1");
  EXPECT_EQ(Seen(editor, "RecurBtn PrivateBox"), "hidden|(-)");
  editor = Edit_Set(key);
  EXPECT_EQ(Where(editor) + Seen(editor, "EventDate"), "Recurrence/Edit11/15/2024");
  Act(editor, "Edit1=New|OKBtn");
  EXPECT_EQ(Dates() + Query_Text("SELECT Title FROM KT_Events"), "0.5 1.5 2.5 3.5 4.5New")
      << "no date touched";
}

TEST_F(Reminder_Form, A_Changed_Rule_Is_Applied_Whatever_The_Answer_But_Only_Yes_Closes) {
  QWidget* editor = Edit_Set(Make(5));
  for (const auto& [input, answer, dates] : {std::tuple("DailyNumber=2|OKBtn", Answer_No, "0.5 2.5 4.5"),
                                             {"DailyNumber=4|OKBtn", Answer_Yes, "0.5 4.5"}}) {
    seams.Prompts.Expect_Question(
        "Recurring Event Changed",
        "Warning: Changing the properties of this Event Set will reset all events within the Set. "
        "\r\n\r\nThis means that any changes made, by individually editing an event, will be lost and any "
        "events marked complete will be reinstated\r\n\r\nPlease confirm you wish to do this",
        answer);
    Act(editor, input);
    EXPECT_EQ(editor->isVisible(), answer == Answer_No);
    EXPECT_EQ(Dates(), dates);
    EXPECT_TRUE(editor->close()) << "nothing is unsaved";
    editor->show();
  }
}

TEST_F(Reminder_Form, A_Long_Set_Is_Saved_And_One_Beyond_All_Measure_Asked_About) {
  QWidget* editor = Edit("", "Set");
  seams.Prompts.Expect_Question("Many Events",
                                "This Event Set consists of 10959 events, and saving it will take a "
                                "while.\r\n\r\nPlease confirm you wish to do this",
                                Answer_No);
  Act(editor, "RecurBtn|EndDate=2054-01-15|OKBtn");
  EXPECT_EQ(Counts(), "1 1 0 +1") << "nothing was written";
  Act(editor, "EndDate=2026-10-10|OKBtn");
  EXPECT_EQ(Counts(), "1 1000 0");
}

TEST_F(Reminder_Form, A_Failed_Save_Tells_Why_And_Keeps_The_Inputs) {
  QWidget* editor = Edit(Make(1));
  Plant("UPDATE ON KT_Events", "fm_Reminders:Process_Update:1 [KT_Events/KT_Events_Data/KT_Alarms]");
  EXPECT_EQ(Seen_After("Edit1=New|OKBtn", editor, "Edit1"), "New");
  EXPECT_EQ(Query_Text("SELECT Title FROM KT_Events"), "Old");
  Unplant();
  Act(editor, "OKBtn");
  EXPECT_EQ(form->result(), QDialog::Accepted) << "saved once the fault is gone";
  database.Reopen_Read_Only();
  EXPECT_FALSE(Reminder_Properties("", {}, database.Book().Key, {}, false)) << "no new event can be begun";
}

TEST_F(Reminder_Form, Privacy_Is_One_Field_In_Two_Places) {
  QWidget* editor = Edit("", "x");
  for (const auto& [input, seen] : {std::pair("PageControl1=2", "-|-|+"),
                                    {"PrivateBox", "+|+|-"},
                                    {"AllowBtn", "-|-|+"},
                                    {"RestrictBtn", "+|+|-"}}) {
    Act(editor, input);
    EXPECT_EQ(Seen(editor, "PrivateBox RestrictBtn AllowBtn"), seen) << input;
  }
  Act(editor, "OKBtn");
  EXPECT_EQ(Query_Text("SELECT Private FROM KT_Events"), "1");
}

TEST_F(Reminder_Form, What_May_Only_Be_Read_Closes_Unsaved_And_What_Is_Denied_Stays_Open) {
  // As a page opens another user's private event.
  QWidget* editor = Edit(Make(1), {}, true);
  EXPECT_EQ(Seen(editor, "Edit1 Memo1 PriorityBox AlarmCheck PrivateBox UserBox JournalBox"),
            "(Old)|()|(Priority 5)|(-)|(-)|(hidden)|(hidden)");
  Control<QLineEdit>(editor, "Edit1")->clear();
  Act(editor, "OKBtn");
  EXPECT_EQ(form->result(), QDialog::Accepted) << "nothing is validated";
  EXPECT_EQ(Query_Text("SELECT Title FROM KT_Events"), "Old");
  Sign_In({.See = true});
  seams.Prompts.Expect_Error("Access Denied",
                             "Request denied as you do not have the required permission for \"Home\"");
  Act(Edit(""), "OKBtn");
  EXPECT_TRUE(form->isVisible()) << "asked before the missing subject";
}

TEST_F(Reminder_Form, The_Contact_Opens_Where_The_Host_Has_Pages_For_It) {
  const std::string key = Make(1), known = database.Book().Calendar;
  std::string opened;
  EXPECT_EQ(Seen(Edit(key), "ContactBtn"), "hidden");
  Install_Contact_Opener({[&known](const std::string& contact) { return contact == known; },
                          [&opened](const std::string& contact) { opened = contact; }});
  Act(Edit(key), "ContactBtn");
  EXPECT_EQ(opened, known);
  EXPECT_EQ(Seen(Edit(key, {}, true), "ContactBtn"), "hidden") << "of another user's private event";
  Install_Contact_Opener({});
}

}  // namespace
