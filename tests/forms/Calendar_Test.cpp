#include "Editor_Fixture.h"
#include "fm_Calendar.h"

namespace {

struct TNotified : TForm {
  int Told = 0;
  void Handle_Message(const TMessage& message) override { Told += message.Number() == umDateChanged ? 1 : 0; }
};

struct Date_Picker : TEditor_Fixture {
  Date_Picker() {
    panel.resize(300, 260);
    picker = Show_Calendar(&panel, &view);
    panel.show();
    cal = Control<QCalendarWidget>(picker, "Cal");
    days = Control<QTableView>(cal, "qt_calendar_calendarview");
  }
  /// After a click on the Tuesday of the fourth week, or a key: the current date, and how often it was told.
  std::pair<double, int> After(int key = 0) {
    const QPoint cell = days->visualRect(days->model()->index(4, 2)).center();
    if (key) QTest::keyClick(days, static_cast<Qt::Key>(key));
    if (!key) QTest::mouseClick(days->viewport(), Qt::LeftButton, {}, cell);
    return {CurrentDate, view.Told};
  }

  QWidget panel;
  TNotified view;
  TCalendarFrm* picker = nullptr;
  QCalendarWidget* cal = nullptr;
  QTableView* days = nullptr;
};

TEST_F(Date_Picker, A_Click_Or_Key_Sets_The_Date_And_Tells_Once_Also_On_The_Same_Day) {
  EXPECT_EQ(cal->selectedDate(), QDate(2024, 1, 15));
  EXPECT_EQ(After(), std::pair(Monday + 8, 1));
  EXPECT_EQ(After(), std::pair(Monday + 8, 2));
  EXPECT_EQ(After(Qt::Key_Right), std::pair(Monday + 9, 3));
  EXPECT_EQ(After(Qt::Key_PageDown), std::pair(Monday + 40, 4)) << "the same day of the next month";
  EXPECT_EQ(After(Qt::Key_Return), std::pair(Monday + 40, 4));
}

TEST_F(Date_Picker, A_Held_Key_Does_Not_Tell_Twice_And_Turning_The_Month_Or_Typing_Not_At_All) {
  QTest::keyPress(days, Qt::Key_Control);
  EXPECT_EQ(After(), std::pair(Monday + 8, 1));
  QTest::keyRelease(days, Qt::Key_Control);
  QTest::mouseClick(Control<QWidget>(cal, "qt_calendar_nextmonth"), Qt::LeftButton);
  QTest::keyClicks(days, QStringLiteral("24/11/2026"));
  EXPECT_EQ(cal->monthShown(), 2);
  EXPECT_FALSE(cal->findChild<QDateEdit*>() && cal->findChild<QDateEdit*>()->isVisible());
  EXPECT_EQ(std::pair(Kt_util_01::CurrentDate, view.Told), std::pair(Monday + 8, 1));
}

TEST_F(Date_Picker, A_Date_Set_Elsewhere_Moves_It_Without_An_Echo) {
  CurrentDate = 45400;
  Send_Message(picker, umDateChanged, 0, 0);
  EXPECT_EQ(cal->selectedDate(), QDate(2024, 4, 18));
  EXPECT_EQ(view.Told, 0);
}

TEST_F(Date_Picker, Follows_Another_Palette) {
  const TPalette_Scope dark(true);
  Settle();
  EXPECT_EQ(cal->weekdayTextFormat(Qt::Monday).foreground().color(),
            QApplication::palette().color(QPalette::WindowText));
  const QPalette header = Control<QWidget>(cal, "qt_calendar_navigationbar")->palette();
  EXPECT_LT(header.color(QPalette::Highlight).lightness(), 128);
  EXPECT_GT(header.color(QPalette::HighlightedText).lightness(), 128);
}

}  // namespace
