#include "Private_Lines.h"

namespace Kt_data_01 {

TPrivate_Lines::TPrivate_Lines(const TTable_Context& table) : table(table) {
  if (!Same_Name(table.Name, "KT_Events")) return;
  for (const char* column : {"Private", "User"})
    deciding |= TColumn_Set{1} << static_cast<unsigned>(table.Def.Known_Column(column));
}

void TPrivate_Lines::Written(std::int64_t row_id, TColumn_Set columns) {
  if ((columns & deciding) == 0) return;
  TUse use(keeper.Get(table.Database, Keep_Private_Lines_Sql));
  use->Bind(0, row_id);
  use->Step();
  if (table.Database.Engine().Rows_Changed() > 0)
    table.Database.Table_Changed(Table_Number(Table_Def("KT_Log")));
}

}  // namespace Kt_data_01
