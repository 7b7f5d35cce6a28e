#include "Task_Order.h"

#include <array>

#include "Entry_Order.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

int TaskSortKey = Task_Column_Due;
bool TaskSortAscending = true;

namespace {

using TSort_Key = std::array<std::int64_t, 3>;

// `status` and `description` are the places of these texts in their orders.
TSort_Key Key_Of(const TEventKey& task, int column, std::int64_t status, std::int64_t description) {
  const std::int64_t due = To_Msecs(task.EventDate);
  switch (column) {
    case 0:
      return {To_Msecs(task.FirstDate), status};
    case Task_Column_Due:
      return {due, status};
    case 2:
      return {description, status};
    case 3:
      return {status, due};
    case 4:
      return {task.Percentage, due, status};
    case 5:
      return {Effective_Priority(task), due, status};
    default:
      return {};
  }
}

}  // namespace

void Sort_Tasks(TItem_List& list) {
  const std::vector<std::int64_t> statuses = Places_Of_Texts(list, &TEventKey::FirstText);
  std::vector<std::int64_t> descriptions(list.Count());
  if (TaskSortKey == 2) descriptions = Places_Of_Texts(list, &TEventKey::Description);
  Sort_By(list, TaskSortAscending,
          [&](std::size_t i) { return Key_Of(*list[i].Data, TaskSortKey, statuses[i], descriptions[i]); });
}

}  // namespace KTReminds
