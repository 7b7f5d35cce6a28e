#include "Editor_Fixture.h"
#include "fm_Delete_Reminder.h"

namespace {

struct Delete_Dialog : TEditor_Fixture {
  static bool Delete(const std::string& key, const std::function<void(QWidget*)>& act) {
    return With_Dialog(act, [&] { return Delete_Reminder(key); });
  }
};

TEST_F(Delete_Dialog, Asks_About_A_Set_And_Deletes_What_Was_Chosen) {
  const std::string key = Make(5);
  EXPECT_FALSE(Delete(key, [](QWidget* form) {
    EXPECT_TRUE(Control<QLabel>(form, "Label1")->text().contains(QStringLiteral("all occurences of")));
    EXPECT_EQ(Seen(form, "Label2 RadioButton1 RadioButton2"), "hidden|-|+");
    Control<QWidget>(form, "Button1")->setFocus();
    Confirm(form->focusWidget());
  })) << "Enter presses the button that has the focus";
  EXPECT_EQ(Counts(), "1 5 0");
  EXPECT_TRUE(Delete(key, Confirm));
  EXPECT_EQ(Dates(), "0.5 1.5 3.5 4.5");
  seams.Sounds.Played.clear();
  EXPECT_TRUE(Delete(Query_Text("SELECT Key FROM KT_Events_Data"),
                     [](QWidget* form) { Act(form, "RadioButton1|Button2"); }));
  EXPECT_EQ(Counts(), "0 0 0");
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{2, 3}));
}

TEST_F(Delete_Dialog, Asks_Plainly_About_A_Single_Event_Or_Task) {
  for (const auto& [type, what] : {std::pair(0, "calendar event"), {3, "Task"}}) {
    EXPECT_TRUE(Delete(Make(1, type), [what](QWidget* form) {
      EXPECT_EQ(form->windowTitle().toStdString() + Seen(form, "Label1 Label2 RadioButton1 RadioButton2"),
                std::string("Confirm Deletionhidden|Please confirm you wish to delete the selected ") + what +
                    " from the address book|hidden|hidden");
      Confirm(form);
    }));
    EXPECT_EQ(Counts(), "0 0 0");
  }
}

TEST_F(Delete_Dialog, Closes_With_OK_After_A_Failure) {
  const std::string key = Make(1);
  Plant("DELETE ON KT_Events_Data", "fm_Delete_Reminder:Button2Click [KT_EVENTS/KT_EVENTS_DATA/KT_ALARMS]");
  EXPECT_TRUE(Delete(key, Confirm));
  EXPECT_EQ(Counts(), "1 1 0");
}

}  // namespace
