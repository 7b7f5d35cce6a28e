#include <gtest/gtest.h>

#include "KTReminds.h"

using namespace KTReminds;

TEST(Package, Starts_Afresh_Only_After_It_Was_Unloaded) {
  const auto order = [] { return std::pair(SortKey, SortAscending); };
  for (int round = 0; round < 2; ++round) {
    Load_Package();
    EXPECT_EQ(order(), std::pair(2, true));
    SortKey = 4;
    SortAscending = false;
    Load_Package();
    EXPECT_EQ(order(), std::pair(4, false)) << "the user's order";
    Unload_Package();
    Unload_Package();
  }
}
