#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include "Alert_Fixture.h"
#include "Event_Rows.h"
#include "Store_Check.h"

namespace {

// What one program tells another that it has started.
class TPipe {
 public:
  TPipe() { EXPECT_EQ(pipe(ends.data()), 0); }
  ~TPipe() {
    for (const int end : ends) close(end);
  }
  TPipe(const TPipe&) = delete;
  TPipe& operator=(const TPipe&) = delete;
  void Tell(bool good) const {
    if (write(ends[1], good ? "y" : "n", 1) != 1) std::perror("pipe");
  }
  /// What was told next; nothing when the other program has ended, which shows only once nobody here could
  /// tell anything.
  std::optional<bool> Hear() {
    close(std::exchange(ends[1], -1));
    char told = 0;
    if (read(ends[0], &told, 1) != 1) return {};
    return told == 'y';
  }

 private:
  std::array<int, 2> ends{};
};

// What several programs do, and one that is killed. A program under test must not hold the reminders itself.
struct Alert_Kill : TAlert_Test {
  Alert_Kill() { watch.reset(); }
  /// Starts another program on the database, which this one has closed until it is to go on. It tells what
  /// `body` returns, or false for a failure, and is killed.
  pid_t Start(const std::function<bool()>& body) {
    Close_Database();
    other = std::make_unique<TPipe>();
    const pid_t child = fork();
    if (child != 0) return child;
    bool good = false;
    try {
      Open_Database(database.Path(), TDatabase::TMode::Must_Exist);
      good = body() && !HasFailure();
    } catch (const std::exception& e) {
      std::fprintf(stderr, "%s\n", e.what());
    }
    other->Tell(good);
    kill(getpid(), SIGKILL);
    return 0;
  }
  static void Expect_Killed(pid_t child) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
  }
  /// What `remind --once` says for a user, "" for who it is by itself, by the clock of the machine.
  std::string Remind(const std::string& user = {}) const {
    const std::string command = "TZ=Europe/Berlin HOME=/nonexistent " KT_PROGRAM " --database '" +
                                database.Path() + "'" + (user.empty() ? "" : " --user " + user) +
                                " remind --once 2>&1";
    FILE* const said = popen(command.c_str(), "r");
    std::string text;
    for (int c = 0; (c = fgetc(said)) != EOF;) text += static_cast<char>(c);
    pclose(said);
    return text;
  }
  std::string Look_Once() {
    const std::string seen = Look_After_Restart();
    watch.reset();
    return seen.substr(0, seen.find(" |"));
  }

  std::unique_ptr<TPipe> other;
};

std::vector<TAlert_Entry> All_Due() {
  TAlert_Watch watch;
  watch.Look();
  return watch.Entries();
}

TEST_F(Alert_Kill, Between_Two_Steps_Nothing_Is_Lost_And_Nothing_Comes_Back) {
  std::map<std::string, std::string> keys;
  for (const char* title : {"Tea", "Cake", "Pie"}) keys[title] = Add(title, 9, 0, 0);
  const auto sees = [](std::size_t count) { return All_Due().size() == count; };
  const auto move = [&keys](const char* title, int minute) {
    Move(keys[title], 9, minute);
    return true;
  };
  const auto remove = [] {
    auto rows = Find_Occurrence(All_Due()[0].Key()).value();
    In_Update([&] { Delete_Event(rows); });
    return true;
  };
  const struct {
    const char* Name;
    int Minute;  // after 8:00
    std::function<bool()> Do;
    const char* Seen_Then;
  } steps[] = {
      {"written", 0, [this] { return !Add("Nut", 9, 0, 0).empty(); }, ""},
      {"due", 60, [] { return true; }, "Tea, Cake, Pie, Nut"},
      {"shown", 60, [&] { return sees(4); }, "Tea, Cake, Pie, Nut"},
      {"snoozed", 60, [] { return TAlert_Watch::Put_Off(All_Due(), 10); }, ""},
      {"moved within the past", 65, [&] { return move("Tea", 2); }, ""},
      {"snoozed still", 69, [] { return true; }, ""},
      {"shown again", 70, [&] { return sees(4); }, "Tea, Cake, Pie, Nut"},
      {"dismissed", 71, [] { return TAlert_Watch::Dismiss({All_Due()[0]}); }, "Cake, Pie, Nut"},
      {"marked", 72, [] { return TAlert_Watch::Mark_Done(All_Due()[0]); }, "Pie, Nut"},
      {"moved", 73, [&] { return move("Pie", 20); }, "Nut"},
      {"deleted", 74, remove, ""},
      {"due where it was moved", 80, [&] { return sees(1); }, "Pie"},
      {"a day later", 72 + 1440, [&] { return TAlert_Watch::Dismiss(All_Due()); }, ""},
  };
  for (const auto& step : steps) {
    At(8, step.Minute);
    Expect_Killed(Start(step.Do));
    EXPECT_EQ(other->Hear(), true) << step.Name;
    database.Reopen();
    EXPECT_EQ(Look_Once(), step.Seen_Then) << step.Name;
  }
  EXPECT_EQ(Query_Rows("NextTime, Actioned", "KT_Alarms ORDER BY row_id"), "0.0|0, 0.0|1, 0.0|0");
}

TEST_F(Alert_Kill, In_The_Middle_Of_Answers_Each_Is_Whole) {
  Add("Tea", 8, 0, 0, 5);
  for (int round = 0; round < 8; ++round) {
    seams.Clock.Value += 1;
    const pid_t child = Start([&] {
      for (other->Tell(true); TAlert_Watch::Put_Off(All_Due(), 1);) seams.Clock.Value += 2 * Minute;
      return false;
    });
    EXPECT_EQ(other->Hear(), true);
    std::this_thread::sleep_for(std::chrono::milliseconds(1 + 3 * round));
    kill(child, SIGKILL);
    Expect_Killed(child);
    EXPECT_EQ(other->Hear(), std::nullopt) << "an answer failed";
    database.Reopen();
    EXPECT_EQ(Check_Store(), std::vector<std::string>());
    seams.Clock.Value += 0.5;
    EXPECT_EQ(All_Due().size(), static_cast<std::size_t>(std::min(round + 1, 4))) << round;
    seams.Clock.Value -= 0.5;
  }
  EXPECT_GT(Query_Number("SELECT count(*) FROM KT_Alarms WHERE NextTime > 0"), 0)
      << "some answers were written";
}

TEST_F(Alert_Kill, An_Answer_That_Another_Program_Keeps_From_Being_Written_Leaves_The_Reminder) {
  Add("Tea", 9, 0, 0);
  At(9, 0);
  const pid_t child = Start([&] {
    if (!Start_Update()) return false;
    other->Tell(true);
    return pause() == 0;
  });
  EXPECT_EQ(other->Hear(), true);
  database.Reopen({.Busy_Time = std::chrono::milliseconds(20)});
  const auto shown = All_Due();
  EXPECT_FALSE(TAlert_Watch::Dismiss(shown) || TAlert_Watch::Put_Off(shown, 5) ||
               TAlert_Watch::Mark_Done(shown.at(0)));
  EXPECT_EQ(seams.Prompts.Notices.size(), 3u);
  EXPECT_EQ(Look_Once(), "Tea");
  kill(child, SIGKILL);
  Expect_Killed(child);
  EXPECT_TRUE(TAlert_Watch::Dismiss(shown));
  EXPECT_EQ(Look_Once(), "");
}

TEST_F(Alert_Kill, A_Thousand_At_Once_Are_All_Shown_And_Answered) {
  Add("Tea", 9, 0, 0, 1000);
  seams.Clock.Value = Monday + 1000;
  EXPECT_EQ(All_Due().size(), 1000u);
  EXPECT_TRUE(TAlert_Watch::Put_Off(All_Due(), 10));
  EXPECT_EQ(All_Due().size(), 0u);
  seams.Clock.Value += 10 * Minute;
  EXPECT_EQ(All_Due().size(), 1000u);
  EXPECT_TRUE(TAlert_Watch::Dismiss(All_Due()));
  seams.Clock.Value += 1;
  EXPECT_EQ(All_Due().size(), 0u);
  EXPECT_EQ(Query_Text("SELECT count(*) || max(NextTime) FROM KT_Alarms"), "10000.0");
}

TEST_F(Alert_Kill, Of_Programs_That_Run_At_Once_Only_One_Tells_A_User_Of_Each) {
  Install_Clock(nullptr);
  const TDateTime now = Now();
  Install_Clock(&seams.Clock);
  seams.Clock.Value = now - 2.0 / 24;
  In_Update([&] {
    Create_User("Ann", true);
    Create_User("Bob", false);
    Set_Rights(database.Book().Key, Global_User, {.See = true});
  });
  const std::array<std::string, 2> users = {"Ann", "Bob"};
  for (const std::string& user : users) {
    Set_User_Key(Query_Text("SELECT Key FROM KT_Users WHERE Name = '" + user + "'"));
    for (int i = 10; i < 30; ++i) Add_At("of " + user + std::to_string(i), now - 1.0 / 24);
  }
  ASSERT_EQ(Query_Number("SELECT count(*) FROM KT_Alerts WHERE NOT Dismissed"), 40);
  std::vector<std::string> told(6);
  std::vector<std::thread> programs;
  for (std::size_t i = 0; i < told.size(); ++i)
    programs.emplace_back([&, i] { told[i] = Remind(users[i % 2]); });
  for (std::thread& program : programs) program.join();
  std::string all;
  for (const std::string& each : told) all += each;
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 40) << all;
  for (const std::string& user : users) {
    for (int i = 10; i < 30; ++i)
      EXPECT_NE(all.find("of " + user + std::to_string(i)), std::string::npos) << user << i;
  }
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Alerts WHERE NOT Dismissed"), 0);
}

TEST_F(Alert_Kill, Beside_A_Window_Another_Program_Of_The_User_Tells_Only_What_It_Leaves) {
  Install_Clock(nullptr);
  const TDateTime now = Now();
  Install_Clock(&seams.Clock);
  seams.Clock.Value = now - 2.0 / 24;
  for (const char* title : {"Tea", "Cake"}) Add_At(title, now - 1.0 / 24);
  seams.Clock.Value = now;
  EXPECT_EQ(Look_After_Restart(), "Tea, Cake | Tea, Cake");
  EXPECT_EQ(Remind(), "");
  EXPECT_TRUE(TAlert_Watch::Dismiss({Shown().at(0)}));
  EXPECT_EQ(Remind(), "");
  EXPECT_EQ(Look(), "Cake | ");
  watch.reset();
  const std::string left = Remind();
  EXPECT_NE(left.find("Cake"), std::string::npos) << left;
  EXPECT_EQ(std::count(left.begin(), left.end(), '\n'), 1) << left;
  EXPECT_EQ(Remind(), "");
  EXPECT_EQ(Look_After_Restart(), " | ");
}

}  // namespace
