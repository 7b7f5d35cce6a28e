#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QTableView>
#include <QTest>
#include <QTextCharFormat>

#include "Form_Checks.h"
#include "Form_Driver.h"
#include "Kt_util_01.h"
#include "Test_Seams.h"
#include "fm_Calendar.h"

using namespace KTReminds;
using namespace Kt_forms;

namespace {

struct TNotified : TForm {
  int Told = 0;
  void Handle_Message(const TMessage& message) override { Told += message.Number() == umDateChanged ? 1 : 0; }
};

class Date_Picker : public testing::Test {
 protected:
  Date_Picker() {
    Kt_util_01::CurrentDate = 45306.6;  // Monday, 15 January 2024
    panel.resize(300, 260);
    picker = Show_Calendar(&panel, &view);
    panel.show();
    cal = Control<QCalendarWidget>(picker, "Cal");
  }
  void Click_The_23rd() {
    auto* days = Control<QTableView>(cal, "qt_calendar_calendarview");
    for (int column = 0; column < days->model()->columnCount(); ++column)
      for (const QModelIndex& cell :
           days->model()->match(days->model()->index(2, column), Qt::DisplayRole, 23))
        QTest::mouseClick(days->viewport(), Qt::LeftButton, {}, days->visualRect(cell).center());
  }

  Kt_test::TTest_Seams seams;
  QWidget panel;
  TNotified view;
  TCalendarFrm* picker = nullptr;
  QCalendarWidget* cal = nullptr;
};

TEST_F(Date_Picker, A_Click_Sets_The_Date_And_Tells_Also_On_The_Same_Day) {
  EXPECT_EQ(cal->selectedDate(), QDate(2024, 1, 15));
  Click_The_23rd();
  EXPECT_EQ(Kt_util_01::CurrentDate, 45314);
  EXPECT_EQ(view.Told, 1);
  Click_The_23rd();
  EXPECT_EQ(view.Told, 2);
}

TEST_F(Date_Picker, A_Key_Moves_The_Date_And_Tells_Once) {
  auto* days = Control<QTableView>(cal, "qt_calendar_calendarview");
  QTest::keyClick(days, Qt::Key_Right);
  EXPECT_EQ(Kt_util_01::CurrentDate, 45307);
  QTest::keyClick(days, Qt::Key_PageDown);
  EXPECT_EQ(Kt_util_01::CurrentDate, 45338) << "the same day of the next month";
  QTest::keyClick(days, Qt::Key_Return);
  EXPECT_EQ(view.Told, 2);
}

TEST_F(Date_Picker, A_Date_Set_Elsewhere_Moves_It_Without_An_Echo) {
  Kt_util_01::CurrentDate = 45400;
  Send_Message(picker, umDateChanged, 0, 0);
  EXPECT_EQ(cal->selectedDate(), QDate(2024, 4, 18));
  EXPECT_EQ(view.Told, 0);
}

TEST_F(Date_Picker, Follows_Another_Palette) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(Dark_Palette());
  Settle();
  const QColor weekdays = cal->weekdayTextFormat(Qt::Monday).foreground().color();
  EXPECT_EQ(weekdays, Dark_Palette().color(QPalette::WindowText));
  QApplication::setPalette(light);
}

}  // namespace
