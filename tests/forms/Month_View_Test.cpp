#include "Colours.h"
#include "EP_Calendar.h"
#include "Form_Checks.h"
#include "Kt_labels.h"
#include "View_Fixture.h"
#include "fm_Contacts_Page3c.h"

namespace {

// January 2024 begins on a Monday and is shown up to 11 February.
struct Month_View : TView_Fixture {
  Month_View() : TView_Fixture(&Display_Calendar_MonthView) { Write_Bool("General", "Show Calendar", true); }

  void Display(bool whole_calendar = true) {
    TView_Fixture::Display(whole_calendar);
    grid = Control<TEPCalendar>(view, "MonthCal");
    grid->setFocus();
  }
  static double Day(int month, int day, int year = 2024) {
    return static_cast<double>(Day_From_Date(year, month, day));
  }
  QPoint At(double day) const { return grid->Place_Of(day).center(); }
  /// The lines of a day, as its tip gives them.
  std::string Lines(double day) const {
    QHelpEvent asked(QEvent::ToolTip, At(day), grid->mapToGlobal(At(day)));
    QApplication::sendEvent(grid, &asked);
    QTextDocument tip;
    tip.setHtml(QToolTip::text());
    return tip.toPlainText().toStdString();
  }
  /// The title, the date that all pages show, and the one of the calendar beside the grid.
  std::string Shown() const {
    const QDate picked = Control<QCalendarWidget>(view, "Cal")->selectedDate();
    return Control<QLabel>(view, "Label1")->text().toStdString() + " " +
           ISO_DateTime(CurrentDate).substr(0, 10) + picked.toString(QStringLiteral(" (d)")).toStdString();
  }
  QColor Colour(QPoint place) const {
    return grid->grab(QRect(place, QSize(1, 1))).toImage().pixelColor(0, 0);
  }
  /// The place of the sign of a day's overflow, found by its colours.
  QRect Overflow(double day) const {
    const QImage drawn = grid->grab().toImage();
    const QRect cell = grid->Place_Of(day);
    QRegion found;
    for (int x = cell.left(); x <= cell.right(); ++x)
      for (int y = cell.top(); y <= cell.bottom(); ++y)
        if (Is_Overflow(drawn.pixelColor(x, y))) found += QRect(x, y, 1, 1);
    EXPECT_EQ(found.rectCount(), found.isEmpty() ? 0 : 1) << "no other colour in it";
    return found.boundingRect();
  }

  TEPCalendar* grid = nullptr;
};

TEST_F(Month_View, Shows_The_Days_Of_Its_Grid_From_The_Book_Or_One_Owner) {
  Add("<first>", -14);
  Add("last", 27 + 0.9999);
  Add("too late", 28);
  Add("b", 0.5);
  Add("a", 0.5, {}, "Contact = '" + contact + "'");
  Add("secret", 0.5, Hidden);
  Add("holiday", 0.5, "AllDay = 1");
  Display();
  EXPECT_EQ(Shown() + Lines(Day(1, 1)) + Lines(Day(2, 11)),
            " January 2024 2024-01-15 (15)12:00 AM <first>11:59 PM last");
  EXPECT_EQ(Lines(Monday), "00:00 holiday\n12:00 PM Private\n12:00 PM a\n12:00 PM b");
  EXPECT_TRUE(
      grid->accessibleDescription().startsWith(QStringLiteral("Monday, January 15, 2024, 4 entries")));
  Display(false);
  EXPECT_EQ(Lines(Monday), "00:00 holiday\n12:00 PM Private\n12:00 PM b");
  Run_Sql("ALTER TABLE KT_Events_Data RENAME TO Elsewhere");
  seams.Prompts.Expect_Unread("no such table: KT_Events_Data",
                              "Reminder_Utils:Build_Events_Data [KT_Events/KT_Events_Data/KT_Alarms]");
  Send_Message(view, umDateChanged, 0, 0);
  EXPECT_TRUE(grid->accessibleDescription().endsWith(QStringLiteral("2024, no entries")));
  Run_Sql("ALTER TABLE Elsewhere RENAME TO KT_Events_Data");
}

TEST_F(Month_View, Moves_By_Keys_And_Reads_Another_Month_Only) {
  Display();
  TDatabase another;
  another.Open(database.Path(), TDatabase::TMode::Must_Exist);
  Write(New_Event("old", Monday));
  Display();
  another.Engine().Execute("UPDATE KT_Events SET Title = 'new'");
  const struct {
    Qt::Key Key;
    Qt::KeyboardModifier Modifier;
    const char* Shown;
  } moves[] = {{Qt::Key_Right, Qt::NoModifier, " January 2024 2024-01-16 (16)"},
               {Qt::Key_Down, Qt::NoModifier, " January 2024 2024-01-23 (23)"},
               {Qt::Key_Home, Qt::NoModifier, " January 2024 2024-01-22 (22)"},
               {Qt::Key_End, Qt::NoModifier, " January 2024 2024-01-28 (28)"},
               {Qt::Key_End, Qt::ControlModifier, " January 2024 2024-01-31 (31)"},
               {Qt::Key_Home, Qt::ControlModifier, " January 2024 2024-01-01 (1)"},
               {Qt::Key_Left, Qt::NoModifier, " December 2023 2023-12-31 (31)"},
               {Qt::Key_PageDown, Qt::NoModifier, " January 2024 2024-01-31 (31)"},
               {Qt::Key_PageDown, Qt::NoModifier, " February 2024 2024-02-29 (29)"},
               {Qt::Key_PageUp, Qt::NoModifier, " January 2024 2024-01-29 (29)"},
               {Qt::Key_Up, Qt::NoModifier, " January 2024 2024-01-22 (22)"}};
  for (const auto& [key, modifier, shown] : moves) {
    QTest::keyClick(grid, key, modifier);
    EXPECT_EQ(Shown(), shown);
    if (key == Qt::Key_Home) {
      EXPECT_EQ(Lines(Monday), "12:00 AM old") << "not read again";
    }
  }
  EXPECT_EQ(Lines(Monday), "12:00 AM new");
  const auto turn = [this](int by) {
    QWheelEvent wheel(At(Monday), {}, {}, {0, by}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(grid, &wheel);
  };
  turn(-60), turn(-60), turn(-60);
  EXPECT_EQ(Shown(), " February 2024 2024-02-22 (22)");
  Act(view, "SpeedButton2|SpeedButton1|SpeedButton1");
  EXPECT_EQ(Shown(), " January 2024 2024-01-22 (22)");
  QSignalSpy told(grid, &TEPCalendar::Changed);
  for (const auto& [date, onwards] :
       {std::pair(Day(12, 31, 9999), Qt::Key_Right), {Day(1, 1, 1), Qt::Key_Left}}) {
    CurrentDate = date;
    Send_Message(view, umDateChanged, 0, 0);
    for (const Qt::Key key : {onwards, onwards == Qt::Key_Right ? Qt::Key_PageDown : Qt::Key_PageUp})
      QTest::keyClick(grid, key);
    EXPECT_TRUE(CurrentDate == date && told.isEmpty()) << "only what the user does signals";
    grid->grab();
  }
}

TEST_F(Month_View, A_Click_On_The_Sign_Of_More_Entries_Opens_The_Day) {
  Write_Bool("General", "Show Calendar", false);
  for (int i = 0; i < 30; ++i) Add("many" + std::to_string(i), 7.3);
  for (const bool dark : {false, true}) {
    const TPalette_Scope colours(dark);
    QPalette contrast = QApplication::palette();
    contrast.setColor(QPalette::Text, QColor(Overflow_Ground));
    CurrentDate = Monday;
    Display();
    if (dark) home.setPalette(contrast);
    const QRect sign = Overflow(Monday + 7);
    EXPECT_TRUE(sign.size() == QSize(13, 9) && Overflow(Monday).isEmpty());
    QTest::mouseClick(grid, Qt::LeftButton, {}, sign.topLeft() - QPoint(1, 0));
    Settle();
    EXPECT_EQ(CurrentDate, Monday + 7) << "only selected";
    EXPECT_EQ(home.Asked, QList<qintptr>());
    QTest::mouseMove(grid, sign.center());
    EXPECT_EQ(grid->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseClick(grid, Qt::LeftButton, {}, sign.center());
    Settle();
    EXPECT_EQ(std::exchange(home.Asked, {}), QList<qintptr>{2});
    QImage large(grid->size() * 2, QImage::Format_RGB32);
    large.setDevicePixelRatio(2);
    grid->render(&large);
    for (int x = 2 * sign.left(); x <= 2 * sign.right() + 1; ++x)
      for (int y = 2 * sign.top(); y <= 2 * sign.bottom() + 1; ++y)
        ASSERT_TRUE(Is_Overflow(large.pixelColor(x, y)));
  }
  // A click that goes to another month is meant for what was there before it.
  CurrentDate = Day(12, 31, 2023);
  Run_Sql("UPDATE KT_Events_Data SET EventDate = " + std::to_string(Day(1, 3)));
  Display();
  QTest::mouseClick(grid, Qt::LeftButton, {}, Overflow(Day(1, 3)).center());
  EXPECT_EQ(CurrentDate, Day(1, 3));
  grid->resize(grid->minimumSizeHint());
  const QRect smallest = grid->Place_Of(Day(1, 3));
  EXPECT_TRUE(smallest.adjusted(0, 2 + grid->fontMetrics().height(), 0, 0).contains(Overflow(Day(1, 3))))
      << "below the number";
  const QPoint february = At(Day(2, 8));
  QTest::mouseClick(grid, Qt::LeftButton, {}, february);
  QTest::mouseDClick(grid, Qt::LeftButton, {}, february);
  EXPECT_EQ(CurrentDate, Day(2, 8));
  QTest::keyClick(grid, Qt::Key_Enter);
  Settle();
  EXPECT_EQ(home.Asked, (QList<qintptr>{2, 2, 2}));
  QTest::mouseDClick(grid, Qt::LeftButton, {}, QPoint(10, 5));
  Settle();
  EXPECT_EQ(home.Asked.size(), 3) << "the headings are no day";
}

TEST_F(Month_View, Tells_Days_Apart_By_Colour) {
  CurrentDate = Monday + 1;
  for (const bool dark : {false, true}) {
    const TPalette_Scope colours(dark);
    Display();
    const auto ground = [this](double day) {
      return Colour(grid->Place_Of(day).bottomLeft() + QPoint(2, -2));
    };
    const auto band = [this](double day) { return Colour(grid->Place_Of(day).topLeft() + QPoint(2, 2)); };
    EXPECT_EQ(ground(Monday), grid->palette().color(QPalette::Base));
    EXPECT_NE(ground(Day(2, 1)), ground(Monday));
    EXPECT_EQ(ground(Day(2, 1)) == QColor(0xFF, 0xFF, 0xEE), !dark);
    EXPECT_EQ(band(Monday + 1), QColor(Silver));
    EXPECT_EQ(band(Monday), ground(Monday));
    EXPECT_EQ(Colour(grid->Place_Of(Monday).topLeft() + QPoint(2, 1)),
              grid->palette().color(QPalette::Highlight))
        << "today";
    EXPECT_EQ(Make_Checks(&home), "");
  }
  EXPECT_EQ(grid->sizeHint().width(), 377);
  grid->resize(377, grid->sizeHint().height());
  EXPECT_EQ(grid->Place_Of(Monday).size(), QSize(52, 61));
  EXPECT_EQ(grid->Place_Of(Day(2, 11)).size(), QSize(58, 66));
}

TEST_F(Month_View, Its_Commands_Act_On_The_Selected_Day) {
  Add("before", -39.5);
  Display();
  EXPECT_EQ(Texts("Addbtn") + Texts("ToolButton7"),
            "Add Event/Adds a new calenda event to the Address BookGo to Today/Moves the calendar to display "
            "today's date");
  EXPECT_EQ(Seen(view, "AddMenu AddTask1 PrevMenu NextMenu SelectedDay1 Today1"),
            "&Add Event|Add &Task...|Pre&vious Event|&Next Event|&Selected Day|&Today");
  seams.Prompts.Expect_Info("No Later Events",
                            "No eligible calendar events found after the period January 2024");
  Act(view, "Nextbtn|PrevBtn");
  EXPECT_EQ(Shown(), " December 2023 2023-12-06 (6)");
  Act(view, "ToolButton7|ToolButton8");
  EXPECT_EQ(CurrentDate, Monday + 0.5) << "with the time of day";
  QTest::mouseClick(grid, Qt::RightButton, {}, At(Monday + 2));
  QContextMenuEvent asked(QContextMenuEvent::Mouse, At(Monday + 2), grid->mapToGlobal(At(Monday + 2)));
  QApplication::sendEvent(grid, &asked);
  EXPECT_TRUE(Control<QMenu>(view, "PopupMenu1")->isVisible());
  Control<QMenu>(view, "PopupMenu1")->close();
  form.As<TCalendar_View>()->Set_Keys(database.Book().Key, contact, true);
  With_Dialog(Confirm_With("Edit1=event"), [this] { QTest::keyClick(grid, Qt::Key_Insert); });
  Answer(Confirm_With("Edit1=task"), "AddTask1");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events_Data WHERE Contact = '" + contact +
                         "' AND cast(EventDate AS INTEGER) = 45308"),
            2);
  EXPECT_EQ(Lines(Monday + 2).substr(0, 10), "00:00 task");
  Act(view, "SelectedDay1|ToolButton10|ToolButton9|ToolButton11");
  Settle();
  EXPECT_EQ(home.Asked, (QList<qintptr>{2, 2, 11, 13}));
}

}  // namespace
