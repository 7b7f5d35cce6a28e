#include <gtest/gtest.h>

#include "KTReminds.h"

using namespace KTReminds;

TEST(Package, Starts_Afresh_Only_After_It_Was_Unloaded) {
  for (int round = 0; round < 2; ++round) {
    Load_Package();
    EXPECT_TRUE(SortKey == 2 && SortAscending);
    EXPECT_FALSE(CurrentSearch);
    Clear_Search();
    SortKey = 4;
    SortAscending = false;
    Load_Package();
    EXPECT_TRUE(SortKey == 4 && !SortAscending) << "the user's order";
    EXPECT_TRUE(CurrentSearch);
    Unload_Package();
    Unload_Package();
  }
}
