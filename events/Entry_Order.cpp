#include "Entry_Order.h"

#include <string>
#include <tuple>
#include <unordered_map>

#include "Entry_Rows.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

int SortKey = 2;
bool SortAscending = true;

namespace {

constexpr int Priority_Of_Type_1 = 10;

// By what an entry is sorted, and by what where that is the same.
using TSort_Key = std::pair<std::int64_t, std::int64_t>;

// `text` is the place of the text in the order of the texts.
TSort_Key Key_Of(const TEventKey& entry, int column, std::int64_t text) {
  const std::int64_t date = To_Msecs(entry.EventDate);
  switch (column) {
    case 0:
      return {entry.Done ? 1 : 0, date};
    case 1:
      return {entry.Alarm ? 1 : 0, date};
    case 2:
      return {date, entry.Priority};
    case 3:
      return {text, date};
    case 4:
      return {Effective_Priority(entry), date};
    default:
      return {};
  }
}

// Where an entry stands within its day.
int Rank(const TEventKey& entry) {
  if (entry.Is_Holiday()) return 0;
  if (!entry.Timeless) return 3;
  return entry.Is_Task() ? 2 : 1;
}

// A text by which to sort. The order of entries must not tell a title that their rows hide.
std::string_view Sorted_Text(const TEventKey& entry, TText TEventKey::*text_of) {
  const std::string_view text = (entry.*text_of).View();
  return entry.Private && text == entry.Description.View() ? Hidden_Text : text;
}

auto Position(const TEventKey& entry) {
  return std::tuple(Whole_Day(entry.EventDate), Rank(entry),
                    entry.Timeless ? 0 : Msec_Of_Day(entry.EventDate));
}

}  // namespace

int CustomSortProc(const TList_Item& Item1, const TList_Item& Item2, int Column) {
  const TEventKey& a = SortAscending ? *Item1.Data : *Item2.Data;
  const TEventKey& b = SortAscending ? *Item2.Data : *Item1.Data;
  const int by_text =
      Column == 3 ? CompareText(Sorted_Text(a, &TEventKey::FirstText), Sorted_Text(b, &TEventKey::FirstText))
                  : 0;
  const TSort_Key first = Key_Of(a, Column, by_text), second = Key_Of(b, Column, 0);
  return first < second ? -1 : first > second ? 1 : 0;
}

int Effective_Priority(const TEventKey& entry) {
  return entry.EventType == TEntry_Type::Other ? Priority_Of_Type_1 : entry.Priority;
}

std::vector<std::int64_t> Places_Of_Texts(const TItem_List& list, TText TEventKey::*text_of) {
  std::unordered_map<const char*, std::size_t> known;
  std::vector<std::pair<std::string, std::size_t>> texts;
  std::vector<std::size_t> text_at;
  text_at.reserve(list.Count());
  for (std::size_t i = 0; i < list.Count(); ++i) {
    const std::string_view text = Sorted_Text(*list[i].Data, text_of);
    const auto [found, is_new] = known.try_emplace(text.data(), texts.size());
    if (is_new) texts.emplace_back(Sort_Key(text), texts.size());
    text_at.push_back(found->second);
  }
  std::sort(texts.begin(), texts.end());
  std::vector<std::int64_t> place_of(texts.size());
  for (std::size_t i = 1; i < texts.size(); ++i)
    place_of[texts[i].second] =
        place_of[texts[i - 1].second] + (texts[i].first == texts[i - 1].first ? 0 : 1);
  std::vector<std::int64_t> places;
  places.reserve(text_at.size());
  for (const std::size_t text : text_at) places.push_back(place_of[text]);
  return places;
}

void Sort_Items(TItem_List& List, int Column) {
  Sort_Items(List, Column, SortAscending);
}

void Sort_Items(TItem_List& list, int column, bool ascending) {
  std::vector<std::int64_t> texts(list.Count());
  if (column == 3) texts = Places_Of_Texts(list, &TEventKey::FirstText);
  Sort_By(list, ascending, [&](std::size_t i) { return Key_Of(*list[i].Data, column, texts[i]); });
}

bool Comes_Before(const TEventKey& a, const TEventKey& b) {
  return Position(a) < Position(b);
}

}  // namespace KTReminds
