#include <cmath>
#include <cstdlib>

#include "Test_Seams.h"

namespace {

using Clock_And_Zone = TSeams_Test;

TDateTime At(const char* iso) {
  TDateTime value = 0;
  EXPECT_TRUE(Str2DateTime(iso, value)) << iso;
  return value;
}

TEST_F(Clock_And_Zone, The_Clock_Is_Replaceable) {
  seams.Clock.Value = At("2024-02-29T23:59:59");
  EXPECT_EQ(Now(), seams.Clock.Value);
  EXPECT_EQ(Today(), Encode_Date(2024, 2, 29));
  Install_Clock(nullptr);
  EXPECT_NE(Now(), seams.Clock.Value);
}

TEST_F(Clock_And_Zone, Local_Time_At_Both_Changes_Of_The_Clock) {
  const char* const to_local[][2] = {
      {"2024-01-15T12:00:00", "2024-01-15T13:00:00"}, {"2024-07-15T12:00:00", "2024-07-15T14:00:00"},
      {"2024-03-31T00:59:59", "2024-03-31T01:59:59"}, {"2024-03-31T01:00:00", "2024-03-31T03:00:00"},
      {"2024-10-27T00:30:00", "2024-10-27T02:30:00"}, {"2024-10-27T01:30:00", "2024-10-27T02:30:00"},
  };
  for (const auto& test : to_local) EXPECT_EQ(ISO_DateTime(UTC_To_Local(At(test[0]))), test[1]) << test[0];
  // An hour is skipped: 02:30 is read as 03:30. Another comes twice: the first is meant.
  const char* const to_utc[][2] = {
      {"2024-03-31T01:59:59", "2024-03-31T00:59:59"}, {"2024-03-31T02:30:00", "2024-03-31T01:30:00"},
      {"2024-03-31T03:00:00", "2024-03-31T01:00:00"}, {"2024-10-27T01:59:59", "2024-10-26T23:59:59"},
      {"2024-10-27T02:30:00", "2024-10-27T00:30:00"}, {"2024-10-27T03:00:00", "2024-10-27T02:00:00"},
  };
  for (const auto& test : to_utc) EXPECT_EQ(ISO_DateTime(Local_To_UTC(At(test[0]))), test[1]) << test[0];
}

TEST_F(Clock_And_Zone, Every_Unambiguous_Minute_Comes_Back) {
  for (const char* zone :
       {"Europe/Berlin", "America/St_Johns", "Australia/Lord_Howe", "Asia/Kathmandu", "UTC"}) {
    ASSERT_TRUE(Install_Time_Zone(zone));
    EXPECT_EQ(Time_Zone(), zone);
    for (std::int64_t minute = 0; minute < 366 * 1440; minute += 13) {
      const TDateTime utc = SubtractMins(Encode_Date(2024, 1, 1), -minute), local = UTC_To_Local(utc);
      // Of a local time that comes twice the first is meant.
      ASSERT_LE(To_Msecs(Local_To_UTC(local)), To_Msecs(utc)) << zone << ISO_DateTime(utc);
      ASSERT_EQ(CompareDates(UTC_To_Local(Local_To_UTC(local)), local), 0) << zone << ISO_DateTime(utc);
    }
  }
}

TEST_F(Clock_And_Zone, Other_Zones_And_Unknown_Ones) {
  TDateTime local = 0;
  EXPECT_TRUE(Zone_To_Local("America/New_York", At("2024-03-15T12:00:00"), local));
  EXPECT_EQ(ISO_DateTime(local), "2024-03-15T17:00:00");
  EXPECT_TRUE(Zone_To_Local("Asia/Tokyo", At("2024-01-01T03:00:00"), local));
  for (const char* name : {"Nowhere/Land", "Etc/Unknown", "GMT+3:30", " ", "Europe/Berlin\xFF"}) {
    EXPECT_FALSE(Zone_To_Local(name, 45000.0, local) || Install_Time_Zone(name)) << name;
  }
  EXPECT_FALSE(Zone_To_Local("", 45000.0, local));
  EXPECT_EQ(ISO_DateTime(local) + Time_Zone(), "2023-12-31T19:00:00Europe/Berlin");
  EXPECT_TRUE(std::isfinite(UTC_To_Local(1e300)));
}

TEST_F(Clock_And_Zone, The_System_Zone_Heeds_TZ) {
  const char* const set = std::getenv("TZ");
  const std::string before = set != nullptr ? set : "";
  setenv("TZ", "Asia/Tokyo", 1);
  EXPECT_TRUE(Install_Time_Zone(""));
  EXPECT_EQ(Time_Zone(), "Asia/Tokyo");
  if (set != nullptr)
    setenv("TZ", before.c_str(), 1);
  else
    unsetenv("TZ");
  EXPECT_TRUE(Install_Time_Zone(""));
  EXPECT_FALSE(Time_Zone().empty());
}

}  // namespace
