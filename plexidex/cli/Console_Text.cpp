#include "Console_Text.h"

#include "Kt_util_01.h"

namespace Plexidex {

namespace {

// How many bytes the control character at the beginning of a valid text takes, 0 when there is none; `shown`
// receives what stands in for it.
std::size_t Control_Length(std::string_view text, char& shown) {
  const auto byte = [text](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  shown = '?';
  if (byte(0) < 0x20 || byte(0) == 0x7F) {
    if (byte(0) == '\t' || byte(0) == '\n' || byte(0) == '\r') shown = ' ';
    return 1;
  }
  if (byte(0) == 0xC2 && byte(1) < 0xA0) return 2;  // U+0080 .. U+009F
  if (byte(0) == 0xE2 && byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE) {
    if (byte(2) <= 0xA9) shown = ' ';  // line and paragraph separator; the rest turns the direction
    return 3;
  }
  if (byte(0) == 0xE2 && byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9) return 3;
  return 0;
}

}  // namespace

std::string Printable(std::string_view text) {
  const std::string valid = Kt_util_01::Valid_UTF8(text);
  std::string line;
  line.reserve(valid.size());
  for (std::size_t i = 0; i < valid.size();) {
    char shown = 0;
    if (const std::size_t length = Control_Length(std::string_view(valid).substr(i), shown)) {
      line += shown;
      i += length;
    } else {
      line += valid[i++];
    }
  }
  return line;
}

std::string Padded(const std::string& text, int width) {
  const int missing = width - Kt_util_01::Display_Width(text);
  return missing > 0 ? text + std::string(static_cast<std::size_t>(missing), ' ') : text;
}

std::string Counted(std::int64_t count, std::string_view one, std::string_view more) {
  return std::to_string(count) + " " + std::string(count == 1 ? one : more);
}

}  // namespace Plexidex
