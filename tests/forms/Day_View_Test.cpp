#include "Kt_labels.h"
#include "View_Fixture.h"
#include "fm_Contacts_Page3b.h"

namespace {

struct Day_View : TView_Fixture {
  Day_View() : TView_Fixture(&Display_Calendar_Dayview) { Write_Bool("General", "Show Calendar", true); }

  /// The day of the title, of the calendar beside the list, and the entries.
  std::string Day() const {
    const auto* label = Control<QLabel>(view, "Label1");
    const QDate picked = Control<QCalendarWidget>(view, "Cal")->selectedDate();
    return (label->text().section(QLatin1Char(' '), 2, 3) + picked.toString(QStringLiteral(" (d) ")))
               .toStdString() +
           Shown();
  }
};

TEST_F(Day_View, Takes_The_Place_Of_Another_Page_That_Is_Willing) {
  struct TStubborn : TForm {
    bool Willing = false;
    bool FormCloseQuery() override { return Willing; }
  };
  const QPointer<TStubborn> other = new TStubborn;
  form.Set(other);
  EXPECT_FALSE(Display_Calendar_Dayview(&home, form, "", "", true));
  EXPECT_EQ(form.Get(), other);
  other->Willing = true;
  Display();
  Settle();
  EXPECT_FALSE(other);
}

TEST_F(Day_View, Shows_A_Day_Of_The_Book_Or_Of_One_Owner) {
  Add("calendar", 0.5);
  Add("contact", 0.1, {}, "Contact = '" + contact + "'");
  Add("tomorrow", 1.5);
  Display();
  EXPECT_EQ(Day(), "15 January (15) contact calendar");
  auto* header = Control<QWidget>(view, "EventTitlePanel");
  EXPECT_EQ(Control<QWidget>(view, "NoEventsPanel")->rect(), header->geometry()) << "covers the caption";
  const auto* first = view;
  Display(false);
  EXPECT_EQ(Shown(), "calendar");
  EXPECT_EQ(view, first) << "reused";
  CurrentDate = Monday + 2;
  Send_Message(view, umDateChanged, 0, 0);
  EXPECT_EQ(Shown(), "");
  EXPECT_FALSE(header->isVisible());
}

TEST_F(Day_View, Steps_Days_And_Finds_Entries_To_Both_Sides) {
  Add("before", -39.5);
  Add("after", 3.5);
  CurrentDate = Monday + 0.6;
  Display();
  Act(view, "SpeedButton1|SpeedButton2|SpeedButton2");
  EXPECT_EQ(Day(), "16 January (15) ") << "the calendar is not told";
  Act(view, "Nextbtn");
  EXPECT_EQ(Day(), "18 January (18) after");
  seams.Prompts.Expect_Info("No Later Events",
                            "No eligible calendar events found after the period Thursday, 18 January 2024");
  Act(view, "NextMenu|PrevMenu");
  EXPECT_EQ(Shown(), "before");
  Act(view, "ToolButton7");
  EXPECT_EQ(CurrentDate, Monday + 0.5) << "with the time of day";
  Run_Sql("ALTER TABLE KT_Contacts RENAME TO Elsewhere");
  seams.Prompts.Expect_Unread("no such table: KT_Contacts", "Reminder_Utils:Locate_Event [KT_Events_Data]");
  Act(view, "Nextbtn");
  Run_Sql("ALTER TABLE Elsewhere RENAME TO KT_Contacts");
}

TEST_F(Day_View, Shortens_Its_Title_And_Headings_Where_There_Is_No_Room) {
  Add("a", 0.5);
  Display();
  const auto title = [this](const char* room_for) {
    auto* label = Control<TTitle_Label>(view, "Label1");
    label->resize(label->fontMetrics().horizontalAdvance(QString::fromLatin1(room_for)) + 2, 20);
    return label->text().toStdString() + (label->Whole() == label->text() ? "" : " shortened");
  };
  EXPECT_EQ(title(" Monday, 15 January 2024"), " Monday, 15 January 2024");
  EXPECT_EQ(title(" Mon, 15 Jan 2024"), " Mon, 15 Jan 2024 shortened");
  EXPECT_EQ(title(" 1/15/2024"), " 1/15/2024 shortened");
  const auto* text = Control<QWidget>(view, "SortDescLabel");
  const auto* priority = Control<QWidget>(view, "SortPrtyLabel");
  list->resize(220, 100);
  EXPECT_TRUE(priority->isVisible());
  EXPECT_LT(text->geometry().right(), priority->x());
  list->resize(120, 100);
  EXPECT_TRUE(text->isVisible() && !priority->isVisible()) << "the text has the room that there is";
}

TEST_F(Day_View, New_Entries_Belong_To_The_Owner_But_Tasks_Of_The_Whole_Calendar) {
  Display();
  Control<QCalendarWidget>(view, "Cal")->setSelectedDate(QDate(2024, 1, 20));
  for (const auto& [whole, command, calendar, owner] :
       {std::tuple(false, "AddTask1", " (20) ", contact),
        {true, "AddTask1", " (20) ", database.Book().Calendar},
        {true, "Addbtn", " (15) ", contact}}) {
    form.As<TCalendar_View>()->Set_Keys(database.Book().Key, contact, whole);
    Answer(Confirm_With("Edit1=x"), command);
    EXPECT_EQ(Query_Text("SELECT Contact FROM KT_Events_Data ORDER BY Key DESC LIMIT 1"), owner);
    EXPECT_NE(Day().find(calendar), std::string::npos) << "the calendar is told of a new event only";
  }
}

TEST_F(Day_View, The_Calendar_Beside_The_List_Is_Remembered) {
  Write_Bool("General", "Show Calendar", false);
  Display();
  const char* names = "CalPanel ToolButton4 GotoDate1";
  EXPECT_EQ(Seen(view, names), "hidden|-|-Show Calendar");
  EXPECT_EQ(Texts("ToolButton4"),
            "Show Calendar/Displays a Calendar view allowing different dates to be selected");
  EXPECT_EQ(Seen_After("ToolButton4", view, names), "|+|+Hide Calendar");
  EXPECT_EQ(Texts("GotoDate1"), "Hide Calendar/Hides the Calendar display");
  form.Get()->Close_Form();
  Display();
  EXPECT_EQ(Seen(view, names), "|+|+Hide Calendar");
  Act(view, "GotoDate1");
  EXPECT_EQ(Seen(view, names) + (Read_Bool("General", "Show Calendar", true) ? "!" : ""),
            "hidden|-|-Show Calendar");
}

TEST_F(Day_View, Asks_The_Page_Around_It_For_Other_Views) {
  Display();
  Act(view, "ToolButton10|ToolButton9|ToolButton8|ToolButton11|DailyView1|MonthlyView1|AllView1");
  Settle();
  EXPECT_EQ(home.Asked, (QList<qintptr>{11, 12, 13, 11, 12, 13})) << "its own is shown already";
}

}  // namespace
