#include "Projection.h"

namespace Kt_data_01 {

TProjection::TProjection(const TTable_Def& table, std::initializer_list<std::string_view> columns)
    : Table(&table), Slot(table.Columns.size(), -1) {
  Add(0);
  for (const std::string_view column : columns) Add(table.Known_Column(column), true);
  if (columns.size() > 0) return;
  for (std::size_t i = 0; i < table.Columns.size(); ++i) Add(static_cast<int>(i));
}

void TProjection::Add(int column, bool may_be_blob) {
  const auto position = static_cast<std::size_t>(column);
  const bool is_blob = Table->Columns[position].Type == TColumn_Type::Blob;
  if (Slot[position] >= 0 || (is_blob && !may_be_blob)) return;
  Slot[position] = static_cast<int>(Columns.size());
  Columns.push_back(column);
  Types.push_back(Table->Columns[position].Type);
}

}  // namespace Kt_data_01
