#include "Agenda.h"

#include <nlohmann/json.hpp>
#include <sstream>

#include "Reminder_Utils.h"
#include "Test_Events.h"

using namespace Plexidex;

namespace {

struct Agenda_Test : TDatabase_Test {
  // One of everything on the 16th, and a set on the days around it.
  void Fill() {
    TNew_Event meeting = New_Event("Team meeting", Monday - 7 + Encode_Time(9, 30, 0, 0));
    meeting.Record.Location = "Room 4";
    meeting.Alarm.On = true;
    meeting.Record.Pattern = {TFrequency::Weekly, 1, false, 1, 0, 0, Monday + 44};
    Write(meeting);
    Write(New_Event("Late", Tuesday + Encode_Time(23, 59, 59, 0)));
    TNew_Event paint = New_Event("\x1b[2JPaint\nit", Tuesday + Encode_Time(8, 0, 0, 0));
    paint.Record.EventType = TEntry_Type::Other;  // no holiday, though they share the number
    paint.Record.Priority = 2;
    const std::string done = Write(paint);
    TNew_Event salary = New_Event("Salary", Tuesday + Encode_Time(11, 0, 0, 0));
    salary.Record.User = "somebody else";
    salary.Record.Location = "Office";
    salary.Record.Private = true;
    Write(salary);
    TNew_Event day = New_Event("Ferien 日本", Tuesday);
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
  std::string rows;
  for (const auto& entry : nlohmann::json::parse(out.str())) {
    EXPECT_EQ(entry["event"], Query_Text("SELECT max(Event) FROM KT_Events_Data WHERE Key = '" +
                                         entry["key"].get<std::string>() + "'"));
    EXPECT_EQ(entry.size(), 12U);
    for (const char* field :
         {"date", "title", "location", "type", "priority", "freq", "done", "alarm", "private", "allday"})
      rows += entry[field].dump() + (std::string(field) == "allday" ? "\n" : "|");
  }
  std::erase(rows, '"');
  EXPECT_EQ(rows,
            "2024-01-16T00:00:00|Bright Day (Utopia)||holiday|0|0|false|false|false|true\n"
            "2024-01-16T00:00:00|Ferien 日本||event|5|0|false|false|false|true\n"
            "2024-01-16T00:00:00|Tax return||task|5|0|false|false|false|true\n"
            "2024-01-16T08:00:00|\\u001b[2JPaint\\nit||event|2|0|true|false|false|false\n"
            "2024-01-16T11:00:00|Private||event|5|0|false|false|true|false\n"
            "2024-01-16T23:59:59|Late||event|5|0|false|false|false|false\n"
            "2024-01-22T09:30:00|Team meeting|Room 4|event|5|2|false|true|false|false\n");
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
