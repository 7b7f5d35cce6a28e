#pragma once

// Finding a text in many others, fast. Texts are UTF-8, and a character is a code point.

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace Kt_util_01 {

struct TFind_Options {
  bool Down = true;  // forward
  bool Match_Case = false;
  bool Whole_Word = false;
};

/// Everything but 0..9, A..Z and a..z, so that each byte of another character is one too.
constexpr bool Is_Word_Delimiter(char c) {
  return !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'));
}

std::size_t Count_Characters(std::string_view text);
/// All of the text when it is not longer.
std::string_view First_Characters(std::string_view text, std::size_t count);

/// A text to be found forward, prepared once. Case is ignored character by character (Simple_UpperCase).
class TText_Finder {
 public:
  TText_Finder(std::string_view text, bool match_case, bool whole_word);
  ~TText_Finder();
  TText_Finder(TText_Finder&& other) noexcept;
  TText_Finder& operator=(TText_Finder&& other) noexcept;

  struct TMatch {
    std::size_t Begin, End;  // bytes
  };
  /// The first place at or behind the byte `from`. An empty text is nowhere. A whole word ends before a
  /// delimiter or at the end; it begins at `from`, or behind a delimiter other than the one at `from`.
  std::optional<TMatch> Find(std::string_view in, std::size_t from = 0) const;

 private:
  class TImpl;
  std::unique_ptr<const TImpl> impl;
};

/// An edit control as a search sees it. Positions and lengths count characters.
class TEdit_Control {
 public:
  virtual ~TEdit_Control() = default;
  virtual std::string_view Text() = 0;
  virtual std::size_t Selection_Start() = 0;
  virtual std::size_t Selection_Length() = 0;
  virtual void Set_Selection(std::size_t start, std::size_t length) = 0;
};

/// The control in which the notes of contacts are searched, so that only their text is found and not how it
/// is written down.
class TNotes_Control {
 public:
  virtual ~TNotes_Control() = default;
  /// The notes as they are stored; not copied, they are looked at until others are set.
  virtual void Set_Text(std::string_view notes) = 0;
  virtual bool Is_Empty() = 0;
  /// Whether a text is found within the first `limit` characters.
  virtual bool Find(std::string_view text, std::size_t limit, bool match_case, bool whole_word) = 0;
};

/// Not owned; null restores the default, for plain text.
void Install_Notes_Control(TNotes_Control* control);
TNotes_Control& Search_Notes_Control();

}  // namespace Kt_util_01
