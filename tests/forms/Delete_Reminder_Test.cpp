#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "Form_Driver.h"
#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"
#include "fm_Delete_Reminder.h"

using namespace KTReminds;

namespace {

class Delete_Dialog : public testing::Test {
 protected:
  std::string Make(int days, int event_type = 0) {
    TNew_Event event = New_Event("", 45306, days);
    event.Record.EventType = static_cast<TEntry_Type>(event_type);
    return Write(event);
  }
  static std::int64_t Left() { return Query_Number("SELECT count(*) FROM KT_Events_Data"); }
  static std::string Visible(QWidget* form) {
    std::string names;
    for (const char* name : {"Label1", "Label2", "RadioButton1", "RadioButton2"}) {
      if (Control<QWidget>(form, name)->isVisible()) names += std::string(names.empty() ? "" : " ") + name;
    }
    return names;
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
};

TEST_F(Delete_Dialog, Asks_About_A_Set_And_Deletes_What_Was_Chosen) {
  const std::string key = Make(5);
  {
    TModal_Driver driver([&](QWidget* form) {
      EXPECT_EQ(form->windowTitle(), QStringLiteral("Confirm Deletion"));
      EXPECT_EQ(Visible(form), "Label1 RadioButton1 RadioButton2");
      EXPECT_TRUE(Control<QRadioButton>(form, "RadioButton2")->isChecked());
      EXPECT_TRUE(Control<QLabel>(form, "Label1")->text().contains(QStringLiteral("all occurences of")));
      Picture(form, QStringLiteral("delete_set"));
      QTest::keyClick(form, Qt::Key_Escape);
    });
    EXPECT_FALSE(Delete_Reminder(key));
    EXPECT_EQ(Left(), 5);
  }
  {
    TModal_Driver driver([](QWidget* form) {
      Control<QWidget>(form, "Button1")->setFocus();
      QTest::keyClick(form->focusWidget(), Qt::Key_Return);
    });
    EXPECT_FALSE(Delete_Reminder(key)) << "Enter presses the button that has the focus";
    EXPECT_EQ(Left(), 5);
  }
  {
    TModal_Driver driver([](QWidget* form) { QTest::keyClick(form, Qt::Key_Return); });
    EXPECT_TRUE(Delete_Reminder(key));
    EXPECT_EQ(Left(), 4);
  }
  seams.Sounds.Played.clear();
  TModal_Driver driver([](QWidget* form) {
    QTest::mouseClick(Control<QRadioButton>(form, "RadioButton1"), Qt::LeftButton);
    QTest::mouseClick(Control<QPushButton>(form, "Button2"), Qt::LeftButton);
  });
  EXPECT_TRUE(Delete_Reminder(Query_Text("SELECT Key FROM KT_Events_Data")));
  EXPECT_EQ(Left(), 0);
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{2, 3}));
}

TEST_F(Delete_Dialog, Asks_Plainly_About_A_Single_Event_Or_Task) {
  for (const int event_type : {0, 3}) {
    const std::string key = Make(1, event_type);
    TModal_Driver driver([&](QWidget* form) {
      EXPECT_EQ(Visible(form), "Label2");
      EXPECT_EQ(
          Control<QLabel>(form, "Label2")->text(),
          event_type == 3
              ? QStringLiteral("Please confirm you wish to delete the selected Task from the address book")
              : QStringLiteral(
                    "Please confirm you wish to delete the selected calendar event from the address book"));
      Picture(form, QStringLiteral("delete_single_%1").arg(event_type));
      QTest::keyClick(form, Qt::Key_Return);
    });
    EXPECT_TRUE(Delete_Reminder(key));
    EXPECT_EQ(Left(), 0);
  }
}

TEST_F(Delete_Dialog, Asks_What_To_Open_And_Writes_Nothing) {
  Make(5);
  bool whole = false;
  {
    TModal_Driver driver([](QWidget* form) {
      EXPECT_EQ(form->windowTitle(), QStringLiteral("Open Recurring Event"));
      EXPECT_EQ(Visible(form), "Label2 RadioButton1 RadioButton2");
      EXPECT_EQ(Control<QLabel>(form, "Label2")->text(),
                QStringLiteral("This Event is part of a Recurring Set. Do you wish to open just this event "
                               "or the whole set?"));
      for (const auto& [name, text] : {std::pair("RadioButton1", "Open all Events in the Set"),
                                       std::pair("RadioButton2", "Open just this Event")}) {
        EXPECT_EQ(Control<QRadioButton>(form, name)->text(), QString::fromLatin1(text));
        EXPECT_EQ(Control<QRadioButton>(form, name)->accessibleName(), QString::fromLatin1(text));
      }
      Picture(form, QStringLiteral("open_set"));
      QTest::mouseClick(Control<QRadioButton>(form, "RadioButton1"), Qt::LeftButton);
      QTest::keyClick(form, Qt::Key_Return);
    });
    EXPECT_TRUE(Update_Recurring(whole));
    EXPECT_TRUE(whole);
  }
  TModal_Driver driver([](QWidget* form) { QTest::keyClick(form, Qt::Key_Escape); });
  EXPECT_FALSE(Update_Recurring(whole));
  EXPECT_EQ(Left(), 5);
}

TEST_F(Delete_Dialog, Closes_With_OK_After_A_Failure) {
  const std::string key = Make(1);
  Run_Sql(
      "CREATE TRIGGER planted BEFORE DELETE ON KT_Events_Data BEGIN SELECT RAISE(ABORT, 'planted fault'); "
      "END");
  seams.Prompts.Expect_Error(
      "Update Failed",
      "The change could not be saved and has been undone: delete KT_Events_Data: planted fault\n\n"
      "fm_Delete_Reminder:Button2Click [KT_EVENTS/KT_EVENTS_DATA/KT_ALARMS]");
  TModal_Driver driver([](QWidget* form) { QTest::keyClick(form, Qt::Key_Return); });
  EXPECT_TRUE(Delete_Reminder(key));
  EXPECT_EQ(Left(), 1);
}

}  // namespace
