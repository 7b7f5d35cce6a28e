#include "Ini_Settings.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>

namespace Kt_util_01 {

namespace {

/// Escapes control characters, backslashes, blanks at the ends, and the characters that mean something.
std::string Escaped(const std::string& text, std::string_view special) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool outer_blank = byte == ' ' && (i == 0 || i + 1 == text.size());
    if (byte < 0x20 || byte == 0x7F || byte == '\\' || outer_blank ||
        special.find(text[i]) != std::string::npos) {
      out += "\\x";
      out += "0123456789abcdef"[byte >> 4];
      out += "0123456789abcdef"[byte & 15];
    } else {
      out += text[i];
    }
  }
  return out;
}

int Hex_Digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

/// What is no complete escape stands for itself.
std::string Unescaped(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 3 < text.size() && text[i + 1] == 'x' && Hex_Digit(text[i + 2]) >= 0 &&
        Hex_Digit(text[i + 3]) >= 0) {
      out += static_cast<char>(Hex_Digit(text[i + 2]) * 16 + Hex_Digit(text[i + 3]));
      i += 3;
    } else {
      out += text[i];
    }
  }
  return out;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

}  // namespace

TIni_Settings::TIni_Settings(const std::string& path) : m_Path(path), m_Values(Load(path)) {}

bool TIni_Settings::Read(const std::string& section, const std::string& name, std::string& value) {
  const auto values = m_Values.find(section);
  if (values == m_Values.end()) return false;
  const auto found = values->second.find(name);
  if (found == values->second.end()) return false;
  value = found->second;
  return true;
}

void TIni_Settings::Write(const std::string& section, const std::string& name, const std::string& value) {
  TValues values = Load(m_Path);
  values[section][name] = value;
  Save(values);
  m_Values = std::move(values);
}

TIni_Settings::TValues TIni_Settings::Load(const std::string& path) {
  TValues values;
  std::error_code error;
  if (std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found) return values;
  std::ifstream file(path, std::ios::binary);
  std::string line;
  std::string section;
  while (std::getline(file, line)) {
    const std::string_view text = Trimmed(line);
    if (text.empty() || text[0] == ';' || text[0] == '#') continue;
    const std::size_t equals = text.find('=');
    if (text[0] == '[' && text.back() == ']') {
      section = Unescaped(text.substr(1, text.size() - 2));
    } else if (equals != std::string_view::npos) {
      values[section][Unescaped(Trimmed(text.substr(0, equals)))] =
          Unescaped(Trimmed(text.substr(equals + 1)));
    }
  }
  if (!file.eof()) throw std::runtime_error("The settings file \"" + path + "\" cannot be read.");
  return values;
}

void TIni_Settings::Save(const TValues& values) const {
  namespace fs = std::filesystem;
  // A name of its own, so that two processes do not write into one.
  const std::string temporary = m_Path + "." + Get_GUID();
  std::error_code error;
  if (const fs::path folder = fs::path(m_Path).parent_path(); !folder.empty())
    fs::create_directories(folder, error);
  std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
  for (const auto& [section, names] : values) {
    file << '[' << Escaped(section, "") << "]\n";
    for (const auto& [name, value] : names)
      file << Escaped(name, "=[;#") << '=' << Escaped(value, "") << '\n';
  }
  file.close();
  if (file) {
    fs::rename(temporary, m_Path, error);
    if (!error) return;
  }
  fs::remove(temporary, error);
  throw std::runtime_error("The settings file \"" + m_Path + "\" cannot be written.");
}

}  // namespace Kt_util_01
