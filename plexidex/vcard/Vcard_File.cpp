#include "Vcard_File.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

constexpr std::uint64_t Most_Of_Card = 16U << 20;
// It lies in an index.
constexpr std::size_t Most_Of_UID = 1000;

std::string At(std::size_t line) {
  return "line " + std::to_string(line);
}

bool Is_Frame(std::string_view line, std::string_view frame) {
  return Begins_With(line, frame) && Simple_UpperCase(Trimmed(line.substr(frame.size()))) == "VCARD";
}

// Without its group.
std::string_view Property_Name(std::string_view line) {
  const std::string_view head = line.substr(0, line.find_first_of(":;"));
  return Trimmed(head.substr(head.find('.') == std::string_view::npos ? 0 : head.find('.') + 1));
}

bool Is_Property(std::string_view name, std::string_view wanted) {
  return name.size() == wanted.size() && Begins_With(name, wanted);
}

}  // namespace

TVcard_File::TVcard_File(const std::string& file, const TImport_Budget& budget,
                         Kt_data_01::TProgress_Bar* progress)
    : input(file), budget(budget) {
  ends_with_return = Read_Lines(input, progress, [this](const TContent_Line& line) { Take(line); });
  if (!any_card) throw EImport_Error(input.Name() + " is empty.");
  if (depth > 0) Drop("has no end");
  Find_Last();
}

void TVcard_File::Take(const TContent_Line& line) {
  const bool is_blank = Trimmed(line.Text).empty();
  const auto refuse = [&](const std::string& why) {
    throw EImport_Error(input.Name() + " is no vCard file: " + At(line.Number) + " " + why + ".");
  };
  if (line.Text.find('\0') != std::string::npos) refuse("holds binary data");
  if (Is_Frame(line.Text, "BEGIN:")) {
    Begin(line);
  } else if (Is_Frame(line.Text, "END:")) {
    End(line);
  } else if (depth > 0) {
    Note(line);
  } else if (!is_blank) {
    if (!any_card) refuse("does not begin a card");
    if (!was_stray) damaged.push_back({At(line.Number), "belongs to no card"});
    was_stray = true;
  }
}

void TVcard_File::Begin(const TContent_Line& line) {
  if (depth > 0 && may_hold_card) {
    ++depth;
    return Note(line);
  }
  if (depth > 0) Drop("has no end before " + At(line.Number) + ", where another one begins");
  if (static_cast<std::int64_t>(cards.size()) >= budget.Most_Entries())
    throw EImport_Error(input.Name() + " holds more than " + std::to_string(budget.Most_Entries()) +
                        " contacts; " + budget.How_To_Raise + ".");
  depth = 1;
  any_card = true;
  was_stray = false;
  current = {};
  current.Offset = line.Offset;
  current.Line = static_cast<std::uint32_t>(line.Number);
  uid.clear();
}

void TVcard_File::Note(const TContent_Line& line) {
  const std::string_view name = Property_Name(line.Text);
  may_hold_card = Is_Property(name, "AGENT");
  if (depth == 1 && Is_Property(name, "UID") && uid.empty()) {
    const auto colon = line.Text.find(':');
    uid = Valid_UTF8(Trimmed(std::string_view(line.Text).substr(std::min(colon, line.Text.size() - 1) + 1)));
    constexpr std::string_view prefix = "URN:UUID:";
    if (Begins_With(uid, prefix)) uid.erase(0, prefix.size());
  }
  if (Is_Property(name, "REV")) return;
  current.Content.Add(line.Text);
  current.Content.Add("\n");
}

void TVcard_File::End(const TContent_Line& line) {
  if (depth == 0) {
    if (!any_card)
      throw EImport_Error(input.Name() + " is no vCard file: " + At(line.Number) + " ends a card first.");
    damaged.push_back({At(line.Number), "ends a card that never began"});
    return;
  }
  if (depth > 1) {
    --depth;
    return Note(line);
  }
  if (line.End - current.Offset > Most_Of_Card)
    return Drop("is larger than " + std::to_string(Most_Of_Card >> 20) + " MiB");
  depth = 0;
  current.Length = static_cast<std::uint32_t>(line.End - current.Offset);
  if (uid.size() > Most_Of_UID) {
    TDigest digest;
    digest.Add(uid);
    uid = "uid-" + digest.Text();
  }
  current.Name = names.size();
  current.Name_Length = static_cast<std::uint32_t>(uid.size());
  names += uid;
  cards.push_back(current);
}

void TVcard_File::Drop(const std::string& why) {
  damaged.push_back({"the card of " + At(current.Line), why});
  depth = 0;
}

void TVcard_File::Find_Last() {
  std::map<std::string, std::size_t> last;
  for (std::size_t i = 0; i < cards.size(); ++i) {
    const auto [found, is_new] = last.try_emplace(UID_Of(cards[i]), i);
    if (is_new) continue;
    cards[found->second].Is_Last = false;
    found->second = i;
  }
}

std::string TVcard_File::UID_Of(const TIndexed_Card& card) const {
  if (card.Name_Length == 0) return "content-" + card.Content.Text();
  return names.substr(card.Name, card.Name_Length);
}

std::string TVcard_File::Text_Of(const TIndexed_Card& card) const {
  std::string text = input.Read(card.Offset, card.Length);
  if (ends_with_return) std::replace(text.begin(), text.end(), '\r', '\n');
  return text;
}

bool Is_Vcard_File(const std::string& file) {
  // What can be read only once must not be looked at before.
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return Has_Vcard_Name(file);
  try {
    const TInput_File input(file);
    TContent_Lines lines(input);
    TContent_Line line;
    while (lines.Next(line) && Trimmed(line.Text).empty()) {
    }
    if (Begins_With(line.Text, "BEGIN:")) return Is_Frame(line.Text, "BEGIN:");
  } catch (const EImport_Error&) {
    // Who imports it says so.
  }
  return Has_Vcard_Name(file);
}

bool Has_Vcard_Name(std::string_view file) {
  const std::string upper = Simple_UpperCase(file);
  return upper.ends_with(".VCF") || upper.ends_with(".VCARD");
}

}  // namespace Plexidex
