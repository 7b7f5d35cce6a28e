#include "Result_Order.h"

#include <map>
#include <utility>

#include "Calendar_Search.h"
#include "Entry_Order.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

int ResultsSortKey = 2;
bool ResultsSortAscending = true;

namespace {

constexpr int By_Kind = 5, By_Owner = 6;

// Few texts are shared by many items: each is compared once.
void Sort_By_Text(TItem_List& list, TFound_Column column) {
  std::map<std::string_view, std::string> keys;
  const auto key_of = [&](std::size_t i) {
    const std::string_view text = list[i].SubItems.at(static_cast<std::size_t>(column)).View();
    auto [known, is_new] = keys.try_emplace(text);
    if (is_new) known->second = Sort_Key(text);
    return std::pair(std::string_view(known->second), To_Msecs(list[i].Data->EventDate));
  };
  Sort_By(list, ResultsSortAscending, key_of);
}

}  // namespace

void Sort_Results(TItem_List& list) {
  switch (ResultsSortKey) {
    case By_Kind:
      return Sort_By_Text(list, TFound_Column::Kind);
    case By_Owner:
      return Sort_By_Text(list, TFound_Column::Owner);
    default:
      return Sort_Items(list, ResultsSortKey, ResultsSortAscending);
  }
}

}  // namespace KTReminds
