#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "Kt_lists.h"

namespace KTReminds {

/// Shows how far a search is, often enough for messages to be serviced, and not more often.
class TSearch_Pace {
 public:
  using TSteady = std::chrono::steady_clock;

  /// May be null.
  explicit TSearch_Pace(Kt_data_01::TProgress_Bar* bar) : bar(bar) {}

  bool Is_Shown() const { return bar != nullptr; }
  void Begin(std::int64_t steps) {
    passed = unseen = 0;
    if (bar) bar->Set_Max(steps);
  }
  /// To be called for each row; `before` runs before the bar is moved. Throws what the bar throws, to stop.
  template <class TBefore>
  void Step(TBefore before) {
    ++passed;
    Look_Up(1, before);
  }
  void Step() {
    Step([] {});
  }
  /// The same for rows that were passed together, or with 0 for one that is no step.
  void Pass(std::int64_t rows) {
    passed += rows;
    Look_Up(std::max(rows, std::int64_t{1}), [] {});
  }

  static std::int64_t Milliseconds_Since(TSteady::time_point start) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(TSteady::now() - start).count();
  }

 private:
  template <class TBefore>
  void Look_Up(std::int64_t rows, TBefore before) {
    constexpr std::int64_t rows_without_a_look_at_the_clock = 64;
    constexpr std::chrono::milliseconds often_enough{10};
    if (!bar || (unseen += rows) < rows_without_a_look_at_the_clock) return;
    unseen = 0;
    if (TSteady::now() - shown < often_enough) return;
    before();
    bar->Set_Position(passed);
    shown = TSteady::now();
  }

  Kt_data_01::TProgress_Bar* bar;
  std::int64_t passed = 0, unseen = 0;
  TSteady::time_point shown = TSteady::now();
};

}  // namespace KTReminds
