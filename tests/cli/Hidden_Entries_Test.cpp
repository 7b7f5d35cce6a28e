#include "Commands_Fixture.h"
#include "Contact_List.h"
#include "Entry_Lists.h"
#include "Entry_Order.h"
#include "Entry_Rows.h"
#include "Event_Rows.h"
#include "Folders.h"
#include "Journal.h"
#include "Links.h"
#include "Marking.h"
#include "Quick_Search.h"
#include "Reminder_Rules.h"
#include "Sheet.h"
#include "Task_List.h"
#include "Test_Events.h"
#include "Users.h"

namespace {

// Ann hides a contact, a folder with another one, a book, and private entries. Everybody may do all else.
struct Hidden_Entries : Commands_Test {
  static constexpr double Monday = TDatabase_Test::Monday;

  Hidden_Entries() {
    Open_Database(folder.File("a.db"), TDatabase::TMode::Create_If_Missing);
    In_Update([this] {
      book = Create_Book("Home").Key;
      Add_User("Ann", true, ann);
      Add_User("Bert", false, bert);
    });
    Set_User_Key(ann);
    In_Update([this] {
      const std::string room = Create_Contact(book, "Secret room", {}, Contact_Type_Folder),
                        other = Create_Book("Secret book").Key, friendly = Create_Contact(book, "Friend");
      hidden = Create_Contact(book, "Secret friend");
      Create_Contact(book, "Secret mate", room);
      Add_Link(hidden, {"Secret link", "https://secret.example"});
      for (const std::string& owner : {hidden, room, other}) Set_Rights(owner, Global_User, {});
      open = friendly;
    });
    TNew_Event party = New_Event("Secret party", Monday + 0.6),
               dinner = New_Event("Secret dinner", Monday + 0.7), task = New_Event("Secret task", Monday),
               date = New_Event("Secret date", Monday + 0.8);
    party.Owner.Contact = hidden;
    for (TNew_Event* event : {&dinner, &task, &date}) {
      event->Record.Private = true;
      event->Record.Location = "Secret place";
      event->Record.Notes = "Secret notes";
      event->Alarm.On = true;
    }
    task.Record.EventType = TEntry_Type::Task;
    task.Record.AllDay = true;
    dinner.Record.Activity = date.Record.Activity = 18;
    dinner.Owner.Contact = date.Owner.Contact = open;
    for (const TNew_Event& event : {party, task}) ::Write(event);
    private_key = ::Write(dinner);
    // Of what is gone the journal still tells.
    const std::string gone = ::Write(date);
    Mark_Occurrence(gone, true);
    In_Update([&] { Delete_Set(Query_Text("SELECT Event FROM KT_Events_Data WHERE Key = '" + gone + "'")); });
  }

  std::string Rows(const TItem_List& list) const {
    std::string text;
    for (std::size_t i = 0; i < list.Count(); ++i)
      text += std::string(Row_Text(*list[i].Data)) + list[i].Data->Get_Tip(false) + ";";
    return text;
  }
  std::string Command(std::vector<std::string> args) {
    args.insert(args.end(), {"--user", User_Key() == ann ? "Ann" : "Bert"});
    const std::string user = User_Key();
    Close_Database();
    const TResult result = On("a.db", args);
    Open_Database(folder.File("a.db"), TDatabase::TMode::Must_Exist);
    Set_User_Key(user);
    return result.Out + result.Err;
  }
  std::string Exported(const std::string& name) {
    std::filesystem::remove(folder.File(name));
    const std::string said = Command({"export", folder.File(name), "--book", "Home"});
    return said + File_Content(folder.File(name));
  }

  std::string book, ann, bert, hidden, open, private_key;
};

TEST_F(Hidden_Entries, Are_Told_To_Nobody_Else_On_Any_Path) {
  TItem_List list;
  const struct {
    const char* Path;
    std::function<std::string()> Shown;
  } paths[] = {
      {"day",
       [&] {
         Build_Reminder_DayView({}, book, list, Monday, true, true);
         return Rows(list);
       }},
      {"all events",
       [&] {
         Build_Reminder_AllView({}, book, list, true, true, nullptr);
         return Rows(list);
       }},
      {"month",
       [&] {
         TEventKey_List entries;
         Build_Events_Data({}, book, entries, Monday, Monday, true);
         std::string text;
         for (const auto& entry : entries) text += Row_Text(*entry);
         return text;
       }},
      {"tasks",
       [&] {
         Build_Task_List({book, {}}, TTask_Filter::All, list);
         return Rows(list);
       }},
      {"search field",
       [&] {
         TQuick_Search search;
         search.Look_For("secret");
         while (search.Step()) {
         }
         std::string text;
         for (const auto group : {TQuick_Search::Events, TQuick_Search::Tasks, TQuick_Search::Contacts}) {
           for (const auto& row : search.Found(group).Rows) text += row.Title.Str();
         }
         return text;
       }},
      {"editor",
       [&] {
         TReminder_Rules rules;
         rules.Open(private_key, {book, {}}, {}, false);
         EXPECT_EQ(rules.Read_Only(), User_Key() == bert);
         return rules.Subject + rules.Location + rules.Notes;
       }},
      {"journal",
       [&] {
         std::string text;
         for (const TJournal_Entry& entry : List_Journal(open)) text += entry.Title + entry.Text;
         return text;
       }},
      {"list of contacts",
       [&] {
         std::string text;
         for (const TContact_Row& row : Read_Contact_Rows(book, false)) text += row.Name + row.Folder;
         return text;
       }},
      {"folders",
       [&] {
         std::string text;
         for (const TFolder& one : List_Folders(book)) text += one.Name;
         return text;
       }},
      {"print",
       [&] {
         std::string text;
         Plexidex::TSheet_Request request;
         request.Owner = {book, {}};
         request.Date = Monday;
         for (const auto& day : Plexidex::Build_Sheet(request, nullptr).Days) {
           for (const auto& line : day.Lines) text += line.Text.Str() + line.Location.Str();
         }
         return text;
       }},
      {"agenda",
       [&] {
         return Command({"agenda", "--format", "json"});
       }},
      {"books", [&] { return Command({"books"}); }},
      {"contacts",
       [&] {
         return Command({"contacts", "secret"});
       }},
      {"search",
       [&] {
         return Command({"search", "Task Description -- Contains: secret"});
       }},
      {"search for contacts",
       [&] {
         return Command({"search", "Contact Name -- Contains: secret"});
       }},
      {"shared filter",
       [&] {
         if (User_Key() == ann)
           Command({"search", "Contact Name -- Contains: Secret", "--save", "All", "--shared", "--book",
                    "Secret book"});
         return Command({"search", "--list"});
       }},
      {"calendar file", [&] { return Exported("x.ics"); }},
      {"contacts file", [&] { return Exported("x.vcf"); }},
      {"check",
       [&] {
         Run_Sql("PRAGMA foreign_keys = OFF; UPDATE KT_Events_Data SET Event = 'none' WHERE Contact = '" +
                 hidden + "'");
         Run_Sql("UPDATE KT_Contacts SET Parent = 'Secret place' WHERE DisplayName = 'Secret mate'");
         return Command({"check"});
       }},
  };
  for (const auto& [path, shown] : paths) {
    for (const std::string& user : {ann, bert}) {
      Set_User_Key(user);
      EXPECT_EQ(shown().find("Secret") == std::string::npos, user == bert) << path << ": " << shown();
    }
  }
}

TEST_F(Hidden_Entries, Tell_Nothing_By_Their_Order_Either) {
  for (const char* title : {"Aaa", "Zzz", "Queue"}) ::Write(New_Event(title, Monday + 0.2));
  Set_User_Key(bert);
  TItem_List list;
  Build_Reminder_DayView({}, book, list, Monday, true, true);
  Sort_Items(list, 3, true);
  std::string order;
  for (std::size_t i = 0; i < list.Count(); ++i) {
    if (!list[i].Data->Is_Task()) order += std::string(Row_Text(*list[i].Data)) + " ";
  }
  EXPECT_EQ(order, "Aaa Private Queue Zzz ");
}

}  // namespace
