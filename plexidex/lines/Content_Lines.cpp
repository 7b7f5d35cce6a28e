#include "Content_Lines.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "Import_Report.h"

namespace Plexidex {

namespace {

constexpr std::uint64_t Most_Bytes = 256U << 20;
constexpr std::size_t Block = 1U << 18;
constexpr std::string_view Byte_Order_Mark = "\xEF\xBB\xBF";

}  // namespace

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

bool Begins_With(std::string_view line, std::string_view word) {
  const auto same = [](char a, char b) { return a == b || (a >= 'a' && a <= 'z' && a - ('a' - 'A') == b); };
  return line.size() >= word.size() &&
         std::equal(word.begin(), word.end(), line.begin(), [&](char b, char a) { return same(a, b); });
}

TInput_File::TInput_File(const std::string& file) : name('"' + file + '"') {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) throw EImport_Error("There is no file " + name + ".");
  if (std::filesystem::is_directory(status)) throw EImport_Error(name + " is a folder, not a file.");
  stream.reset(std::fopen(file.c_str(), "rb"));
  const auto fail = [this] { return EImport_Error(name + " cannot be read: " + std::strerror(errno) + "."); };
  if (!stream) throw fail();
  if (std::filesystem::is_regular_file(status)) {
    const auto found = std::filesystem::file_size(file, error);
    if (!error) size = found;
    return;
  }
  std::unique_ptr<std::FILE, TClose> copy(std::tmpfile());
  if (!copy) throw fail();
  std::string block(Block, 0);
  while (const std::size_t length = std::fread(block.data(), 1, block.size(), stream.get())) {
    if (std::fwrite(block.data(), 1, length, copy.get()) != length) throw fail();
    if ((size += length) > Most_Bytes) break;
  }
  if (std::ferror(stream.get())) throw EImport_Error(name + " cannot be read to its end.");
  stream = std::move(copy);
}

std::string TInput_File::Read(std::uint64_t offset, std::size_t length) const {
  std::string bytes(length, 0);
  if (fseeko(stream.get(), static_cast<off_t>(offset), SEEK_SET) == 0)
    bytes.resize(std::fread(bytes.data(), 1, length, stream.get()));
  if (std::ferror(stream.get())) throw EImport_Error(name + " cannot be read to its end.");
  return bytes;
}

TContent_Lines::TContent_Lines(const TInput_File& input) : input(input), line_end(Find_Line_End(input)) {
  if (Fill() && buffer.starts_with(Byte_Order_Mark)) position = Byte_Order_Mark.size();
}

char TContent_Lines::Find_Line_End(const TInput_File& input) {
  std::uint64_t offset = 0;
  for (std::string block = input.Read(0, Block); !block.empty(); block = input.Read(offset, Block)) {
    if (block.find('\n') != std::string::npos) return '\n';
    if ((offset += block.size()) > Most_Bytes) break;
  }
  return '\r';
}

// Drops what has been taken, and reads on.
bool TContent_Lines::Fill() {
  const std::string block = input.Read(filled, Block);
  filled += block.size();
  if (filled > Most_Bytes)
    throw EImport_Error(input.Name() + " is larger than " + std::to_string(Most_Bytes >> 20) + " MiB.");
  buffer.erase(0, position);
  position = 0;
  buffer += block;
  return !block.empty();
}

bool TContent_Lines::Next(TContent_Line& line) {
  line.Text.clear();
  if (!Has_Next()) return false;
  line.Number = next_number;
  line.Offset = filled - (buffer.size() - position);
  Take_Line(line, true);
  while (Has_Next() && (buffer[position] == ' ' || buffer[position] == '\t')) Take_Line(line, false);
  line.End = filled - (buffer.size() - position);
  return true;
}

void TContent_Lines::Take_Line(TContent_Line& line, bool is_first) {
  std::size_t end = buffer.find(line_end, position);
  while (end == std::string::npos) {
    const std::size_t searched = buffer.size() - position;
    if (!Fill()) break;
    end = buffer.find(line_end, searched);
  }
  line.Is_Ended = end != std::string::npos;
  if (!line.Is_Ended) end = buffer.size();
  std::string_view part(buffer.data() + position, end - position);
  if (part.ends_with('\r')) part.remove_suffix(1);
  if (!is_first) part.remove_prefix(1);
  line.Text += part;
  position = end + (line.Is_Ended ? 1 : 0);
  ++next_number;
}

bool Read_Lines(const TInput_File& input, Kt_data_01::TProgress_Bar* progress,
                const std::function<void(const TContent_Line&)>& take) {
  constexpr std::uint64_t step = 1U << 18;
  TContent_Lines lines(input);
  if (progress) progress->Set_Max(static_cast<std::int64_t>(input.Size()));
  std::uint64_t shown = 0;
  TContent_Line line;
  while (lines.Next(line)) {
    take(line);
    if (!progress || line.End < shown + step) continue;
    shown = line.End;
    progress->Set_Position(static_cast<std::int64_t>(shown));
  }
  return lines.Ends_With_Return();
}

}  // namespace Plexidex
