#pragma once

#include <ostream>
#include <string>

#include "Kt_lists.h"
#include "Kt_util_01.h"

namespace Plexidex {

/// Prompts of a program without a user to ask: each is a line on a stream, and every question is answered No.
/// Installed for as long as it lives.
class TConsole_Prompts : public Kt_util_01::TPrompts {
 public:
  explicit TConsole_Prompts(std::ostream& stream) : stream(stream) { Kt_util_01::Install_Prompts(this); }
  ~TConsole_Prompts() override { Kt_util_01::Install_Prompts(nullptr); }
  TConsole_Prompts(const TConsole_Prompts&) = delete;
  TConsole_Prompts& operator=(const TConsole_Prompts&) = delete;

  void Error(const std::string& caption, const std::string& text) override;
  void Info(const std::string& caption, const std::string& text) override;
  int Question(const std::string& caption, const std::string& text) override;
  void Notice(const std::string& text) override;

  /// Whether the data layer has reported an error or refused an update.
  bool Failed() const { return failed; }

 private:
  std::ostream& stream;
  bool failed = false;
  std::string noticed;  // the last one
};

/// A bar on the last line of a terminal, drawn anew when another percent is done and wiped at its end.
class TConsole_Progress : public Kt_data_01::TProgress_Bar {
 public:
  explicit TConsole_Progress(std::ostream& stream) : stream(stream) {}
  ~TConsole_Progress() override { Wipe(); }
  TConsole_Progress(const TConsole_Progress&) = delete;
  TConsole_Progress& operator=(const TConsole_Progress&) = delete;

  void Set_Max(std::int64_t steps) override;
  void Set_Position(std::int64_t steps) override;

 private:
  void Wipe();

  std::ostream& stream;
  std::int64_t max = 0;
  int shown = -1;  // percent; -1 when the line is empty
};

}  // namespace Plexidex
