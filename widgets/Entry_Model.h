#pragma once

#include <QAbstractListModel>
#include <optional>

#include "Kt_lists.h"

namespace KTReminds {

/// The rows of a list of entries, one for each item of the plain list that it owns. It follows that list by
/// itself: fill, sort and mark the list, never the model. Selection survives sorting and marking, not
/// refilling.
class TEntry_Model : public QAbstractListModel, private Kt_data_01::TItem_Observer {
  Q_OBJECT

 public:
  explicit TEntry_Model(QObject* parent = nullptr);

  Kt_data_01::TItem_List& Items() { return items; }
  /// Null for an index that is invalid or of another model. Valid until the list changes.
  static const Kt_data_01::TList_Item* Item(const QModelIndex& index);

  int rowCount(const QModelIndex& parent = {}) const override;
  /// The text of a row, and how it is read out.
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  void Reset_Begins() override;
  void Reset_Ends() override;
  void Items_Sorted(const std::vector<std::uint32_t>& old_position) override;
  void Item_Changed(std::size_t position) override;
  void Item_Removed(std::size_t position) override;
  const Kt_data_01::TList_Item* At(int row) const;

  Kt_data_01::TItem_List items;
  bool resetting = false;  // the list is in pieces, and has no rows meanwhile
  std::optional<int> gap;  // where the row of an item lies that the list has removed already
};

}  // namespace KTReminds
