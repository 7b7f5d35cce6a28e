#include "Search_Buffer.h"

#include <cstdint>
#include <string>

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_util_01;

namespace {

// The characters of a text. Which number one has does not matter, as long as no two have the same.
std::u32string Characters_Of(std::string_view text) {
  std::u32string characters;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) == 0x80 && !characters.empty()) {
      characters.back() = characters.back() << 8 | byte;
    } else {
      characters += byte;
    }
  }
  return characters;
}

// Step by step, for what TText_Finder does not do: the search backward, and a text that is empty or ends with
// the zero that is thought behind the buffer.
class TSteps {
 public:
  TSteps(std::string_view in, std::string_view wanted, TFind_Options options)
      : buffer(Characters_Of(in)),
        folded(Characters_Of(Folded(in, options))),
        text(Characters_Of(Folded(wanted, options))),
        options(options) {}

  std::optional<std::size_t> Run(std::size_t sel_start, std::size_t sel_length) {
    const auto length = static_cast<std::int64_t>(buffer.size()),
               wanted = static_cast<std::int64_t>(text.size()), start = static_cast<std::int64_t>(sel_start);
    if (length == 0) return {};
    step = options.Down ? 1 : -1;
    position = options.Down ? start + static_cast<std::int64_t>(sel_length) : start - wanted;
    count = options.Down ? length - position - wanted + 1 : position + 1;
    if (position < 0 || position > length) return {};
    for (bool is_first = true; count >= 0; is_first = false, Move()) {
      if (!is_first && options.Whole_Word && !To_Word_Start()) return {};
      if (Matches() && (!options.Whole_Word || count == 0 || Is_Delimiter(position + wanted)))
        return position < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(position));
    }
    return {};
  }

 private:
  static std::string Folded(std::string_view text, TFind_Options options) {
    return options.Match_Case ? std::string(text) : Simple_UpperCase(text);
  }
  static char32_t At(const std::u32string& characters, std::int64_t place) {
    const bool is_inside = place >= 0 && place < static_cast<std::int64_t>(characters.size());
    return is_inside ? characters[static_cast<std::size_t>(place)] : U'\0';
  }
  bool Is_Delimiter(std::int64_t place) const {
    const char32_t c = At(buffer, place);
    return c >= 0x80 || Is_Word_Delimiter(static_cast<char>(c));
  }
  bool Matches() const {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (At(folded, position + static_cast<std::int64_t>(i)) != text[i]) return false;
    }
    return true;
  }
  void Move() {
    position += step;
    --count;
  }
  bool To_Word_Start() {
    // Down behind the rest of the word and the delimiters; up to the word before and then its beginning.
    for (const bool delimiters : {!options.Down, options.Down}) {
      while (count >= 0 && Is_Delimiter(position) == delimiters) Move();
    }
    if (!options.Down && Is_Delimiter(position)) {
      position -= step;
      ++count;
    }
    return count >= 0;
  }

  const std::u32string buffer, folded, text;
  const TFind_Options options;
  std::int64_t step = 1, position = 0, count = 0;
};

bool Needs_Steps(std::string_view text, TFind_Options options) {
  return !options.Down || text.empty() || text.back() == '\0';
}

}  // namespace

std::optional<std::size_t> SearchBuf(std::string_view Buffer, std::size_t SelStart, std::size_t SelLength,
                                     std::string_view Text, TFind_Options Options) {
  if (Needs_Steps(Text, Options)) return TSteps(Buffer, Text, Options).Run(SelStart, SelLength);
  const std::size_t start = SelStart + SelLength, before = First_Characters(Buffer, start).size();
  const auto match = TText_Finder(Text, Options.Match_Case, Options.Whole_Word).Find(Buffer, before);
  if (!match) return {};
  return start + Count_Characters(Buffer.substr(before, match->Begin - before));
}

TSearched_Text::TSearched_Text(std::string_view wanted, bool match_case, bool whole_word)
    : text(wanted),
      options{true, match_case, whole_word},
      length(Count_Characters(wanted)),
      words(wanted, match_case, whole_word),
      anywhere(wanted, match_case, false) {}

bool TSearched_Text::Is_In(std::string_view in) const {
  return Needs_Steps(text, options) ? SearchBuf(in, 0, 0, text, options).has_value()
                                    : words.Find(in).has_value();
}

bool TSearched_Text::Is_Begun_By(std::string_view in) const {
  const std::string_view beginning = First_Characters(in, length);
  // No longer than the text, it holds the text at its beginning or nowhere.
  return Count_Characters(beginning) == length && anywhere.Find(beginning).has_value();
}

bool SearchPChar(const char* Text, std::string_view SearchText, bool MatchCase, bool WholeWord) {
  return TSearched_Text(SearchText, MatchCase, WholeWord).Is_In(Text);
}

bool SearchString(std::string_view Text, std::string_view SearchText, bool MatchCase, bool WholeWord) {
  return TSearched_Text(SearchText, MatchCase, WholeWord).Is_In(First_Characters(Text, Searched_Characters));
}

bool SearchStartingString(std::string_view Text, std::string_view SearchText, bool MatchCase) {
  return TSearched_Text(SearchText, MatchCase, false).Is_Begun_By(Text);
}

bool SearchMemo(TEdit_Control& Control, std::string_view SearchText, TFind_Options Options) {
  const std::string text(Control.Text());
  if (SearchText.empty() || text.empty()) return false;
  const auto found =
      SearchBuf(text, Control.Selection_Start(), Control.Selection_Length(), SearchText, Options);
  if (found) Control.Set_Selection(*found, Count_Characters(SearchText));
  return found.has_value();
}

}  // namespace KTReminds
