#pragma once

#include <QAbstractListModel>
#include <optional>

#include "Kt_lists.h"

namespace KTReminds {

/// The rows of a list of entries, one for each item of the plain list that it owns. It follows that list by
/// itself: fill, sort and mark the list, never the model. Selection survives sorting, marking, adding and
/// removing, not refilling.
class TEntry_Model : public QAbstractListModel, private Kt_data_01::TItem_Observer {
  Q_OBJECT

 public:
  explicit TEntry_Model(QObject* parent = nullptr);

  Kt_data_01::TItem_List& Items() { return items; }
  /// Null for an index that is invalid or of another model. Valid until the list changes.
  static const Kt_data_01::TList_Item* Item(const QModelIndex& index);
  /// Null for a row that does not exist, and for one that is being removed: its item is gone by then.
  Kt_data_01::TList_Item* Item_Of_Row(int row);
  /// Keeps in the entry of a row how far to the right its text was drawn. Nobody is told.
  void Set_Text_Right(int row, int right);

  int rowCount(const QModelIndex& parent = {}) const override;
  /// The text of a row, and how it is read out.
  QVariant data(const QModelIndex& index, int role) const override;
  /// A row can be dragged where its list lets it.
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void Reset_Begins() override;
  void Reset_Ends() override;
  void Items_So_Far() override;
  void Items_Sorted(const std::vector<std::uint32_t>& old_position) override;
  void Item_Changed(std::size_t position) override;
  void Item_Added(std::size_t position) override;
  void Item_Removed(std::size_t position) override;
  /// Of the item that a row shows; nothing for a row that shows none.
  std::optional<std::size_t> Position(int row) const;

  Kt_data_01::TItem_List items;
  bool resetting = false;     // the list is in pieces, and has no rows meanwhile
  std::optional<int> so_far;  // how many items have rows while more are being added
  std::optional<int> gap;     // where the row of an item lies that the list has removed already
  std::optional<int> news;    // where an item lies in the list that has no row yet
};

}  // namespace KTReminds
