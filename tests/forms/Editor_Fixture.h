#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

#include "Form_Checks.h"
#include "Form_Driver.h"
#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"

/// Editors on a database of their own. Now is noon of Monday, 15 January 2024, which is also the date shown.
class TEditor_Fixture : public testing::Test {
 protected:
  static constexpr double Monday = 45306;

  TEditor_Fixture() { Kt_util_01::CurrentDate = Monday; }

  /// An event at noon on each of so many days; the key of the one in the middle.
  std::string Make(int days, int event_type = 0) const {
    KTReminds::TNew_Event event = New_Event("Old", event_type == 0 ? Monday + 0.5 : Monday, days);
    event.Record.EventType = static_cast<Kt_data_01::TEntry_Type>(event_type);
    event.Record.AllDay = event_type != 0;
    Write(event);
    return Query_Text("SELECT Key FROM KT_Events_Data ORDER BY EventDate LIMIT 1 OFFSET " +
                      std::to_string(days / 2));
  }
  template <class TRules>
  void Open(TRules& rules, const std::string& key, const std::string& subject = {},
            bool no_contact = false) const {
    ASSERT_TRUE(rules.Open(key, {database.Book().Key, {}}, subject, no_contact));
  }
  static void Show(QWidget& form) {
    form.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
  }
  static void Click(QWidget* form, const char* name) {
    auto* control = Control<QWidget>(form, name);
    // A check box takes clicks on what it shows, not on the room beside it.
    QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(10, control->height() / 2));
  }
  static void Type(QWidget* form, const char* name, const char* text) {
    auto* edit = Control<QLineEdit>(form, name);
    edit->selectAll();
    QTest::keyClicks(edit, QString::fromUtf8(text));
  }
  static std::string Page(QWidget* form) {
    const auto* tabs = Control<QTabWidget>(form, "PageControl1");
    return tabs->tabText(tabs->currentIndex()).toStdString();
  }
  static std::string Focused(const QWidget* form) {
    return form->focusWidget() ? form->focusWidget()->objectName().toStdString() : std::string();
  }
  /// Masters, occurrences, alarms, and notes of editors that are open.
  static std::string Counts() {
    return Query_Text(
        "SELECT (SELECT count(*) FROM KT_Events) || ' ' || (SELECT count(*) FROM KT_Events_Data) || ' ' || "
        "(SELECT count(*) FROM KT_Alarms) || ' ' || (SELECT count(*) FROM KT_Open_Editors)");
  }
  /// Days of the occurrences, counted from Monday.
  static std::string Dates() {
    return Query_Text(
        "SELECT group_concat(round(EventDate - 45306, 3), ' ') FROM (SELECT * FROM KT_Events_Data ORDER BY "
        "EventDate)");
  }
  static void Plant(const std::string& when) {
    Run_Sql("DROP TRIGGER IF EXISTS planted; CREATE TRIGGER planted BEFORE " + when +
            " BEGIN SELECT RAISE(ABORT, 'planted fault'); END");
  }

  /// A new title that cannot be saved: the user learns why, once, and what was typed stays.
  void Fail_To_Save(QWidget* form, const std::string& unit) {
    Type(form, "Edit1", "New");
    Plant("UPDATE ON KT_Events");
    seams.Prompts.Expect_Error(
        "Update Failed",
        "The change could not be saved and has been undone: write KT_Events: planted fault\n\n" + unit +
            ":Process_Update:1 [KT_Events/KT_Events_Data/KT_Alarms]");
    Click(form, "OKBtn");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Control<QLineEdit>(form, "Edit1")->text(), QStringLiteral("New"));
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
};
