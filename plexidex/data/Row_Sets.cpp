#include "Row_Sets.h"

#include "Sql_Text.h"
#include "Table_Context.h"

namespace Kt_data_01 {

namespace {

void Change_By(const char* operation, TTable_Context table, const std::string& sql, TValues values) {
  table.Guarded(operation, [&] {
    table.Check_Bracket(operation);
    TUse use(table.Database.Statement(sql));
    int parameter = 0;
    for (const TValue& value : values) Bind(*use, parameter++, value);
    use->Step();
    table.Changed();
  });
}

}  // namespace

void Delete_Rows(std::string_view table, std::string_view column, const TValue& value) {
  const TTable_Def& def = Table_Def(table);
  Change_By("delete", {Shared_Database(), def}, Delete_Rows_Sql(def, def.Known_Column(column)), {value});
}

void Delete_Rows_Of(std::string_view table, std::string_view column, std::string_view owners,
                    std::string_view owner_column, const TValue& value) {
  const TTable_Def &def = Table_Def(table), &owner_def = Table_Def(owners);
  Change_By(
      "delete", {Shared_Database(), def},
      Delete_Rows_Of_Sql(def, def.Known_Column(column), owner_def, owner_def.Known_Column(owner_column)),
      {value});
}

void Replace_In_Rows(std::string_view table, std::string_view column, std::string_view text,
                     std::string_view by) {
  const TTable_Def& def = Table_Def(table);
  Change_By("edit", {Shared_Database(), def}, Replace_In_Rows_Sql(def, def.Known_Column(column)), {by, text});
}

std::vector<std::string> Keys_Ending_In(std::string_view table, std::string_view ending, std::size_t most) {
  TTable_Context of(Shared_Database(), Table_Def(table));
  return of.Guarded("find", [&] {
    std::vector<std::string> keys;
    TUse use(of.Database.Statement(Key_Ending_Sql(of.Def)));
    use->Bind(0, ending);
    use->Bind(1, ending);
    use->Bind(2, static_cast<std::int64_t>(most));
    while (use->Step()) keys.emplace_back(use->Text(0));
    return keys;
  });
}

}  // namespace Kt_data_01
