#pragma once

#include "Sql_Text.h"
#include "Table_Context.h"

namespace Kt_data_01 {

/// Keeps the rows that say when alarms are due with what a view writes to the tables they follow from. To be
/// called inside the bracket of the write.
class TAlert_Rows {
 public:
  explicit TAlert_Rows(const TTable_Context& table);

  /// A row was inserted, or some columns of it were changed. An alarm whose moment has changed goes off anew
  /// and is put off no longer, if the new one is still to come; else it stays put off. One that is done with
  /// needs no answer, and is put off no longer.
  void Written(std::int64_t row_id, TColumn_Set columns, bool inserted);
  void Before_Delete(std::int64_t row_id);

 private:
  enum class TFollows { Nothing, Alarms, Dates };

  // Whether a row was changed.
  template <class TText>
  bool Run(TPrepared& statement, TText text, std::int64_t row_id, std::size_t changed);

  const TTable_Context& table;
  TFollows follows = TFollows::Nothing;
  TColumn_Set moving = 0, done = 0;  // columns that say when an alarm is due, and that it needs no answer
  TPrepared ender, keeper, settler, dropper;
};

}  // namespace Kt_data_01
