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
  QStringList keys;
  for (const QModelIndex& one : kept) keys << To_Qt(list.Row(static_cast<std::size_t>(one.row())).Key);
  list.Sort(sorted_by, ascending);
  for (qsizetype i = 0; i < kept.size(); ++i) {
    const auto row = list.Position_Of(From_Qt(keys[i]));
    changePersistentIndex(kept[i], row ? index(static_cast<int>(*row), kept[i].column()) : QModelIndex());
  }
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

void TContact_Model::Set_Tagged(const QString& key, bool tagged) {
  if (const auto row = list.Set_Tagged(From_Qt(key), tagged)) {
    const QModelIndex cell = index(static_cast<int>(*row), static_cast<int>(TContact_Column::Name));
    emit dataChanged(cell, cell);
  }
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
