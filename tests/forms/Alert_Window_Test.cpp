#include "Alert_Window.h"

#include <thread>

#include "Alert_Service.h"
#include "Editor_Fixture.h"
#include "Main_Window.h"
#include "Single_Instance.h"
#include "Tray.h"

namespace {

using namespace Plexidex;

struct Alert_Window_Test : TEditor_Fixture {
  /// An event today, its alarm at the same time.
  std::string Add(const std::string& title, int hour, const std::string& location = {}) const {
    TNew_Event event = New_Event(title, Monday + hour / 24.0);
    event.Record.Location = location;
    event.Alarm.On = true;
    event.Alarm.Offset = 0;
    event.Alarm.WAVFile = "<Standard Beep>";
    return Write(event);
  }
  std::string Rows() {
    std::string text;
    auto* list = Control<QTreeWidget>(&window, "Alerts");
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
      const QTreeWidgetItem* item = list->topLevelItem(i);
      text += item->isSelected() ? "*" : "";
      for (int column = 0; column < list->columnCount(); ++column)
        text += (column == 0 || item->text(column).isEmpty() ? "" : ", ") + item->text(column).toStdString();
      text += "|";
    }
    return text;
  }

  /// What stands in a row now.
  TAlert_Entry Entry_At(std::size_t row) {
    TAlert_Entry entry;
    entry.Alert = Kt_data_01::Due_Alerts(Now()).at(row);
    return entry;
  }

  // Over no bus, so that nothing is shown on the desktop of who runs this.
  TNotifications notifications{QStringLiteral("none")};
  TAlert_Service service{notifications};
  TAlert_Window& window = service.Window();
};

TEST_F(Alert_Window_Test, Answers_One_After_The_Other) {
  Add("Tea", 13, "Kitchen");
  const std::string call = Add("Call", 14);
  Add("Walk", 15);
  service.Look();
  EXPECT_FALSE(window.isVisible());
  seams.Clock.Value = Monday + 13 / 24.0;
  service.Look();
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(Rows() + Seen(&window, "Heading"), "*Tea, 1/15/2024 1:00 PM, Kitchen, now|1 reminder");
  seams.Clock.Value = Monday + 15 / 24.0;
  service.Look();
  EXPECT_TRUE(window.testAttribute(Qt::WA_ShowWithoutActivating)) << "which this platform does not heed";
  EXPECT_EQ(Rows() + Seen(&window, "Heading"),
            "*Tea, 1/15/2024 1:00 PM, Kitchen, 2 hours late|Call, 1/15/2024 2:00 PM, 60 minutes late|"
            "Walk, 1/15/2024 3:00 PM, now|3 reminders");
  EXPECT_EQ(Make_Checks(&window), "");

  const QSignalSpy changed(&service, &TAlert_Service::Entries_Changed);
  seams.Prompts.Expect_Error(
      "Reminders",
      "\"soon\" is no time to snooze for. Type minutes, or for example \"20 minutes\", "
      "\"2 hours\" or \"3 days\".");
  window.Come_Forward();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  auto* delay = Control<QComboBox>(&window, "Delay");
  const auto type = [delay](const char* text) {
    delay->lineEdit()->selectAll();
    QTest::keyClicks(delay, QString::fromLatin1(text));
    QTest::keyClick(delay, Qt::Key_Return);
  };
  type("soon");
  type("2 h");
  EXPECT_EQ(Rows(), "*Call, 1/15/2024 2:00 PM, 60 minutes late|Walk, 1/15/2024 3:00 PM, now|");
  EXPECT_EQ(Query_Text("SELECT round((NextTime - " + std::to_string(Monday) +
                       ") * 24) FROM KT_Alarms WHERE "
                       "NextTime > 0"),
            "17.0");
  // A reminder that goes off while the editor of another is open comes into the list behind it.
  seams.Clock.Value = Monday + 17 / 24.0;
  auto* list = Control<QTreeWidget>(&window, "Alerts");
  const auto open = [&] {
    window.Come_Forward();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(list, Qt::Key_Return);
  };
  With_Dialog(
      [this](QWidget* dialog) {
        service.Look();
        Act(dialog, "Edit1=Call back");
        Confirm(dialog);
      },
      open);
  EXPECT_EQ(Rows(),
            "*Call back, 1/15/2024 2:00 PM, 3 hours late|Walk, 1/15/2024 3:00 PM, 2 hours late|"
            "Tea, 1/15/2024 1:00 PM, Kitchen, 4 hours late|");
  // What is answered while its own editor is open stays answered when that is saved.
  With_Dialog(
      [this](QWidget* dialog) {
        TAlert_Watch::Put_Off({Entry_At(0)}, 90);
        Act(dialog, "Edit1=Call home");
        Confirm(dialog);
      },
      open);
  EXPECT_EQ(Rows(), "*Walk, 1/15/2024 3:00 PM, 2 hours late|Tea, 1/15/2024 1:00 PM, Kitchen, 4 hours late|");
  EXPECT_EQ(Query_Text("SELECT Title FROM KT_Events WHERE Title LIKE 'Call%'"), "Call home");
  seams.Clock.Value = Monday + 18.5 / 24.0;
  service.Look();
  With_Dialog(
      [this](QWidget* dialog) {
        TAlert_Watch::Mark_Done(Entry_At(0));
        Act(dialog, "Edit1=Walked");
        Confirm(dialog);
      },
      open);
  EXPECT_EQ(
      Query_Text("SELECT d.Actioned || e.Title FROM KT_Events_Data d JOIN KT_Events e ON e.Key = d.Event "
                 "WHERE e.Title LIKE 'Walk%'"),
      "1Walked");
  EXPECT_EQ(Rows(),
            "*Tea, 1/15/2024 1:00 PM, Kitchen, 5 hours late|Call home, 1/15/2024 2:00 PM, 4 hours late|");
  list->setCurrentItem(list->topLevelItem(1));
  Act(&window, "Mark_Done");
  EXPECT_EQ(Query_Text("SELECT Actioned FROM KT_Events_Data WHERE Key = '" + call + "'"), "1");
  Add("Later", 18);
  service.Look();
  EXPECT_EQ(Rows(), "*Tea, 1/15/2024 1:00 PM, Kitchen, 5 hours late|") << "past when it was written";
  Plant("UPDATE ON KT_Alerts", "Alert_Watch:Dismiss [KT_Alerts/KT_Alarms]");
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_EQ(Seen(&window, "Failure"), "The answer could not be saved; please try again.");
  ::Unplant();
  Act(&window, "Dismiss_All");
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(changed.count(), 7);
  seams.Prompts.Expect_Info("Reminders", "No reminder waits for an answer.");
  service.Show_Window();
}

TEST_F(Alert_Window_Test, The_Icons_Menu_Opens_Todays_Entries) {
  Add("Tea & cake", 16);
  Add("Early", 8);
  TTray tray;
  tray.Set_Count(2);
  emit tray.Menu().aboutToShow();
  const QSignalSpy wanted(&tray, &TTray::Entry_Wanted);
  std::string texts;
  for (QAction* action : tray.Menu().actions()) {
    texts += action->text().toStdString() + "|";
    if (action->text().contains(QStringLiteral("cake"))) action->trigger();
  }
  EXPECT_EQ(texts,
            "Today|8:00 AM Early|4:00 PM Tea && cake||&Reminders (2)...|&New Event...|&Open Plexidex||"
            "&Quit|");
  EXPECT_EQ(wanted.count(), 1);
  EXPECT_FALSE(tray.Follow_Preferences()) << "off unless asked for";
}

TEST_F(Alert_Window_Test, A_Second_Start_Speaks_To_The_First) {
  TSingle_Instance first;
  first.Answer_For(database.Path());
  QStringList files;
  QObject::connect(&first, &TSingle_Instance::Called, &first,
                   [&](const QStringList& given) { files = given; });
  std::atomic<int> answered = -1;
  std::thread second(
      [&] { answered = TSingle_Instance::Call(database.Path(), {QStringLiteral("/tmp/a.ics")}); });
  EXPECT_TRUE(QTest::qWaitFor([&] { return answered >= 0 && !files.isEmpty(); }));
  second.join();
  EXPECT_EQ(answered, 1);
  EXPECT_EQ(files, QStringList{QStringLiteral("/tmp/a.ics")});
  EXPECT_FALSE(TSingle_Instance::Call(database.Path() + "2", {}));
}

TEST_F(Alert_Window_Test, A_Closed_Window_Goes_On_Hidden_Until_The_Program_Is_Quit) {
  TMain_Window main_window;
  const QSignalSpy closed(&main_window, &TMain_Window::Closed);
  bool goes_on = true;
  main_window.Install_Background([&] { return goes_on; });
  main_window.show();
  main_window.close();
  EXPECT_TRUE(main_window.isHidden());
  EXPECT_EQ(closed.count(), 0);
  main_window.Come_Forward();
  EXPECT_TRUE(main_window.isVisible());
  main_window.Quit();
  EXPECT_EQ(closed.count(), 1);
}

}  // namespace
