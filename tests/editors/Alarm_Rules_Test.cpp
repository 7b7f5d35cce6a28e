#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "Alarm_Input.h"
#include "Alarm_Texts.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace KTReminds;

namespace {

using Alarm_Texts = TSeams_Test;

TEST_F(Alarm_Texts, Offsets_In_Words) {
  const std::pair<int, const char*> cases[] = {{0, "0 minutes before"},
                                               {1, "1 minute before"},
                                               {59, "59 minutes before"},
                                               {60, "1 hour before"},
                                               {90, "1 hour before 30 minutes before"},
                                               {121, "2 hours before 1 minute before"},
                                               {1439, "23 hours before 59 minutes before"},
                                               {1440, "1 day before"},
                                               {1500, "1 day before"},
                                               {2880, "2 days before"},
                                               {-5, "-5 minutes before"}};
  for (const auto& [minutes, text] : cases) EXPECT_EQ(Convert_Offset_to_ItemText(minutes), text);
  EXPECT_EQ(Alarm_Offset_Items().size(), 21u);
  EXPECT_EQ(Alarm_Offset_Items()[3], "15 minutes before");
  EXPECT_EQ(Alarm_Offset_Items()[20], "3 days before");
}

TEST_F(Alarm_Texts, Words_As_Offsets) {
  const struct {
    const char *Typed, *Rewritten;
    int Minutes;
  } cases[] = {{"90", "90 minutes before", 90},
               {"0", "0 minutes before", 0},
               {"1 d", "1 day before", 1440},
               {"2 H", "2 hours before", 120},
               {"45 m", "45 minutes before", 45},
               {"3 mice", "3 minutes before", 3},
               {"1 hour before 30 minutes before", "1 hour before", 60},
               {"5 weeks", "5 s before", -1},
               {"1 week", "1  before", -1},
               {"5 ", "5 s before", -1},
               {"-1 d", "-1 d", -1440}};
  for (const auto& one : cases) {
    std::string text = one.Typed;
    EXPECT_EQ(Convert_Alarm_ItemText(text), one.Minutes) << one.Typed;
    EXPECT_EQ(text, one.Rewritten) << one.Typed;
  }
  for (const std::string typed : {"abc", "", " 5", "5m", "2000000 d", "99999999999999999999"}) {
    std::string text = typed;
    EXPECT_EQ(Convert_Alarm_ItemText(text), -1) << typed;
    EXPECT_EQ(text, typed);
  }
  for (const std::string& item : Alarm_Offset_Items()) {
    std::string text = item;
    EXPECT_EQ(Convert_Offset_to_ItemText(Convert_Alarm_ItemText(text)), item);
    EXPECT_EQ(text, item);
  }
}

TEST_F(Alarm_Texts, Moments_And_Refusals_Name_What_Is_Wrong_And_Where) {
  std::string text = "5 weeks";
  int offset = 7;
  const TRefusal refusal = Validate_Alarm_Offset(text, offset);
  EXPECT_EQ(refusal.Caption + ": " + refusal.Text,
            "Invalid Reminder Specified: The offset for the Reminder is invalid.\r\n\r\nPlease specify an "
            "offset in one of the following "
            "formats: - "
            "\r\n\r\n     ? minutes ( or ? )\r     ? hours ( or ? h)\r     ? days ( or ? d )");
  EXPECT_EQ(text, "5 s before");
  EXPECT_EQ(offset, 7);

  EXPECT_EQ(Get_Alarm_TimeStr(45306.5, 0, 90), "at 10:30 AM on Monday, 15 January 2024");
  EXPECT_EQ(Get_Alarm_TimeStr(45306.5, 45307.25, 90), "until 6:00 AM on Tuesday, 16 January 2024");
  EXPECT_TRUE(Validate_Alarm_Moment(45306, 45306.9, "8:00 AM", offset, "t", "d").Empty())
      << "the due day itself";
  EXPECT_EQ(offset, -480);
  EXPECT_TRUE(Validate_Alarm_Moment(45306, 45305, "8:00 AM", offset, "t", "d").Empty());
  EXPECT_EQ(offset, 960);
  EXPECT_EQ(Validate_Alarm_Moment(45306, 45307, "8:00 AM", offset, "t", "d").Control, "d");
  const TRefusal time = Validate_Alarm_Moment(45306, 45307, "teatime", offset, "t", "d");
  EXPECT_EQ(time.Control, "t");
  EXPECT_EQ(time.Text, "The Time entered is invalid. Please specify a valid time in the format h:mm AP");
  EXPECT_EQ(offset, 960);
}

TEST_F(Alarm_Texts, Sounds_Come_From_The_Folder_Of_The_Current_File_Or_The_Systems) {
  TTemporary_Folder own, system;
  for (const std::string& file :
       {own.File("a.WAV"), own.File("b.wav"), own.File("c.mp3"), system.File("ding.wav")}) {
    std::ofstream(file) << "x";
  }
  Install_Sound_Folder(system.File("").substr(0, system.File("").size() - 1));
  for (const char* current : {"", "<Default Sound>", "/no/such/file.wav"}) {
    const TSound_List list = Build_WAV_List(current);
    EXPECT_EQ(list.Items, (std::vector<std::string>{"<Default Sound>", "<Standard Beep>", "ding.wav"}));
    EXPECT_EQ(list.Selected, 0);
    EXPECT_EQ(list.Folder, system.File(""));
    EXPECT_EQ(list.Stored_Value(), "<Default Sound>");
  }
  EXPECT_EQ(Build_WAV_List("<Standard Beep>").Selected, 1);
  EXPECT_EQ(Build_WAV_List("<Standard Beep>").Default_Value(), "<Standard Beep>");
  TSound_List list = Build_WAV_List(own.File("b.wav"));
  EXPECT_EQ(list.Items.size(), 4u);
  EXPECT_EQ(list.Items[static_cast<std::size_t>(list.Selected)], "b.wav");
  EXPECT_EQ(list.Stored_Value(), own.File("b.wav"));
  EXPECT_EQ(list.Default_Value(), own.File("b.wav"));
  std::filesystem::remove(own.File("b.wav"));
  EXPECT_EQ(list.Stored_Value(), "") << "a file that has gone stores nothing";
  EXPECT_EQ(Read_Default_Sound(), "<Standard Beep>");
  Write_Default_Sound("x.wav");
  EXPECT_EQ(Read_Default_Sound(), "x.wav");
  Install_Sound_Folder("");
}

}  // namespace
