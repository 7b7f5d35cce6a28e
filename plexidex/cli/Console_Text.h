#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Plexidex {

/// The text as it may go to a terminal: one line of valid UTF-8 without characters that could move the
/// cursor, turn the writing direction or hide. Line breaks and tabs become blanks, characters of no width are
/// left out, and the others become "?".
std::string Printable(std::string_view text);

/// The text followed by blanks up to a width in terminal columns; a wider text stays whole.
std::string Padded(const std::string& text, int width);

/// "1 entry", "2 entries": `one` for exactly one.
std::string Counted(std::int64_t count, std::string_view one, std::string_view more);

}  // namespace Plexidex
