#include "Contacts.h"
#include "Current_Search.h"
#include "Entry_List.h"
#include "Filter_Store.h"
#include "Kt_labels.h"
#include "Page_Numbers.h"
#include "Result_Order.h"
#include "View_Fixture.h"
#include "fm_Advanced_Search.h"
#include "fm_Calendar_Search_Results.h"
#include "fm_Filters.h"
#include "fm_Simple_Calendar_Search.h"
#include "fm_Simple_Notes_Search.h"
#include "fm_Simple_Search.h"
#include "fm_Simple_Task_Search.h"

namespace {

struct Search_Pages : TEditor_Fixture {
  Search_Pages() {
    Clear_Search();
    home.resize(700, 500);
    In_Update([this] { folder = Create_Contact(book, "Club", {}, Kt_data_01::Contact_Type_Folder); });
  }
  ~Search_Pages() override { CurrentSearch.reset(); }

  template <class TDisplay>
  void Display(TDisplay display) {
    ASSERT_TRUE(display(&home, form, book, false));
    page = form.Get();
    if (!home.isVisible()) Show(home);
    Send_Message(page, umSetActiveControl, 0, 0);
    EXPECT_EQ(Make_Checks(&home), "");
  }
  std::string Criteria() {
    std::string lines;
    const auto* list = Control<QListWidget>(page, "ListBox1");
    for (int i = 0; i < list->count(); ++i) lines += list->item(i)->text().toStdString() + "|";
    return lines;
  }
  std::string Choices(const char* name) {
    QStringList texts;
    const auto* box = Control<QComboBox>(page, name);
    for (int i = 0; i < box->count(); ++i) texts << box->itemText(i);
    return texts.join(QLatin1Char('|')).toStdString();
  }
  void Refuse(const std::string& caption, const std::string& text, const char* control) {
    seams.Prompts.Expect_Error(caption, text);
    Act(page, "SpeedButton2");
    seams.Prompts.Verify();
    EXPECT_EQ(Where(&home), control);
  }
  QList<qintptr> Asked() {
    Settle();
    return std::exchange(home.Asked, {});
  }

  const std::string book = database.Book().Key;
  std::string folder;
  TForm_Reference form;
  TView_Fixture::THome home;
  TForm* page = nullptr;
};

TEST_F(Search_Pages, Criteria_Are_Added_One_By_One_And_Taken_Out_To_Be_Changed) {
  Display(Display_Simple_Calendar_Search);
  EXPECT_EQ(Criteria() + Where(&home), "sf_box");
  EXPECT_EQ(Choices("sf_box"), "All Calendar Type Events|Calendar Events|Tasks|National Holidays");
  const auto invalid = [this](const char* control) {
    Refuse("Invalid Search Criteria",
           "The Search Criteria specified is invalid. Please respecify before trying again", control);
  };
  invalid("sf_box");
  Act(page, "sf_box=Calendar Events");
  invalid("st_box");
  Act(page, "st_box=Event Description");
  invalid("sa_Box");
  EXPECT_EQ(Seen_After("sa_Box=Contains", page, "ValueLabel MC MW"), "Value:|-|-");
  EXPECT_EQ(Seen_After("Edit1_Text=x|sa_Box=Starts With", page, "Edit1_Text"), "x") << "is kept";
  EXPECT_EQ(Seen_After("sa_Box=Is Blank|sa_Box=Contains", page, "Edit1_Text"), "");
  Act(page, "Edit1_Text=  ");
  invalid("Edit1_Text");
  seams.Sounds.Played.clear();
  Act(page, "MC|MC|MW");
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{3, 1, 3}));
  Act(page, "Edit1_Text=  ab ");
  Send_Message(page, umEnterPressed, 0, 0);
  EXPECT_EQ(Criteria(), "Where... |    [ Calendar Events: Event Description  --  Contains:  ab ]|");
  EXPECT_EQ(Seen(page, "sf_box st_box sa_Box Edit1_Text MW SpeedButton1"),
            "Calendar Events|||hidden|hidden|(Remove Criteria)");
  EXPECT_EQ(Seen_After("st_box=Event Date|sa_Box=Between", page, "MC MW"), "hidden|hidden");
  EXPECT_EQ(Control<QLineEdit>(page, "Edit1_Text")->placeholderText(),
            QStringLiteral("M/d/yyyy and M/d/yyyy"));
  Act(page, "Edit1_Text=1/2/2024AND1/3/2024");
  Refuse("Invalid Value Field",
         "The Date Range specified is invalid. Please specify a date range in the format \"M/d/yyyy and "
         "M/d/yyyy\" before continuing",
         "Edit1_Text");
  Act(page,
      "Edit1_Text=01/02/2024 and 1/3/24|SpeedButton2|sf_box=Tasks|st_box=Task Status|sa_Box=Pending|"
      "SpeedButton2");
  const std::string date =
                        "    [ Calendar Events: Event Date  --  Between:  1/2/2024 and 1/3/2024 ]  And...|",
                    status = "    [ Tasks: Task Status  --  Pending ]|";
  EXPECT_EQ(Criteria(), "Where... |    [ Calendar Events: Event Description  --  Contains:  ab ]  And...|" +
                            date + status);
  auto* list = Control<QListWidget>(page, "ListBox1");
  list->setCurrentRow(0);
  Act(page, "SpeedButton1");
  EXPECT_EQ(CurrentSearch->Items.size(), 3u) << "the heading is none";
  list->setCurrentRow(1);
  Act(page, "SpeedButton1");
  EXPECT_EQ(Criteria(), "Where... |" + date + status);
  EXPECT_EQ(Seen(page, "sf_box st_box sa_Box Edit1_Text MC MW"),
            "Calendar Events|Event Description|Contains|ab|-|+");
  EXPECT_EQ(Asked(), QList<qintptr>{});
  Act(page, "SearchNow|Close");
  EXPECT_EQ(Asked(), (QList<qintptr>{Page_Calendar_Results, Page_Day})) << "what was half chosen is dropped";
  Act(page, "ClearSearch");
  EXPECT_EQ(Criteria() + Seen(page, "sf_box"), "");
}

TEST_F(Search_Pages, Each_Kind_Offers_Its_Groups_And_Asks_For_Its_Results) {
  Run_Sql("INSERT INTO KT_Categories (Key, Book, Name) VALUES ('1', '" + book + "', 'Club')");
  Display(Display_Simple_Search);
  EXPECT_EQ(Choices("sf_box"),
            "Contact Details|Contact Events|Tasks|Other Fields|Document Links|Contact Journal|By Field Type|"
            "Template Company|Template Person");
  Act(page,
      "sf_box=Contact Details|st_box=Category Membership|sa_Box=Is a Member of|Edit1_List=Club|"
      "SpeedButton2|sf_box=Template Person|st_box=Home|sa_Box=Is Blank|SpeedButton2");
  EXPECT_EQ(Criteria(),
            "Where... |    [ Contact Details: Category Membership  --  Is a Member of:  Club ]  And...|"
            "    [ Template Person: Home Field  --  Is Blank ]|");
  EXPECT_EQ(CurrentSearch->Get_Template(1), "Person");
  EXPECT_EQ(Choices("Folder_Box") + Seen(page, "SubGroups_Box"), "<All Contacts>|Club(+)");
  Control<QComboBox>(page, "Folder_Box")->setFocus();
  QTest::keyClick(Control<QComboBox>(page, "Folder_Box"), Qt::Key_Down);
  Act(page, "SubGroups_Box");
  EXPECT_EQ(CurrentSearch->Group + (CurrentSearch->SubGroups ? "+" : "-"), folder + "-");
  Send_Message(page, umEnterPressed, 0, 0);

  Display(Display_Simple_Notes_Search);
  EXPECT_EQ(Seen(page, "sf_box st_box"), "Contact Details|Contact Notes") << "where there is no choice";
  Act(page, "SearchNow|Close");
  Display([](auto* parent, auto& reference, auto& key, bool) {
    return Display_Simple_Task_Search(parent, reference, key);
  });
  EXPECT_EQ(Criteria(), "") << "contacts' criteria are no tasks'";
  Act(page, "SearchNow|Close");
  EXPECT_EQ(Asked(), (QList<qintptr>{Page_Contact_Results, Page_Contact_Results, Page_None, Page_Task_Results,
                                     Page_Tasks}));
}

TEST_F(Search_Pages, A_Stored_Search_Is_Loaded_With_What_It_Looks_For) {
  Display(Display_Advanced_Search);
  EXPECT_EQ(Seen_After("Target=Calendar Items", page, "Folder_Box"), "hidden");
  Act(page, "sf_box=National Holidays|st_box=Country|sa_Box=Is not Blank|SpeedButton2");
  With_Dialog(
      [&](QWidget* dialog) {
        EXPECT_EQ(Seen(dialog, "Edit2 OpenBtn ComboBox1"), "|(Save)|Personal Search Filters");
        EXPECT_EQ(Make_Checks(dialog), "");
        for (const char* name : {"   ", "<New Filter>"}) {
          seams.Prompts.Expect_Error("Filter Name Required",
                                     "Please specify a name for the Search Filter being saved");
          Act(dialog, std::string("Edit2=") + name + "|OpenBtn");
          seams.Prompts.Verify();
          EXPECT_EQ(Where(dialog), "Edit2");
        }
        Act(dialog, "Edit2= Countries  |OpenBtn");
      },
      [&] { Act(page, "SaveFilter"); });
  EXPECT_EQ(CurrentSearch->Name, "Countries");
  With_Dialog(
      [&](QWidget* dialog) {
        EXPECT_EQ(Seen(dialog, "Edit2"), "Countries");
        seams.Prompts.Expect_Question("Replace Filter",
                                      "Search Filter already exists. Do you wish to overwrite the Search "
                                      "Filter \"Countries\"",
                                      Answer_No);
        Act(dialog, "OpenBtn");
        EXPECT_TRUE(dialog->isVisible());
        Act(dialog, "ComboBox1=Shared Search Filters|OpenBtn");
      },
      [&] { Act(page, "SaveFilter"); });
  EXPECT_EQ(Query_Text("SELECT count(DISTINCT User) FROM KT_Filters"), "2") << "one of each";
  Act(page, "ClearSearch|Target=Contacts");
  With_Dialog(
      [&](QWidget* dialog) {
        EXPECT_EQ(Seen(dialog, "Edit2 OpenBtn"), "|(Load)");
        seams.Prompts.Expect_Error(
            "Invalid Filter Name",
            "The Search Filter \"Nothing\" does not exist. Please specify another name");
        Act(dialog, "Edit2=Nothing|OpenBtn");
        auto* list = Control<QTreeWidget>(dialog, "ListView1");
        ASSERT_EQ(list->topLevelItemCount(), 1);
        list->setCurrentItem(list->topLevelItem(0));
        EXPECT_EQ(Seen(dialog, "Edit2"), "Countries");
        seams.Prompts.Expect_Question("Delete Search Filter",
                                      "Are you sure you wish to delete the Search Filter \"Countries\"?",
                                      Answer_Yes);
        Act(dialog, "Delbtn");
        EXPECT_EQ(list->topLevelItemCount() + (Control<QWidget>(dialog, "Delbtn")->isEnabled() ? 10 : 0), 0);
        Act(dialog, "ComboBox1=Shared Search Filters");
        QTest::keyClicks(Control<QLineEdit>(dialog, "Edit2"), QStringLiteral("Countries"));
        Confirm(dialog);
      },
      [&] { Act(page, "LoadFilter"); });
  EXPECT_EQ(Criteria() + Seen(page, "Target"),
            "Where... |    [ National Holidays: Country  --  Is not Blank ]|Calendar Items");
  Act(page, "SearchNow");
  EXPECT_EQ(Asked(), QList<qintptr>{Page_Calendar_Results});
}

TEST_F(Search_Pages, What_Is_Found_Is_Opened_Marked_Deleted_And_Sorted) {
  ResultsSortKey = 2;
  for (const int day : {3, 1, 2}) Write(New_Event("Event " + std::to_string(day), Monday + day + 0.5));
  Make(1, 3);
  CurrentSearch->Add_Field(Group_Calendar_Types, Search_Any_Date, Action_Anytime, {}, {}, false, false);
  ASSERT_TRUE(Display_Calendar_Search_Results(&home, form, book, database.Book().Calendar));
  page = form.Get();
  Show(home);
  EXPECT_EQ(Make_Checks(&home), "");
  auto* list = Control<TEntry_List>(page, "ListView1");
  const auto shown = [&] {
    std::string titles;
    for (std::size_t i = 0; i < list->Items().Count(); ++i)
      titles += list->Items()[i].Caption.Str() + (static_cast<int>(i) == list->Selected_Row() ? "* " : " ");
    return titles + Control<QLabel>(page, "Label3")->text().section(QLatin1Char(' '), 2, 4).toStdString();
  };
  EXPECT_EQ(shown(), "Old Event 1 Event 2 Event 3 [4 Items found");
  Act(page, "SortKindLabel|SortKindLabel");
  EXPECT_EQ(shown(), "Old Event 3 Event 2 Event 1 [4 Items found") << "descending, then by date";
  list->Select_Row(1);
  Act(page, "AckBtn");
  EXPECT_EQ(Query_Rows("Actioned", "KT_Events_Data ORDER BY EventDate"), "0, 0, 0, 1");
  list->Select_Row(2);
  With_Dialog(Confirm_With("Edit1=Other"), [&] { QTest::keyClick(list, Qt::Key_Return); });
  EXPECT_EQ(shown(), "Old Event 3 Other* Event 1 [4 Items found");
  With_Dialog(Confirm, [&] { QTest::keyClick(list, Qt::Key_Delete); });
  EXPECT_EQ(shown(), "Old Event 3 Event 1* [3 Items found");
  Act(page, "SearchSettings|Close");
  EXPECT_EQ(Asked(), (QList<qintptr>{Page_Calendar_Search, Page_Day}));
}

}  // namespace
