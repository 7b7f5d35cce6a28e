#include "Entry_Model.h"

#include "Entry_Rows.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace KTReminds {

using Kt_data_01::TList_Item;

TEntry_Model::TEntry_Model(QObject* parent) : QAbstractListModel(parent) {
  items.Set_Observer(this);
}

const TList_Item* TEntry_Model::Item(const QModelIndex& index) {
  const auto* model = qobject_cast<const TEntry_Model*>(index.model());
  const auto position = model ? model->Position(index.row()) : std::nullopt;
  return position ? &model->items[*position] : nullptr;
}

TList_Item* TEntry_Model::Item_Of_Row(int row) {
  const auto position = Position(row);
  return position ? &items[*position] : nullptr;
}

void TEntry_Model::Set_Text_Right(int row, int right) {
  if (const auto position = Position(row)) items[*position].Data->TextRight = right;
}

std::optional<std::size_t> TEntry_Model::Position(int row) const {
  if (resetting || row < 0 || row >= rowCount() || row == gap) return {};
  return static_cast<std::size_t>(row - (gap && row > *gap ? 1 : 0) + (news && row >= *news ? 1 : 0));
}

int TEntry_Model::rowCount(const QModelIndex& parent) const {
  if (parent.isValid() || resetting) return 0;
  return so_far.value_or(static_cast<int>(items.Count()) + (gap ? 1 : 0) - (news ? 1 : 0));
}

QVariant TEntry_Model::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
  const TList_Item* item = Item(index);
  if (!item) return {};
  if (!item->Data) return Kt_forms::To_Qt(item->Caption);
  return role == Qt::DisplayRole ? Kt_forms::To_Qt(Row_Text(*item->Data))
                                 : Kt_forms::To_Qt(Spoken_Row(*item->Data, Kt_util_01::Now()));
}

Qt::ItemFlags TEntry_Model::flags(const QModelIndex& index) const {
  const Qt::ItemFlags usual = QAbstractListModel::flags(index);
  return index.isValid() ? usual | Qt::ItemIsDragEnabled : usual;
}

void TEntry_Model::Reset_Begins() {
  beginResetModel();
  resetting = true;
  so_far.reset();
}

void TEntry_Model::Reset_Ends() {
  resetting = false;
  endResetModel();
}

void TEntry_Model::Items_So_Far() {
  so_far = static_cast<int>(items.Count());
  Reset_Ends();
}

void TEntry_Model::Items_Sorted(const std::vector<std::uint32_t>& old_position) {
  emit layoutAboutToBeChanged({}, VerticalSortHint);
  std::vector<int> new_position(old_position.size());
  for (std::size_t i = 0; i < old_position.size(); ++i) new_position[old_position[i]] = static_cast<int>(i);
  const QModelIndexList before = persistentIndexList();
  QModelIndexList after;
  after.reserve(before.size());
  for (const QModelIndex& kept : before)
    after.append(index(new_position[static_cast<std::size_t>(kept.row())]));
  changePersistentIndexList(before, after);
  emit layoutChanged({}, VerticalSortHint);
}

void TEntry_Model::Item_Changed(std::size_t position) {
  const QModelIndex changed = index(static_cast<int>(position));
  emit dataChanged(changed, changed);
}

void TEntry_Model::Item_Added(std::size_t position) {
  news = static_cast<int>(position);
  beginInsertRows({}, *news, *news);
  news.reset();
  endInsertRows();
}

void TEntry_Model::Item_Removed(std::size_t position) {
  gap = static_cast<int>(position);
  beginRemoveRows({}, *gap, *gap);
  gap.reset();
  endRemoveRows();
}

}  // namespace KTReminds
