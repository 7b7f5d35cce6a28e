#include "Current_Search.h"
#include "Entry_List.h"
#include "Filter_Store.h"
#include "Main_Window_Fixture.h"

namespace {

TEST_F(Main_Window, Found_Contacts_Have_A_Node_Until_Their_Search_Is_Cleared_Or_Closed) {
  const auto add = [this](const char* name) { In_Update([&] { Create_Contact(book, name); }); };
  for (const char* name : {"Anna", "Berta", "Bert"}) add(name);
  auto& tree = Open();
  Show(*window);
  const auto search = [&] {
    Choose("C&ontacts...");
    KTReminds::CurrentSearch->Add_Field(KTReminds::Group_Contact, KTReminds::Search_Contact_Name,
                                        KTReminds::Action_Contains, "bert", "", false, false);
    Act(&*window, "SearchNow");
    Settle();
    return Below(tree.topLevelItem(0));
  };
  const std::string nodes = "Calendar|Tasks|Contacts", results = nodes + "|Search Results";
  EXPECT_EQ(search(), results);
  const auto found = [&] {
    return Below(tree.currentItem()) + "/" + Seen(&*window, "Shown_Count Search_Caption").substr(0, 44);
  };
  EXPECT_EQ(found(), "Bert|Berta/2 contacts|Search Results [2 Contacts found ");
  add("Bertram");
  Look_At_Rows(&*window);
  EXPECT_EQ(found(), "Bert|Berta|Bertram/3 contacts|Search Results [3 Contacts found ");
  Confirm(Control<QTableView>(&*window, "Contacts"));
  Settle();
  EXPECT_EQ(tree.currentItem()->parent()->text(0) +
                From_Qt(Control<QLabel>(&*window, "Contact_Name")->text()).c_str(),
            "Search ResultsBert");
  ASSERT_TRUE(tree.Select(TNode_Kind::Results, book));
  Act(&*window, "SearchSettings");
  Settle();
  EXPECT_EQ(Control<QListWidget>(&*window, "ListBox1")->count(), 2) << "the search as it was";
  Act(&*window, "ClearSearch");
  EXPECT_EQ(Below(tree.topLevelItem(0)) + "/" + window->Page_Name(), nodes + "/Simple_Search_Frm0");
  EXPECT_EQ(search(), results);
  Act(&*window, "Close");
  Settle();
  EXPECT_EQ(Below(tree.topLevelItem(0)) + "/" + window->Page_Name(), nodes + "/Contacts_Page0");
}

TEST_F(Main_Window, Stored_Searches_Are_Run_Edited_And_Deleted_In_The_Tree) {
  using namespace KTReminds;
  In_Update([&] { Create_Contact(book, "Bert"); });
  Write(New_Event("Breakfast", Monday));
  auto& tree = Open();
  Show(*window);
  const auto save = [&](const char* name, bool shared, int group, int field, const char* text) {
    Clear_Search();
    CurrentSearch->Add_Field(group, field, Action_Contains, text, "", false, false);
    EXPECT_TRUE(CurrentSearch->SavetoTable(book, name, shared));
  };
  const auto nodes = [&] {
    Look_At_Rows(&*window);
    return Below(tree.topLevelItem(0));
  };
  save("People", false, Group_Contact, Search_Contact_Name, "bert");
  save("Meals", true, Group_Calendar_Types, Search_Any_Description, "break");
  save("Jobs", true, Group_Tasks, Search_Task_Description, "x");
  Clear_Search();
  EXPECT_EQ(nodes(), "Calendar|Tasks|Contacts|Searches");
  auto* searches = tree.topLevelItem(0)->child(3);
  EXPECT_EQ(Below(searches), "People|Jobs (shared)|Meals (shared)");
  std::string pages;
  for (const int row : {2, 1, 0}) {
    tree.setCurrentItem(tree.topLevelItem(0)->child(tree.topLevelItem(0)->childCount() - 1)->child(row));
    pages += window->Page_Name() + " ";
  }
  EXPECT_EQ(pages, "Calendar_Search_Results_Frm0 Task_HomePage_Frm0 Found_Contacts_Page0 ");
  EXPECT_EQ(nodes(), "Calendar|Tasks|Contacts|Search Results|Searches");
  EXPECT_EQ(Below(tree.topLevelItem(0)->child(3)) + tree.Current().Filter, "BertPeople");
  Choose("&Edit Search...");
  EXPECT_EQ(window->Page_Name() + std::to_string(Control<QListWidget>(&*window, "ListBox1")->count()),
            "Advanced_Search_Frm02");
  seams.Prompts.Expect_Question("Delete Search Filter",
                                "Are you sure you wish to delete the Search Filter \"People\"?", Answer_Yes);
  Choose("&Delete Search...");
  EXPECT_EQ(Below(tree.currentItem()), "Jobs (shared)|Meals (shared)");
  EXPECT_TRUE(Delete_Filter(book, "Jobs", true) && Delete_Filter(book, "Meals", true));
  EXPECT_EQ(nodes(), "Calendar|Tasks|Contacts|Search Results") << "follows what is done elsewhere";
}

TEST_F(Main_Window, What_Is_Typed_Into_The_Search_Field_Is_Found_And_Opened) {
  In_Update([&] { Create_Contact(book, "Bert Teal"); });
  Write(New_Event("Tea", Monday + 1.5));
  for (int i = 0; i < 21; ++i) {
    TNew_Event task = New_Event("Buy tea", Monday + i);
    task.Record.EventType = TEntry_Type::Task;
    Write(task);
  }
  auto& tree = Open();
  Show(*window);
  tree.setFocus();
  auto* field = Control<QLineEdit>(&*window, "Quick_Search");
  const auto type = [&](const char* text, const char* shown) {
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&*window));
    QTest::keyClick(&*window, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(field, text);
    auto* list = Control<QTreeWidget>(&*window, "Quick_Results");
    const auto lines = [list] {
      QStringList texts;
      for (int i = 0; i < list->topLevelItemCount(); ++i) texts << list->topLevelItem(i)->text(0);
      texts.removeDuplicates();
      return texts.join(QLatin1Char('|')).toStdString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return lines() == shown; })) << lines();
    EXPECT_TRUE(list->isVisible());
    return list;
  };
  const char* const all = "Events|Tea|Tasks|Buy tea|1 more...|Contacts|Bert Teal";
  auto* list = type("tea", all);
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_TRUE(list->isHidden() && tree.hasFocus() && field->text().isEmpty());
  type("tea", all);
  With_Dialog(
      [](QWidget* form) {
        EXPECT_EQ(Seen(form, "Edit1"), "Tea");
        Cancel(form);
      },
      [&] { QTest::keyClick(field, Qt::Key_Return); });
  type("tea", all);
  for (int i = 0; i < 22; ++i) QTest::keyClick(field, Qt::Key_Down);
  QTest::keyClick(field, Qt::Key_Return);
  Settle();
  EXPECT_EQ(Control<TEntry_List>(&*window, "ListView1")->Items().Count(), 21U) << "all of them on their page";
  type("bert", "Contacts|Bert Teal");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(Seen(&*window, "Contact_Name"), "Bert Teal");
  EXPECT_TRUE(list->isHidden());
}

}  // namespace
