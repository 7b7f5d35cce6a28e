#include "Alert_Rows.h"

#include "Kt_util_01.h"

namespace Kt_data_01 {

TAlert_Rows::TAlert_Rows(const TTable_Context& table) : table(table) {
  const auto bit = [&table](const char* column) {
    return TColumn_Set{1} << static_cast<unsigned>(table.Def.Known_Column(column));
  };
  if (Same_Name(table.Name, "KT_Alarms")) {
    follows = TFollows::Alarms;
    moving = bit("User") | bit("Offset") | bit("NextTime");
    done = bit("Actioned");
  } else if (Same_Name(table.Name, "KT_Events_Data")) {
    follows = TFollows::Dates;
    moving = bit("EventDate");
  }
}

template <class TText>
void TAlert_Rows::Run(TPrepared& statement, TText text, std::int64_t row_id) {
  TUse use(statement.Get(table.Database, text));
  use->Bind(0, row_id);
  use->Bind(1, Kt_util_01::Now());
  use->Step();
  table.Database.Table_Changed(alerts);
}

void TAlert_Rows::Written(std::int64_t row_id, TColumn_Set columns, bool inserted) {
  if (inserted ? follows == TFollows::Alarms : (columns & moving) != 0)
    Run(
        keeper, [this] { return Keep_Alert_Sql(table.Def); }, row_id);
  if (!inserted && (columns & done) != 0) Run(settler, Settle_Alert_Sql, row_id);
}

void TAlert_Rows::Before_Delete(std::int64_t row_id) {
  if (follows != TFollows::Alarms) return;
  TUse use(dropper.Get(table.Database, Drop_Alert_Sql));
  use->Bind(0, row_id);
  use->Step();
  table.Database.Table_Changed(alerts);
}

}  // namespace Kt_data_01
