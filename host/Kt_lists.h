#pragma once

// List views as plain data. The module fills, sorts and marks these; a host shows them by observing.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "Kt_event_key.h"

namespace Kt_data_01 {

class TItem_List;

struct TList_Item {
  TText Caption;
  int Image = -1;  // state image; -1 for none
  std::unique_ptr<TEventKey> Data;
  std::vector<TText> SubItems;
  TItem_List* List = nullptr;  // set by the list it is added to

  /// Has the item drawn again where a list shows it.
  void Update();
};

/// Told of changes after they happened, but for the beginning of a reset. Positions count from 0.
class TItem_Observer {
 public:
  virtual ~TItem_Observer() = default;
  virtual void Reset_Begins() = 0;
  virtual void Reset_Ends() = 0;
  /// Ends a reset for the items that there are, while more are still being added behind them; the next is the
  /// beginning of another reset.
  virtual void Items_So_Far() = 0;
  /// old_position[i] is where the item now at i was before.
  virtual void Items_Sorted(const std::vector<std::uint32_t>& old_position) = 0;
  virtual void Item_Changed(std::size_t position) = 0;
  virtual void Item_Added(std::size_t position) = 0;
  virtual void Item_Removed(std::size_t position) = 0;
};

/// Owns its items. An item's address stays the same until it is removed.
class TItem_List {
 public:
  std::size_t Count() const { return items.size(); }
  TList_Item& operator[](std::size_t position) { return *items[position]; }
  const TList_Item& operator[](std::size_t position) const { return *items[position]; }

  /// Not owned; null for none.
  void Set_Observer(TItem_Observer* new_observer) { observer = new_observer; }

  /// Between these the contents change as a whole; they nest. Clear, Take_Out and Add may be called only
  /// inside.
  void Begin_Update();
  void End_Update();
  bool Is_Updating() const { return updating > 0; }
  /// In the midst of an update: shows what has been added, to which only Add may add until the end.
  void Show_So_Far();
  void Clear();
  /// Clears, but leaves it to the caller to free the items, which takes long for many.
  std::vector<std::unique_ptr<TList_Item>> Take_Out();
  TList_Item& Add(std::unique_ptr<TList_Item> item);
  /// Turns the order round: adding at the end and reversing once gives the order of inserting each at the
  /// top.
  void Reverse();
  /// One item more, without a rebuild: before the one at the position, or at the end.
  TList_Item& Insert(std::size_t position, std::unique_ptr<TList_Item> item);
  void Remove(std::size_t position);
  /// Puts the items into another order: order[i] is the position of the one that comes to i.
  void Reorder(const std::vector<std::uint32_t>& order);
  /// Has a changed item drawn again; ignores an item that is not in the list.
  void Repaint(const TList_Item& item);

 private:
  void Hide_Again();

  std::vector<std::unique_ptr<TList_Item>> items;
  TItem_Observer* observer = nullptr;
  int updating = 0;
  bool some_are_shown = false;
};

/// Where a long build shows how far it is. The host's implementation may service messages.
class TProgress_Bar {
 public:
  virtual ~TProgress_Bar() = default;
  virtual void Set_Max(std::int64_t steps) = 0;
  virtual void Set_Position(std::int64_t steps) = 0;
};

}  // namespace Kt_data_01
