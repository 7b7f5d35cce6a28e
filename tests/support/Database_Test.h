#pragma once

#include <gtest/gtest.h>

#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace Kt_data_01;

/// On a new database, at noon of Monday, 15 January 2024.
struct TDatabase_Test : testing::Test {
  static constexpr double Monday = 45306;

  TTest_Seams seams;
  TTemporary_Database database;
};
