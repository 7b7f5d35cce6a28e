#include "Import_Budget.h"

namespace Plexidex {

namespace {

// For each entry that a file may bring.
constexpr std::int64_t Rule_Steps = 8, File_Steps = 80;
constexpr std::int64_t Pulse_Steps = 1 << 16;

}  // namespace

void TImport_Budget::Step() {
  if (++of_rule > most * Rule_Steps || ++of_file > most * File_Steps)
    throw ELimit_Error("has a rule that takes too long to follow");
  if (of_file % Pulse_Steps == 0 && Pulse) Pulse();
}

void TImport_Budget::Check_Entries(std::int64_t count) const {
  if (count > most - entries)
    throw ELimit_Error("would bring more than the " + std::to_string(most) +
                       " entries that a file may bring");
}

void TImport_Budget::Take_Entries(std::int64_t count) {
  Check_Entries(count);
  entries += count;
}

}  // namespace Plexidex
