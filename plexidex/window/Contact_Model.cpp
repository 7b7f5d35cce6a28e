#include "Contact_Model.h"

#include "Contact_Drag.h"
#include "Image_List.h"
#include "Kt_forms.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

void TContact_Model::Rebuild(const std::function<void()>& change) {
  beginResetModel();
  change();
  endResetModel();
}

void TContact_Model::Show_Rows(std::vector<TContact_Row> rows) {
  Rebuild([&] {
    list.Set_Rows(std::move(rows));
    if (sorted_by != TContact_Column::Name || !ascending) list.Sort(sorted_by, ascending);
    if (!narrowed_to.empty()) list.Narrow(narrowed_to);
  });
}

void TContact_Model::Narrow(const QString& text) {
  narrowed_to = From_Qt(text);
  Rebuild([this] { list.Narrow(narrowed_to); });
}

void TContact_Model::sort(int column, Qt::SortOrder order) {
  sorted_by = static_cast<TContact_Column>(column);
  ascending = order == Qt::AscendingOrder;
  emit layoutAboutToBeChanged();
  const QModelIndexList kept = persistentIndexList();
  std::vector<std::uint32_t> numbers;
  for (const QModelIndex& one : kept) numbers.push_back(list.Number(static_cast<std::size_t>(one.row())));
  list.Sort(sorted_by, ascending);
  // All of them may be selected.
  std::vector<int> rows(list.Count_Of_All());
  for (std::size_t row = 0; row < list.Count(); ++row) rows[list.Number(row)] = static_cast<int>(row);
  for (qsizetype i = 0; i < kept.size(); ++i)
    changePersistentIndex(kept[i], index(rows[numbers[static_cast<std::size_t>(i)]], kept[i].column()));
  emit layoutChanged();
}

int TContact_Model::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list.Count());
}

int TContact_Model::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Contact_Columns;
}

QVariant TContact_Model::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const TContact_Row& row = list.Row(static_cast<std::size_t>(index.row()));
  const auto column = static_cast<TContact_Column>(index.column());
  const bool marked = row.Tagged && column == TContact_Column::Name;
  switch (role) {
    case Qt::DisplayRole:
      return To_Qt(row.Text(column));
    case Qt::AccessibleTextRole:
      return marked ? tr("%1, tagged").arg(To_Qt(row.Name)) : To_Qt(row.Text(column));
    case Qt::ToolTipRole:
      return column == TContact_Column::Categories ? To_Qt(row.Categories) : QVariant();
    case Qt::DecorationRole:
      return marked ? KTReminds::TImage_List("Contacts").Icon(1) : QVariant();
    default:
      return {};
  }
}

void TContact_Model::Set_Tagged(const std::unordered_set<std::string>& keys, bool tagged) {
  list.Set_Tagged(keys, tagged);
  if (rowCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, 0));
}

QItemSelection TContact_Model::Rows_Of(const std::unordered_set<std::string>& keys) const {
  QItemSelection found;
  int first = -1;
  for (int row = 0; row <= rowCount(); ++row) {
    const bool is_one = row < rowCount() && keys.contains(list.Row(static_cast<std::size_t>(row)).Key);
    if (is_one && first < 0) first = row;
    if (is_one || first < 0) continue;
    found.select(index(first, 0), index(row - 1, columnCount() - 1));
    first = -1;
  }
  return found;
}

Qt::ItemFlags TContact_Model::flags(const QModelIndex& index) const {
  return QAbstractTableModel::flags(index) | (index.isValid() ? Qt::ItemIsDragEnabled : Qt::NoItemFlags);
}

QMimeData* TContact_Model::mimeData(const QModelIndexList& indexes) const {
  TDragged_Contacts dragged{book, {}};
  for (const QModelIndex& one : indexes) {
    if (one.column() == 0) dragged.Keys.push_back(list.Row(static_cast<std::size_t>(one.row())).Key);
  }
  return To_Mime(dragged);
}

QVariant TContact_Model::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (static_cast<TContact_Column>(section)) {
    case TContact_Column::Name:
      return tr("Name");
    case TContact_Column::Telephone:
      return tr("Telephone");
    case TContact_Column::Mail:
      return tr("E-mail");
    case TContact_Column::Template:
      return tr("Template");
    case TContact_Column::Folder:
      return tr("Folder");
    case TContact_Column::Categories:
      return tr("Categories");
  }
  return {};
}

}  // namespace Plexidex
