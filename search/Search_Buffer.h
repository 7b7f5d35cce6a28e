#pragma once

// Finding a text in a buffer. Positions and lengths count code points.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "Kt_find.h"

namespace KTReminds {

using Kt_util_01::TFind_Options;

/// "Contains" looks at so many characters of a field and no further.
inline constexpr std::size_t Searched_Characters = 255;

/// A text to be looked for in many others, prepared once.
class TSearched_Text {
 public:
  TSearched_Text(std::string_view text, bool match_case, bool whole_word);
  bool Is_In(std::string_view text) const;
  /// Whether the text begins with it; a part of a word is enough.
  bool Is_Begun_By(std::string_view text) const;

 private:
  std::string text;
  TFind_Options options;
  std::size_t length;
  Kt_util_01::TText_Finder words, anywhere;
};

/// Where the text is found first behind the selection, or before it when the options do not say down. The
/// place where the search begins needs no beginning of a word.
std::optional<std::size_t> SearchBuf(std::string_view Buffer, std::size_t SelStart, std::size_t SelLength,
                                     std::string_view Text, TFind_Options Options);
bool SearchPChar(const char* Text, std::string_view SearchText, bool MatchCase, bool WholeWord);
/// Looks at the first Searched_Characters alone.
bool SearchString(std::string_view Text, std::string_view SearchText, bool MatchCase, bool WholeWord);
bool SearchStartingString(std::string_view Text, std::string_view SearchText, bool MatchCase);
/// Selects the next match of a control. False, with the selection unchanged, when there is none.
bool SearchMemo(Kt_util_01::TEdit_Control& Control, std::string_view SearchText, TFind_Options Options);

}  // namespace KTReminds
