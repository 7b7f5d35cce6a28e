#include "Ini_Settings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

namespace {

using namespace Kt_util_01;
namespace fs = std::filesystem;

class Ini_Settings : public ::testing::Test {
 protected:
  Ini_Settings() : m_Folder(fs::temp_directory_path() / ("settings-" + Get_GUID())) {
    fs::create_directory(m_Folder);
  }
  ~Ini_Settings() override { fs::remove_all(m_Folder); }

  std::string Path() const { return (m_Folder / "settings.ini").string(); }
  void Put(const std::string& text) const { std::ofstream(Path(), std::ios::binary) << text; }
  std::string Contents() const {
    std::ifstream file(Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  fs::path m_Folder;
};

TEST_F(Ini_Settings, Any_Text_Comes_Back) {
  std::vector<std::string> texts = {"",        " ",     "  both ends  ", "two\r\nlines\n", "\"quoted\"",
                                    "a=b;c#d", "[x]",   "\\x41",         "back\\slash\\",  "Grüße 日本",
                                    "\ttab\t", "\u00A0"};
  std::mt19937 random{1};
  for (int i = 0; i < 60; ++i) {
    std::string text;
    for (auto count = random() % 12; count > 0; --count) text += static_cast<char>(random() % 256);
    texts.push_back(text);
  }
  TIni_Settings store(Path());
  for (const std::string& text : texts) {
    store.Write(text, "x" + text, text);
    store.Write("Values", text, "y" + text);
  }
  TIni_Settings again(Path());
  for (const std::string& text : texts) {
    for (TIni_Settings* each : {&store, &again}) {
      std::string value = "?";
      EXPECT_TRUE(each->Read(text, "x" + text, value));
      EXPECT_EQ(value, text);
      EXPECT_TRUE(each->Read("Values", text, value));
      EXPECT_EQ(value, "y" + text);
    }
  }
}

TEST_F(Ini_Settings, A_File_Written_By_Hand) {
  Put("; comment\r\n[General]\r\nCalendar View = 11 \r\nnonsense\r\n[ "
      "broken\r\n\r\n[Sounds]\nDefault=a=b\\x");
  TIni_Settings store(Path());
  std::string value;
  EXPECT_TRUE(store.Read("General", "Calendar View", value));
  EXPECT_EQ(value, "11");
  EXPECT_TRUE(store.Read("Sounds", "Default", value));
  EXPECT_EQ(value, "a=b\\x");
  EXPECT_FALSE(store.Read("General", "Default", value));
  EXPECT_EQ(value, "a=b\\x");
}

TEST_F(Ini_Settings, Two_Stores_On_One_File_Keep_Each_Others_Values) {
  TIni_Settings first(Path());
  TIni_Settings second(Path());
  first.Write("General", "A", "1");
  second.Write("General", "B", "2");
  first.Write("Other", "C", "3");
  EXPECT_EQ(Contents(), "[General]\nA=1\nB=2\n[Other]\nC=3\n");
  // Nothing is left of the temporary files.
  EXPECT_EQ(std::distance(fs::directory_iterator(m_Folder), fs::directory_iterator()), 1);
}

TEST_F(Ini_Settings, A_Missing_Folder_Is_Made_And_What_Cannot_Be_Is_Said) {
  const std::string deep = (m_Folder / "a" / "b" / "settings.ini").string();
  TIni_Settings(deep).Write("S", "N", "V");
  EXPECT_TRUE(fs::exists(deep));

  const std::string below_a_file = deep + "/settings.ini";
  TIni_Settings store(below_a_file);
  try {
    store.Write("S", "N", "V");
    ADD_FAILURE() << "written below a file";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find(below_a_file), std::string::npos) << error.what();
  }
  std::string value;
  EXPECT_FALSE(store.Read("S", "N", value));
  EXPECT_THROW(TIni_Settings{m_Folder.string()}, std::runtime_error);
}

}  // namespace
