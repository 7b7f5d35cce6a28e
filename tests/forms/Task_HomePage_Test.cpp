#include "Current_Search.h"
#include "Event_Rows.h"
#include "Kt_labels.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Page_Numbers.h"
#include "Task_Order.h"
#include "View_Fixture.h"
#include "fm_Task_HomePage.h"

using Plexidex::TNode_Kind;

namespace {

int Mode = 0;

struct Task_HomePage : TView_Fixture {
  Task_HomePage()
      : TView_Fixture([](QWidget* parent, TForm_Reference& form, const std::string& book,
                         const std::string& owner, bool) {
          static QWidget tools;
          return Display_Task_Home_Page(parent, form, book, owner, Mode, &tools);
        }) {
    Mode = Page_Tasks;
    TaskSortKey = Task_Column_Due;
    TaskSortAscending = true;
  }
  /// A task that is due so many days after Monday.
  void Add_Task(const std::string& title, int days = 0, const std::string& owner = {}) const {
    TNew_Event task = New_Event(title, Monday + days);
    if (!owner.empty()) task.Owner.Contact = owner;
    task.Record.EventType = TEntry_Type::Task;
    task.Record.AllDay = true;
    Write(task);
  }
  /// The titles, the row selected and the caption.
  std::string State() {
    return Shown() + "/" + std::to_string(list->Selected_Row()) + "/" + Seen(view, "Label3");
  }
};

TEST_F(Task_HomePage, Remembers_Its_Filter_And_Shows_It) {
  Add_Task("late", -1);
  Add_Task("next", 1);
  Display();
  EXPECT_EQ(State(), "late next/0/All Tasks");
  EXPECT_EQ(Make_Checks(&home), "");
  Act(view, "AckBtn");
  EXPECT_EQ(Query_Text("SELECT Actioned || list.Status FROM KT_Events_Data JOIN KT_Events list ON list.Key = "
                       "Event ORDER BY EventDate"),
            "12");
  EXPECT_EQ(list->Items()[0].Data->FirstText, "Completed");
  EXPECT_EQ(Texts("Ackmenu"), "&Mark Outstanding/Marks the selected Task as still being outstanding");
  for (const auto& [item, shown] : {std::pair("ShowOverdue1", "/-1/Overdue Tasks Only"),
                                    {"ShowInProgress1", "/-1/In Progress Tasks Only"},
                                    {"ShowCompleted1", "late/0/Completed Tasks Only"},
                                    {"ShowOutstanding1", "next/0/All Outstanding Tasks"}}) {
    Act(view, item);
    EXPECT_EQ(State(), shown);
    EXPECT_TRUE(Action(item)->isChecked());
  }
  EXPECT_TRUE(form.Get()->Close_Form());
  Display();
  EXPECT_EQ(State(), "next/0/All Outstanding Tasks");
  Write_Integer("General", "Task View", 9);
  form.Get()->Close_Form();
  Display();
  EXPECT_EQ(State(), "late next/0/All Tasks");
}

TEST_F(Task_HomePage, Keeps_The_Row_After_Each_Command) {
  for (const int day : {1, 2, 3}) Add_Task(std::to_string(day), day);
  Display(true, 2);
  Answer(Confirm, Qt::Key_Delete);
  EXPECT_EQ(State(), "1 2/1/All Tasks") << "the last row was deleted";
  Answer(Confirm_With("Edit1=0|EventDate=1/15/2024"), "AddTaskBtn");
  EXPECT_EQ(State(), "0 1 2/1/All Tasks") << "the row, and not the task";
  Answer(Confirm_With("EventDate=1/30/2024"), Qt::Key_Return);
  EXPECT_EQ(State(), "0 2 1/2/All Tasks");
  Act(view, "SortDescLabel");
  EXPECT_EQ(State(), "0 1 2/1/All Tasks");
  Act(view, "SortDescLabel");
  EXPECT_EQ(State() + (TaskSortKey == 2 && !TaskSortAscending ? "" : "?") + std::to_string(SortKey),
            "2 1 0/1/All Tasks2")
      << "in an order of its own";
  In_Update([] { Delete_Set(Query_Text("SELECT Key FROM KT_Events WHERE Title = '1'")); });
  Look_At_Rows(&home);
  EXPECT_EQ(State(), "2 0/1/All Tasks") << "another program has removed it";
  list->clearSelection();
  Answer(Confirm_With("Edit1=9"), Qt::Key_Insert);
  EXPECT_EQ(State(), "9 2 0/0/All Tasks");
  EXPECT_NE(list->Tip_At({list->viewport()->width() - 20, 5}), QString()) << "wherever the mouse is";
}

TEST_F(Task_HomePage, Answers_Messages_And_Shows_What_Was_Found) {
  Add_Task("books");
  Add_Task("contacts", 1, contact);
  Mode = Page_Task_Results;
  Clear_Search();
  CurrentSearch->Add_Field(Group_Tasks, Search_Task_Description, Action_Contains, "CONT", {}, false, false);
  Display();
  EXPECT_EQ(State() + Seen(view, "SearchSettings ClearSearch"),
            "contacts/0/Search Results [1 Tasks found]Search Settings...|Clear Search");
  for (const char* search : {"SearchSettings", "SearchTasks", "SearchTasks1"}) Act(view, search);
  Settle();
  EXPECT_EQ(home.Asked, (QList<qintptr>{54, 54, 54}));
  Act(view, "ClearSearch");
  EXPECT_EQ(State() + Seen(view, "SearchSettings ClearSearch"), "books contacts/0/All Taskshidden|hidden");
  EXPECT_TRUE(CurrentSearch->Items.empty());
  const auto name = [this] {
    char answer[100] = "";
    Send_Message(view, umGetFormName, 0, reinterpret_cast<qintptr>(answer));
    return std::string(answer);
  };
  EXPECT_EQ(name(), "Task_HomePage_Frm0");
  Send_Message(view, umDisplayForm, Page_Permissions, 0);
  EXPECT_EQ(name() + (list->isVisible() ? "visible" : ""), "Permissions_Frm0");
  Add_Task("later", 2);
  Send_Message(view, umSelectNode, 0, 0);
  EXPECT_EQ(name() + State(), "Task_HomePage_Frm0books contacts/0/All Tasks") << "not read again";
  list->Select_Row(1);
  Send_Message(view, umRefreshDisplay, 0, 0);
  EXPECT_EQ(State(), "books contacts later/0/All Tasks");
  Sign_In({.Create = true, .See = true});
  With_Dialog(Confirm_With("Edit1=mine|EventDate=1/20/2024"),
              [this] { Send_Message(view, umAddTask, 0, 0); });
  EXPECT_EQ(Shown(), "books contacts later mine") << "the right to change is not asked for";
  ASSERT_TRUE(Display_Task_Home_Page(&home, form, database.Book().Key, contact, Page_Tasks, nullptr));
  EXPECT_EQ(State(), "contacts/0/All Tasks");
}

TEST_F(Task_HomePage, In_The_Main_Window) {
  Add_Task("books");
  Add_Task("hers", 0, contact);
  Plexidex::TMain_Window window;
  Show(window);
  auto& tree = window.Tree();
  ASSERT_TRUE(tree.Select(TNode_Kind::Tasks, database.Book().Key));
  EXPECT_EQ(window.Page_Name(), "Task_HomePage_Frm0");
  EXPECT_TRUE(tree.hasFocus() || !window.focusWidget()) << "its arrow keys go on to other nodes";
  const QRect node = tree.visualItemRect(tree.currentItem());
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, node.center());
  EXPECT_EQ(Where(&window), "ListView1");
  const auto choose = [&](const char* item, const std::function<void(QWidget*)>& act) {
    for (QAction* action : window.findChildren<QAction*>())
      if (action->text() == QLatin1String(item)) return With_Dialog(act, [&] { action->trigger(); });
  };
  choose("New &Task...", Confirm_With("Edit1=task"));
  choose("New &Event...", Confirm_With("Edit1=event"));
  EXPECT_EQ(Query_Rows("Title, EventType", "KT_Events ORDER BY row_id"), "books|3, hers|3, task|3, event|0");
  Act(&window, "SearchTasks");
  Settle();
  EXPECT_EQ(window.Page_Name() + Where(&window), "Simple_Task_Search_Frm0st_box");
  Act(&window, "st_box=Task Description|sa_Box=Contains|Edit1_Text=BOOK");
  for (int i = 0; i < 2; ++i) QTest::keyClick(window.focusWidget(), Qt::Key_Return);
  Settle();
  list = Control<TEntry_List>(&window, "ListView1");
  EXPECT_EQ(Shown() + window.Page_Name(), "booksTask_HomePage_Frm0") << "Enter adds, and searches";
  ASSERT_TRUE(tree.Select(TNode_Kind::Contact, database.Book().Key, contact));
  Control<QTabBar>(&window, "Tabs")->setCurrentIndex(1);
  Settle();
  list = Control<TEntry_List>(&window, "ListView1");
  EXPECT_EQ(Shown() + window.Page_Name(), "hersTask_HomePage_Frm0");
  EXPECT_EQ(Seen(&window, "Panel3"), "hidden");
  choose("New &Task...", Confirm_With("Edit1=hers too"));
  EXPECT_EQ(Shown(), "hers hers too");
  Act(&window, "SearchTasks1");
  Settle();
  EXPECT_EQ(window.Page_Name(), "Simple_Task_Search_Frm0");
  Control<QTabBar>(&window, "Tabs")->setCurrentIndex(0);
  Settle();
  EXPECT_EQ(window.Page_Name(), "Contacts_Page3b_Frm0");
}

}  // namespace
