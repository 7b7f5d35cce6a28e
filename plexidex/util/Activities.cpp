#include "Kt_util_01.h"

namespace Kt_util_01 {

const std::vector<TActivity>& Populate_Activities() {
  static const std::vector<TActivity> activities = {
      {1, "Telephone Call"}, {2, "Letter"}, {3, "E-Mail"},          {4, "Fax"},    {5, "Meeting"},
      {6, "Visit"},          {17, "Task"},  {18, "Calendar Event"}, {19, "Other"},
  };
  return activities;
}

}  // namespace Kt_util_01
