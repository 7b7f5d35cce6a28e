#include "Console_Text.h"

#include "Kt_util_01.h"

namespace Plexidex {

namespace {

// A range of code points that must not reach a terminal as they are, and what is shown instead; 0: nothing.
struct TUnshown {
  char32_t First, Last;
  char Shown;
};
constexpr TUnshown Unshown[] = {
    {0x9, 0xA, ' '},       {0xD, 0xD, ' '},       {0x0, 0x1F, '?'},
    {0x7F, 0x9F, '?'},     {0x2028, 0x2029, ' '},                       // line and paragraph separator
    {0x61C, 0x61C, '?'},   {0x200E, 0x200F, '?'},                       // direction marks
    {0x202A, 0x202E, '?'}, {0x2066, 0x2069, '?'},                       // turn the direction
    {0xAD, 0xAD, 0},       {0x180E, 0x180E, 0},   {0x200B, 0x200D, 0},  // of no width
    {0x2060, 0x2064, 0},   {0x206A, 0x206F, 0},   {0xFEFF, 0xFEFF, 0},
    {0xFFF9, 0xFFFB, 0},   {0xE0000, 0xE007F, 0},
};

const TUnshown* Find_Unshown(char32_t character) {
  for (const TUnshown& range : Unshown) {
    if (character >= range.First && character <= range.Last) return &range;
  }
  return nullptr;
}

}  // namespace

std::string Printable(std::string_view text) {
  const std::string valid = Kt_util_01::Valid_UTF8(text);
  std::string line;
  line.reserve(valid.size());
  for (std::size_t i = 0; i < valid.size();) {
    const auto first = static_cast<unsigned char>(valid[i]);
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t character = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t j = 1; j < length; ++j)
      character = character << 6 | (static_cast<unsigned char>(valid[i + j]) & 0x3FU);
    const TUnshown* const unshown = Find_Unshown(character);
    if (!unshown) line.append(valid, i, length);
    if (unshown && unshown->Shown) line += unshown->Shown;
    i += length;
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
