#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <thread>

#include "Temporary_Database.h"

namespace {

namespace fs = std::filesystem;

// The program as it is started, in a folder of its own; what it says, and its status after a "/".
struct Program : testing::Test {
  std::string Run(const std::string& command, const std::string& before = "true") const {
    return Say(before + " && HOME=. XDG_DATA_HOME= LC_ALL=C " KT_PROGRAM " " + command + " 2>&1; echo /$?");
  }
  std::string Say(const std::string& command) const {
    FILE* const pipe = popen(("cd '" + folder.File("") + "' && " + command).c_str(), "r");
    std::string said;
    for (int c = 0; (c = fgetc(pipe)) != EOF;) said += static_cast<char>(c);
    pclose(pipe);
    return said;
  }
  /// The texts of a PDF's pages, as they stand on paper: each line with single blanks, each page's end as
  /// "~".
  std::string Printed(const std::string& file) const {
    return Say("pdftotext -layout " + file + " - | tr -s ' ' | sed 's/^ //' | tr '\\f' '~' | grep -v '^$'");
  }
  /// Imports events: date, time (or none) and title, with blanks between.
  void Import(const std::vector<std::array<std::string, 3>>& events) const {
    std::ofstream file(folder.File("in.ics"));
    file << "BEGIN:VCALENDAR\r\n";
    for (const auto& [date, time, title] : events)
      file << "BEGIN:VEVENT\r\nUID:" << date << time << title << "\r\nDTSTART"
           << (time.empty() ? ";VALUE=DATE:" + date : ":" + date + "T" + time + "00")
           << "\r\nSUMMARY:" << title << "\r\nEND:VEVENT\r\n";
    file << "END:VCALENDAR\r\n" << std::flush;
    Run("--database a.db import in.ics");
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

TEST_F(Program, Prints_A_Day_A_Week_And_A_Month_On_One_Page_Of_The_Paper_Asked_For) {
  Import({{"20240115", "", "Holiday at home"},
          {"20240115", "0930", "Lunch, later"},
          {"20240121", "2015", "Film"}});
  const auto print = [&](const std::string& options) {
    EXPECT_EQ(Run("--database a.db print --pdf a.pdf " + options), "a.pdf: 1 page written\n/0\n");
    const std::string text = Printed("a.pdf");
    return Say("pdfinfo a.pdf | sed -n 's/^Page size: *//p'") + text.substr(0, text.find("Printed on")) +
           text.substr(text.find("Page 1"));
  };
  EXPECT_EQ(print("--view day --date 2024-01-15 --paper A4"),
            "595 x 842 pts (A4)\nMonday, 15 January 2024 My Calendar\nall day Holiday at home\n09:30 Lunch, "
            "later\nPage 1 of 1\n~\n");
  const std::string week = print("--view week --date 2024-01-21 --paper letter");
  EXPECT_EQ(week.substr(0, week.find("Friday")),
            "612 x 792 pts (letter)\n15 January 2024 - 21 January 2024 My Calendar\nWeek 3\n"
            "Monday, 15 January 2024 Tuesday, 16 January 2024\nHoliday at home\n09:30 Lunch, later\n"
            "Wednesday, 17 January 2024 Thursday, 18 January 2024\n");
  EXPECT_NE(week.find("Sunday, 21 January 2024\n20:15 Film\n"), std::string::npos) << week;
  const std::string month = print("--view month --date 2024-01-01 --paper A4");
  EXPECT_EQ(month.substr(0, month.find("22 23")),
            "842 x 595 pts (A4)\nJanuary 2024 My Calendar\n"
            "Monday Tuesday Wednesday Thursday Friday Saturday Sunday\n1 2 3 4 5 6 7\n8 9 10 11 12 13 14\n"
            "15 16 17 18 19 20 21\nHoliday at home 20:15 Film\n09:30 Lunch, later\n");
  EXPECT_EQ(month.substr(month.find("29 30")), "29 30 31\nPage 1 of 1\n~\n");
  EXPECT_EQ(print("--view month --date 2024-01-01 --paper letter --portrait").substr(0, 22),
            "612 x 792 pts (letter)");
}

TEST_F(Program, Prints_What_A_Page_Does_Not_Hold_On_Further_Ones_And_Loses_Nothing) {
  std::vector<std::array<std::string, 3>> events = {{"20240114", "0900", "Before"},
                                                    {"20240117", "0900", "After"}};
  std::string titles;
  for (int i = 1000; i < 1120; ++i) {
    const std::string minute = std::to_string(i - 1000 + (i >= 1060 ? 1040 : 1000));
    events.push_back({i < 1100 ? "20240115" : "20240116", minute, "Entry " + std::to_string(i)});
    titles += "Entry " + std::to_string(i) + "\n";
  }
  Import(events);
  const auto print = [&](const std::string& view, const std::string& hidden) {
    EXPECT_EQ(Run("--database a.db print --paper A4 --pdf a.pdf --view " + view),
              "a.pdf: 3 pages written\n/0\n");
    EXPECT_EQ(Say("pdftotext -layout a.pdf - | grep -o 'Entry 1...' | sort"), titles);
    const std::string text = Printed("a.pdf");
    std::ofstream(folder.File("text")) << text;
    return Say("sed -E '/" + hidden + "/d; s/Printed.*Page/Page/' text");
  };
  const std::string list = "All Events My Calendar\n14 January 2024 - 17 January 2024\n";
  EXPECT_EQ(print("list", "^[0-9]+:"),
            list + "Sunday, 14 January 2024\nMonday, 15 January 2024\nPage 1 of 3\n~" + list +
                "Monday, 15 January 2024 (continued)\nPage 2 of 3\n~" + list +
                "Tuesday, 16 January 2024\nWednesday, 17 January 2024\nPage 3 of 3\n~\n");
  const std::string week = "15 January 2024 - 21 January 2024 My Calendar\nWeek 3\n";
  const std::string rest = print("week --date 2024-01-15", "^[0-9]+:");
  EXPECT_NE(rest.find("more, on the next pages"), std::string::npos);
  EXPECT_EQ(
      rest.substr(rest.find("Page 1")),
      "Page 1 of 3\n~" + week + "Monday, 15 January 2024 (continued)\nPage 2 of 3\n~" + week +
          "Monday, 15 January 2024 (continued)\nTuesday, 16 January 2024 (continued)\nPage 3 of 3\n~\n");
}

TEST_F(Program, A_Sheet_That_Cannot_Be_Written_Is_An_Error_And_Leaves_No_Half_File) {
  Run("--database a.db sample");
  const std::string print = "--database a.db print --view list --pdf ";
  EXPECT_EQ(Run(print + "no/a.pdf"), "\"no/a.pdf\" cannot be written: No such file or directory.\n/1\n");
  EXPECT_EQ(Run(print + "a.db"), "\"a.db\" cannot be written: it belongs to a database.\n/1\n");
  EXPECT_EQ(Run(print + "a.pdf", "ulimit -f 64"), "\"a.pdf\" cannot be written: File too large.\n/1\n");
  EXPECT_EQ(Say("ls"), "a.db\n");
}

}  // namespace
