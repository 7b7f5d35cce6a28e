#include <algorithm>
#include <cassert>
#include <iostream>
#include <map>
#include <utility>

#include "Kt_util_01.h"

namespace Kt_util_01 {

namespace {

class TStderr_Prompts : public TPrompts {
 public:
  void Error(const std::string& caption, const std::string& text) override { Write(caption + ": " + text); }
  void Info(const std::string& caption, const std::string& text) override { Write(caption + ": " + text); }
  int Question(const std::string& caption, const std::string& text) override {
    Write(caption + ": " + text);
    return Answer_No;
  }
  void Notice(const std::string& text) override { Write(text); }

 private:
  static void Write(std::string line) {
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    std::cerr << line << std::endl;
  }
};

class TSilence : public TSounds {
 public:
  void Play(int /*number*/) override {}
};

class TProcess_Settings : public TSettings_Store {
 public:
  bool Read(const std::string& section, const std::string& name, std::string& value) override {
    const auto found = values.find({section, name});
    if (found == values.end()) return false;
    value = found->second;
    return true;
  }
  void Write(const std::string& section, const std::string& name, const std::string& value) override {
    values[{section, name}] = value;
  }

 private:
  std::map<std::pair<std::string, std::string>, std::string> values;
};

struct TSeams {
  TStderr_Prompts Default_Prompts;
  TSilence Default_Sounds;
  TProcess_Settings Default_Settings;
  TPrompts* Prompts = &Default_Prompts;
  TSounds* Sounds = &Default_Sounds;
  TSettings_Store* Settings = &Default_Settings;
  bool (*Bracket_Is_Open)() = nullptr;
  std::string User;
  std::string Sound_Folder;
};

TSeams& Seams() {
  static TSeams seams;
  return seams;
}

/// A prompt in an open bracket would hold the write lock until the user answers.
TPrompts& Prompts() {
  assert(Seams().Bracket_Is_Open == nullptr || !Seams().Bracket_Is_Open());
  return *Seams().Prompts;
}

}  // namespace

const std::string& User_Key() {
  return Seams().User;
}

void Set_User_Key(const std::string& key) {
  Seams().User = key;
}

void Install_Prompts(TPrompts* prompts) {
  Seams().Prompts = prompts != nullptr ? prompts : &Seams().Default_Prompts;
}

void Install_Bracket_Check(bool (*bracket_is_open)()) {
  Seams().Bracket_Is_Open = bracket_is_open;
}

void Raise_Error(const std::string& caption, const std::string& text) {
  Prompts().Error(caption, text);
}

void Raise_Info(const std::string& caption, const std::string& text) {
  Prompts().Info(caption, text);
}

int Raise_Question(const std::string& caption, const std::string& text) {
  return Prompts().Question(caption, text);
}

void Raise_Notice(const std::string& text) {
  Prompts().Notice(text);
}

void Install_Sounds(TSounds* sounds) {
  Seams().Sounds = sounds != nullptr ? sounds : &Seams().Default_Sounds;
}

void Sound(int number) {
  Seams().Sounds->Play(number);
}

const std::string& Sound_Folder() {
  return Seams().Sound_Folder;
}

void Install_Sound_Folder(const std::string& folder) {
  Seams().Sound_Folder = folder;
}

void Install_Settings(TSettings_Store* store) {
  Seams().Settings = store != nullptr ? store : &Seams().Default_Settings;
}

std::string Read_String(const std::string& section, const std::string& name, const std::string& fallback) {
  std::string value;
  return Seams().Settings->Read(section, name, value) ? value : fallback;
}

std::int64_t Read_Integer(const std::string& section, const std::string& name, std::int64_t fallback) {
  std::int64_t number = fallback;
  Str2Int(Read_String(section, name, ""), number);
  return number;
}

bool Read_Bool(const std::string& section, const std::string& name, bool fallback) {
  const std::string value = Simple_UpperCase(Read_String(section, name, ""));
  if (value == "1" || value == "TRUE") return true;
  if (value == "0" || value == "FALSE") return false;
  return fallback;
}

void Write_String(const std::string& section, const std::string& name, const std::string& value) {
  Seams().Settings->Write(section, name, value);
}

void Write_Integer(const std::string& section, const std::string& name, std::int64_t value) {
  Write_String(section, name, std::to_string(value));
}

void Write_Bool(const std::string& section, const std::string& name, bool value) {
  Write_String(section, name, value ? "1" : "0");
}

bool UseCompleteStyle() {
  return Read_Bool("General", "Completed Style", true);
}

}  // namespace Kt_util_01
