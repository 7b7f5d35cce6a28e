#include "Agenda.h"

#include <nlohmann/json.hpp>
#include <sstream>

#include "Reminder_Utils.h"
#include "Test_Events.h"

using namespace Kt_data_01;
using namespace Kt_util_01;
using namespace Plexidex;

namespace {

class Agenda_Test : public TDatabase_Test {
 protected:
  // One of everything on the 16th, and a set on the days around it.
  void Fill() {
    KTReminds::TNew_Event meeting = New_Event("Team meeting", Monday - 7 + Encode_Time(9, 30, 0, 0));
    meeting.Record.Location = "Room 4";
    meeting.Alarm.On = true;
    meeting.Record.Pattern.Freq = KTReminds::TFrequency::Weekly;
    meeting.Record.Pattern.Set_Flag(0);
    meeting.Record.Pattern.LastDate = Monday + 44;
    Write(meeting);
    Write(New_Event("Late", Tuesday + Encode_Time(23, 59, 59, 0)));
    KTReminds::TNew_Event paint = New_Event("\x1b[2JPaint\nit", Tuesday + Encode_Time(8, 0, 0, 0));
    paint.Record.EventType = TEntry_Type::Other;  // no holiday, though they share the number
    paint.Record.Priority = 2;
    done = Write(paint);
    KTReminds::TNew_Event salary = New_Event("Salary", Tuesday + Encode_Time(11, 0, 0, 0));
    salary.Record.User = "somebody else";
    salary.Record.Location = "Office";
    salary.Record.Private = true;
    Write(salary);
    KTReminds::TNew_Event day = New_Event("Ferien 日本", Tuesday);
    day.Record.AllDay = true;
    Write(day);
    day.Record.Title = "Tax return";
    day.Record.EventType = TEntry_Type::Task;
    Write(day);
    Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE Key = '" + done + "'");
    Run_Sql("INSERT INTO KT_Holidays (HolidayDate, Name, Country) VALUES (45307, 'Bright Day', 'Utopia')");
  }

  TAgenda_Range Range(int first, int last) {
    return {List_Books(), Encode_Date(2024, 1, first), Encode_Date(2024, 1, last)};
  }

  std::string Text(const TAgenda_Range& range) {
    std::ostringstream out;
    Write_Agenda_Text(out, range, Build_Agenda(range), false);
    return out.str();
  }

  static constexpr double Tuesday = Monday + 1;
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
  std::ostringstream out, nothing;
  Write_Agenda_Json(out, Build_Agenda(Range(16, 22)));
  EXPECT_EQ(out.str().find('\x1b'), std::string::npos);
  const auto row = [](const std::string& key, const std::string& event, const std::string& rest) {
    auto fields = nlohmann::json::parse("{" + rest + "}");
    fields["key"] = key;
    fields["event"] =
        key.empty() ? "" : Query_Text("SELECT Key FROM KT_Events WHERE Title = '" + event + "'");
    return fields;
  };
  const auto agenda = nlohmann::json::parse(out.str());
  ASSERT_EQ(agenda.size(), 7U);
  EXPECT_EQ(agenda[0], row("", "", R"_("date": "2024-01-16T00:00:00", "title": "Bright Day (Utopia)",
      "location": "", "type": "holiday", "done": false, "alarm": false, "private": false, "allday": true,
      "priority": 0, "freq": 0)_"));
  EXPECT_EQ(agenda[2]["type"], "task");
  EXPECT_EQ(agenda[3], row(done, "\x1b[2JPaint\nit", R"_("date": "2024-01-16T08:00:00",
      "title": "\u001b[2JPaint\nit", "location": "", "type": "event", "done": true, "alarm": false,
      "private": false, "allday": false, "priority": 2, "freq": 0)_"));
  EXPECT_EQ(agenda[4], row(agenda[4]["key"], "Salary", R"_("date": "2024-01-16T11:00:00", "title": "Private",
      "location": "", "type": "event", "done": false, "alarm": false, "private": true, "allday": false,
      "priority": 5, "freq": 0)_"));
  EXPECT_EQ(agenda[6], row(agenda[6]["key"], "Team meeting", R"_("date": "2024-01-22T09:30:00",
      "title": "Team meeting", "location": "Room 4", "type": "event", "done": false, "alarm": true,
      "private": false, "allday": false, "priority": 5, "freq": 2)_"));
  Write_Agenda_Json(nothing, {});
  EXPECT_EQ(nothing.str(), "[]\n");
}

TEST_F(Agenda_Test, Raw_Controls_Of_Any_Length_Stay_Out_Of_The_Terminal) {
  const std::string title = "a\u007fb\u009b31m\u202ec\u2028d";
  Write(New_Event(title + "\xFF", Tuesday + 0.5));
  EXPECT_NE(Text(Range(16, 16)).find("  12:00 PM  a?bÂ"), std::string::npos)
      << "a text that is not UTF-8 is read as Windows-1252";
  Write(New_Event(title, Tuesday + 1.5));
  EXPECT_NE(Text(Range(17, 17)).find("  12:00 PM  a?b?31m?c d\n"), std::string::npos);
  std::ostringstream out;
  Write_Agenda_Json(out, Build_Agenda(Range(17, 17)));
  for (const char* raw : {"\x7f", "\u009b"}) EXPECT_EQ(out.str().find(raw), std::string::npos);
  EXPECT_EQ(nlohmann::json::parse(out.str())[0]["title"], title);
}

}  // namespace
