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
    Settle();
    cal = Control<QCalendarWidget>(picker, "Cal");
    days = Control<QTableView>(cal, "qt_calendar_calendarview");
  }
  /// After a click on the Tuesday of the fourth week, or a key: the current day, and how often it was told.
  std::string After(int key = 0) {
    const QPoint cell = days->visualRect(days->model()->index(4, 2)).center();
    if (key) QTest::keyClick(days, static_cast<Qt::Key>(key));
    if (!key) QTest::mouseClick(days->viewport(), Qt::LeftButton, {}, cell);
    return Told();
  }
  std::string Told() const { return FormatDateTime("dd mmm", CurrentDate) + " " + std::to_string(view.Told); }

  QWidget panel;
  TNotified view;
  TCalendarFrm* picker = nullptr;
  QCalendarWidget* cal = nullptr;
  QTableView* days = nullptr;
};

TEST_F(Date_Picker, A_Click_Or_Key_Sets_The_Date_And_Tells_Once_And_Nothing_Else_Does) {
  EXPECT_EQ(cal->selectedDate(), QDate(2024, 1, 15));
  QTest::keyPress(days, Qt::Key_Control);
  EXPECT_EQ(After(), "23 Jan 1");
  QTest::keyRelease(days, Qt::Key_Control);
  EXPECT_EQ(After(), "23 Jan 2") << "also on the same day";
  EXPECT_EQ(After(Qt::Key_Right), "24 Jan 3");
  EXPECT_EQ(After(Qt::Key_PageDown), "24 Feb 4");
  EXPECT_EQ(After(Qt::Key_Return), "24 Feb 4");
  QTest::mouseClick(Control<QWidget>(cal, "qt_calendar_nextmonth"), Qt::LeftButton);
  QTest::keyClicks(days, QStringLiteral("24/11/2026"));
  EXPECT_FALSE(cal->findChild<QDateEdit*>() && cal->findChild<QDateEdit*>()->isVisible());
  EXPECT_EQ(Told() + std::to_string(cal->monthShown()), "24 Feb 43");
  CurrentDate = 45400;
  Send_Message(picker, umDateChanged, 0, 0);
  EXPECT_EQ(cal->selectedDate(), QDate(2024, 4, 18));
  EXPECT_EQ(view.Told, 4) << "set elsewhere, without an echo";
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
