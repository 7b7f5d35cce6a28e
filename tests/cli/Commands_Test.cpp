#include <algorithm>
#include <filesystem>
#include <regex>

#include "Commands_Fixture.h"
#include "Folders.h"
#include "Version.h"

namespace {

// Into Family/Near.
void Put_First_Contact_Into_A_Folder() {
  const std::string book = List_Books().front().Key,
                    family = Create_Contact(book, "Family", {}, Contact_Type_Folder);
  Move_To_Folder(List_Contacts(book, false).front().Key,
                 Create_Contact(book, "Near", family, Contact_Type_Folder));
}

TEST_F(Commands_Test, Help_On_Every_Level) {
  const TResult top = Run_With({"--help"});
  EXPECT_EQ(top.Status, 0);
  for (const std::string command : {"import", "agenda", "done", "undone", "export", "print", "contacts",
                                    "search", "books", "check", "backup", "restore", "holidays", "remind"}) {
    EXPECT_NE(top.Out.find("  " + command), std::string::npos);
    const TResult result = Run_With({command, "--help"});
    EXPECT_EQ(std::to_string(result.Status) + result.Err, "0");
    EXPECT_NE(result.Out.find("plexidex " + command), std::string::npos) << result.Out;
  }
  EXPECT_EQ(Run_With({"--version"}).Out, std::string("plexidex ") + Plexidex::Version() + "\n");
}

TEST_F(Commands_Test, Reminders_Are_Written_Once) {
  On("a.db", {"import", Write("a.ics")});
  EXPECT_EQ(On("a.db", {"remind", "--once"}).Out, "");
  seams.Clock.Value += 14;
  const TResult told = On("a.db", {"remind", "--once"});
  EXPECT_NE(told.Out.find("Team meeting"), std::string::npos) << told.Out;
  EXPECT_EQ(std::count(told.Out.begin(), told.Out.end(), '\n'), 1);
  EXPECT_EQ(On("a.db", {"remind", "--once"}).Out, "");
}

TEST_F(Commands_Test, Mistakes_Give_One_Sentence) {
  ASSERT_EQ(On("a.db", {"books", "--add", "Home"}).Out, "Home  0 entries\n");
  ASSERT_EQ(On("a.db", {"books", "--add", "Work"}).Status, 0);
  const struct {
    std::vector<std::string> Args;
    std::string Sentence;
  } cases[] = {
      {{}, "No command was given; --help names them all."},
      {{"frobnicate"}, "There is no command \"frobnicate\"; --help names them all."},
      {{"agenda", "--frob"}, "There is no option \"--frob\"; --help names them all."},
      {{"books", "Home"}, "The command books has no use for \"Home\"."},
      {{"done"}, "The command done needs a KEY."},
      {{"import"}, "The command import needs a FILE.ics or FILE.vcf."},
      {{"import", "x.ics", "--book"}, "--book needs a value."},
      {{"agenda", "--from", "today", "--from", "tomorrow"}, "--from was given more than once."},
      {{"import", "x.ics", "--holidays"}, "--holidays requires --country."},
      {{"agenda", "--days", "2", "--to", "2024-01-01"}, "--to excludes --days."},
      {{"agenda", "--days", "-1"}, "--days: \"-1\" is not a number of days from 1 to 3652059."},
      {{"import", "x.ics", "--limit", "0"}, "--limit: \"0\" is not a number of entries from 1 to 100000000."},
      {{"agenda", "--format", "xml"}, "--format: \"xml\" is neither text nor json."},
      {{"agenda", "--from", "2024-02-30"},
       "--from: \"2024-02-30\" is not a date such as 2024-01-15, 1/15/2024 or today."},
      {{"agenda", "--to", "yesterday"}, "The agenda would end on 1/14/2024, before it begins on 1/15/2024."},
      {{"import", "x.ics", "--book", "Wrok"}, "There is no book \"Wrok\"; the books are \"Home\", \"Work\"."},
      {{"export", "x.ics", "--book", "Wrok"}, "There is no book \"Wrok\"; the books are \"Home\", \"Work\"."},
      {{"export", "x.vcf", "--vcard", "2"}, "--vcard: \"2\" is neither 3 nor 4."},
      {{"export", "x.ics", "--vcard", "3"}, "--vcard belongs to a FILE.vcf."},
      {{"contacts", "--book", "Wrok"}, "There is no book \"Wrok\"; the books are \"Home\", \"Work\"."},
      {{"print", "--pdf", "x.pdf"}, "The command print needs a VIEW."},
      {{"print", "--view", "week"}, "The command print needs a FILE.pdf."},
      {{"print", "--view", "year", "--pdf", "x.pdf"},
       "--view: \"year\" is none of day, week, month and list."},
      {{"print", "--view", "day", "--pdf", "x.pdf", "--paper", "A5"},
       "--paper: \"A5\" is neither A4 nor Letter."},
      {{"print", "--view", "day", "--pdf", "x.pdf", "--landscape", "--portrait"},
       "--landscape excludes --portrait."},
      {{"print", "--view", "day", "--pdf", "x.pdf", "--to", "today"},
       "--from and --to belong to --view list; a day takes --date."},
      {{"print", "--view", "list", "--pdf", "x.pdf", "--date", "today"},
       "A list takes --from and --to instead of --date."},
      {{"print", "--view", "list", "--pdf", "x.pdf", "--from", "today", "--to", "yesterday"},
       "The list would end on 1/14/2024, before it begins on 1/15/2024."},
      {{"print", "--view", "list", "--pdf", "x.pdf", "--contact", "Anna"}, "There is no contact \"Anna\"."},
      {{"print", "--view", "list", "--pdf", "x.pdf"}, "This program cannot print."},
      {{"books", "--add", "Home"}, "There is a book \"Home\" already."},
      {{"search"}, "The command search needs a CRITERION, --filter, --folder, --list or --delete."},
      {{"search", "Date", "--", "Today"},
       "The command search has no use for \"Today\"; each criterion stands in quotes."},
      {{"search", "--", "-Date -- Today"},
       "\"-Date\" is no field to search for; what comes nearest is \"Date\", \"Event Date\" or \"Holiday "
       "Date\"."},
      {{"search", "Date -- Today", "--find", "notes"},
       "--find: \"notes\" is none of contacts, calendar and tasks."},
      {{"search", "Contact Name -- Contains x", "--find", "calendar"},
       "\"Contact Details: Contact Name  --  Contains:  x\" cannot be asked of the calendar."},
      {{"search", "Date -- Today", "Any Field -- Is Blank"},
       "\"By Field Type: Any Field  --  Is Blank\" cannot be asked of the calendar."},
      {{"search", "Contact Name -- Is Blank", "--folder", "Club"},
       "There is no folder \"Club\"; there are none yet."},
      {{"search", "--no-subfolders"}, "--no-subfolders requires --folder."},
      {{"search", "--list", "--save", "x"}, "--save excludes --list."},
      {{"search", "--filter", "x", "Date -- Today"}, "Criteria do not go with --filter, --list or --delete."},
      {{"search", "--filter", "x"}, "There is no filter \"x\"; there are none yet."},
      {{"search", "--filter", "x", "--shared"}, "There is no shared filter \"x\"; there are none yet."},
      {{"search", "--delete", "x"}, "There is no filter \"x\"; there are none yet."},
      {{"search", "--save", "<x", "Date -- Today"}, "--save: \"<x\" is no name for a filter."},
      {{"search", "--save", "", "Date -- Today"}, "--save: \"\" is no name for a filter."},
      {{"holidays"}, "No country is chosen in the preferences; --country names one."},
      {{"holidays", "--country", "Atlantis"},
       "--country: the holidays of \"Atlantis\" are not known; known are those of AU, AT, BE, BR, CA, CN, "
       "DK, "
       "EE, FI, FR, DE, GR, IE, IL, IT, JP, NL, NZ, NO, PL, PT, KR, ES, SE, CH, TR, GB, US."},
      {{"holidays", "--country", "AT", "--year", "1949"},
       "--year: \"1949\" is not a year from 1950 to 2099."},
      {{"done", "abc"}, "There is no entry \"abc\"; the ending of a key needs at least 6 characters."},
      {{"done", "abcdef"}, "There is no entry \"abcdef\"."},
  };
  for (const auto& [args, sentence] : cases) {
    const TResult result = On("a.db", args);
    EXPECT_EQ(result.Status, 1) << sentence;
    EXPECT_EQ(result.Out + result.Err, sentence + "\n");
  }
}

TEST_F(Commands_Test, Holidays_Of_Several_Countries_Without_A_Database) {
  std::string said =
      On("a.db", {"holidays", "--country", "ch", "--country", "Portugal", "--year", "1978"}).Out;
  EXPECT_EQ(said.substr(0, said.find("\nFri")),
            "Sun 1/1/1978    New Year's Day               Switzerland\n"
            "Sun 1/1/1978    New Year's Day               Portugal");
  said = On("a.db", {"holidays", "--country", "GB", "--format", "json"}).Out;
  EXPECT_EQ(nlohmann::json::parse(said).at(1).dump(),
            R"({"code":"GB","country":"United Kingdom","date":"2024-03-29","name":"Good Friday"})");
  EXPECT_FALSE(std::filesystem::exists(folder.File("a.db")));
}

TEST_F(Commands_Test, A_Backup_Is_Made_And_Restored) {
  On("a.db", {"books", "--add", "Home"});
  const std::string backup = folder.File("backups/a-2024-01-15-1200.db");
  EXPECT_EQ(On("a.db", {"backup"}).Out, "Backup made: " + backup + "\n");
  On("a.db", {"books", "--add", "Work"});
  EXPECT_EQ(On("a.db", {"restore", backup}).Out,
            "Restored: " + folder.File("a.db") +
                "\nWhat was there before is kept: " + folder.File("a-replaced-2024-01-15-1200.db") + "\n");
  EXPECT_EQ(On("a.db", {"books"}).Out, "Home  0 entries\n");
  EXPECT_EQ(On("a.db", {"restore", folder.File("b.db")}).Err,
            "There is no file \"" + folder.File("b.db") + "\".\n");
}

TEST_F(Commands_Test, Reading_A_Named_Database_Does_Not_Make_It) {
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"agenda"}, {"done", "abcdef"}, {"undone", "abcdef"}, {"export", "x.ics"}, {"books"}, {"check"}}) {
    EXPECT_EQ(On("none.db", args).Err, "There is no database \"" + folder.File("none.db") + "\".\n");
    EXPECT_FALSE(std::filesystem::exists(folder.File("none.db")));
  }
  // Nothing to import is no reason to make a book.
  Run_With({"import", Write("empty.ics", "BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n")});
  EXPECT_EQ(Run_With({"books"}).Out, "There are no books yet.\n");
  EXPECT_TRUE(std::filesystem::exists(folder.File("home/plexidex/plexidex.db")))
      << "the user's own database is made on first use";
}

TEST_F(Commands_Test, Import_Mark_Export_And_Import_Elsewhere) {
  const TResult imported = On("a.db", {"import", Write("a.ics")});
  EXPECT_EQ(
      std::to_string(imported.Status) + imported.Out,
      "2" + folder.File("a.ics") +
          ": 4 components read; 2 recurring sets, 0 single events and 1 task written, 9 entries in all; "
          "0 unchanged, 0 replaced, 1 not used\n  not used: Learn to fly (someday): is neither an event nor "
          "a task, but VJOURNAL\n");

  auto agenda = Agenda("a.db");
  ASSERT_EQ(agenda.size(), 5U + 3U + 1U);
  auto &meeting = agenda[0], &task = *std::find_if(agenda.begin(), agenda.end(),
                                                   [](const auto&one) { return one["type"] == "task"; });
  const std::string task_key = task["key"];
  EXPECT_EQ(On("a.db", {"done", meeting["key"]}).Out, "Done: Team meeting, 1/8/2024 9:30 AM\n");
  EXPECT_EQ(On("a.db", {"done", task_key.substr(task_key.size() - 8)}).Out, "Done: Tax return, 1/18/2024\n");
  meeting["done"] = task["done"] = true;
  meeting["alarm"] = false;
  EXPECT_EQ(Agenda("a.db"), agenda);

  EXPECT_EQ(On("a.db", {"export", folder.File("b.ics")}).Status, 0);
  EXPECT_EQ(On("b.db", {"import", folder.File("b.ics")}).Status, 0);
  auto elsewhere = Agenda("b.db");
  for (auto* each : {&agenda, &elsewhere}) {
    for (auto& entry : *each) entry["key"] = entry["event"] = "differs between databases";
  }
  EXPECT_EQ(elsewhere, agenda);

  EXPECT_EQ(On("a.db", {"undone", task_key}).Out, "Not done: Tax return, 1/18/2024\n");
  EXPECT_NE(On("a.db", {"agenda", "--from", "1/18/2024", "--days", "1"}).Out.find("Not Started"),
            std::string::npos);
  EXPECT_EQ(On("a.db", {"check"}).Out, "The database is sound: 3 events, 9 occurrences, 5 alarms.\n");
  EXPECT_EQ(On("a.db", {"books"}).Out, "My Calendar  9 entries\n");
}

TEST_F(Commands_Test, Contacts_Come_In_Are_Listed_And_Go_Out) {
  const std::string cards =
      "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:J\xC3\xB6rg \x1b[2J\r\nTEL;TYPE=home:030 1\r\nTEL;TYPE=cell:0160 "
      "2\r\n"
      "EMAIL:j@x\r\nADR:;;Lane "
      "1;Town;;123;\r\nCATEGORIES:Club,Old\r\nEND:VCARD\r\nBEGIN:VCARD\r\nFN:Works\r\n"
      "ORG:Works\r\nEND:VCARD\r\n";
  // By its content, whatever its name.
  const TResult in = On("a.db", {"import", Write("cards.txt", cards + "stray\r\n")});
  EXPECT_EQ(std::to_string(in.Status) + in.Out.substr(in.Out.find(": ")),
            "2: 3 cards read; 2 contacts added, 0 updated, 0 birthdays written; 0 unchanged, 1 not used\n  "
            "not used: line "
            "14: belongs to no card\n");
  Open_Database(folder.File("a.db"), TDatabase::TMode::Must_Exist);
  In_Update(Put_First_Contact_Into_A_Folder);
  Close_Database();
  EXPECT_EQ(On("a.db", {"contacts"}).Out,
            "Name       Kind     Telephones     E-mail  Address           Folder       Categories\n"
            "Jörg ?[2J  Person   030 1, 0160 2  j@x     Lane 1, 123 Town  Family/Near  Club, Old\n"
            "Works      Company\n");
  auto listed = nlohmann::json::parse(On("a.db", {"contacts", "jörg", "0301", "--format", "json"}).Out);
  ASSERT_EQ(listed.size(), 1U);
  listed[0].erase("key");
  EXPECT_EQ(
      listed[0].dump(),
      R"({"address":"Lane 1\n123 Town","book":"My Calendar","categories":["Club","Old"],"emails":[{"address":"j@x",)"
      R"("label":"E-mail"}],"folder":"Family/Near","kind":"Person","name":"Jörg \u001b[2J","telephones":[{"label":)"
      R"("Home","number":"030 1"},{"label":"Mobile","number":"0160 2"}]})");
  EXPECT_EQ(On("a.db", {"contacts", "nobody"}).Out, "No contacts.\n");
  EXPECT_NE(On("a.db", {"export", folder.File("b.vcf")}).Out.find(": 2 contacts written\n"),
            std::string::npos);
  EXPECT_EQ(File_Content(folder.File("b.vcf")), cards);
}

TEST_F(Commands_Test, Searches_Are_Run_Kept_And_Run_Again) {
  On("a.db", {"import", Write("a.ics")});
  On("a.db", {"import", Write("a.vcf",
                              "BEGIN:VCARD\r\nFN:J\xC3\xB6rg\r\nCATEGORIES:Club\r\nEND:VCARD\r\n"
                              "BEGIN:VCARD\r\nFN:Ann\r\nCATEGORIES:Club\r\nEND:VCARD\r\n"
                              "BEGIN:VCARD\r\nFN:Works\r\nEND:VCARD\r\n")});
  On("a.db", {"books", "--add", "Other"});
  Open_Database(folder.File("a.db"), TDatabase::TMode::Must_Exist);
  In_Update([] {
    Put_First_Contact_Into_A_Folder();
    Create_Contact(List_Books().front().Key, "Near", {}, Contact_Type_Folder);
  });
  Close_Database();
  const std::string club = "category membership is a member of club";
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{club, "Contact Name -- Doesn't Contain \xC3\xB6"},
       "Name  Kind    Folder       Categories\nAnn   Person  Family/Near  Club\n"},
      {{"--folder", "family", "--no-subfolders"}, "No contacts.\n"},
      {{"--folder", "FAMILY/near"},
       "Name  Kind    Folder       Categories\nAnn   Person  Family/Near  Club\n"},
      {{"Date -- In the next 3 days", "Description -- Contains tR"},
       "Wednesday, January 17, 2024\n  all day  Trip  daily, private, My Calendar\n\n"
       "Thursday, January 18, 2024\n  all day  Trip  daily, private, My Calendar\n"},
      {{"Date -- In the next 3 days", "--find", "tasks", "--book", "My Calendar"},
       "Thursday, January 18, 2024\n  due  Tax return  In Progress\n"},
      {{"Task Status -- Cancelled"}, "No tasks.\n"},
      {{club, "--save", "Members"}, "Saved: Members, 1 criterion\n"},
      {{club, "--save", "Members"}, "There is a filter \"Members\" already; --delete removes it.\n"},
      {{"--filter", "Members", "--folder", "Family", "--shared", "--save", "Near"},
       "There is no shared filter \"Members\"; there are none yet.\n"},
      {{club, "Contact Name -- Equals Ann (match case)", "--folder", "Family", "--shared", "--save", "Near"},
       "Saved: Near, 2 criteria\n"},
      {{"--filter", "Near"}, "Name  Kind    Folder       Categories\nAnn   Person  Family/Near  Club\n"},
      {{"--list"},
       "Members (My Calendar)\n  Contact Details: Category Membership  --  Is a Member of:  Club\n"
       "Near (My Calendar, shared, Family)\n  Contact Details: Category Membership  --  Is a Member of:  "
       "Club\n"
       "  Contact Details: Contact Name  --  Equals:  Ann (match case)\n"},
      {{"--list", "--shared", "--format", "json"},
       "[\n{\"name\":\"Near\",\"book\":\"My Calendar\",\"shared\":true,\"folder\":\"Family\","
       "\"subfolders\":true,\"criteria\":[\"Contact Details: Category Membership  --  Is a Member of:  "
       "Club\",\"Contact Details: Contact Name  --  Equals:  Ann (match case)\"]}\n]\n"},
      {{"--delete", "Near"}, "The filter \"Near\" is shared; delete it with --shared.\n"},
      {{"--delete", "Near", "--shared"}, "Deleted: Near\n"},
      {{"--filter", "Near"}, "There is no filter \"Near\"; the filters are \"Members\".\n"}};
  for (const auto& [args, expected] : cases) {
    std::vector<std::string> all{"search"};
    all.insert(all.end(), args.begin(), args.end());
    const TResult result = On("a.db", all);
    EXPECT_EQ(result.Out + result.Err, expected);
    EXPECT_EQ(result.Status, result.Err.empty() ? 0 : 1) << expected;
  }
  EXPECT_EQ(
      nlohmann::json::parse(On("a.db", {"search", "--filter", "Members", "--format", "json"}).Out).size(),
      2U);
  const auto tasks = nlohmann::json::parse(
      On("a.db", {"search", "Task Description -- Equals Tax return", "--format", "json"}).Out);
  ASSERT_EQ(tasks.size(), 1U);
  auto agenda = Agenda("a.db");
  EXPECT_NE(std::find(agenda.begin(), agenda.end(), tasks[0]), agenda.end()) << tasks;

  Open_Database(folder.File("a.db"), TDatabase::TMode::Must_Exist);
  Run_Sql("UPDATE KT_Filters SET Settings = x'0100'");
  Close_Database();
  const TResult damaged = On("a.db", {"search", "--filter", "Members"});
  EXPECT_EQ(
      std::to_string(damaged.Status) + damaged.Out + damaged.Err,
      "1Load Search Filter: The Search Filter \"Members\" cannot be loaded: its stored settings are cut "
      "short.\n");
}

TEST_F(Commands_Test, A_Refused_File_Keeps_No_Other_Out) {
  const std::string bad = Write("bad.ics", "no calendar\n");
  std::string other = Calendar();
  other.replace(other.find("UID:trip"), 8, "UID:free");
  const TResult result = On("a.db", {"import", Write("good.ics"), bad, Write("other.ics", other)});
  EXPECT_EQ(result.Status, 1);
  EXPECT_NE(result.Err.find(bad), std::string::npos);
  EXPECT_EQ(std::count(result.Err.begin(), result.Err.end(), '\n'), 1) << result.Err;
  EXPECT_EQ(Agenda("a.db").size(), 9U + 3U);
}

TEST_F(Commands_Test, Holidays_Stand_In_The_Agenda) {
  EXPECT_EQ(On("a.db", {"import", "--holidays", Write("a.ics"), "--country", "Utopia"}).Status, 2);
  EXPECT_NE(
      On("a.db", {"agenda", "--from", "2024-01-18", "--days", "1"}).Out.find("  holiday  Trip (Utopia)\n"),
      std::string::npos);
}

TEST_F(Commands_Test, A_Failed_Update_Shows_In_The_Status) {
  Import_And_Open();
  Plant("UPDATE ON KT_Alarms");
  const TResult result = On("a.db", {"done", Agenda("a.db")[0]["key"]});
  EXPECT_EQ(std::to_string(result.Status) + result.Out, "1");
  EXPECT_NE(result.Err.find("planted fault"), std::string::npos);
  EXPECT_EQ(Agenda("a.db")[0]["done"], false);
}

TEST_F(Commands_Test, Check_Tells_What_It_Finds) {
  Import_And_Open();
  Run_Sql(
      "PRAGMA foreign_keys = OFF;"
      "DELETE FROM KT_Events_Data WHERE Event IN (SELECT Key FROM KT_Events WHERE Title = 'Trip');"
      "UPDATE KT_Events SET Title = 'Trip' || char(27) WHERE Title = 'Trip'");
  const TResult result = On("a.db", {"check"});
  EXPECT_EQ(result.Status, 1);
  EXPECT_NE(result.Out.find("(Trip?) has no occurrence.\n"), std::string::npos);
  EXPECT_EQ(std::count(result.Out.begin(), result.Out.end(), '\n'), 1) << result.Out;
}

}  // namespace
