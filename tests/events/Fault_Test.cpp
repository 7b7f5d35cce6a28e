#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <random>

#include "Kt_update.h"
#include "Store_Check.h"
#include "Test_Events.h"

namespace {

constexpr int Set_Length = 150;
constexpr int Sets_Per_Bracket = 2;

// Writes brackets of two sets each until `brackets` are done, telling of each that was closed. For a child
// process, which opens a database of its own.
[[noreturn]] void Write_Brackets(const std::string& path, int brackets, int busy_msecs, int tell) {
  Open_Database(path, TDatabase::TMode::Must_Exist, {.Busy_Time = std::chrono::milliseconds(busy_msecs)});
  TNew_Event event = New_Event("", 45292.5, Set_Length);
  event.Alarm.On = true;
  const std::string process = std::to_string(getpid());
  for (int i = 0; i < brackets; ++i) {
    event.Record.Title = process + "/" + std::to_string(i);
    const TUpdate_Result result = Update("Write_Brackets", [&] {
      for (int set = 0; set < Sets_Per_Bracket; ++set) {
        if (Write(event).empty()) throw EAlready_Reported();
      }
    });
    if (result && write(tell, "x", 1) != 1) _exit(2);
  }
  _exit(0);
}

struct TChild {
  pid_t Process;
  int Told;

  static TChild Start(const std::string& path, int brackets, int busy_msecs) {
    int ends[2];
    if (pipe(ends) != 0) std::abort();
    const pid_t process = fork();
    if (process == 0) {
      close(ends[0]);
      Write_Brackets(path, brackets, busy_msecs, ends[1]);
    }
    close(ends[1]);
    return {process, ends[0]};
  }
  // How many brackets the child says it has closed, up to its end.
  std::int64_t Closed_Brackets() {
    std::int64_t closed = 0;
    char byte;
    while (read(Told, &byte, 1) == 1) ++closed;
    close(Told);
    int status = 0;
    waitpid(Process, &status, 0);
    return closed;
  }
};

struct Faults : TDatabase_Test {
  Faults() { Close_Database(); }

  static int Rounds(int few) { return std::getenv("KT_LONG_TESTS") ? few * 50 : few; }

  // Whole brackets only: every title stands for its sets, each with all its occurrences and alarms.
  std::int64_t Whole_Brackets() {
    database.Reopen();
    for (const std::string& finding : Check_Store()) ADD_FAILURE() << finding;
    EXPECT_EQ(
        Query_Number("SELECT count(*) FROM (SELECT Title FROM KT_Events GROUP BY Title HAVING count(*) <> " +
                     std::to_string(Sets_Per_Bracket) + ")"),
        0);
    EXPECT_EQ(
        Query_Number("SELECT count(*) FROM (SELECT d.Event FROM KT_Events_Data d LEFT JOIN KT_Alarms a ON "
                     "a.Key = d.Key "
                     "GROUP BY d.Event HAVING count(*) <> " +
                     std::to_string(Set_Length) + " OR count(a.Key) <> " + std::to_string(Set_Length) + ")"),
        0);
    const std::int64_t brackets = Query_Number("SELECT count(DISTINCT Title) FROM KT_Events");
    Close_Database();
    return brackets;
  }
};

TEST_F(Faults, A_Killed_Process_Leaves_Each_Bracket_Whole_Or_Absent) {
  std::mt19937 random(20240115);
  std::int64_t before = 0;
  for (int round = 0; round < Rounds(8); ++round) {
    TChild child = TChild::Start(database.Path(), 1'000'000, 5000);
    char first;
    ASSERT_EQ(read(child.Told, &first, 1), 1) << "one bracket at least";
    usleep(random() % 40'000);
    kill(child.Process, SIGKILL);
    const std::int64_t closed = 1 + child.Closed_Brackets();
    const std::int64_t found = Whole_Brackets() - before;
    EXPECT_GE(found, closed) << "what was closed is kept";
    EXPECT_LE(found, closed + 1);
    before += found;
  }
}

TEST_F(Faults, Two_Writers_At_Once_Land_Whole_Brackets_Or_Are_Refused) {
  constexpr int brackets = 30;
  for (const int busy_msecs : {0, 10'000}) {
    const std::int64_t before = Whole_Brackets();
    TChild one = TChild::Start(database.Path(), brackets, busy_msecs);
    TChild two = TChild::Start(database.Path(), brackets, busy_msecs);
    const std::int64_t closed = one.Closed_Brackets() + two.Closed_Brackets();
    EXPECT_EQ(Whole_Brackets() - before, closed);
    EXPECT_GE(closed, 1);
    if (busy_msecs > 0) {
      EXPECT_EQ(closed, 2 * brackets) << "patience is enough";
    }
  }
}

}  // namespace
