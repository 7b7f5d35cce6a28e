#include "Agenda.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "Kt_util_01.h"
#include "Reminder_Utils.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"

using namespace Kt_data_01;
using namespace Kt_util_01;
using namespace Plexidex;

namespace {

class Agenda_Test : public testing::Test {
 protected:
  std::string Add(const std::string& title, TDateTime date,
                  const std::function<void(KTReminds::TNew_Event&)>& change = {}) {
    KTReminds::TNew_Event event = New_Event(title, date);
    if (change) change(event);
    return Write(event);
  }

  void Add_Holiday(TDateTime day, const std::string& name, const std::string& country) {
    In_Update([&] {
      TTable holidays("KT_Holidays");
      holidays.Insert();
      holidays.SetFields({day, name, country});
      PostUpdate(holidays);
    });
  }

  // One of everything on the 16th, and a set on the days around it.
  void Fill() {
    const TDateTime day = Encode_Date(2024, 1, 16);
    Add("Team meeting", Encode_Date(2024, 1, 8) + Encode_Time(9, 30, 0, 0), [](KTReminds::TNew_Event& e) {
      e.Record.Location = "Room 4";
      e.Alarm.On = true;
      e.Record.Pattern.Freq = KTReminds::TFrequency::Weekly;
      e.Record.Pattern.Set_Flag(0);
      e.Record.Pattern.LastDate = Encode_Date(2024, 2, 28);
    });
    Add("Late", day + Encode_Time(23, 59, 59, 0));
    done = Add("\x1b[2JPaint\nit", day + Encode_Time(8, 0, 0, 0), [](KTReminds::TNew_Event& e) {
      e.Record.EventType = TEntry_Type::Other;  // no holiday, though they share the number
      e.Record.Priority = 2;
    });
    Add("Salary", day + Encode_Time(11, 0, 0, 0), [](KTReminds::TNew_Event& e) {
      e.Record.User = "somebody else";
      e.Record.Location = "Office";
      e.Record.Private = true;
    });
    Add("Ferien 日本", day, [](KTReminds::TNew_Event& e) { e.Record.AllDay = true; });
    Add("Tax return", day, [](KTReminds::TNew_Event& e) {
      e.Record.AllDay = true;
      e.Record.EventType = TEntry_Type::Task;
    });
    Add_Holiday(day, "Bright Day", "Utopia");
    In_Update([this] {
      TTable occurrences(Events_Data);
      occurrences.Set_Index("Key");
      ASSERT_TRUE(occurrences.FindKey({done}));
      occurrences.Edit();
      occurrences.Set(occurrences.Field("Actioned"), true);
      PostUpdate(occurrences);
    });
  }

  TAgenda_Range Range(int first, int last) {
    return {List_Books(), Encode_Date(2024, 1, first), Encode_Date(2024, 1, last)};
  }

  std::string Text(const TAgenda_Range& range) {
    std::ostringstream out;
    Write_Agenda_Text(out, range, Build_Agenda(range), false);
    return out.str();
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
  std::string done;
};

TEST_F(Agenda_Test, Text_Is_Aligned_And_Ordered_And_Harmless) {
  Fill();
  EXPECT_EQ(Text(Range(15, 22)),
            "Monday, January 15, 2024\n"
            "  9:30 AM   Team meeting, Room 4  weekly, reminder\n"
            "\n"
            "Tuesday, January 16, 2024\n"
            "  holiday   Bright Day (Utopia)\n"
            "  all day   Ferien 日本\n"
            "  due       Tax return            Not Started\n"
            "  8:00 AM   ?[2JPaint it          done\n"
            "  11:00 AM  Private\n"
            "  11:59 PM  Late\n"
            "\n"
            "Monday, January 22, 2024\n"
            "  9:30 AM   Team meeting, Room 4  weekly, reminder\n");
  EXPECT_EQ(Text(Range(17, 18)), "No entries from 1/17/2024 to 1/18/2024.\n");

  In_Update([] { Create_Book("Work"); });
  EXPECT_NE(Text(Range(16, 16)).find("  due       Tax return           Not Started, Home\n"),
            std::string::npos)
      << "with several books each entry names its own";
}

TEST_F(Agenda_Test, Json_Tells_What_The_Lists_Do_Not) {
  Fill();
  std::ostringstream out;
  Write_Agenda_Json(out, Build_Agenda(Range(16, 22)));
  EXPECT_EQ(out.str().find('\x1b'), std::string::npos);
  const auto agenda = nlohmann::json::parse(out.str());
  ASSERT_EQ(agenda.size(), 7U);

  const auto& holiday = agenda[0];
  EXPECT_EQ(holiday["type"], "holiday");
  EXPECT_EQ(holiday["key"], "");
  EXPECT_EQ(holiday["allday"], true);
  EXPECT_EQ(agenda[2]["type"], "task");
  EXPECT_EQ(agenda[2]["title"], "Tax return");

  const auto& painted = agenda[3];
  EXPECT_EQ(painted["type"], "event");
  EXPECT_EQ(painted["key"], done);
  EXPECT_EQ(painted["title"], "\x1b[2JPaint\nit");
  EXPECT_EQ(painted["date"], "2024-01-16T08:00:00");
  EXPECT_EQ(painted["done"], true);
  EXPECT_EQ(painted["priority"], 2);
  EXPECT_EQ(painted["alarm"], false);

  const auto& secret = agenda[4];
  EXPECT_EQ(secret["title"], "Private");
  EXPECT_EQ(secret["location"], "");
  EXPECT_EQ(secret["private"], true);

  const auto& meeting = agenda[6];
  EXPECT_EQ(meeting["freq"], 2);
  EXPECT_EQ(meeting["alarm"], true);
  EXPECT_EQ(meeting["location"], "Room 4");
  EXPECT_EQ(meeting["event"], Query_Text("SELECT Key FROM KT_Events WHERE Title = 'Team meeting'"));
  EXPECT_EQ(meeting["private"], false);

  std::ostringstream nothing;
  Write_Agenda_Json(nothing, {});
  EXPECT_EQ(nothing.str(), "[]\n");
}

TEST_F(Agenda_Test, Raw_Controls_Of_Any_Length_Stay_Out_Of_The_Terminal) {
  Add("a\x7f"
      "b\xC2\x9B"
      "31m\xE2\x80\xAE"
      "c\xE2\x80\xA8"
      "d\xFF",
      Encode_Date(2024, 1, 16) + 0.5);
  EXPECT_NE(Text(Range(16, 16)).find("  12:00 PM  a?bÂ"), std::string::npos)
      << "a text that is not UTF-8 is read as Windows-1252";
  Add("a\x7f"
      "b\xC2\x9B"
      "31m\xE2\x80\xAE"
      "c\xE2\x80\xA8"
      "d",
      Encode_Date(2024, 1, 17) + 0.5);
  EXPECT_NE(Text(Range(17, 17)).find("  12:00 PM  a?b?31m?c d\n"), std::string::npos);

  std::ostringstream out;
  Write_Agenda_Json(out, Build_Agenda(Range(17, 17)));
  EXPECT_EQ(out.str().find('\x7f'), std::string::npos);
  EXPECT_EQ(out.str().find("\xC2\x9B"), std::string::npos);
  EXPECT_EQ(nlohmann::json::parse(out.str())[0]["title"],
            "a\x7f"
            "b\xC2\x9B"
            "31m\xE2\x80\xAE"
            "c\xE2\x80\xA8"
            "d");
}

}  // namespace
