#pragma once

#include "Sql_Text.h"
#include "Table_Context.h"

namespace Kt_data_01 {

/// Keeps for whom the journal's lines are private with what a view writes to the events that they tell of, so
/// that it is still known when these are gone. To be called inside the bracket of the write.
class TPrivate_Lines {
 public:
  explicit TPrivate_Lines(const TTable_Context& table);

  /// Some columns of a row were changed.
  void Written(std::int64_t row_id, TColumn_Set columns);

 private:
  const TTable_Context& table;
  TColumn_Set deciding = 0;  // of an event: whether it is private, and to whom
  TPrepared keeper;
};

}  // namespace Kt_data_01
