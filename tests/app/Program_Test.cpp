#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <thread>

#include "Temporary_Database.h"

namespace {

namespace fs = std::filesystem;

// The program as it is started, in a folder of its own; what it says, and its status after a "/".
struct Program : testing::Test {
  std::string Run(const std::string& command, const std::string& before = "true") const {
    const std::string line = "cd '" + folder.File("") + "' && " + before +
                             " && HOME=. XDG_DATA_HOME= " KT_PROGRAM " " + command + " 2>&1; echo /$?";
    FILE* const pipe = popen(line.c_str(), "r");
    std::string said;
    for (int c = 0; (c = fgetc(pipe)) != EOF;) said += static_cast<char>(c);
    pclose(pipe);
    return said;
  }

  TTemporary_Folder folder;
};

TEST_F(Program, What_It_Makes_Is_For_The_User_Alone) {
  EXPECT_EQ(Run("--database deep/a.db books --add Work", "umask 022"), "Work  0 entries\n/0\n");
  EXPECT_EQ(fs::status(folder.File("deep")).permissions(), fs::perms::owner_all);
  EXPECT_EQ(fs::status(folder.File("deep/a.db")).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Program, A_Book_Is_Made_Once_However_Many_Make_It) {
  Run("--database a.db books");
  std::vector<std::thread> others;
  std::vector<std::string> said(6);
  for (std::string& each : said) others.emplace_back([&] { each = Run("--database a.db books --add Work"); });
  for (std::thread& other : others) other.join();
  EXPECT_EQ(std::count(said.begin(), said.end(), "Work  0 entries\n/0\n"), 1);
  EXPECT_EQ(std::count(said.begin(), said.end(), "There is a book \"Work\" already.\n/1\n"), 5);
  EXPECT_EQ(Run("--database a.db books"), "Work  0 entries\n/0\n");
}

TEST_F(Program, A_File_That_May_Not_Grow_Is_An_Error_And_Loses_Nothing) {
  Run("--database a.db books --add Work");
  Run("sample --file sample.ics");
  EXPECT_EQ(Run("--database a.db import sample.ics", "ulimit -f 64"),
            "Nothing was imported from \"sample.ics\": the file would become larger than allowed.\n/1\n");
  EXPECT_EQ(Run("--database a.db check"), "The database is sound: 0 events, 0 occurrences, 0 alarms.\n/0\n");
}

}  // namespace
