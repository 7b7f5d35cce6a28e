#include "Waiting.h"

#include "Database.h"
#include "Editor_Fixture.h"

namespace {

// While another program writes, does something to the dialog that tells so; whether the change was begun.
bool Begun_After(TDatabase& writer, const std::function<void(QWidget*)>& act) {
  EXPECT_TRUE(writer.Start_Update());
  const auto look_and_act = [&](QWidget* dialog) {
    EXPECT_FALSE(Start_Update()) << "one is being begun already";
    act(dialog);
  };
  const bool begun = With_Dialog(look_and_act, [] { return Start_Update(); });
  if (begun) EndUpdate();
  writer.EndUpdate();
  EXPECT_TRUE(QTest::qWaitFor([] { return !QApplication::activeModalWidget(); }));
  return begun;
}

using Waiting = TEditor_Fixture;

TEST_F(Waiting, Lasts_Until_The_Other_Program_Is_Done_Or_The_User_Cancels) {
  const std::string path = database.Path();
  Open_Database(path, TDatabase::TMode::Must_Exist, Plexidex::Window_Options());
  TDatabase writer;
  writer.Open(path, TDatabase::TMode::Must_Exist);
  EXPECT_TRUE(Begun_After(writer, [&](QWidget* /*dialog*/) { writer.EndUpdate(); }));
  EXPECT_FALSE(Begun_After(writer, Cancel));
  ASSERT_EQ(seams.Prompts.Notices.size(), 1u);
  EXPECT_NE(seams.Prompts.Notices[0].find("another program is writing to it"), std::string::npos);
}

}  // namespace
