#include "User_Formats.h"

#include "Test_Seams.h"

namespace {

TEST(User_Formats, Take_Patterns_That_Can_Be_Read_Back) {
  const TTest_Seams seams;
  for (const auto& [date, time, written] : {std::tuple("dd.MM.yyyy", "HH:mm", "22.11.2026 15:05"),
                                            {"yyyy-MM-dd", "h.mm AP", "2026-11-22 3.05 PM"},
                                            {"d MMM yyyy", "H:mm", "22 Nov 2026 15:05"},
                                            {"MMMM d, yyyy", "hh:mm ap", "November 22, 2026 03:05 PM"},
                                            {"dd/mm/yyyy", "HH:mm", "22/11/2026 15:05"},
                                            // None of these counts.
                                            {"", "", "11/22/2026 3:05 PM"},
                                            {"dd/MM/yy", "HH", "11/22/2026 3:05 PM"},
                                            {"dd/yyyy", "mm:HH", "11/22/2026 3:05 PM"},
                                            {"dddd, d MMM yyyy", "HH:mm:ss", "11/22/2026 3:05 PM"},
                                            {"dd'x'MM yyyy", "HHmm AP PM", "11/22/2026 3:05 PM"},
                                            {"dMyyyy", "x", "11/22/2026 3:05 PM"}}) {
    Write_User_Formats({0, date, time});
    Apply_User_Formats();
    EXPECT_EQ(FormatDateTime("ddddd t", Encode_Date(2026, 11, 22) + 905.0 / 1440), written) << date << time;
  }
  Write_User_Formats({7, "", "HH.mm"});
  Apply_User_Formats();
  EXPECT_EQ(FormatDateTime("tt", 0.5), "12.00.00");
  EXPECT_EQ(Format_Settings().FirstDayOfWeek, 7);
  EXPECT_EQ(Locale_Formats().FirstDayOfWeek, 1);
}

}  // namespace
