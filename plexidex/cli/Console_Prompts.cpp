#include "Console_Prompts.h"

#include <algorithm>

#include "Console_Text.h"

namespace Plexidex {

void TConsole_Prompts::Error(const std::string& caption, const std::string& text) {
  failed = true;
  // The second paragraph says where in the program it was.
  stream << Printable(caption + ": " + text.substr(0, text.find("\n\n"))) << std::endl;
}

void TConsole_Prompts::Info(const std::string& caption, const std::string& text) {
  stream << Printable(caption + ": " + text) << std::endl;
}

int TConsole_Prompts::Question(const std::string& caption, const std::string& text) {
  stream << Printable(caption + ": " + text) << " No." << std::endl;
  return Kt_util_01::Answer_No;
}

void TConsole_Prompts::Notice(const std::string& text) {
  // Notices come where an update is refused; who tries on and on is told once.
  failed = true;
  if (text != noticed) stream << Printable(text) << std::endl;
  noticed = text;
}

void TConsole_Progress::Set_Max(std::int64_t steps) {
  max = steps;
  if (max <= 0) Wipe();
}

void TConsole_Progress::Set_Position(std::int64_t steps) {
  constexpr int width = 40;
  if (max <= 0) return;
  if (steps >= max) return Wipe();
  const auto percent = static_cast<int>(std::max<std::int64_t>(steps, 0) * 100 / max);
  if (percent == shown) return;
  shown = percent;
  const auto done = static_cast<std::size_t>(percent * width / 100);
  stream << "\r[" << std::string(done, '#') << std::string(width - done, '.') << "] " << percent << "% "
         << std::flush;
}

void TConsole_Progress::Wipe() {
  if (shown < 0) return;
  shown = -1;
  stream << "\r\033[K" << std::flush;
}

}  // namespace Plexidex
