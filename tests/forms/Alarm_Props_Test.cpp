#include <fstream>

#include "Editor_Fixture.h"
#include "Form_Controls.h"
#include "fm_Alarm_Props.h"

namespace {

struct Alarm_Dialog : TEditor_Fixture {
  Alarm_Dialog() { Install_Sound_Folder(folder.File("")); }
  ~Alarm_Dialog() override { Install_Sound_Folder(""); }

  TAlarm_Props_Frm* Open(const TAlarm& alarm, bool task = false, bool read_only = false) {
    dialog = std::make_unique<TAlarm_Props_Frm>(Monday + 0.5, alarm, task, read_only);
    dialog->Play_File = [this](const std::string& path) { return Play(path); };
    dialog->Beep = [this] { return Play("beep"); };
    Show(*dialog);
    return dialog.get();
  }
  bool Play(const std::string& sound) {
    played.push_back(sound);
    return has_sound;
  }
  static std::string Sound_File(const std::string& path) {
    std::ofstream(path) << "RIFF";
    return path;
  }

  TTemporary_Folder folder;
  std::vector<std::string> played;
  bool has_sound = true;
  std::unique_ptr<TAlarm_Props_Frm> dialog;
};

TEST_F(Alarm_Dialog, An_Offset_Is_Shown_Followed_And_Rewritten) {
  QWidget* form = Open({true, 90, Standard_Beep_Text, 0});
  auto* box = Control<QComboBox>(form, "Alarmbox");
  EXPECT_EQ(Seen(form, "Alarmbox TimeLabel When2 DelayLabel"),
            "1 hour before 30 minutes before|at 11:00 AM on Monday, 15 January 2024|hidden|hidden")
      << "only the first number and unit are read back";
  box->setFocus();
  box->lineEdit()->selectAll();
  QTest::keyClicks(box->lineEdit(), QStringLiteral("2 d"));
  EXPECT_EQ(Seen(form, "Alarmbox TimeLabel"), "2 d|at 12:00 PM on Saturday, 13 January 2024")
      << "not rewritten while being typed";
  QTest::keyClick(box, Qt::Key_Tab);
  EXPECT_EQ(Seen(form, "Alarmbox"), "2 days before");
  EXPECT_EQ(Seen_After("Alarmbox=soon", form, "TimeLabel"), "at 12:00 PM on Monday, 15 January 2024")
      << "invalid counts as 0";
  seams.Prompts.Expect_Error("Invalid Reminder Specified", Offset_Refused);
  Confirm(form);
  EXPECT_EQ(Where(form), "Alarmbox");
  Confirm_With("Alarmbox=2 H")(form);
  EXPECT_EQ(std::to_string(dialog->Alarm().Offset) + dialog->Alarm().WAVFile, "120<Standard Beep>");
}

TEST_F(Alarm_Dialog, Tabbing_Through_Changes_Nothing) {
  Open({true, 30, "", 0});
  for (int key = 0; key < 2; ++key) QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
  EXPECT_TRUE(dialog->close());
}

TEST_F(Alarm_Dialog, Switching_Off_Hides_What_Depends_And_Resets) {
  QWidget* form = Open({true, 30, Default_Sound_Text, Monday + 0.75});
  EXPECT_EQ(Seen(form, "TimeLabel DelayLabel"), "until 6:00 PM on Monday, 15 January 2024|Alarm Delayed:");
  seams.Sounds.Played.clear();
  EXPECT_EQ(Seen_After("AlarmCheck", form, "AlarmGroupBox TimeLabel DelayLabel"), "hidden|hidden|hidden");
  Act(form, "AlarmCheck|AlarmCheck");
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{1, 3, 1}));
  Act(form, "OKBtn");
  const TAlarm alarm = dialog->Alarm();
  EXPECT_TRUE(!alarm.On && alarm.Offset == 15 && alarm.WAVFile.empty() && alarm.NextTime == Monday + 0.75);
}

TEST_F(Alarm_Dialog, A_Task_Has_Its_Alarm_At_A_Day_And_Time) {
  QWidget* form = Open({false, 15, "", 0}, true);
  EXPECT_EQ(Seen(form, "When1 AlarmDate"), "hidden|hidden");
  EXPECT_EQ(Seen_After("AlarmCheck2", form, "AlarmDate AlarmTime"), "1/14/2024|8:00 AM")
      << "proposed for the day before";
  seams.Prompts.Expect_Error(
      "Validation Failed",
      "The Reminder Date cannot be later that the Date the Task is Due. Please respecify before continuing");
  Act(form, "AlarmTime=9:30|AlarmDate=2024-01-16|OKBtn");
  EXPECT_EQ(Where(form), "AlarmDate");
  Act(form, "AlarmDate=2024-01-15|OKBtn");
  EXPECT_EQ(dialog->Alarm().Offset, -570) << "on the due day, after its midnight";
}

TEST_F(Alarm_Dialog, Sounds_Are_Listed_Played_Made_The_Default_And_Browsed_For) {
  const TTemporary_Folder elsewhere;
  const std::string bell = Sound_File(folder.File("Bell.WAV")), gong = Sound_File(elsewhere.File("gong.wav"));
  QWidget* form = Open({true, 15, "/gone/old.wav", 0});
  EXPECT_EQ(Seen(form, "WAVBox Button4"), "<Default Sound>|(&Make Default)") << "a file that is gone";
  Act(form, "SpeedButton2|WAVBox=Bell.WAV|Button4");
  EXPECT_EQ(Read_Default_Sound(), bell);
  Act(form, "SpeedButton2|WAVBox=<Standard Beep>|Label6|WAVBox=<Default Sound>|Image1");
  EXPECT_EQ(played, (std::vector<std::string>{"beep", bell, "beep", bell}));
  EXPECT_EQ(Control<QLabel>(form, "DefaultSound")->toolTip().toStdString(), bell);
  std::string chosen;
  dialog->Choose_File = [&](QWidget*, const QString& title, const QString& in, const QString&) {
    EXPECT_EQ((title + in).toStdString(), "Browse for Reminder Sound File" + folder.File(""));
    return QString::fromStdString(chosen);
  };
  EXPECT_EQ(Seen_After("WAVBox=Bell.WAV|Button3", form, "WAVBox"), "Bell.WAV") << "nothing was chosen";
  chosen = gong;
  EXPECT_EQ(Seen_After("Button3", form, "WAVBox"), "gong.wav");
  has_sound = false;
  seams.Prompts.Expect_Info("Reminder Sound", "The sound cannot be played on this computer.");
  Act(form, "SpeedButton2|OKBtn");
  EXPECT_EQ(dialog->Alarm().WAVFile, gong);
  std::remove(gong.c_str());
  seams.Prompts.Expect_Error("Unable to Locate File",
                             "Unable to locate the selected Sound File. Please respecify.");
  Act(form, "SpeedButton2");
  EXPECT_EQ(played.size(), 5u) << "a file that is gone is not tried";
}

TEST_F(Alarm_Dialog, Who_May_Not_Change_It_Can_Look_And_Cancel) {
  QWidget* form = Open({true, 15, "", 0}, false, true);
  for (const auto* button : form->findChildren<QAbstractButton*>())
    EXPECT_EQ(button->isEnabled(), button->objectName() == QStringLiteral("Cancelbtn"))
        << button->objectName().toStdString();
  EXPECT_EQ(Seen(form, "Alarmbox"), "(15 minutes before)");
  Act(form, "Image1");
  EXPECT_TRUE(played.empty());
  Confirm(form);
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(dialog->result(), QDialog::Rejected) << "Cancel has the focus";
}

TEST_F(Alarm_Dialog, A_Stored_Alarm_Is_Changed_Or_Deleted_On_OK_Alone) {
  TNew_Event event = New_Event("", Monday + 0.5);
  event.Alarm = {true, 30, "", 0};
  const std::string key = Write(event);
  // Whether it was changed, and what is stored.
  const auto after = [&](const std::function<void(QWidget*)>& act) {
    const bool changed =
        With_Dialog(act, [&] { return Set_Alarm_Properties(key, database.Book().Calendar, false); });
    return (changed ? "yes " : "no ") + Query_Text("SELECT Offset || WAVFile FROM KT_Alarms");
  };
  EXPECT_EQ(after(Cancel), "no 30");
  EXPECT_EQ(after(Confirm_With("Alarmbox=2 h")), "yes 120<Default Sound>");
  Plant("DELETE ON KT_Alarms", "fm_Alarm_Props:Set_Alarm_Properties [KT_Events_Data/KT_Alarms]");
  EXPECT_EQ(after(Confirm_With("AlarmCheck")), "no 120<Default Sound>");
  Unplant();
  EXPECT_EQ(after(Confirm_With("AlarmCheck")), "yes ");
  EXPECT_FALSE(Set_Alarm_Properties(key, database.Book().Calendar, false)) << "it has no alarm any more";
}

}  // namespace
