#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <thread>

#include "Alert_Fixture.h"
#include "Store_Check.h"

namespace {

// Lets one program wait for another.
struct TSignal {
  TSignal() { EXPECT_EQ(pipe(ends.data()), 0); }
  ~TSignal() {
    for (const int end : ends) close(end);
  }
  TSignal(const TSignal&) = delete;
  TSignal& operator=(const TSignal&) = delete;
  void Give() const { EXPECT_EQ(write(ends[1], "y", 1), 1); }
  void Await() const {
    char given = 0;
    EXPECT_EQ(read(ends[0], &given, 1), 1);
  }

  std::array<int, 2> ends{};
};

// What several programs do, and one that is killed. A program under test must not hold the reminders itself.
struct Alert_Kill : TAlert_Test {
  Alert_Kill() { watch.reset(); }
  /// Starts another program on the database, which this one has closed until it is to go on.
  template <class TBody>
  pid_t Start(TBody body) const {
    Close_Database();
    const pid_t child = fork();
    if (child != 0) return child;
    Open_Database(database.Path(), TDatabase::TMode::Must_Exist);
    body();
    kill(getpid(), SIGKILL);
    return 0;
  }
  static void Expect_Killed(pid_t child) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
  }
  std::string Look_Once() {
    const std::string seen = Look_After_Restart();
    watch.reset();
    return seen.substr(0, seen.find(" |"));
  }
};

std::vector<TAlert_Entry> All_Due() {
  TAlert_Watch watch;
  watch.Look();
  return watch.Entries();
}

TEST_F(Alert_Kill, Between_Two_Steps_Nothing_Is_Lost_And_Nothing_Comes_Back) {
  struct {
    const char* Name;
    int Minute;  // after 8:00
    std::function<void()> Do;
    const char* Seen_Then;
  } const steps[] = {
      {"written", 0, [this] { Add("Tea", 9, 0, 0), Add("Cake", 9, 0, 0); }, ""},
      {"due", 60, [] {}, "Tea, Cake"},
      {"shown", 60, [] { EXPECT_EQ(All_Due().size(), 2u); }, "Tea, Cake"},
      {"snoozed", 60, [] { TAlert_Watch::Put_Off(All_Due(), 10); }, ""},
      {"snoozed still", 69, [] {}, ""},
      {"shown again", 70, [] { EXPECT_EQ(All_Due().size(), 2u); }, "Tea, Cake"},
      {"dismissed", 71, [] { TAlert_Watch::Dismiss({All_Due()[0]}); }, "Cake"},
      {"marked", 72, [] { TAlert_Watch::Mark_Done(All_Due()[0]); }, ""},
      {"a day later", 72 + 1440, [] {}, ""},
  };
  for (const auto& step : steps) {
    At(8, step.Minute);
    Expect_Killed(Start(step.Do));
    database.Reopen();
    EXPECT_EQ(Look_Once(), step.Seen_Then) << step.Name;
  }
  EXPECT_EQ(Query_Rows("NextTime, Actioned", "KT_Alarms ORDER BY row_id"), "0.0|0, 0.0|1");
}

TEST_F(Alert_Kill, In_The_Middle_Of_Answers_Each_Is_Whole) {
  Add("Tea", 8, 0, 0, 5);
  for (int round = 0; round < 8; ++round) {
    seams.Clock.Value += 1;
    const TSignal began;
    const pid_t child = Start([&] {
      for (began.Give();;) {
        TAlert_Watch::Put_Off(All_Due(), 1);
        seams.Clock.Value += 2 * Minute;
      }
    });
    began.Await();
    std::this_thread::sleep_for(std::chrono::milliseconds(1 + 3 * round));
    kill(child, SIGKILL);
    Expect_Killed(child);
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
  const TSignal writing;
  const pid_t child = Start([&] {
    if (Start_Update()) writing.Give();
    pause();
  });
  writing.Await();
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
    programs.emplace_back([&, i] {
      const std::string command = "TZ=Europe/Berlin HOME=/nonexistent " KT_PROGRAM " --database '" +
                                  database.Path() + "' --user " + users[i % 2] + " remind --once 2>&1";
      FILE* const pipe = popen(command.c_str(), "r");
      for (int c = 0; (c = fgetc(pipe)) != EOF;) told[i] += static_cast<char>(c);
      pclose(pipe);
    });
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

}  // namespace
