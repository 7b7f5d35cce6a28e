#include "Test_Seams.h"

#include "Passwords.h"

void TPrompt_Queue::Expect_Error(const std::string& caption, const std::string& text) {
  Expected.push_back({"error", caption, text, 0});
}

void TPrompt_Queue::Expect_Info(const std::string& caption, const std::string& text) {
  Expected.push_back({"information", caption, text, 0});
}

void TPrompt_Queue::Expect_Question(const std::string& caption, const std::string& text, int answer) {
  Expected.push_back({"question", caption, text, answer});
}

void TPrompt_Queue::Expect_Undone(const std::string& why, const std::string& tag) {
  Expect_Error("Update Failed", "The change could not be saved and has been undone: " + why + "\n\n" + tag);
}

void TPrompt_Queue::Expect_Unread(const std::string& why, const std::string& tag) {
  Expect_Error("Read Failed", "The data could not be read: " + why + "\n\n" + tag);
}

void TPrompt_Queue::Verify() {
  for (const TPrompt& prompt : Expected) ADD_FAILURE() << "never came: " << Describe(prompt);
  Expected.clear();
}

void TPrompt_Queue::Error(const std::string& caption, const std::string& text) {
  Meet({"error", caption, text, 0});
}

void TPrompt_Queue::Info(const std::string& caption, const std::string& text) {
  Meet({"information", caption, text, 0});
}

int TPrompt_Queue::Question(const std::string& caption, const std::string& text) {
  return Meet({"question", caption, text, Answer_No});
}

std::string TPrompt_Queue::Describe(const TPrompt& prompt) {
  return prompt.Kind + " " + prompt.Caption + ": " + prompt.Text;
}

int TPrompt_Queue::Meet(const TPrompt& prompt) {
  if (Answer_All) {
    Said.push_back(Describe(prompt));
    return *Answer_All;
  }
  if (Expected.empty()) {
    ADD_FAILURE() << "unexpected prompt: " << Describe(prompt);
    return Answer_No;
  }
  const TPrompt expected = Expected.front();
  Expected.pop_front();
  if (Describe(expected) != Describe(prompt)) {
    ADD_FAILURE() << "unexpected prompt: " << Describe(prompt) << "\nexpected: " << Describe(expected);
    return Answer_No;
  }
  return expected.Answer;
}

bool TMemory_Settings::Read(const std::string& section, const std::string& name, std::string& value) {
  const auto found = Values.find({section, name});
  if (found == Values.end()) return false;
  value = found->second;
  return true;
}

void TMemory_Settings::Write(const std::string& section, const std::string& name, const std::string& value) {
  Values[{section, name}] = value;
}

TTest_Seams::TTest_Seams(const std::string& locale, const std::string& zone)
    : Clock(Encode_Date(2024, 1, 15) + 0.5) {
  Install_Locale(locale);
  // None of the locale's country, but where a test asks for them.
  Settings.Values[{"Calendar", "Holiday Countries"}] = "";
  if (!Install_Time_Zone(zone)) ADD_FAILURE() << "no time zone \"" << zone << "\"";
  Install_Clock(&Clock);
  Install_Prompts(&Prompts);
  Install_Sounds(&Sounds);
  Install_Settings(&Settings);
  Kt_data_01::Install_Least_Password_Cost(true);
}

TTest_Seams::~TTest_Seams() {
  Kt_data_01::Install_Least_Password_Cost(false);
  Install_Settings(nullptr);
  Install_Sounds(nullptr);
  Install_Prompts(nullptr);
  Install_Clock(nullptr);
  Install_Time_Zone("");
  Install_Locale("");
  Set_User_Key("");
  CurrentDate = 0;
}
