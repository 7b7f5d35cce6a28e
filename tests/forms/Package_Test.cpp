#include <gtest/gtest.h>

#include "KTReminds.h"

using namespace KTReminds;

namespace {

TEST(Package, Starts_Afresh_Only_After_It_Was_Unloaded) {
  Load_Package();
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(SortKey, 2);
    EXPECT_TRUE(SortAscending);
    SortKey = 4;
    SortAscending = false;
    Load_Package();
    EXPECT_EQ(SortKey, 4) << "the user's order";
    EXPECT_FALSE(SortAscending);
    Unload_Package();
    Unload_Package();
    Load_Package();
  }
  Unload_Package();
}

}  // namespace
