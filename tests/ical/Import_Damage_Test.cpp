#include <algorithm>
#include <cstdlib>
#include <random>

#include "Import_Fixture.h"

namespace {

struct Import_Damage : Import_Fixture {
  // The sentence of the refusal; "" when the file was taken.
  std::string Try(const std::string& text) const {
    try {
      Import_Text(text);
      return {};
    } catch (const EImport_Error& e) {
      return e.what();
    }
  }
  static std::string Nested(int depth) {
    std::string begin, end;
    for (int i = 0; i < depth; ++i) {
      begin += "BEGIN:X-IN\r\n";
      end += "END:X-IN\r\n";
    }
    return Calendar(begin + end).erase(17, 13);  // VERSION counts as a line
  }
};

TEST_F(Import_Damage, What_Is_No_Calendar_Is_Refused_With_Its_Place) {
  const std::string before = Dump();
  const struct {
    std::string Text, Why;
  } cases[] = {
      {"", "\" is empty."},
      {" \r\n\r\n", "\" is empty."},
      {"Dear all,\r\nplease", "\" is no calendar: line 1 does not begin a calendar."},
      {std::string("\177ELF\0\0\1\n", 8), "\" is no calendar: line 1 holds binary data."},
      {"\r\nBEGIN:VEVENT\r\nEND:VEVENT\r\n", "\" is no calendar: line 2 begins a VEVENT outside of one."},
      {"BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:a\r\n", "\" is cut short: the VEVENT of line 2 has no end."},
      {"BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nEND:VEV",
       "\" is cut short: line 3 ends a VEV where the VEVENT of line 2 is open."},
      {"BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nX:a\r\n b\r\nEND:VCALENDAR\r\n",
       "\" is damaged: line 5 ends a VCALENDAR where the VEVENT of line 2 is open."},
      {"BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\nEND:VCALENDAR\r\n",
       "\" is damaged: line 3 ends a VCALENDAR that never began."},
      {"BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nBEGIN:VEVENT\r\nEND:VEVENT\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n",
       "\" is damaged: line 3 begins a VEVENT inside the VEVENT of line 2."},
      // An end that only libical takes for one: the start would be outside of the event.
      {"BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nEND "
       ":VEVENT\r\nDTSTART:20240101\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n",
       "\" is damaged: the component of line 2 cannot be read as it stands."},
      // It would overflow the stack of what reads it.
      {Nested(35'000), "\" is damaged: line 33 begins a X-IN inside of 32 other components."},
      {"BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\nrest", "\" is damaged: line 3 follows the end of the calendar."},
  };
  for (const auto& test : cases) EXPECT_EQ(Try(test.Text), '"' + folder.File("in.ics") + test.Why);
  for (const char* none : {"missing.ics", "."})
    EXPECT_THROW(Import_Calendar(folder.File(none), options), EImport_Error);
  EXPECT_EQ(Dump(), before);
  EXPECT_EQ(
      Try("\uFEFFbegin:vcalendar\nBEGIN:VEVENT\nUID:x\nDTSTART:20240101\nEND:VEVENT\nEnd:VCALENDAR \n\n" +
          Data("everything")),
      "");
  EXPECT_GT(Query_Number("SELECT count(*) FROM KT_Events"), 5);
}

TEST_F(Import_Damage, Lines_Of_Any_Length_And_End_Are_Read) {
  const std::string start = "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:x\nDTSTART:20240101T090000\nDESCRIPTION:";
  const std::string end = "\nEND:VEVENT\nEND:VCALENDAR\n";
  std::string notes;
  while (notes.size() < 1'000'000) notes += "grün " + std::to_string(notes.size());
  EXPECT_EQ(Try(start + notes + end), "");
  EXPECT_TRUE(Query_Text("SELECT Notes FROM KT_Events") == notes);

  // Cut between characters; a UID as long is still the same at the next import.
  for (int i = 0; i < 200'000; ++i) notes += "ü";
  const std::string too_long = Event("UID:" + notes + "|DTSTART:20240101T090000|SUMMARY:x" + notes +
                                     "|LOCATION:" + notes + "|DESCRIPTION:" + notes);
  const std::string rest = " KB, the most that an entry holds";
  const auto report = Import(too_long);
  ASSERT_EQ(report.Left_Out.size(), 3u);
  EXPECT_EQ(report.Left_Out[0].Why, "its title was cut to 64" + rest);
  EXPECT_EQ(report.Left_Out[2].Why, "its description was cut to 1024" + rest);
  EXPECT_LT(report.Left_Out[2].What.size(), 201u);
  EXPECT_EQ(Query_Number("SELECT length(CAST(Notes AS BLOB)) FROM KT_Events WHERE Location <> ''") / 2,
            1 << 19);
  EXPECT_TRUE(Is_Sound());
  EXPECT_EQ(Told(Import(too_long)), "read 1, unchanged 1");

  std::string returns = start + "old" + end;
  std::replace(returns.begin(), returns.end(), '\n', '\r');
  EXPECT_EQ(Try(returns), "");
  EXPECT_EQ(Query_Text("SELECT Notes FROM KT_Events WHERE Location = ''"), "old");
}

TEST_F(Import_Damage, A_File_Cut_Short_Anywhere_Is_Refused_Whole) {
  const std::string sample = Data("everything"), before = Dump();
  for (std::size_t length = 0; length + 2 < sample.size(); length += length % 50 == 49 ? 1 : 7) {
    const std::string why = Try(sample.substr(0, length));
    ASSERT_NE(why, "") << "cut after " << length;
    ASSERT_EQ(Dump(), before) << "cut after " << length;
  }
  EXPECT_EQ(Try(sample), "");
}

TEST_F(Import_Damage, Damaged_Files_Leave_The_Store_Sound) {
  std::istringstream pieces(
      "BEGIN:VEVENT\r\n|END:VEVENT\r\n|RRULE:FREQ=DAILY\r\n|DTSTART:|;|:|\r\n|9999|-|\xFF\xC3|COUNT=0;|"
      "INTERVAL=32767;|BYMONTHDAY=-31;|BYSETPOS=2;|FREQ=SECONDLY;|BYYEARDAY=366;|X-PLEXIDEX-SOUND:x|20240229|"
      "T250000Z|PT|TZID=Office|\\|\"");
  std::vector<std::string> inserted;
  for (std::string piece; std::getline(pieces, piece, '|');) inserted.push_back(piece);
  const int rounds = std::getenv("KT_LONG_TESTS") != nullptr ? 15'000 : 300;
  options.Has_Until = true;
  options.Until = Encode_Date(2024, 12, 31);
  const std::string everything = Data("everything");
  int taken = 0, refused = 0;
  for (int round = 0; round < rounds; ++round) {
    if (round % 200 == 0) {
      // A damaged UID is a new one, so the store would grow and the rounds slow down.
      Run_Sql(
          "DELETE FROM KT_Alarms; DELETE FROM KT_Alerts; DELETE FROM KT_Events_Data; DELETE FROM KT_Events;"
          "DELETE FROM KT_Imports; DELETE FROM KT_Import_Events");
      database.Reopen();
    }
    std::mt19937 random(static_cast<unsigned>(round));
    std::string text = everything;
    for (auto changes = 1 + random() % 6; changes > 0; --changes) {
      const std::size_t at = random() % text.size();
      switch (random() % 4) {
        case 0:
          text[at] = static_cast<char>(random() % 256);
          break;
        case 1:
          text.erase(at, 1 + random() % 20);
          break;
        case 2:
          text.insert(at, inserted[random() % inserted.size()]);
          break;
        default:
          text.insert(at, text.substr(random() % text.size(), random() % 60));
      }
    }
    const std::string before = Dump();
    if (Try(text).empty()) {
      ++taken;
    } else {
      ++refused;
      ASSERT_EQ(Dump(), before) << "round " << round;
    }
    ASSERT_TRUE(Is_Sound()) << "round " << round;
    ASSERT_FALSE(Update_Is_Open()) << "round " << round;
  }
  EXPECT_GT(taken, rounds / 10);
  EXPECT_GT(refused, rounds / 10);
}

TEST_F(Import_Damage, What_The_Progress_Throws_Undoes_All_And_Comes_Through) {
  struct TCancel : TProgress_Bar {
    void Set_Max(std::int64_t) override { ++phase; }
    void Set_Position(std::int64_t position) override {
      if (phase == 3 && position == 3) throw std::string("cancelled");
    }
    int phase = 0;
  } cancel;
  const std::string before = Dump();
  options.Progress = &cancel;
  EXPECT_THROW(Import_Text(Data("everything")), std::string);
  EXPECT_EQ(Dump(), before);
  EXPECT_TRUE(seams.Prompts.Said.empty());
}

TEST_F(Import_Damage, A_Book_That_Another_Program_Made_Meanwhile_Is_Used) {
  // The first step comes after the books have been looked at.
  struct TOther : TProgress_Bar {
    void Set_Max(std::int64_t) override {
      if (List_Books().empty()) In_Update([] { Create_Book("Theirs"); });
    }
    void Set_Position(std::int64_t) override {}
  } other;
  In_Update([&] { Delete_Book(database.Book().Key); });
  options.Progress = &other;
  Import(Event("UID:a|DTSTART:20240105T100000"));
  EXPECT_EQ(Query_Rows("BookName", "KT_Books b JOIN KT_Events_Data d ON d.Book = b.Key"), "Theirs");
}

TEST_F(Import_Damage, A_Database_That_Refuses_Or_Fails_Keeps_Nothing) {
  seams.Prompts.Answer_All = Answer_No;
  const std::string before = Dump(), refusal = "Nothing was imported from";
  database.Reopen_Read_Only();
  EXPECT_NE(Try(Data("everything")).find(refusal), std::string::npos);
  EXPECT_EQ(seams.Prompts.Notices.size(), 1u);

  database.Reopen({.Max_Pages = Query_Number("PRAGMA page_count") + 12});
  const std::string small = Event("UID:short|DTSTART:20240101T090000"),
                    large =
                        Event("UID:long|SUMMARY:Long|DTSTART:20240101T090000|RRULE:FREQ=DAILY;COUNT=5000");
  EXPECT_NE(Try(Calendar(small + large)).find(refusal), std::string::npos);
  EXPECT_EQ(seams.Prompts.Said.size(), 1u);
  EXPECT_FALSE(Update_Is_Open());
  EXPECT_EQ(Dump(), before);
  EXPECT_EQ(Try(Calendar(small)), "");
}

}  // namespace
