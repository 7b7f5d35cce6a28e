#include <gtest/gtest.h>

#include "Entry_Rows.h"
#include "Kt_util_01.h"
#include "Test_Seams.h"

using namespace KTReminds;
using namespace Kt_data_01;

TEST(Rows, In_Words) {
  const Kt_test::TTest_Seams seams;
  const double now = Kt_util_01::Now();
  TEventKey entry;
  entry.Description = "Dentist";
  entry.EventDate = now;
  EXPECT_EQ(Spoken_Row(entry, now), "Dentist, 12:00 PM, outstanding") << "not overdue at that moment";
  EXPECT_EQ(Spoken_Row(entry, now + 1e-6), "Dentist, 12:00 PM, overdue");
  entry.Private = entry.Timeless = entry.Done = true;
  EXPECT_EQ(Spoken_Row(entry, now + 1), "Private, completed");
  entry = {};
  entry.Description = "Holiday";
  entry.EventType = TEntry_Type::Other;
  entry.Timeless = true;
  EXPECT_EQ(Spoken_Row(entry, now), "Holiday");
}
