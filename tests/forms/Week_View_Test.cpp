#include "Kt_labels.h"
#include "View_Fixture.h"
#include "fm_Contacts_Page3a.h"

namespace {

struct Week_View : TView_Fixture {
  Week_View() : TView_Fixture(&Display_Calendar_Weekview) {
    home.resize(640, 500);
    Write_Bool("General", "Show Calendar", true);
  }

  template <class T>
  T* Of_Day(const char* name, int day) const {
    return Control<T>(view, (name + std::to_string(day)).c_str());
  }
  TEntry_List* List(int day) const { return Of_Day<TEntry_List>("ListView", day); }
  void Select(const std::string& title) const {
    for (int day = 1; day <= 7; ++day)
      for (std::size_t row = 0; row < List(day)->Items().Count(); ++row)
        if (List(day)->Items()[row].Data->Description == title) List(day)->Select_Row(static_cast<int>(row));
  }
  /// The entries of the days that have some, with * for the one that is selected.
  std::string Week() const {
    std::string seen;
    for (int day = 1; day <= 7; ++day) {
      auto& items = List(day)->Items();
      for (std::size_t i = 0; i < items.Count(); ++i)
        seen += (seen.empty() ? "" : " ") + std::to_string(day) + items[i].Data->Description.Str() +
                (List(day)->Selected_Row() == static_cast<int>(i) ? "*" : "");
    }
    return seen;
  }
  /// The day whose header is bold, and what the picker shows.
  std::string Bold() const {
    std::string bold;
    for (int day = 1; day <= 7; ++day)
      if (Of_Day<QWidget>("WeekHeader", day)->font().bold()) bold += std::to_string(day);
    return bold +
           Control<QCalendarWidget>(view, "Cal")->selectedDate().toString(QStringLiteral(" d")).toStdString();
  }
  /// Drops an entry on a day's list, as the window system tells it; whether it was taken.
  bool Drop(const std::string& title, int day) const {
    Select(title);
    QMimeData data;
    data.setData(QStringLiteral("application/x-plexidex-entry"),
                 QByteArray::fromStdString(form.As<TCalendar_View>()->Selected_Key()));
    QDragEnterEvent enter({5, 5}, Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(List(day)->viewport(), &enter);
    QDropEvent drop({5, 5}, Qt::MoveAction, &data, Qt::LeftButton, {});
    if (enter.isAccepted()) QApplication::sendEvent(List(day)->viewport(), &drop);
    Settle();
    return enter.isAccepted();
  }
};

TEST_F(Week_View, Shows_The_Days_From_Monday_To_Sunday) {
  Run_Sql("INSERT INTO KT_Holidays (HolidayDate, Name) VALUES (45309, 'King')");
  for (const auto& [title, day] : {std::pair("before", -0.5), {"mon", 0.5}, {"sun", 6.9}, {"after", 7.0}})
    Add(title, day);
  Display();
  EXPECT_EQ(Week(), "1mon 4King 7sun");
  EXPECT_EQ(Control<TTitle_Label>(view, "Label1")->Whole().toStdString(),
            " 15 January 2024 - 21 January 2024");
  EXPECT_EQ(Of_Day<TTitle_Label>("WeekHeader", 7)->Whole().toStdString(), " Sunday, 21 January 2024");
  EXPECT_EQ(List(7)->property("Tag").toInt(), 45312);
  CurrentDate = Monday + 6.5;
  Send_Message(view, umDateChanged, 0, 0);
  EXPECT_EQ(Week() + Bold(), "1mon 4King 7sun7 15") << "a Sunday ends its week";
  Act(view, "SpeedButton2");
  EXPECT_EQ(Week() + Bold(), "1after7 15") << "the picker is not told";
  Act(view, "PrevBtn");
  EXPECT_EQ(Week() + Bold(), "1after1 22");
}

TEST_F(Week_View, Is_Laid_Out_Like_A_Diary) {
  Display();
  const auto place = [this](int day) {
    QWidget* panel = List(day)->parentWidget();
    return QRect(panel->mapTo(Control<QWidget>(view, "Panel12"), QPoint(0, 0)), panel->size());
  };
  Control<QWidget>(view, "Panel12")->resize(301, 302);
  EXPECT_EQ(place(1), QRect(0, 0, 150, 100));
  EXPECT_EQ(place(4), QRect(150, 100, 151, 102));
  EXPECT_EQ(place(5), QRect(0, 202, 150, 100));
  EXPECT_EQ(place(6), QRect(150, 202, 151, 50));
  EXPECT_EQ(place(7), QRect(150, 252, 151, 50));
}

TEST_F(Week_View, A_Header_Or_A_List_Selects_Its_Day) {
  Add("thu", 3.5);
  Display();
  Add("new", 0.5);
  QTest::mouseClick(Of_Day<QWidget>("WeekHeader", 4), Qt::LeftButton);
  EXPECT_EQ(Bold() + Week(), "4 184thu") << "nothing is built anew";
  QTest::mouseDClick(Of_Day<QWidget>("WeekHeader", 3), Qt::LeftButton);
  Settle();
  EXPECT_EQ(home.Asked, QList<qintptr>{2});
  CurrentDate = Monday + 1.25;
  Display();
  QTest::mouseClick(List(2)->viewport(), Qt::LeftButton);
  EXPECT_EQ(CurrentDate, Monday + 1.25) << "keeps its time";
  QTest::keyClick(List(2), Qt::Key_Right);
  QTest::keyClick(List(3), Qt::Key_Right);
  EXPECT_EQ(Bold() + Week(), "4 181new 4thu*");
  list = List(4);
  Answer(Confirm_With("Edit1=added"), Qt::Key_Insert);
  EXPECT_EQ(Week(), "1new 4thu 4added") << "on the day whose list it was";
  QTest::keyClick(List(1), Qt::Key_Left);
  EXPECT_EQ(Bold() + Week(), "7 14") << "the Sunday before";
}

TEST_F(Week_View, A_Drop_Moves_The_Occurrence_To_The_End_Of_Another_Day) {
  Write(New_Event("set", Monday + 0.5, 2));
  Add("late", 3.9);
  Add("alarm", 0.25);
  Add("private", 0.5, Hidden);
  Run_Sql(
      "INSERT INTO KT_Alarms (Key, Offset) SELECT d.Key, 15 FROM KT_Events_Data d JOIN KT_Events e ON e.Key "
      "= d.Event WHERE Title = 'alarm'");
  Display();
  const std::string before = Query_Text("SELECT group_concat(FirstDate || Title) FROM KT_Events");
  EXPECT_TRUE(Drop("alarm", 4));
  EXPECT_EQ(Week(), "1private 1set 2set 4late 4alarm*") << "not sorted";
  EXPECT_EQ(Query_Text("SELECT EventDate || Offset FROM KT_Events_Data d JOIN KT_Alarms a ON a.Key = d.Key"),
            "45309.2515");
  view->Look_At_Rows();
  EXPECT_EQ(Week(), "1private 1set 2set 4late 4alarm*") << "until the next refresh";
  EXPECT_FALSE(Drop("alarm", 4)) << "where it is";
  EXPECT_FALSE(Drop("private", 3));
  QWidget other_window;
  Show(other_window);
  EXPECT_TRUE(Drop("set", 3));
  EXPECT_EQ(Bold(), "3 17");
  Sign_In({.Create = true, .Delete = true, .See = true});
  EXPECT_FALSE(Drop("late", 3));
  Display();
  EXPECT_EQ(Week(), "1private 1set 3set 4alarm 4late");
  EXPECT_EQ(Query_Text("SELECT group_concat(FirstDate || Title) FROM KT_Events"), before);
}

TEST_F(Week_View, Cut_And_Paste_Move_To_A_Day_Of_Any_Week) {
  Add("a", 0.5);
  Add("private", 0.6, Hidden);
  Display();
  const auto press = [this](int day, QKeySequence::StandardKey key) { QTest::keySequence(List(day), key); };
  press(1, QKeySequence::Paste);
  Select("private");
  press(1, QKeySequence::Cut);
  Select("a");
  press(1, QKeySequence::Cut);
  QTest::mouseClick(List(6)->viewport(), Qt::LeftButton);
  press(6, QKeySequence::Paste);
  EXPECT_EQ(Week(), "1private 6a*");
  press(6, QKeySequence::Cut);
  Run_Sql("UPDATE KT_Events_Data SET EventDate = EventDate + 0.25 WHERE EventDate = 45311.5");
  Act(view, "SpeedButton2");
  press(6, QKeySequence::Paste);
  press(7, QKeySequence::Paste);
  EXPECT_EQ(Week() + Query_Text("SELECT max(EventDate) FROM KT_Events_Data"), "6a*45318.75")
      << "once, at the time that it has by now";
  press(6, QKeySequence::Cut);
  Run_Sql("DELETE FROM KT_Events_Data WHERE EventDate = 45318.75");
  Act(view, "SpeedButton1");
  press(6, QKeySequence::Paste);
  EXPECT_EQ(Week(), "1private") << "it is gone";
}

}  // namespace
