#pragma once

// How much one file may bring, and how much work its rules may make.

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace Plexidex {

/// How many entries a file may bring, unless its reader allows more.
inline constexpr std::int64_t Default_Entries = 250'000;
/// The most that its reader can allow.
inline constexpr std::int64_t Highest_Entries = 100'000'000;

/// More than a file may bring or ask for. Says what, as the end of a sentence about the entry.
class ELimit_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class TImport_Budget {
 public:
  /// The work that rules may make follows from how many entries there may be.
  explicit TImport_Budget(std::int64_t most_entries = Default_Entries) : most(most_entries) {}

  /// Called now and then during long work; may throw to end it. Null for nothing.
  std::function<void()> Pulse;
  /// How the user allows more, as the end of a sentence.
  std::string How_To_Raise = "a higher limit of entries allows more";

  std::int64_t Most_Entries() const { return most; }

  /// A rule begins, with a budget of its own within that of the file.
  void Begin_Rule() { of_rule = 0; }
  /// Throw ELimit_Error.
  void Step();
  void Take_Entries(std::int64_t count);
  /// Whether so many more would be too many.
  void Check_Entries(std::int64_t count) const;

 private:
  const std::int64_t most;
  std::int64_t entries = 0, of_rule = 0, of_file = 0;
};

}  // namespace Plexidex
