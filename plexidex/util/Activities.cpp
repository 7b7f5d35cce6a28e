#include "Kt_util_01.h"

namespace Kt_util_01 {

const std::vector<TActivity>& Populate_Activities() {
  static const std::vector<TActivity> activities = {
      {0, "Phone Call Made"}, {19, "Phone Call Received"}, {1, "E-Mail Sent"},    {13, "E-Mail Received"},
      {14, "Fax Sent"},       {15, "Fax Received"},        {16, "Letter Sent"},   {17, "Letter Received"},
      {18, "Meeting"},        {20, "Conversation"},        {2, "Internet Visit"}, {21, "Other"},
  };
  return activities;
}

}  // namespace Kt_util_01
