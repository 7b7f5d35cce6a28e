#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <fstream>

#include "Form_Checks.h"
#include "Form_Controls.h"
#include "Form_Driver.h"
#include "Kt_labels.h"
#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"
#include "fm_Alarm_Props.h"

using namespace KTReminds;
using Kt_forms::From_Qt;
using Kt_forms::To_Qt;

namespace {

constexpr double Monday_Noon = 45306.5;

class Alarm_Dialog : public testing::Test {
 protected:
  Alarm_Dialog() { Kt_util_01::Install_Sound_Folder(folder.File("")); }
  ~Alarm_Dialog() override { Kt_util_01::Install_Sound_Folder(""); }

  std::unique_ptr<TAlarm_Props_Frm> Show(const TAlarm& alarm, bool task = false, bool read_only = false) {
    auto form = std::make_unique<TAlarm_Props_Frm>(Monday_Noon, alarm, task, read_only);
    form->Play_File = [this](const std::string& path) {
      played.push_back(path);
      return has_sound;
    };
    form->Beep = [this] {
      played.emplace_back("beep");
      return has_sound;
    };
    form->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
    return form;
  }
  static void Click(QWidget* form, const char* name) {
    QTest::mouseClick(Control<QWidget>(form, name), Qt::LeftButton);
  }
  static std::string Text(QWidget* form, const char* label) {
    return From_Qt(Control<QLabel>(form, label)->text());
  }
  std::string Sound_File(const std::string& name) const {
    std::ofstream(folder.File(name)) << "RIFF";
    return folder.File(name);
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Folder folder;
  std::vector<std::string> played;
  bool has_sound = true;
};

TEST_F(Alarm_Dialog, An_Offset_Is_Shown_Followed_And_Rewritten) {
  const auto form = Show({true, 90, Standard_Beep_Text, 0});
  auto* box = Control<QComboBox>(form.get(), "Alarmbox");
  EXPECT_EQ(form->windowTitle(), QStringLiteral("Reminder Properties"));
  EXPECT_EQ(box->count(), 21);
  EXPECT_EQ(box->currentText(), QStringLiteral("1 hour before 30 minutes before"));
  EXPECT_EQ(Text(form.get(), "TimeLabel"), "at 11:00 AM on Monday, 15 January 2024")
      << "only the first number and unit are read back";
  EXPECT_FALSE(Control<QWidget>(form.get(), "When2")->isVisible());
  EXPECT_FALSE(Control<QWidget>(form.get(), "DelayLabel")->isVisible());
  Picture(form.get(), QStringLiteral("alarm_event"));

  box->setFocus();
  box->lineEdit()->selectAll();
  QTest::keyClicks(box->lineEdit(), QStringLiteral("2 d"));
  EXPECT_EQ(Text(form.get(), "TimeLabel"), "at 12:00 PM on Saturday, 13 January 2024");
  EXPECT_EQ(box->currentText(), QStringLiteral("2 d")) << "not rewritten while being typed";
  QTest::keyClick(box, Qt::Key_Tab);
  EXPECT_EQ(box->currentText(), QStringLiteral("2 days before"));
  box->setCurrentText(QStringLiteral("soon"));
  EXPECT_EQ(Text(form.get(), "TimeLabel"), "at 12:00 PM on Monday, 15 January 2024") << "invalid counts as 0";

  seams.Prompts.Expect_Error("Invalid Reminder Specified",
                             "The offset for the Reminder is invalid.\r\n\r\nPlease specify an offset in one "
                             "of the following formats: - \r\n\r\n     ? minutes ( or ? )\r     ? hours ( or "
                             "? h)\r     ? days ( or ? d )");
  QTest::keyClick(form.get(), Qt::Key_Return);
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(form->focusWidget(), box);
  box->setCurrentText(QStringLiteral("2 H"));
  QTest::keyClick(form.get(), Qt::Key_Return);
  EXPECT_EQ(form->result(), QDialog::Accepted);
  EXPECT_EQ(form->Alarm().Offset, 120);
  EXPECT_EQ(form->Alarm().WAVFile, "<Standard Beep>");
  EXPECT_EQ(Make_Checks(form.get()), "");
}

TEST_F(Alarm_Dialog, Switching_Off_Hides_What_Depends_And_Resets) {
  const auto form = Show({true, 30, Default_Sound_Text, Monday_Noon + 0.25});
  EXPECT_TRUE(Control<QWidget>(form.get(), "DelayLabel")->isVisible());
  EXPECT_EQ(Text(form.get(), "TimeLabel"), "until 6:00 PM on Monday, 15 January 2024");
  Picture(form.get(), QStringLiteral("alarm_delayed"));
  seams.Sounds.Played.clear();
  Click(form.get(), "AlarmCheck");
  for (const char* name : {"AlarmGroupBox", "Alarmbox", "TimeLabel", "DelayLabel"})
    EXPECT_FALSE(Control<QWidget>(form.get(), name)->isVisible()) << name;
  Click(form.get(), "AlarmCheck");
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{1, 3}));
  Click(form.get(), "AlarmCheck");
  Picture(form.get(), QStringLiteral("alarm_off"));
  Click(form.get(), "OKBtn");
  EXPECT_FALSE(form->Alarm().On);
  EXPECT_EQ(form->Alarm().Offset, 15);
  EXPECT_EQ(form->Alarm().WAVFile, "");
  EXPECT_EQ(form->Alarm().NextTime, Monday_Noon + 0.25) << "passed through";
}

TEST_F(Alarm_Dialog, A_Task_Has_Its_Alarm_At_A_Day_And_Time) {
  const auto form = Show({false, 15, "", 0}, true);
  EXPECT_FALSE(Control<QWidget>(form.get(), "When1")->isVisible());
  EXPECT_FALSE(Control<QWidget>(form.get(), "AlarmDate")->isVisible());
  Click(form.get(), "AlarmCheck2");
  auto* date = Control<QDateEdit>(form.get(), "AlarmDate");
  auto* time = Control<QLineEdit>(form.get(), "AlarmTime");
  EXPECT_EQ(date->date(), QDate(2024, 1, 14)) << "proposed for the day before";
  EXPECT_EQ(time->text(), QStringLiteral("8:00 AM"));
  Picture(form.get(), QStringLiteral("alarm_task"));
  time->setText(QStringLiteral("noon"));
  seams.Prompts.Expect_Error(
      "Invalid Time", "The Time entered is invalid. Please specify a valid time in the format h:mm ampm");
  Click(form.get(), "OKBtn");
  EXPECT_EQ(form->focusWidget(), time);
  time->setText(QStringLiteral("9:30"));
  date->setDate(QDate(2024, 1, 16));
  seams.Prompts.Expect_Error(
      "Validation Failed",
      "The Reminder Date cannot be later that the Date the Task is Due. Please respecify before continuing");
  Click(form.get(), "OKBtn");
  EXPECT_EQ(form->focusWidget(), date);
  date->setDate(QDate(2024, 1, 15));
  Click(form.get(), "OKBtn");
  EXPECT_EQ(form->result(), QDialog::Accepted);
  EXPECT_EQ(form->Alarm().Offset, -570) << "on the due day, after its midnight";
  EXPECT_EQ(Make_Checks(form.get()), "");
}

TEST_F(Alarm_Dialog, Sounds_Are_Listed_Browsed_For_And_Made_The_Default) {
  const std::string bell = Sound_File("Bell.WAV");
  TTemporary_Folder elsewhere;
  std::ofstream(elsewhere.File("gong.wav")) << "RIFF";
  const auto form = Show({true, 15, "/gone/old.wav", 0});
  auto* box = Control<QComboBox>(form.get(), "WAVBox");
  auto* make_default = Control<QPushButton>(form.get(), "Button4");
  EXPECT_EQ(box->count(), 3);
  EXPECT_EQ(box->currentText(), QStringLiteral("<Default Sound>")) << "a file that is gone";
  EXPECT_FALSE(make_default->isEnabled());
  box->setCurrentIndex(2);
  EXPECT_TRUE(make_default->isEnabled());
  Click(form.get(), "Button4");
  EXPECT_EQ(Read_Default_Sound(), bell);
  EXPECT_EQ(Control<QLabel>(form.get(), "DefaultSound")->toolTip(), To_Qt(bell));

  QString asked;
  form->Choose_File = [&](QWidget*, const QString& title, const QString& in, const QString&) {
    asked = title + QLatin1Char('|') + in;
    return QString();
  };
  Click(form.get(), "Button3");
  EXPECT_EQ(asked, QStringLiteral("Browse for Reminder Sound File|") + To_Qt(folder.File("")));
  EXPECT_EQ(box->currentIndex(), 2) << "nothing was chosen";
  form->Choose_File = [&](QWidget*, const QString&, const QString&, const QString&) {
    return To_Qt(elsewhere.File("gong.wav"));
  };
  Click(form.get(), "Button3");
  EXPECT_EQ(box->currentText(), QStringLiteral("gong.wav"));
  EXPECT_EQ(box->count(), 3);
  Click(form.get(), "OKBtn");
  EXPECT_EQ(form->Alarm().WAVFile, elsewhere.File("gong.wav"));
}

TEST_F(Alarm_Dialog, A_Preview_Plays_What_Would_Be_Heard) {
  const std::string bell = Sound_File("Bell.wav");
  const auto form = Show({true, 15, "", 0});
  auto* box = Control<QComboBox>(form.get(), "WAVBox");
  Click(form.get(), "SpeedButton2");
  Write_Default_Sound(bell);
  Click(form.get(), "Image1");
  box->setCurrentIndex(1);
  Click(form.get(), "Label6");
  box->setCurrentIndex(2);
  Click(form.get(), "SpeedButton2");
  EXPECT_EQ(played, (std::vector<std::string>{"beep", bell, "beep", bell}));
  has_sound = false;
  seams.Prompts.Expect_Info("Reminder Sound", "The sound cannot be played on this computer.");
  Click(form.get(), "SpeedButton2");
  std::remove(bell.c_str());
  seams.Prompts.Expect_Error("Unable to Locate File",
                             "Unable to locate the selected Sound File. Please respecify.");
  Click(form.get(), "SpeedButton2");
  EXPECT_EQ(played.size(), 5u) << "a file that is gone is not tried";
  Click(form.get(), "OKBtn");
  EXPECT_EQ(form->Alarm().WAVFile, "") << "and stores nothing";
}

TEST_F(Alarm_Dialog, Who_May_Not_Change_It_Can_Look_And_Cancel) {
  const auto form = Show({true, 15, "", 0}, false, true);
  for (auto* button : form->findChildren<QAbstractButton*>())
    EXPECT_EQ(button->isEnabled(), button->objectName() == QStringLiteral("Cancelbtn"))
        << button->objectName().toStdString();
  EXPECT_FALSE(Control<QWidget>(form.get(), "Alarmbox")->isEnabled());
  Click(form.get(), "Image1");
  EXPECT_TRUE(played.empty());
  Picture(form.get(), QStringLiteral("alarm_read_only"));
  QTest::keyClick(form.get(), Qt::Key_Return);
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(form->result(), QDialog::Rejected) << "Cancel has the focus";
}

TEST_F(Alarm_Dialog, A_Stored_Alarm_Is_Changed_Or_Deleted_On_OK_Alone) {
  const TTemporary_Database database;
  TNew_Event event = New_Event("", Monday_Noon);
  event.Alarm = {true, 30, "", 0};
  const std::string key = Write(event);
  const auto run = [&](std::function<void(QWidget*)> act) {
    TModal_Driver driver(std::move(act));
    return Set_Alarm_Properties(key, database.Book().Calendar, false);
  };
  const auto alarm = [] { return Query_Text("SELECT Offset || WAVFile FROM KT_Alarms"); };
  const auto change = [](QWidget* form) {
    Control<QComboBox>(form, "Alarmbox")->setCurrentText(QStringLiteral("2 h"));
  };
  EXPECT_FALSE(run([&](QWidget* form) {
    change(form);
    QTest::keyClick(form, Qt::Key_Escape);
  }));
  EXPECT_EQ(alarm(), "30");
  EXPECT_TRUE(run([&](QWidget* form) {
    change(form);
    QTest::keyClick(form, Qt::Key_Return);
  }));
  EXPECT_EQ(alarm(), "120<Default Sound>");
  Run_Sql("CREATE TRIGGER planted BEFORE DELETE ON KT_Alarms BEGIN SELECT RAISE(ABORT, 'planted'); END");
  seams.Prompts.Expect_Error(
      "Update Failed",
      "The change could not be saved and has been undone: delete KT_Alarms: planted\n\n"
      "fm_Alarm_Props:Set_Alarm_Properties [KT_Events_Data/KT_Alarms]");
  const auto switch_off = [](QWidget* form) {
    Click(form, "AlarmCheck");
    QTest::keyClick(form, Qt::Key_Return);
  };
  EXPECT_FALSE(run(switch_off));
  Run_Sql("DROP TRIGGER planted");
  EXPECT_TRUE(run(switch_off));
  EXPECT_EQ(alarm(), "");
  EXPECT_FALSE(Set_Alarm_Properties(key, database.Book().Calendar, false)) << "it has no alarm any more";
}

TEST(Date_Format, Is_The_Users_In_Qts_Letters_With_Whole_Years) {
  EXPECT_EQ(Qt_Date_Format("dd/mm/yy", "."), QStringLiteral("dd'.'MM'.'yyyy"));
  EXPECT_EQ(Qt_Date_Format("yyyy. MM. dd.", "-"), QStringLiteral("yyyy'. 'MM'. 'dd'.'"));
  EXPECT_EQ(Qt_Date_Format("d 'de' mmm y", "/"), QStringLiteral("d' de 'MMM' 'yyyy"));
}

}  // namespace
