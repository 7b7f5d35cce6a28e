#pragma once

// A file of cards. One pass notes where they lie; they are read when they are wanted.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Content_Lines.h"
#include "Digest.h"
#include "Import_Budget.h"
#include "Import_Report.h"
#include "Kt_lists.h"

namespace Plexidex {

struct TIndexed_Card {
  std::uint64_t Offset = 0, Name = 0;  // in the file, and of its UID among the names
  std::uint32_t Length = 0, Name_Length = 0;
  std::uint32_t Line = 0;
  TDigest Content;      // without when it was revised, and however it is folded
  bool Is_Last = true;  // of those with this UID in the file
};

class TVcard_File {
 public:
  /// Throws EImport_Error for a file that cannot be read, is too large, holds more cards than the budget
  /// allows entries, or does not begin with a card. Progress may be null.
  TVcard_File(const std::string& file, const TImport_Budget& budget, Kt_data_01::TProgress_Bar* progress);

  /// In the order of the file, without those that are damaged.
  const std::vector<TIndexed_Card>& Cards() const { return cards; }
  /// What cannot be read as a card, with its line.
  const std::vector<TImport_Remark>& Damaged() const { return damaged; }
  /// As the card gives it, otherwise made of its content.
  std::string UID_Of(const TIndexed_Card& card) const;
  std::string Text_Of(const TIndexed_Card& card) const;

 private:
  void Take(const TContent_Line& line);
  void Begin(const TContent_Line& line);
  void End(const TContent_Line& line);
  void Note(const TContent_Line& line);
  void Drop(const std::string& why);
  void Find_Last();

  TInput_File input;
  const TImport_Budget budget;
  bool ends_with_return = false;
  std::vector<TIndexed_Card> cards;
  std::vector<TImport_Remark> damaged;
  std::string names;  // all UIDs, one after the other

  TIndexed_Card current;
  std::string uid;
  int depth = 0;               // of cards in each other
  bool may_hold_card = false;  // the last line may be followed by a card inside this one
  bool any_card = false, was_stray = false;
};

/// Whether a file is one of cards, by its first line, or else by its name.
bool Is_Vcard_File(const std::string& file);
/// By its name alone.
bool Has_Vcard_Name(std::string_view file);

}  // namespace Plexidex
