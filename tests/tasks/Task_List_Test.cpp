#include "Task_List.h"

#include "Contacts.h"
#include "Event_Rows.h"
#include "Marking.h"
#include "Task_Order.h"
#include "Test_Events.h"

namespace {

struct Task_List : TDatabase_Test {
  Task_List() {
    TaskSortKey = Task_Column_Due;
    TaskSortAscending = true;
    In_Update([this] { contact = Create_Contact(database.Book().Key, "Contact"); });
  }
  struct TAdded {
    double Due = Monday;
    TTask_Status Status = TTask_Status::Not_Started;
    int Percentage = 0, Priority = 5, Days = 1;
    double Start = Monday;
    std::string Contact = {};
  };
  /// The key of its first occurrence.
  std::string Add(const std::string& title, const TAdded& added) const {
    TNew_Event task = New_Event(title, added.Due, added.Days);
    if (!added.Contact.empty()) task.Owner.Contact = added.Contact;
    task.Record.EventType = TEntry_Type::Task;
    task.Record.AllDay = true;
    task.Record.Priority = added.Priority;
    task.Record.Progress.Status = added.Status;
    task.Record.Progress.Percentage = added.Percentage;
    const std::string key = Write(task);
    if (added.Days == 1)
      Run_Sql("UPDATE KT_Events SET FirstDate = " + std::to_string(added.Start) + " WHERE Title = '" + title +
              "'");
    if (added.Status == TTask_Status::Completed)
      Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE Key = '" + key + "'");
    return key;
  }
  /// Titles, "+" for one that is done, and the date due where it is not Monday.
  std::string Shown(TTask_Filter filter = TTask_Filter::All, const std::string& owner = {}) {
    Build_Task_List({database.Book().Key, owner}, filter, list);
    return Titles();
  }
  std::string Titles() const {
    std::string shown;
    for (std::size_t i = 0; i < list.Count(); ++i) {
      const TEventKey& task = *list[i].Data;
      EXPECT_EQ(list[i].Image, task.Done ? 17 : 16);
      shown += (i ? " " : "") + task.Description.Str() + (task.Done ? "+" : "");
      if (const double days = task.EventDate - Monday; days != 0)
        shown += std::to_string(static_cast<int>(days));
    }
    return shown;
  }

  std::string contact;
  TItem_List list;
};

TEST_F(Task_List, Filters_Go_By_State_And_Date) {
  Write(New_Event("event", Monday));
  Add("late", {Monday - 1, TTask_Status::In_Progress, 40});
  Add("done", {Monday - 2, TTask_Status::Completed, 100});
  Add("today", {});
  Add("next", {Monday + 1, TTask_Status::Pending, 10});
  seams.Clock.Value = Monday;
  EXPECT_EQ(Shown(), "done+-2 late-1 today next1");
  EXPECT_EQ(Shown(TTask_Filter::Overdue), "late-1") << "not yet what is due now";
  seams.Clock.Value = Monday + 0.5;
  EXPECT_EQ(Shown(TTask_Filter::Overdue), "late-1 today");
  EXPECT_EQ(Shown(TTask_Filter::In_Progress), "late-1");
  EXPECT_EQ(list[0].Data->FirstText, "In Progress") << "the percentage has a column of its own";
  EXPECT_EQ(Shown(TTask_Filter::Completed), "done+-2");
  EXPECT_EQ(Shown(TTask_Filter::Outstanding), "late-1 today next1");
  for (const int other : {0, 6}) EXPECT_EQ(Task_Filter_Of(other), TTask_Filter::All);
}

TEST_F(Task_List, Only_What_Is_The_Books_Or_The_Contacts_And_May_Be_Seen) {
  Add("books", {});
  Add("contacts", {.Contact = contact});
  TBook second;
  In_Update([&] { second = Create_Book("Second"); });
  Run_Sql("UPDATE KT_Events_Data SET Book = '" + second.Key + "' WHERE Key = '" + Add("second", {}) + "'");
  EXPECT_EQ(Shown(), "books contacts");
  EXPECT_EQ(Shown(TTask_Filter::All, database.Book().Calendar), "books contacts");
  EXPECT_EQ(Shown(TTask_Filter::All, contact), "contacts");
  In_Update([this] { Set_Contact_Deleted(contact, true); });
  EXPECT_EQ(Shown(), "books");
  In_Update([this] {
    Set_Contact_Deleted(contact, false);
    const std::string user = Create_User("Bert", false);
    Set_Rights(contact, user, {.See = true});
    Set_User_Key(user);
  });
  EXPECT_EQ(Shown(), "contacts");
  Run_Sql("ALTER TABLE KT_Events_Data RENAME TO Elsewhere");
  seams.Prompts.Expect_Unread("no such table: KT_Events_Data",
                              "Task_List:Build_Task_List [KT_Events/KT_Events_Data/KT_Contacts]");
  EXPECT_EQ(Shown(), "");
}

TEST_F(Task_List, A_Task_That_Recurs_Is_Shown_By_What_Is_To_Be_Done_Next) {
  const std::string first = Add("weekly", {.Days = 100});
  Add("other", {.Due = Monday + 200});
  EXPECT_EQ(Shown(), "weekly other200");
  Mark_Occurrence(first, true);
  EXPECT_EQ(Shown(), "weekly1 other200");
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate < 45500");
  EXPECT_EQ(Shown(), "weekly+99 other200");
}

TEST_F(Task_List, Sort_By_Each_Column_With_Its_Ties_Both_Ways) {
  // All but two differ in each column, and these two in what breaks the tie.
  using enum TTask_Status;
  struct TCase {
    int Column;
    TAdded First, Tied, Behind;
  };
  const TCase cases[] = {
      {0, {.Due = 3, .Start = 9}, {.Due = 1, .Status = Pending, .Start = 9}, {.Start = 10}},
      {1, {.Due = 9}, {.Due = 9, .Status = Pending, .Start = 1}, {.Due = 10}},
      {3, {.Due = 1, .Percentage = 9}, {.Due = 2, .Percentage = 1}, {.Due = 0, .Status = Pending}},
      {4, {.Due = 1, .Status = Pending}, {.Due = 2}, {.Due = 0, .Percentage = 1}},
      {4, {.Due = 1}, {.Due = 1, .Status = Pending}, {.Due = 0, .Percentage = 1}},
      {5, {.Due = 1, .Status = Pending}, {.Due = 2}, {.Due = 0, .Priority = 6}},
      {5, {.Due = 1}, {.Due = 1, .Status = Pending}, {.Due = 0, .Priority = 6}},
  };
  const auto order = [this](bool ascending) {
    TaskSortAscending = ascending;
    Sort_Tasks(list);
    std::string titles;
    for (std::size_t i = 0; i < list.Count(); ++i) titles += list[i].Data->Description.Str();
    return titles;
  };
  for (const TCase& each : cases) {
    Run_Sql("DELETE FROM KT_Events_Data; DELETE FROM KT_Events");
    Add("b", each.Behind);
    Add("t", each.Tied);
    Add("f", each.First);
    Shown();
    TaskSortKey = each.Column;
    EXPECT_EQ(order(true) + order(false), "ftbbtf") << "column " << each.Column;
  }
  // The description's ties go by status alone, whatever the dates.
  Run_Sql("DELETE FROM KT_Events_Data; DELETE FROM KT_Events");
  for (const auto& [title, added] : {std::pair("B", TAdded{.Due = 1}),
                                     {"a", TAdded{.Due = 1, .Status = Pending}},
                                     {"A ", TAdded{.Due = 2}}})
    Add(title, added);
  Run_Sql("UPDATE KT_Events SET Title = 'A' WHERE Title = 'A '");
  Shown();
  TaskSortKey = 2;
  EXPECT_EQ(order(true) + order(false), "AaBBaA");
}

}  // namespace
