#include <gtest/gtest.h>

#include "Kt_util_01.h"
#include "Temporary_Database.h"

using namespace Kt_data_01;

TEST(Smoke, Opens) {
  TTemporary_Database database;
  EXPECT_EQ(List_Books().size(), 1u);
}
