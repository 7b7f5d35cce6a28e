#include "Test_Seams.h"

namespace {

TEST(Seams, Prompts_Reach_Who_Is_Installed) {
  TTest_Seams seams;
  seams.Prompts.Expect_Error("Error", "No subject.");
  seams.Prompts.Expect_Question("Delete", "Really?", Answer_Yes);
  seams.Prompts.Expect_Info("Done", "All of it.");
  Raise_Error("Error", "No subject.");
  EXPECT_EQ(Raise_Question("Delete", "Really?"), Answer_Yes);
  Raise_Info("Done", "All of it.");
  Raise_Notice("By the way.");
  EXPECT_EQ(seams.Prompts.Notices, std::vector<std::string>{"By the way."});
  Sound(3);
  Sound(1);
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{3, 1}));
}

TEST(Seams, Without_A_Host_Prompts_Are_Lines_And_The_Answer_Is_No) {
  Install_Prompts(nullptr);
  ::testing::internal::CaptureStderr();
  Raise_Error("Error", "First\r\nsecond");
  Raise_Info("Done", "All");
  Raise_Notice("By the way");
  const int answer = Raise_Question("Delete", "Really?");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "Error: First  second\nDone: All\nBy the way\nDelete: Really?\n");
  EXPECT_EQ(answer, Answer_No);
}

#ifndef NDEBUG
TEST(Seams_DeathTest, No_Prompt_Inside_An_Open_Bracket) {
  Install_Bracket_Check([] { return true; });
  EXPECT_DEATH(Raise_Question("Delete", "Really?"), "Bracket_Is_Open");
  Install_Bracket_Check(nullptr);
}
#endif

TEST(Seams, Settings_Keep_Their_Types_And_Fall_Back_On_Rubbish) {
  TTest_Seams seams;
  EXPECT_EQ(Read_String("Sounds", "Default", "<Standard Beep>"), "<Standard Beep>");
  Write_String("Sounds", "Default", "");
  Write_Integer("General", "Calendar View", -13);
  Write_Bool("General", "Navigation Bars", false);
  Write_Bool("General", "Show Calendar", true);
  EXPECT_EQ(Read_String("Sounds", "Default", "<Standard Beep>"), "");
  EXPECT_EQ(Read_Integer("General", "Calendar View", 2), -13);
  EXPECT_EQ(Read_Integer("Sounds", "Calendar View", 5), 5);
  EXPECT_FALSE(Read_Bool("General", "Navigation Bars", true));
  EXPECT_TRUE(Read_Bool("General", "Show Calendar", false));
  Write_String("General", "Calendar View", "eleven");
  EXPECT_EQ(Read_Integer("General", "Calendar View", 2), 2);
  EXPECT_TRUE(Read_Bool("General", "Calendar View", true));
  // The default store is another one, and remembers.
  Install_Settings(nullptr);
  EXPECT_EQ(Read_Integer("General", "Calendar View", 2), 2);
  Write_Integer("General", "Calendar View", 12);
  Install_Settings(&seams.Settings);
  Install_Settings(nullptr);
  EXPECT_EQ(Read_Integer("General", "Calendar View", 2), 12);
}

}  // namespace
