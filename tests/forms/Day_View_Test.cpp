#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

#include "Entry_Fixture.h"
#include "Entry_List.h"
#include "Reminder_Utils.h"
#include "fm_Contacts_Page3b.h"

using namespace KTReminds;
using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

/// The page around the view, as the calendar's home page is.
struct THome : TForm {
  QList<qintptr> Asked;
  void Handle_Message(const TMessage& message) override {
    if (message.Number() == umDisplayForm) Asked.append(message.WParam);
  }
};

void Confirm(QWidget* dialog) {
  QTest::keyClick(dialog, Qt::Key_Return);
}
void Cancel(QWidget* dialog) {
  QTest::keyClick(dialog, Qt::Key_Escape);
}
std::function<void(QWidget*)> Enter_Subject(const char* subject) {
  return [subject](QWidget* editor) {
    Control<QLineEdit>(editor, "Edit1")->setText(QLatin1String(subject));
    Confirm(editor);
  };
}

class Day_View : public TEntry_Fixture {
 protected:
  struct TAdded {
    double Time = 0.5;  // of the day; none when negative
    const char* Title = "Event";
    int Type = 0, Priority = 5;
    bool Alarm = false, Done = false, Private = false;
    std::string Contact = {};
    double Day = Monday;
  };

  Day_View() {
    SortKey = 2;
    SortAscending = true;
    home.resize(640, 400);
    In_Update([this] { contact = Create_Contact(database.Book().Key, "Contact"); });
  }
  void Add(const TAdded& added) const {
    TNew_Event event = New_Event(added.Title, added.Day + std::max(added.Time, 0.0));
    if (!added.Contact.empty()) event.Owner.Contact = added.Contact;
    if (added.Private) event.Record.User = "somebody";
    event.Record.AllDay = added.Time < 0;
    event.Record.EventType = static_cast<TEntry_Type>(added.Type);
    event.Record.Priority = added.Priority;
    event.Record.Private = added.Private;
    event.Alarm.On = added.Alarm;
    const std::string key = Write(event);
    if (added.Done) Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE Key = '" + key + "'");
  }
  void Display(bool whole_calendar = true) {
    ASSERT_TRUE(
        Display_Calendar_Dayview(&home, form, database.Book().Key, database.Book().Calendar, whole_calendar));
    view = form.As<TContacts_Page3b_Frm>();
    list = Control<TEntry_List>(view, "ListView1");
    if (!home.isVisible()) Show(home);
  }
  QAction* Action(const char* name) { return Control<QAction>(view, name); }
  /// Gives a command, or presses a key in the list, and acts on the dialog that it opens.
  void Answer(const std::function<void(QWidget*)>& act, const char* command) {
    TModal_Driver driver(act);
    Action(command)->trigger();
  }
  void Answer(const std::function<void(QWidget*)>& act, Qt::Key key) {
    TModal_Driver driver(act);
    QTest::keyClick(list, key);
  }
  /// The tools that are enabled, with their menu items, of those that depend on the selection.
  std::string Enabled() {
    std::string enabled;
    for (const auto& [tool, item] : {std::pair("AckBtn", "Ackmenu"), std::pair("PropsBtn", "PropsMenu"),
                                     std::pair("Delbtn", "DelMenu")}) {
      const bool on = Control<QToolButton>(view, tool)->isEnabled();
      EXPECT_EQ(Action(item)->isEnabled(), on) << item;
      if (on) enabled += std::string(enabled.empty() ? "" : " ") + tool;
    }
    return enabled;
  }
  std::string Texts(const char* name) {
    return (Action(name)->text() + QLatin1Char('/') + Action(name)->statusTip()).toStdString();
  }
  std::string Shown() const {
    std::string shown;
    for (std::size_t i = 0; i < list->Items().Count(); ++i)
      shown += (i ? " " : "") + list->Items()[i].Data->Description.Str();
    return shown;
  }
  std::string Title() const { return Control<QLabel>(view, "Label1")->text().toStdString(); }
  QDate Picked() const { return Control<QCalendarWidget>(view, "Cal")->selectedDate(); }

  std::string contact;
  TForm_Reference form;
  THome home;
  TContacts_Page3b_Frm* view = nullptr;
  TEntry_List* list = nullptr;
};

TEST_F(Day_View, Is_Reused_Or_Takes_The_Place_Of_Another_Page) {
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
  EXPECT_EQ(view->parentWidget(), &home);
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{2, 2, 2})) << "the picker makes one of its own";
  Add({});
  const auto* first = view;
  Display();
  EXPECT_EQ(view, first);
  EXPECT_EQ(Shown(), "Event") << "refreshed";
}

TEST_F(Day_View, Shows_A_Day_Of_The_Book_Or_Of_One_Owner) {
  Add({.Title = "calendar"});
  Add({.Time = 0.1, .Title = "contact", .Contact = contact});
  Add({.Title = "tomorrow", .Day = Monday + 1});
  Display();
  EXPECT_EQ(Title(), " Monday, 15 January 2024");
  EXPECT_EQ(Shown(), "contact calendar");
  auto* header = Control<QWidget>(view, "EventTitlePanel");
  EXPECT_EQ(Control<QWidget>(view, "NoEventsPanel")->rect(), header->geometry()) << "covers the caption";
  Display(false);
  EXPECT_EQ(Shown(), "calendar");
  EXPECT_TRUE(header->isVisible());
  Kt_util_01::CurrentDate = Monday + 2;
  Send_Message(view, umDateChanged, 0, 0);
  EXPECT_EQ(Shown(), "");
  EXPECT_FALSE(header->isVisible());
  char name[64] = "";
  Send_Message(view, umGetFormName, 0, reinterpret_cast<qintptr>(name));
  EXPECT_STREQ(name, "Contacts_Page3b_Frm0");
}

TEST_F(Day_View, Commands_Follow_The_Selection) {
  Add({.Time = 0.1});
  Add({.Time = 0.2, .Type = 3, .Done = true});
  Add({.Time = 0.3, .Private = true});
  Display();
  EXPECT_EQ(Enabled(), "");
  EXPECT_EQ(Texts("AckBtn"), "Toggle Event's State/Toggle Event's State");
  list->Select_Row(0);
  EXPECT_EQ(Enabled(), "AckBtn PropsBtn Delbtn");
  EXPECT_EQ(Texts("AckBtn"), "Mark Complete/Mark Complete");
  for (const int row : {1, 2}) {
    list->Select_Row(row);
    EXPECT_EQ(Enabled(), row == 1 ? "AckBtn PropsBtn Delbtn" : "PropsBtn");
    EXPECT_EQ(Texts("AckBtn"), "Mark Outstanding/Mark Outstanding") << "left as it was for the private one";
    EXPECT_EQ(Texts("Ackmenu"), "&Mark Outstanding/Marks the selected item as still being outstanding");
  }
  EXPECT_EQ(Control<QToolButton>(view, "AckBtn")->accessibleName(), QStringLiteral("Mark Outstanding"));
}

TEST_F(Day_View, Marks_In_Place_By_Tool_And_By_A_Click_On_The_Image) {
  Add({.Time = 0.1});
  Add({.Time = 0.2, .Private = true});
  Display();
  const auto click = [this](int row, int x) {
    const int y = list->visualRect(list->model()->index(row, 0)).center().y();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(x, y));
    return Query_Number("SELECT sum(Actioned) FROM KT_Events_Data");
  };
  const auto* item = &list->Items()[0];
  EXPECT_EQ(click(0, 60), 0) << "beside the image";
  EXPECT_EQ(click(0, 10), 1);
  EXPECT_EQ(item->Image, Image_Done_Event);
  EXPECT_EQ(list->Selected(), item) << "not built again";
  EXPECT_EQ(Action("Ackmenu")->text(), QStringLiteral("&Mark Outstanding"));
  Action("Ackmenu")->trigger();
  EXPECT_EQ(click(1, 10), 0) << "private";
  In_Update([&] {
    const std::string anna = Create_User("Anna", false);
    Set_Rights(database.Book().Key, anna, {.Delete = true, .See = true});
    Kt_util_01::Set_User_Key(anna);
  });
  EXPECT_EQ(click(0, 10), 0) << "not allowed";
  EXPECT_EQ(Enabled(), "PropsBtn Delbtn");
}

TEST_F(Day_View, The_Order_Is_Shared_And_Keeps_The_Selection) {
  Add({.Time = 0.1, .Title = "b", .Priority = 1});
  Add({.Time = 0.2, .Title = "a", .Priority = 9});
  Display();
  list->Select_Row(0);
  const auto click = [this](const char* label) {
    QTest::mouseClick(Control<QLabel>(view, label), Qt::LeftButton);
    return Shown() + (list->Selected_Row() == 0 ? "1" : "2");
  };
  EXPECT_EQ(click("SortDescLabel"), "a b2");
  EXPECT_EQ(click("SortDescLabel"), "b a1");
  EXPECT_EQ(click("SortPrtyLabel"), "b a1") << "ascending again";
  EXPECT_EQ(click("SortPrtyLabel"), "a b2");
  form.Get()->Close_Form();
  Display();
  EXPECT_EQ(Shown(), "a b") << "in another view, too";
  const auto checked = [this] {
    emit Control<QMenu>(view, "SortBy1")->aboutToShow();
    std::string names;
    for (const char* name : {"Sort0", "Sort1", "Sort2", "Sort3", "Sort4", "Ascending1", "Descending1"})
      if (Action(name)->isChecked()) names += std::string(name) + " ";
    return names;
  };
  EXPECT_EQ(checked(), "Sort4 Descending1 ");
  Action("Ascending1")->trigger();
  EXPECT_EQ(Shown(), "b a");
  Action("Sort3")->trigger();
  EXPECT_EQ(Shown(), "a b");
  EXPECT_EQ(checked(), "Sort3 Ascending1 ");
}

TEST_F(Day_View, Steps_Days_And_Finds_Entries_To_Both_Sides) {
  Add({.Title = "before", .Day = Monday - 40});
  Add({.Title = "after", .Day = Monday + 3});
  Kt_util_01::CurrentDate = Monday + 0.6;
  Display();
  Click(view, "SpeedButton1");
  EXPECT_EQ(Kt_util_01::CurrentDate, Monday - 0.4);
  Click(view, "SpeedButton2");
  Click(view, "SpeedButton2");
  EXPECT_EQ(Title(), " Tuesday, 16 January 2024");
  EXPECT_EQ(Picked(), QDate(2024, 1, 15)) << "is not told";

  Action("Nextbtn")->trigger();
  EXPECT_EQ(Kt_util_01::CurrentDate, Monday + 3);
  EXPECT_EQ(Shown(), "after");
  EXPECT_EQ(Picked(), QDate(2024, 1, 18));
  seams.Prompts.Expect_Info("No Later Events",
                            "No eligible calendar events found after the period Thursday, 18 January 2024");
  Action("NextMenu")->trigger();
  EXPECT_EQ(Kt_util_01::CurrentDate, Monday + 3);
  Action("PrevMenu")->trigger();
  EXPECT_EQ(Shown(), "before");
  seams.Prompts.Expect_Info(
      "No Prior Events", "No eligible calendar events found prior to the period Wednesday, 06 December 2023");
  Action("PrevBtn")->trigger();
  Action("ToolButton7")->trigger();
  EXPECT_EQ(Kt_util_01::CurrentDate, Monday + 0.5) << "with the time of day";
  EXPECT_EQ(Picked(), QDate(2024, 1, 15));
}

TEST_F(Day_View, Adds_Opens_And_Deletes_By_Keys_And_Tools) {
  Display();
  Answer(Enter_Subject("added"), Qt::Key_Insert);
  EXPECT_EQ(Shown(), "added");
  QTest::keyClick(list, Qt::Key_Delete);  // nothing is selected
  list->Select_Row(0);
  Answer(Enter_Subject("edited"), Qt::Key_Return);
  EXPECT_EQ(Shown(), "edited");
  list->Select_Row(0);
  Answer(Cancel, Qt::Key_Delete);
  EXPECT_EQ(list->Selected_Row(), 0) << "nothing was refreshed";
  Answer(Confirm, Qt::Key_Delete);
  EXPECT_EQ(Shown(), "");
  Answer(Enter_Subject("by Enter"), Qt::Key_Return);
  EXPECT_EQ(Shown(), "by Enter") << "without a selection";

  Add({.Time = 0.1, .Title = "task", .Type = 3});
  Add({.Time = 0.9, .Title = "private", .Private = true});
  view->DoRefresh();
  list->Select_Row(0);
  Answer(
      [](QWidget* editor) {
        EXPECT_EQ(editor->objectName(), QStringLiteral("Task_Frm"));
        Cancel(editor);
      },
      "PropsMenu");
  list->Select_Row(2);
  QTest::keyClick(list, Qt::Key_Delete);  // not allowed
  Answer(
      [](QWidget* editor) {
        EXPECT_TRUE(Control<QLineEdit>(editor, "Edit1")->isReadOnly());
        Cancel(editor);
      },
      "PropsBtn");
}

TEST_F(Day_View, New_Entries_Belong_To_The_Owner_But_Tasks_Of_The_Whole_Calendar) {
  Display();
  const auto owner_of_last = [] {
    return Query_Text("SELECT Contact FROM KT_Events_Data ORDER BY Key DESC LIMIT 1");
  };
  for (const bool whole : {false, true}) {
    view->Set_Keys(database.Book().Key, contact, whole);
    Answer(Enter_Subject("x"), "Addbtn");
    EXPECT_EQ(owner_of_last(), contact);
    Answer(Enter_Subject("x"), "AddTask1");
    EXPECT_EQ(owner_of_last(), whole ? database.Book().Calendar : contact);
  }
}

TEST_F(Day_View, The_Calendar_Beside_The_List_Is_Remembered) {
  Display();
  EXPECT_FALSE(Control<QWidget>(view, "CalPanel")->isVisible());
  EXPECT_EQ(Texts("ToolButton4"),
            "Show Calendar/Displays a Calendar view allowing different dates to be selected");
  Control<QToolButton>(view, "ToolButton4")->click();
  EXPECT_TRUE(Action("ToolButton4")->isChecked() && Action("GotoDate1")->isChecked());
  EXPECT_EQ(Texts("GotoDate1"), "Hide Calendar/Hides the Calendar display");
  EXPECT_TRUE(Kt_util_01::Read_Bool("General", "Show Calendar", false));
  form.Get()->Close_Form();
  Display();
  EXPECT_TRUE(Control<QWidget>(view, "CalPanel")->isVisible());
  Action("GotoDate1")->trigger();
  EXPECT_FALSE(Action("ToolButton4")->isChecked());
  EXPECT_FALSE(Kt_util_01::Read_Bool("General", "Show Calendar", true));
}

TEST_F(Day_View, Asks_The_Page_Around_It_For_Other_Views) {
  Display();
  for (const char* name : {"ToolButton10", "ToolButton9", "ToolButton8", "ToolButton11", "DailyView1",
                           "MonthlyView1", "AllView1"})
    Action(name)->trigger();
  Settle();
  EXPECT_EQ(home.Asked, (QList<qintptr>{11, 12, 13, 11, 12, 13})) << "its own is shown already";
  EXPECT_TRUE(Action("ToolButton10")->isChecked());
  view->Set_View_Available(11, false);
  EXPECT_FALSE(Action("ToolButton9")->isEnabled() || Action("DailyView1")->isEnabled());
  EXPECT_TRUE(Action("ToolButton8")->isEnabled());
}

TEST_F(Day_View, Can_Be_Closed_While_Its_Dialogs_Are_Open) {
  Add({});
  for (const char* command : {"Addbtn", "AddTaskBtn", "PropsBtn", "Delbtn"}) {
    Display();
    list->Select_Row(0);
    const QPointer<TForm> alive = view;
    const std::size_t shown = list->Items().Count();
    Answer(
        [&](QWidget* dialog) {
          EXPECT_TRUE(form.Get()->Close_Form());
          EXPECT_EQ(form.Get(), nullptr);
          Settle();
          EXPECT_TRUE(alive) << "its handler is still at work";
          dialog->objectName() == QStringLiteral("Delete_Reminder_Frm") ? Confirm(dialog)
                                                                        : Enter_Subject("x")(dialog);
        },
        command);
    EXPECT_TRUE(alive && list->Items().Count() == shown) << "is not refreshed any more";
    Settle();
    EXPECT_FALSE(alive) << command;
  }
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events_Data"), 2) << "two added, one deleted";
  Display();
  list->Select_Row(0);
  const QPointer<TForm> alive = view;
  Answer(
      [&](QWidget* dialog) {
        delete view;  // as its parent does
        Confirm(dialog);
      },
      Qt::Key_Delete);
  EXPECT_FALSE(alive);
}

TEST_F(Day_View, A_View_Of_Several_Lists_Has_One_Selection) {
  struct TTwo_Days : TCalendar_View {
    TEntry_List* Lists[2] = {new TEntry_List(this), new TEntry_List(this)};
    TTwo_Days() : TCalendar_View(11) {
      Set_Up({new QWidget(this), new QLabel(this), {Lists[0], Lists[1]}, new QWidget(this)});
    }
    void DoRefresh() override {
      for (const int day : {0, 1})
        Build_Reminder_DayView(OwnerKey, NodeKey, Lists[day]->Items(), Monday + day, true, WholeCalendar);
    }
  } two_days;
  Add({.Title = "today"});
  Add({.Title = "tomorrow", .Day = Monday + 1});
  two_days.Set_Keys(database.Book().Key, {}, true);
  two_days.DoRefresh();
  two_days.Lists[0]->Select_Row(0);
  two_days.Lists[1]->Select_Row(0);
  EXPECT_EQ(two_days.Lists[0]->Selected_Row(), -1);
  Control<QAction>(&two_days, "AckBtn")->trigger();
  EXPECT_EQ(Query_Number("SELECT EventDate FROM KT_Events_Data WHERE Actioned = 1"), Monday + 1);
}

TEST_F(Day_View, Looks) {
  Run_Sql("INSERT INTO KT_Holidays (HolidayDate, Name, Country) VALUES (45306, 'King', 'Here')");
  Add({.Time = -1, .Title = "A task that is due", .Type = 3});
  Add({.Time = 0.375, .Title = "Overdue since nine", .Priority = 1, .Alarm = true});
  Add({.Time = 0.4, .Title = "Done", .Done = true});
  Add({.Time = 0.6, .Title = "A title far too long for a narrow window", .Alarm = true});
  Add({.Time = 0.7, .Private = true});
  Kt_util_01::Write_Bool("General", "Show Calendar", true);
  QPalette dark(QColor(0x35, 0x35, 0x35));
  dark.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
  dark.setColor(QPalette::Link, QColor(0x80, 0xB0, 0xFF));
  const QPalette light = QApplication::palette();
  for (const auto& [palette, name] : {std::pair(light, "light"), std::pair(dark, "dark")}) {
    QApplication::setPalette(palette);
    Settle();
    for (const int width : {420, 800}) {
      home.resize(width, 300);
      Display();
      list->Select_Row(2);
      EXPECT_EQ(Make_Checks(view), "") << name << width;
      Picture(&home, QStringLiteral("day_%1_%2").arg(QLatin1String(name)).arg(width));
    }
  }
  QApplication::setPalette(light);
}

}  // namespace
