#pragma once

// The bytes and content lines of a file, without holding all of it.

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "Kt_lists.h"

namespace Plexidex {

/// Without blanks, tabs and returns around it.
std::string_view Trimmed(std::string_view text);
/// Without regard to the case of ASCII letters; `word` is in capitals.
bool Begins_With(std::string_view line, std::string_view word);

/// A file that can be read at any place. What can be read only once, such as a pipe, is copied first.
class TInput_File {
 public:
  /// Throws EImport_Error.
  explicit TInput_File(const std::string& file);

  /// How the file is called in messages, in quotes.
  const std::string& Name() const { return name; }
  /// 0 where it is not known before the end has been read.
  std::uint64_t Size() const { return size; }
  /// Fewer bytes at the end of the file. Throws EImport_Error.
  std::string Read(std::uint64_t offset, std::size_t length) const;

 private:
  struct TClose {
    void operator()(std::FILE* open) const { std::fclose(open); }
  };

  std::string name;
  std::unique_ptr<std::FILE, TClose> stream;
  std::uint64_t size = 0;
};

/// A line with its continuations.
struct TContent_Line {
  std::string Text;
  std::size_t Number = 0;    // of its first line, from 1
  std::uint64_t Offset = 0;  // of its beginning
  std::uint64_t End = 0;     // where the next one begins
  bool Is_Ended = false;     // by a line end, not by the file's
};

class TContent_Lines {
 public:
  /// The input must outlive this.
  explicit TContent_Lines(const TInput_File& input);

  /// False at the end. Throws EImport_Error, also for a file that is too large.
  bool Next(TContent_Line& line);
  /// Old programs end a line with a return alone.
  bool Ends_With_Return() const { return line_end == '\r'; }

 private:
  bool Fill();
  bool Has_Next() { return position < buffer.size() || Fill(); }
  void Take_Line(TContent_Line& line, bool is_first);
  static char Find_Line_End(const TInput_File& input);

  const TInput_File& input;
  const char line_end;
  std::string buffer;
  std::size_t position = 0;  // in the buffer
  std::uint64_t filled = 0;  // offset of the buffer's end
  std::size_t next_number = 1;
};

/// Takes the lines of a file in turn, and shows how far it is; the bar may be null. Whether they end with a
/// return alone. Throws EImport_Error.
bool Read_Lines(const TInput_File& input, Kt_data_01::TProgress_Bar* progress,
                const std::function<void(const TContent_Line&)>& take);

}  // namespace Plexidex
