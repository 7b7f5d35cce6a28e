#include "Alert_Rows.h"

#include "Kt_util_01.h"

namespace Kt_data_01 {

namespace {

// Looked up once: each view has rows of these.
std::size_t Alarms_Number() {
  static const std::size_t number = Table_Number(Table_Def("KT_Alarms"));
  return number;
}

std::size_t Alerts_Number() {
  static const std::size_t number = Table_Number(Table_Def("KT_Alerts"));
  return number;
}

}  // namespace

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
bool TAlert_Rows::Run(TPrepared& statement, TText text, std::int64_t row_id, std::size_t changed) {
  TUse use(statement.Get(table.Database, text));
  use->Bind(0, row_id);
  use->Bind(1, Kt_util_01::Now());
  use->Step();
  const bool any = table.Database.Engine().Rows_Changed() > 0;
  if (any) table.Database.Table_Changed(changed);
  return any;
}

void TAlert_Rows::Written(std::int64_t row_id, TColumn_Set columns, bool inserted) {
  bool due_changes = inserted ? follows == TFollows::Alarms : (columns & moving) != 0;
  if (!inserted && (columns & (moving | done)) != 0) {
    const auto end_delay = [this] { return End_Delay_Sql(table.Def); };
    due_changes |= Run(ender, end_delay, row_id, Alarms_Number());
  }
  if (due_changes) {
    const auto keep = [this] { return Keep_Alert_Sql(table.Def); };
    Run(keeper, keep, row_id, Alerts_Number());
  }
  if (!inserted && (columns & done) != 0) Run(settler, Settle_Alert_Sql, row_id, Alerts_Number());
}

void TAlert_Rows::Before_Delete(std::int64_t row_id) {
  if (follows != TFollows::Alarms) return;
  TUse use(dropper.Get(table.Database, Drop_Alert_Sql));
  use->Bind(0, row_id);
  use->Step();
  table.Database.Table_Changed(Alerts_Number());
}

}  // namespace Kt_data_01
