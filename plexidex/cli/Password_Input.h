#pragma once

#include <string>

#include "Passwords.h"

namespace Plexidex {

/// Where passwords come from: the lines of a file descriptor, or else the terminal, which shows nothing of
/// them.
class TPassword_Input {
 public:
  /// `descriptor` as it was typed; "" for the terminal.
  explicit TPassword_Input(std::string descriptor = {}) : descriptor(std::move(descriptor)) {}
  /// Throws ECommand_Error when there is none to be had. `prompt` is for the terminal.
  Kt_data_01::TSecret Read(const std::string& prompt) const;
  /// One that does not exist yet, which a terminal is asked for twice, and which can be one.
  Kt_data_01::TSecret Read_New(const std::string& user) const;

 private:
  const std::string descriptor;
};

}  // namespace Plexidex
