#include <signal.h>

#include "Editor_Fixture.h"
#include "KTReminds.h"

namespace {

// What the user would miss.
std::string Stored() {
  return Query_Text(
      "SELECT group_concat(e.Title || e.Freq || e.EventType || d.Key || d.EventDate || d.Actioned, ' ') FROM "
      "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key");
}

using Killed_Editor_DeathTest = TEditor_Fixture;

/// A program that dies while an editor is on its screen: a process of its own, which opens the database,
/// types into the editor and is killed.
TEST_F(Killed_Editor_DeathTest, Loses_Nothing_And_Leaves_No_Blank_Entry_After_The_Next_Start) {
  Make(3);
  for (const auto& [key, edit] : {std::pair(std::string(), &Reminder_Properties),
                                  {std::string(), &Task_Properties},
                                  {Make(1), &Reminder_Properties},
                                  {Make(1, 3), &Task_Properties}}) {
    const std::string before = Stored();
    Close_Database();
    const auto edit_and_die = [&, entry = key, run = edit] {
      database.Reopen();
      const TModal_Driver driver([](QWidget* form) {
        Act(form, "Edit1=half a tho");
        raise(SIGKILL);
      });
      run(entry, {}, database.Book().Key, {}, false);
      _exit(1);
    };
    EXPECT_EXIT(edit_and_die(), testing::KilledBySignal(SIGKILL), "");
    database.Reopen();
    EXPECT_EQ(Counts(), key.empty() ? "4 6 0 +1" : "3 5 0") << "a new entry's row is there, and noted";
    Remove_Abandoned_Events();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Counts(), "3 5 0");
  }
}

}  // namespace
