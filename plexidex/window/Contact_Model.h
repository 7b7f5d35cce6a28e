#pragma once

#include <QAbstractTableModel>
#include <QItemSelection>
#include <functional>

#include "Contact_List.h"

namespace Plexidex {

/// The contacts of a book as a table.
class TContact_Model : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  /// Keeps the order and what it is narrowed to.
  void Show_Rows(std::vector<Kt_data_01::TContact_Row> rows);
  void Narrow(const QString& text);
  const Kt_data_01::TContact_List& List() const { return list; }
  /// Marks the rows of contacts without reading them again.
  void Set_Tagged(const std::unordered_set<std::string>& keys, bool tagged);
  /// The rows of these contacts, as far as they are shown.
  QItemSelection Rows_Of(const std::unordered_set<std::string>& keys) const;
  /// Whose contacts are dragged.
  void Set_Book(const std::string& key) { book = key; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  void Rebuild(const std::function<void()>& change);

  Kt_data_01::TContact_List list;
  std::string book, narrowed_to;
  Kt_data_01::TContact_Column sorted_by = Kt_data_01::TContact_Column::Name;
  bool ascending = true;
};

}  // namespace Plexidex
