#include <algorithm>
#include <utility>

#include "Kt_lists.h"

namespace Kt_data_01 {

void TList_Item::Update() {
  if (List) List->Repaint(*this);
}

void TItem_List::Begin_Update() {
  if (updating++ == 0 && observer) observer->Reset_Begins();
}

void TItem_List::End_Update() {
  if (updating == 1) Hide_Again();
  if (--updating == 0 && observer) observer->Reset_Ends();
}

void TItem_List::Show_So_Far() {
  if (!observer || some_are_shown) return;
  some_are_shown = true;
  observer->Items_So_Far();
}

void TItem_List::Hide_Again() {
  if (some_are_shown) observer->Reset_Begins();
  some_are_shown = false;
}

void TItem_List::Clear() {
  Take_Out();
}

std::vector<std::unique_ptr<TList_Item>> TItem_List::Take_Out() {
  Hide_Again();
  return std::exchange(items, {});
}

TList_Item& TItem_List::Add(std::unique_ptr<TList_Item> item) {
  item->List = this;
  return *items.emplace_back(std::move(item));
}

void TItem_List::Reverse() {
  Hide_Again();
  std::reverse(items.begin(), items.end());
}

TList_Item& TItem_List::Insert(std::size_t position, std::unique_ptr<TList_Item> item) {
  item->List = this;
  TList_Item& added = **items.insert(items.begin() + static_cast<std::ptrdiff_t>(position), std::move(item));
  if (observer && updating == 0) observer->Item_Added(position);
  return added;
}

void TItem_List::Remove(std::size_t position) {
  items.erase(items.begin() + static_cast<std::ptrdiff_t>(position));
  if (observer && updating == 0) observer->Item_Removed(position);
}

void TItem_List::Reorder(const std::vector<std::uint32_t>& order) {
  Hide_Again();
  std::vector<std::unique_ptr<TList_Item>> sorted(items.size());
  for (std::size_t i = 0; i < order.size(); ++i) sorted[i] = std::move(items[order[i]]);
  items.swap(sorted);
  if (observer && updating == 0) observer->Items_Sorted(order);
}

void TItem_List::Repaint(const TList_Item& item) {
  if (!observer || updating > 0) return;
  const auto found =
      std::find_if(items.begin(), items.end(), [&item](const auto& own) { return own.get() == &item; });
  if (found != items.end()) observer->Item_Changed(static_cast<std::size_t>(found - items.begin()));
}

}  // namespace Kt_data_01
