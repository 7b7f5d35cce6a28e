#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Kt_data_01.h"

namespace KTReminds {

/// Adds the item of an entry or holiday, with its state image.
Kt_data_01::TList_Item& Add_Item(Kt_data_01::TItem_List& list, std::unique_ptr<Kt_data_01::TEventKey> entry);

/// Clears lists and lets `fill` add their items and sort them; a failed read leaves all of them empty, and is
/// reported with the tag after they have told their observers. Does nothing while one of them is being built.
template <class TFill>
void Rebuild_Lists(const std::vector<Kt_data_01::TItem_List*>& lists, const std::string& tag, TFill fill) {
  for (const auto* list : lists) {
    if (list->Is_Updating()) return;
  }
  for (auto* list : lists) {
    list->Begin_Update();
    list->Clear();
  }
  const auto end = [&lists] {
    for (auto* list : lists) list->End_Update();
  };
  try {
    fill();
  } catch (...) {
    for (auto* list : lists) list->Clear();
    end();
    Kt_data_01::FailRead(tag);
    return;
  }
  end();
}

}  // namespace KTReminds
