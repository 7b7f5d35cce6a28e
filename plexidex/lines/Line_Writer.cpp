#include "Line_Writer.h"

#include <algorithm>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

constexpr std::size_t Longest_Line = 75;  // bytes, without the line's end
constexpr std::size_t Moments_Per_Line = 100;

bool Continues_Character(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

std::string Escaped_Text(std::string_view text) {
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\\' || c == ';' || c == ',') {
      escaped += '\\';
      escaped += c;
    } else if (c == '\n' || c == '\r') {
      if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
      escaped += "\\n";
    } else if (static_cast<unsigned char>(c) >= ' ' || c == '\t') {
      escaped += c;
    }
  }
  return escaped;
}

void Write_Folded(std::ostream& out, std::string_view line) {
  for (std::size_t position = 0; position < line.size();) {
    std::size_t length = Longest_Line;
    if (position > 0) {
      out << ' ';
      --length;
    }
    std::size_t end = std::min(line.size(), position + length);
    while (end < line.size() && Continues_Character(line[end])) --end;
    out << line.substr(position, end - position) << "\r\n";
    position = end;
  }
}

void TLine_Writer::Raw(std::string_view name, std::string_view value) {
  Write_Folded(out, std::string(name) + ":" + std::string(value));
}

void TLine_Writer::Text(std::string_view name, std::string_view text) {
  if (!text.empty()) Raw(name, Escaped_Text(Valid_UTF8(text)));
}

void TLine_Writer::Moment(std::string_view name, TDateTime value, bool is_date) {
  Raw(std::string(name) + (is_date ? ";VALUE=DATE" : ""), Moment_Text(value, is_date));
}

void TLine_Writer::Moments(std::string_view name, const std::vector<TDateTime>& values, bool are_dates) {
  for (std::size_t first = 0; first < values.size(); first += Moments_Per_Line) {
    std::string list;
    for (std::size_t i = first; i < std::min(values.size(), first + Moments_Per_Line); ++i) {
      if (!list.empty()) list += ',';
      list += Moment_Text(values[i], are_dates);
    }
    Raw(std::string(name) + (are_dates ? ";VALUE=DATE" : ""), list);
  }
}

std::string Moment_Text(TDateTime value, bool is_date) {
  return FormatDateTime(is_date ? "yyyymmdd" : "yyyymmdd\"T\"hhnnss", value);
}

}  // namespace Plexidex
