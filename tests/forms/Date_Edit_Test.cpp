#include "Date_Edit.h"

#include "Editor_Fixture.h"

namespace {

/// A date field between two others, as in a form, in the locale of a user.
struct Date_Field : TEditor_Fixture {
  void In(const char* locale) {
    Install_Locale(locale);
    form = std::make_unique<QWidget>();
    form->setLocale(QLocale(QString::fromLatin1(locale)));
    auto* layout = new QVBoxLayout(form.get());
    layout->addWidget(before = new QLineEdit);
    layout->addWidget(field = new TDate_Edit);
    layout->addWidget(after = new QLineEdit);
    field->Set_Day(Monday);
    Show(*form);
  }
  /// Comes to the field in one of the ways there are, types a text key by key, and leaves.
  std::string Typed(int way, const char* text) {
    (way == 1 ? after : before)->setFocus();
    field->Set_Day(Monday);
    if (way == 0) QTest::keyClick(before, Qt::Key_Tab);
    if (way == 1) QTest::keyClick(after, Qt::Key_Backtab);
    if (way == 2)
      QTest::mouseClick(field->findChild<QLineEdit*>(), Qt::LeftButton, {}, QPoint(30, field->height() / 2));
    if (way == 3) {
      field->setFocus(Qt::MouseFocusReason);
      QTest::keySequence(field, QKeySequence::SelectAll);
    }
    QTest::keyClicks(form->focusWidget(), QString::fromLatin1(text));
    EXPECT_EQ(form->focusWidget(), field) << text << ", " << way;
    QTest::keyClick(field, way == 1 ? Qt::Key_Backtab : Qt::Key_Tab);
    EXPECT_NE(form->focusWidget(), field) << "one key leaves it";
    return field->Is_Valid() ? field->date().toString(Qt::ISODate).toStdString()
                             : "refused " + field->text().toStdString();
  }

  std::unique_ptr<QWidget> form;
  QLineEdit *before = nullptr, *after = nullptr;
  TDate_Edit* field = nullptr;
};

TEST_F(Date_Field, Takes_A_Date_As_A_Hand_Types_It) {
  const std::pair<const char*, std::vector<const char*>> november[] = {
      {"en_GB", {"24/11/2026", "24-11-2026", "24.11.2026", "24 11 2026", "24/11/26", "24112026"}},
      {"en_US", {"11/24/2026", "11-24-26", "2026-11-24", "Nov 24, 2026"}},
      {"de_DE", {"24.11.2026", "24.11.26", "24/11/2026", "24.November 2026"}},
      {"sv_SE", {"2026-11-24", "26-11-24", "20261124"}},
      {"C", {"2026-11-24", "2026/11/24"}},
      {"ar_EG", {"24/11/2026"}}};
  for (const auto& [locale, texts] : november) {
    In(locale);
    for (int way = 0; way < 4; ++way) {
      for (const char* text : texts)
        EXPECT_EQ(Typed(way, text), "2026-11-24") << locale << ": " << text << ", " << way;
    }
  }
  In("en_GB");
  EXPECT_EQ(Typed(0, "5/3/24") + Typed(1, "24/11/1120"), "2024-03-051120-11-24");
  EXPECT_EQ(Typed(0, "31/2/2026") + Typed(2, ""), "refused 31/2/20262024-01-15") << "what is no date stays";
}

TEST_F(Date_Field, Is_Stepped_Part_By_Part_And_Chosen_From_A_Calendar) {
  In("ar_EG");
  EXPECT_EQ(field->text(), QStringLiteral("15/1/2024")) << "digits as they are typed";
  In("en_US");
  form->setLocale(QLocale::c());  // whose week begins otherwise
  field->setFocus();
  const auto after_keys = [&](int cursor, Qt::Key key) {
    if (cursor >= 0) field->findChild<QLineEdit*>()->setCursorPosition(cursor);
    QTest::keyClick(field, key);
    return field->text().toStdString();
  };
  EXPECT_EQ(after_keys(-1, Qt::Key_Up), "1/16/2024") << "all of it selected";
  EXPECT_EQ(after_keys(1, Qt::Key_Down), "12/16/2023");
  EXPECT_EQ(after_keys(-1, Qt::Key_Down), "11/16/2023") << "still the month";
  EXPECT_EQ(after_keys(10, Qt::Key_Up), "11/16/2024");
  QTest::keyClicks(field, QStringLiteral("2026"));
  QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(field->width() - 6, field->height() / 2));
  QCalendarWidget* calendar = field->calendarWidget();
  EXPECT_TRUE(calendar->isVisible() && calendar->firstDayOfWeek() == Qt::Sunday);
  EXPECT_EQ(calendar->selectedDate(), QDate(2026, 11, 16)) << "at what was just typed";
  for (const auto key : {Qt::Key_Left, Qt::Key_Return})
    QTest::keyClick(Control<QTableView>(calendar, "qt_calendar_calendarview"), key);
  EXPECT_EQ(field->Day(), Encode_Date(2026, 11, 15));
}

}  // namespace
