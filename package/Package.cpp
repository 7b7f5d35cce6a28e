#include "Package.h"

#include "Current_Search.h"
#include "Image_List.h"
#include "Reminder_Utils.h"
#include "Task_Order.h"

namespace KTReminds {

namespace {

constexpr int Column_Date = 2;

bool Loaded = false;

}  // namespace

void Load_Package() {
  if (Loaded) return;
  Loaded = true;
  SortKey = Column_Date;
  SortAscending = true;
  TaskSortKey = Task_Column_Due;
  TaskSortAscending = true;
}

void Unload_Package() {
  if (!Loaded) return;
  Loaded = false;
  CurrentSearch.reset();
  Free_Images();
}

}  // namespace KTReminds
