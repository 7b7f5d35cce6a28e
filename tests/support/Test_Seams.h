#pragma once

// Stand-ins for what the calendar module asks of its host, so that no test depends on today's date, on this
// machine's locale and zone, or on a user.

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Kt_util_01.h"

// Tests write the names that they are about without their namespace.
using namespace Kt_util_01;

struct TFixed_Clock : TClock {
  explicit TFixed_Clock(TDateTime value) : Value(value) {}
  TDateTime Now() override { return Value; }

  TDateTime Value;
};

/// Prompts must come as expected and in that order. One that differs or was not expected fails the running
/// test at once and answers No; one that never came fails it when the queue dies or is verified. A test may
/// have them kept instead.
struct TPrompt_Queue : TPrompts {
  ~TPrompt_Queue() override { Verify(); }

  void Expect_Error(const std::string& caption, const std::string& text);
  void Expect_Info(const std::string& caption, const std::string& text);
  void Expect_Question(const std::string& caption, const std::string& text, int answer);
  /// The reports of an update that was undone, and of a read that failed.
  void Expect_Undone(const std::string& why, const std::string& tag);
  void Expect_Unread(const std::string& why, const std::string& tag);
  /// Fails the running test for every prompt that is still expected, and forgets them.
  void Verify();

  void Error(const std::string& caption, const std::string& text) override;
  void Info(const std::string& caption, const std::string& text) override;
  int Question(const std::string& caption, const std::string& text) override;
  void Notice(const std::string& text) override { Notices.push_back(text); }

  std::vector<std::string> Notices;
  /// Once set, no prompt fails; each is kept in `Said` as "kind Caption: Text", and this is the answer.
  std::optional<int> Answer_All;
  std::vector<std::string> Said;

 private:
  struct TPrompt {
    std::string Kind, Caption, Text;
    int Answer;
  };

  static std::string Describe(const TPrompt& prompt);
  int Meet(const TPrompt& prompt);

  std::deque<TPrompt> Expected;
};

struct TRecorded_Sounds : TSounds {
  void Play(int number) override { Played.push_back(number); }

  std::vector<int> Played;
};

struct TMemory_Settings : TSettings_Store {
  bool Read(const std::string& section, const std::string& name, std::string& value) override;
  void Write(const std::string& section, const std::string& name, const std::string& value) override;

  std::map<std::pair<std::string, std::string>, std::string> Values;
};

/// Installs all of these, and restores the defaults when it dies. A member of a fixture or a local of a test.
struct TTest_Seams {
  explicit TTest_Seams(const std::string& locale = "en_US", const std::string& zone = "Europe/Berlin");
  ~TTest_Seams();
  TTest_Seams(const TTest_Seams&) = delete;
  TTest_Seams& operator=(const TTest_Seams&) = delete;

  /// Noon of Monday, 15 January 2024, until set.
  TFixed_Clock Clock;
  TPrompt_Queue Prompts;
  TRecorded_Sounds Sounds;
  TMemory_Settings Settings;
};

struct TSeams_Test : testing::Test {
  TTest_Seams seams;
};
