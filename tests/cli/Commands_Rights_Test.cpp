#include <regex>

#include "Commands_Fixture.h"

namespace {

TEST_F(Commands_Test, Every_Command_Keeps_To_The_Rights_Of_The_User) {
  const std::string card = Write("a.vcf", "BEGIN:VCARD\r\nFN:Ann\r\nEND:VCARD\r\n"),
                    calendar = Write("a.ics"),
                    changed = Write("b.ics", std::regex_replace(Calendar(), std::regex("Room 4"), "Room 5")),
                    both = Write("c.ics", std::regex_replace(Calendar(), std::regex("Room 4|Trip"), "Other"));
  On("a.db", {"import", calendar, card});
  On("a.db", {"search", "Contact Name -- Contains a", "--save", "All", "--shared"});
  On("a.db", {"users", "--add", "Owner"});
  On("a.db", {"users", "--add", "Bert"});
  const auto key = [&](const char* title) {
    for (const auto& entry : Agenda("a.db")) {
      if (entry["title"] == title) return entry["key"].get<std::string>();
    }
    return std::string();
  };
  const std::string meeting = key("Team meeting"), trip = key("Trip"),
                    mine = "the book \"My Calendar\"; nothing was imported.\n";
  const TRights none, see{.See = true}, add{.Create = true, .See = true}, change{.Update = true, .See = true},
      most{.Create = true, .Update = true, .See = true};
  const struct {
    TRights Rights;
    std::vector<std::string> Args;
    std::string Said;
  } cases[] = {
      {none, {"books"}, "There are no books yet.\n"},
      {none, {"agenda", "--format", "json"}, "[]\n"},
      {none, {"contacts"}, "No contacts.\n"},
      {none, {"export", folder.File("x.ics")}, "There is no book to export.\n"},
      {none,
       {"export", folder.File("x.vcf"), "--book", "My Calendar"},
       "There is no book \"My Calendar\"; there are no books yet.\n"},
      {none, {"search", "--filter", "All"}, "There are no books yet.\n"},
      {none, {"print", "--view", "day", "--pdf", "x.pdf"}, "There are no books yet.\n"},
      {none, {"done", meeting}, "There is no entry \"" + meeting + "\".\n"},
      {none, {"sample"}, "You may not make a book; nothing was imported.\n"},
      {see, {"books"}, "My Calendar  9 entries\n"},
      {see, {"books", "--add", "Mine"}, "You may not make books in this database.\n"},
      {see, {"import", calendar}, "You may not make entries in " + mine},
      {see, {"import", card}, "You may not make contacts in " + mine},
      {see, {"sample"}, "You may not make contacts in " + mine},
      {see,
       {"import", calendar, "--holidays", "--country", "Here"},
       "You may not add holidays to the database; nothing was imported.\n"},
      {see, {"done", meeting}, "You may not change this entry.\n"},
      {see,
       {"search", "--delete", "All", "--shared"},
       "You may not delete shared filters of the book \"My Calendar\".\n"},
      {see,
       {"search", "Date -- Today", "--save", "New", "--shared"},
       "You may not save shared filters in the book \"My Calendar\".\n"},
      {see, {"restore", calendar}, "Only an administrator may restore a backup.\n"},
      {add,
       {"import", changed},
       changed + ": 4 components read; 0 recurring sets, 0 single events and 0 tasks written, 0 entries in "
                 "all; 2 unchanged, 0 replaced, 2 not used\n"
                 "  not used: Team meeting (meeting): is in the book already, and you may not change it\n"
                 "  not used: Learn to fly (someday): is neither an event nor a task, but VJOURNAL\n"},
      {change, {"undone", trip}, "You may not change this entry.\n"},
      {change, {"done", meeting}, "Done: Team meeting, 1/8/2024 9:30 AM\n"},
      {most,
       {"import", both},
       both +
           ": 4 components read; 1 recurring set, 0 single events and 0 tasks written, 5 entries in all; 1 "
           "unchanged, 1 replaced, 2 not used\n"
           "  not used: Other (trip): is in the book already, and private to another user\n"
           "  not used: Learn to fly (someday): is neither an event nor a task, but VJOURNAL\n"}};
  for (auto step : cases) {
    Open_Database(folder.File("a.db"), TDatabase::TMode::Must_Exist);
    In_Update([&] { Set_Rights(Whole_Database, Global_User, step.Rights); });
    Close_Database();
    step.Args.insert(step.Args.end(), {"--user", "bert"});
    const TResult result = On("a.db", step.Args);
    EXPECT_EQ(result.Out + result.Err, step.Said) << step.Args[0];
  }
  On("a.db", {"export", folder.File("x.ics"), "--user", "bert"});
  EXPECT_EQ(File_Content(folder.File("x.ics")).find("Trip"), std::string::npos) << "private";
  Open_Database(folder.File("a.db"), TDatabase::TMode::Must_Exist);
  EXPECT_EQ(Query_Text("SELECT group_concat(DISTINCT User = (SELECT Value FROM KT_Settings WHERE Name = "
                       "'Owner')) FROM KT_Events"),
            "1")
      << "what another changes stays the owner's";
  In_Update([&] { Set_Rights(List_Books().front().Calendar, Global_User, none); });
  Close_Database();
  EXPECT_EQ(On("a.db", {"books", "--user", "bert"}).Out, "My Calendar  0 entries\n");
}

TEST_F(Commands_Test, Users_Say_Who_They_Are_And_Are_Asked_For_A_Password_In_A_Secured_Database) {
  const std::string wrong = "The name or the password is wrong. Try again in ";
  const struct {
    std::vector<std::string> Args;
    std::string Passwords, Said;
  } steps[] = {
      {{"books", "--add", "Home"}, "", "Home  0 entries\n"},
      {{"users"}, "", "There are no users: whoever opens the database may do everything.\n"},
      {{"books", "--user", "ann"}, "", "There is no user \"ann\"; the database has no users.\n"},
      {{"users", "--add", "Ann"}, "", "Ann  administrator, without a password\n"},
      {{"users", "--add", "Bert", "--administrator"},
       "",
       "Ann   administrator, without a password\nBert  administrator, without a password\n"},
      {{"users", "--add", "bert"}, "", "There is a user \"Bert\" already; choose another name.\n"},
      {{"users", "--password", "ann"}, "short\n", "A password needs at least 8 characters.\n"},
      {{"users", "--password", "ann"},
       "password\r\n",
       "Ann   administrator\nBert  administrator, without a password\n"},
      {{"books", "--user", "bert"}, "", "Home  0 entries\n"},
      {{"secure"}, "", ""},
      {{"books"},
       "password",
       "The database asks for a name and a password: name yourself with --user NAME; the password is asked "
       "for on the terminal, or read from --password-fd N.\n"},
      {{"restore", "a.db"},
       "password",
       "The database asks for a name and a password: name yourself with --user NAME; the password is asked "
       "for on the terminal, or read from --password-fd N.\n"},
      {{"books", "--user", "ann"}, "wrong", wrong + "1 second.\n"},
      {{"books", "--user", "ann"}, "password", "After wrong passwords, try again in 1 second.\n"},
      {{"books", "--user", "nobody"}, "password", wrong + "1 second.\n"},
      {{"later"}, "", ""},
      {{"books", "--user", "ann"}, "password\nmore\n", "Home  0 entries\n"},
      {{"books", "--user", "ann"}, "", "The file descriptor FD gives no password.\n"},
      {{"users", "--user", "ann", "--password", "bert"},
       "password\nanother one\n",
       "Ann   administrator\nBert  administrator\n"},
      {{"users", "--user", "bert", "--rename", "ann", "--to", "Anna"},
       "another one",
       "Anna  administrator\nBert  administrator\n"},
      {{"users", "--user", "bert", "--remove", "anna", "--heir", "bert"},
       "another one",
       "Bert  administrator\n"},
      {{"users", "--user", "bert", "--remove", "anna", "--heir", "bert"},
       "another one",
       "There is no user \"anna\"; the users are \"Bert\".\n"}};
  for (auto step : steps) {
    if (step.Args.front() == "secure") {
      Open_Database(folder.File("a.db"), TDatabase::TMode::Must_Exist);
      In_Update([] { Store_Setting("Secure", "1"); });
    } else if (step.Args.front() == "later") {
      seams.Clock.Value += 1;
    } else {
      FILE* const passwords = fopen(Write("passwords", step.Passwords).c_str(), "r");
      const std::string descriptor = std::to_string(fileno(passwords));
      step.Args.insert(step.Args.end(), {"--wait", "0", "--password-fd", descriptor});
      const TResult result = On("a.db", step.Args);
      fclose(passwords);
      const std::string said =
          std::regex_replace(result.Out + result.Err, std::regex("or " + descriptor), "or FD");
      EXPECT_EQ(said, step.Said) << step.Args[0] << step.Passwords;
    }
  }
}

}  // namespace
