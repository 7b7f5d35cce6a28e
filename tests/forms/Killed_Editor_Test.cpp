#include <signal.h>

#include "Editor_Fixture.h"
#include "KTReminds.h"

using namespace KTReminds;

namespace {

/// A program that dies while an editor is on its screen: a process of its own, which opens the database,
/// types into the editor and is killed.
class Killed_Editor_DeathTest : public TEditor_Fixture {
 protected:
  void Edit_And_Die(const std::string& key, bool task) {
    Kt_data_01::Close_Database();
    EXPECT_EXIT(
        {
          database.Reopen();
          TModal_Driver driver([&](QWidget* form) {
            Type(form, "Edit1", "half a tho");
            raise(SIGKILL);
          });
          (task ? Task_Properties : Reminder_Properties)(key, {}, database.Book().Key, {}, false);
          _exit(1);
        },
        testing::KilledBySignal(SIGKILL), "");
    database.Reopen();
  }
  // What the user would miss.
  static std::string Stored() {
    return Query_Text(
        "SELECT group_concat(e.Title || e.Freq || e.EventType || d.Key || d.EventDate || d.Actioned || "
        "ifnull(a.Offset, '-'), ' ') FROM KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key LEFT JOIN "
        "KT_Alarms a ON a.Key = d.Key");
  }
};

TEST_F(Killed_Editor_DeathTest, Leaves_No_Blank_Entry_After_The_Next_Start) {
  Make(3);
  const std::string before = Stored();
  for (const bool task : {false, true}) {
    Edit_And_Die({}, task);
    EXPECT_EQ(Counts().back(), '1') << "the editor is noted as open";
    EXPECT_NE(Stored(), before) << "its temporary row is there";
    Remove_Abandoned_Events();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Counts(), "1 3 0 0");
  }
}

TEST_F(Killed_Editor_DeathTest, Loses_Nothing_Of_A_Stored_Entry) {
  for (const bool task : {false, true}) {
    const std::string key = Make(1, task ? 3 : 0);
    const std::string before = Stored();
    Edit_And_Die(key, task);
    Remove_Abandoned_Events();
    EXPECT_EQ(Stored(), before);
  }
}

}  // namespace
