#include <QAbstractItemModelTester>

#include "Book_Dialogs.h"
#include "Categories.h"
#include "Category_Dialogs.h"
#include "Contact_Dialog.h"
#include "Contact_Model.h"
#include "Contact_Page.h"
#include "Contacts_Page.h"
#include "Editor_Fixture.h"
#include "Filter_Store.h"
#include "Folder_Dialogs.h"
#include "Journal.h"
#include "Tags.h"
#include "Template_Dialogs.h"
#include "Web_Links.h"

using namespace Plexidex;

namespace {

struct Contact_Forms : TEditor_Fixture {
  ~Contact_Forms() override { Install_Link_Opener({}); }

  TTemplate Of(const char* name) const {
    for (const TTemplate& one : List_Templates(book)) {
      if (one.Name == name) return one;
    }
    throw std::runtime_error(name);
  }
  std::string Add(const char* name, const TContact_Details& details) const {
    std::string key;
    In_Update([&] { Write_Contact(key = Create_Contact(book, name), name, details); });
    return key;
  }
  // The fields in the order in which Tab comes to them.
  static std::string Tab_Order(QWidget* form) {
    std::string names;
    Control<QLineEdit>(form, "Name")->setFocus();
    do {
      names += form->focusWidget()->objectName().toStdString() + " ";
      QTest::keyClick(form->focusWidget(), Qt::Key_Tab);
    } while (!form->focusWidget()->objectName().isEmpty() && form->focusWidget()->objectName() != "Name");
    return names;
  }

  const std::string book = database.Book().Key;
};

TEST_F(Contact_Forms, A_Contact_Is_Laid_Out_By_Its_Template_And_Loses_Nothing_When_That_Changes) {
  In_Update([&] {
    TTemplate company = Of("Company");
    company.Address_Style = TAddress_Style::US;
    Write_Template(company);
  });
  std::string key;
  With_Dialog(
      [&](QWidget* form) {
        const std::string others = "Other1 Other2 Other3 Other4 Other5 Other6 Other7 Other8 Notes ";
        EXPECT_EQ(Tab_Order(form),
                  "Name Template Field1 Field2 Field3 Field12 Field13 Field14 Field15 Field17 "
                  "Field18 Field19 Field6 " +
                      others);
        Act(form, "Name=Anna|Field1=Dr.|Field14=0160|Field6=1 Elm St");
        const std::string question =
            "The template \"Company\" has no field for Title. Put what the contact has there into its notes?";
        for (const int answer : {Answer_No, Answer_Yes}) {
          seams.Prompts.Expect_Question("Contact", question, answer);
          Act(form, "Template=Company");
          const bool stays = answer == Answer_No;
          EXPECT_EQ(Seen(form, "Template Field1"), stays ? "Person|Dr." : "Company|");
        }
        Settle();
        EXPECT_EQ(Tab_Order(form),
                  "Name Template Field1 Field2 Field3 Field12 Field13 Field15 Field17 Field19 "
                  "Field7 Field8 Field9 Field10 Field20 " +
                      others);
        EXPECT_EQ(Seen(form, "Field1 Field12 Field7 Notes"), "|0160|1 Elm St|Title: Dr.");
        Confirm_With("Field8=Reno|Field9=NV")(form);
      },
      [&] { key = New_Contact({}, book); });
  TContact_Details details = Read_Contact_Details(key);
  EXPECT_EQ(details.Fields[Field_Address] + details.Fields[12] + details.Notes,
            "1 Elm St\nReno, NV0160Title: Dr.");
  EXPECT_EQ(details.Template, Of("Company").Key);
  // What has no label any more is still there to be seen.
  In_Update([&] {
    TTemplate company = Of("Company");
    company.Labels = {};
    Write_Template(company);
  });
  With_Dialog(
      [&](QWidget* form) {
        EXPECT_EQ(Seen(form, "Field12 Field8"), "0160|Reno");
        In_Update([&] { Remove_Template(Of("Company"), Of("Person")); });
        seams.Prompts.Expect_Error("Contact",
                                   "The template \"Company\" has been removed; choose another one.");
        Confirm(form);
        Act(form, "Template=Person");
        seams.Prompts.Expect_Question("Discard changes?",
                                      "The changes in \"Contact\" have not been saved.\r\n\r\nDiscard them?",
                                      Answer_No);
        Cancel(form);
        Confirm_With("Name=Berta")(form);
      },
      [&] { EXPECT_TRUE(Edit_Contact({}, key)); });
  details = Read_Contact_Details(key);
  EXPECT_EQ(Find_Contact(key)->Name + details.Fields[Field_Address] + details.Fields[12],
            "Berta1 Elm St\nReno, NV0160");
}

TEST_F(Contact_Forms, Templates_Are_Added_Changed_And_Removed) {
  const std::string anna = Add("Anna", {});
  const auto press = [](QWidget* form, const char* button, const std::function<void(QWidget*)>& act = {}) {
    act ? With_Dialog(act, [&] { Act(form, button); }) : Act(form, button);
    QStringList shown;
    auto* list = Control<QListWidget>(form, "Template_List");
    for (int i = 0; i < list->count(); ++i) shown << list->item(i)->text();
    return (shown.join(QLatin1Char(' ')) + QLatin1Char('/') + list->currentItem()->text()).toStdString();
  };
  With_Dialog(
      [&](QWidget* form) {
        const auto name_it = [&](QWidget* dialog) {
          seams.Prompts.Expect_Error("New Template", "A template needs a name.");
          Confirm(dialog);
          seams.Prompts.Expect_Error("New Template",
                                     "There is a template \"person\" already; choose another name.");
          Confirm_With("Name=person")(dialog);
          Confirm_With("Name=Club|Label12=Office|Address_Style=UK: lines, postcode, country")(dialog);
        };
        EXPECT_EQ(press(form, "New_Template", name_it), "Person Company Club/Club");
        EXPECT_EQ(press(form, "Edit_Template", Confirm_With("Name=Choir")), "Person Company Choir/Choir");
        Control<QListWidget>(form, "Template_List")->setCurrentRow(0);
        seams.Prompts.Expect_Question("Contact Templates",
                                      "Remove the template \"Person\"? The contact that has it gets the "
                                      "template \"Company\"; what has no field there goes into the notes.",
                                      Answer_Yes);
        EXPECT_EQ(press(form, "Remove_Template"), "Company Choir/Company");
        seams.Prompts.Expect_Question("Contact Templates",
                                      "Remove the template \"Company\"? The contact that has it gets the "
                                      "template \"Choir\"; what has no field there goes into the notes.",
                                      Answer_Yes);
        EXPECT_EQ(press(form, "Remove_Template"), "Choir/Choir");
        seams.Prompts.Expect_Error("Contact Templates", "\"Choir\" is the book's last template and stays.");
        press(form, "Remove_Template");
        Confirm(form);
      },
      [&] { Edit_Templates({}, book); });
  const TTemplate choir = Of("Choir");
  EXPECT_EQ(choir.Labels[5] + std::to_string(static_cast<int>(choir.Address_Style)), "Office3");
  EXPECT_EQ(Read_Contact_Details(anna).Template, choir.Key);
}

TEST_F(Contact_Forms, A_Page_Shows_What_Is_Filled_And_Opens_Telephone_Mail_And_Web) {
  TContact_Details details;
  for (const auto& [code, text] : {std::pair(12, "+49 (0)30 1"),
                                   {13, "ask Bert"},
                                   {17, "a@example.org"},
                                   {19, "file:///etc/passwd"},
                                   {6, "<b>Street</b>\nTown"}})
    details.Fields[code] = text;
  details.Other[2] = "third";
  TContact_Page page;
  page.Set_Keys(book, Add("Anna", details));
  page.Reload();
  Show(page);
  EXPECT_EQ(Seen(&page, "Contact_Name Field12 Field13 Field17 Field19 Field6 Other3"),
            "Anna|+49 (0)30 1|ask Bert|a@example.org|file:///etc/passwd|<b>Street</b>\nTown|third");
  for (const char* empty : {"Field1", "Field18", "Other1", "Notes"})
    EXPECT_FALSE(page.findChild<QWidget*>(QLatin1String(empty))) << empty;
  std::string opened;
  Install_Link_Opener([&](const QUrl& url) {
    opened += url.toEncoded().toStdString() + " ";
    return url.scheme() != QLatin1String("mailto");
  });
  seams.Prompts.Expect_Error("Contact",
                             "There is no program on this machine that opens \"mailto:a@example.org\".");
  for (const char* field : {"Field12", "Field13", "Field17", "Field19"}) {
    Act(&page, field);
    Settle();
  }
  Open_Link(QUrl(QStringLiteral("file:///etc/passwd")));
  EXPECT_EQ(opened, "tel:+49301 mailto:a@example.org ");
  page.Close_Form();
}

struct Contact_Parts : Contact_Forms {
  Contact_Parts() {
    page.Set_Keys(book, anna);
    page.Reload();
    Show(page);
  }
  // Shows a tab, whose list is below.
  QTreeWidget* Tab(int tab, const char* name) {
    Control<QTabBar>(&page, "Tabs")->setCurrentIndex(tab);
    Settle();
    return Control<QTreeWidget>(&page, name);
  }
  static std::string Rows(const QTreeWidget* list, int from = 0) {
    std::string rows;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
      for (int column = from; column < list->columnCount(); ++column)
        rows += list->topLevelItem(i)->text(column).toStdString() + "|";
    }
    return rows;
  }
  void Press(const char* button, const std::function<void(QWidget*)>& act) {
    With_Dialog(act, [&] { Act(&page, button); });
  }

  const std::string anna = Add("Anna", {});
  TContact_Page page;
};

TEST_F(Contact_Parts, Links_Are_Added_Opened_And_Removed_And_The_Journal_Tells) {
  QTreeWidget* links = Tab(2, "Links");
  EXPECT_EQ(Seen(&page, "Open_Link Add_Link Edit_Link Remove_Link"),
            "(&Open)|Add &Link...|(Ed&it...)|(&Remove...)");
  Press("Add_Link", [&](QWidget* form) {
    seams.Prompts.Expect_Error("New Link", "A link needs a title, a file or a web address.");
    Confirm(form);
    Confirm_With("Target=" + database.Path())(form);
  });
  for (const char* link : {"Title=Site|Target=example.org/a", "Title=Gone|Target=/nowhere/a.txt"})
    Press("Add_Link", Confirm_With(link));
  EXPECT_EQ(Rows(links), "test.db|" + database.Path() + "|Site|example.org/a|Gone|/nowhere/a.txt|");
  std::string opened;
  Install_Link_Opener([&](const QUrl& url) {
    opened += url.toString().toStdString() + " ";
    return true;
  });
  seams.Prompts.Expect_Error("Link", "The file \"/nowhere/a.txt\" is not there.");
  for (int row = 0; row < 3; ++row) {
    links->setCurrentItem(links->topLevelItem(row));
    Confirm(links);
  }
  QTest::mouseClick(links->viewport(), Qt::LeftButton, {},
                    links->visualItemRect(links->topLevelItem(1)).center());
  EXPECT_EQ(opened, "file://" + database.Path() + " https://example.org/a https://example.org/a ");
  links->setCurrentItem(links->topLevelItem(1));
  Press("Edit_Link", Confirm_With("Title=Page"));
  seams.Prompts.Expect_Question("Link", "Remove the link \"Page\"? The file itself stays.", Answer_Yes);
  Act(&page, "Remove_Link");
  EXPECT_EQ(Rows(links), "test.db|" + database.Path() + "|Gone|/nowhere/a.txt|");
  const std::string kinds = Rows(Tab(3, "Journal"));
  const auto count = [&](const std::string& kind) {
    return kinds.find(kind) == std::string::npos
               ? 0
               : 1 + (kinds.find(kind, kinds.find(kind) + 1) != std::string::npos);
  };
  EXPECT_EQ(count("Link Added") + count("Link Opened") * 10 + count("Link Removed") * 100, 122);
  page.Close_Form();
}

TEST_F(Contact_Parts, The_Journal_Takes_What_Is_Typed_And_Keeps_What_The_Host_Wrote) {
  QTreeWidget* journal = Tab(3, "Journal");
  EXPECT_EQ(Rows(journal, 1), "Contact Created|Anna|");
  EXPECT_EQ(Seen(&page, "Edit_Entry Remove_Entry"), "(Ed&it...)|(&Remove...)");
  Press("Add_Entry", [&](QWidget* form) {
    EXPECT_EQ(Seen(form, "Kind Date Time"), "Phone Call Made|1/15/2024|12:00 PM");
    seams.Prompts.Expect_Error("New Journal Entry", "\"25:00\" is no time of day; write it as h:mm AP.");
    Confirm_With("Time=25:00")(form);
    Confirm_With("Kind=Meeting|Date=1/14/24|Time=9:30 AM|Text=About the trip")(form);
  });
  EXPECT_EQ(Rows(journal),
            "1/15/2024 12:00 PM|Contact Created|Anna|1/14/2024 9:30 AM|Meeting|About the trip|");
  journal->setCurrentItem(journal->topLevelItem(1));
  With_Dialog(Confirm_With("Kind=Letter Sent|Date=1/16/24"), [&] { Confirm(journal); });
  EXPECT_EQ(Rows(journal, 1), "Letter Sent|About the trip|Contact Created|Anna|");
  journal->setCurrentItem(journal->topLevelItem(0));
  seams.Prompts.Expect_Question("Journal", "Remove the journal entry \"Letter Sent\" of 1/16/2024 9:30 AM?",
                                Answer_Yes);
  Act(&page, "Remove_Entry");
  EXPECT_EQ(Rows(journal, 1), "Contact Created|Anna|");
  Sign_In({.See = true});
  page.Reload();
  EXPECT_EQ(Seen(&page, "Add_Entry"), "(Add &Entry...)");
  page.Close_Form();
}

TEST_F(Contact_Parts, What_A_User_May_Not_Do_Gives_A_Warning_Sound_Alone) {
  std::string folder;
  In_Update([&] { folder = Create_Contact(book, "Friends", {}, Contact_Type_Folder); });
  Sign_In({.See = true});
  const std::function<void()> commands[] = {[&] { EXPECT_FALSE(Move_Contacts(book, {anna}, folder)); },
                                            [&] { New_Folder({}, book, {}); },
                                            [&] { Edit_Folder({}, folder); },
                                            [&] { Delete_Folder_After_Asking(folder); },
                                            [&] { New_Contact({}, book, {}); },
                                            [&] { New_Contact({}, book, folder); },
                                            [&] { Delete_Contacts({anna}); },
                                            [&] { New_Book({}); },
                                            [&] { Set_Up_Book({}, book); },
                                            [&] { Delete_Book_After_Asking(book); },
                                            [&] { Edit_Templates({}, book); },
                                            [&] { Edit_Categories({}, book); },
                                            [&] { Delete_Filter(book, "", true); }};
  for (std::size_t i = 0; i < std::size(commands); ++i) {
    seams.Sounds.Played.clear();
    commands[i]();
    EXPECT_EQ(seams.Sounds.Played, std::vector<int>{5}) << i;
  }
  // Nor may a book be deleted with a folder that is to be kept.
  In_Update([&] {
    Set_Rights(book, User_Key(), {.Delete = true, .See = true});
    Set_Rights(folder, User_Key(), {.Create = true, .See = true});
    Set_Rights(anna, User_Key(), {.Update = true, .See = true});
  });
  Delete_Book_After_Asking(book);
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{5, 5}));
  EXPECT_FALSE(Move_Contacts(book, {anna}, folder)) << "it may not be taken away from where it is";
}

TEST_F(Contact_Parts, Categories_Are_Checked_Named_And_Shown_And_A_Tag_Is_The_Users) {
  std::string choir;
  In_Update([&] {
    choir = Find_Or_Add_Category(book, "Choir");
    Find_Or_Add_Category(book, "Work");
  });
  With_Dialog(
      [&](QWidget* form) {
        auto* boxes = Control<QListWidget>(form, "Categories");
        boxes->item(0)->setCheckState(Qt::Checked);
        With_Dialog(
            [&](QWidget* dialog) {
              seams.Prompts.Expect_Error("New Category",
                                         "There is a category \"choir\" already; choose another name.");
              Confirm_With("Name=choir")(dialog);
              Confirm_With("Name=Zoo")(dialog);
            },
            [&] { Act(form, "New_Category"); });
        seams.Prompts.Expect_Question("Discard changes?",
                                      "The changes in \"Contact\" have not been saved.\r\n\r\nDiscard them?",
                                      Answer_No);
        Cancel(form);
        In_Update([&] { Remove_Category(choir); });
        Confirm(form);
      },
      [&] { Act(&page, "Edit_Contact"); });
  EXPECT_EQ(Seen(&page, "Categories"), "Choir, Zoo") << "also one that was removed meanwhile";
  EXPECT_EQ(List_Journal(anna).front().Text, "Categories: Choir, Zoo");
  Act(&page, "Tag");
  EXPECT_TRUE(Is_Tagged(anna));
  With_Dialog(
      [&](QWidget* form) {
        const auto names = [&] {
          QStringList shown;
          auto* list = Control<QListWidget>(form, "Category_List");
          for (int i = 0; i < list->count(); ++i) shown << list->item(i)->text();
          return shown.join(QLatin1Char(' ')).toStdString();
        };
        With_Dialog(Confirm_With("Name=Alps"), [&] { Act(form, "New_Category"); });
        With_Dialog(Confirm_With("Name=Zurich"), [&] { Act(form, "Edit_Category"); });
        EXPECT_EQ(names(), "Choir Work Zoo Zurich");
        Control<QListWidget>(form, "Category_List")->setCurrentRow(0);
        seams.Prompts.Expect_Question(
            "Categories", "Remove the category \"Choir\"? The contact that belongs to it stays without it.",
            Answer_Yes);
        Act(form, "Remove_Category");
        EXPECT_EQ(names(), "Work Zoo Zurich");
        Confirm(form);
      },
      [&] { Edit_Categories({}, book); });
  page.Close_Form();
}

TEST(Links, Are_Made_Of_What_Can_Be_Opened_Alone) {
  using enum TField_Kind;
  struct {
    TField_Kind Kind;
    const char *Text, *Link;
  } const cases[] = {
      {Telephone, " 0160 / 555-01 ", "tel:016055501"},
      {Telephone, "112", "tel:112"},
      {Telephone, "030 555 01 ext. 3", "tel:03055501"},
      {Telephone, "1-800-FLOWERS", ""},
      {Telephone, "none", ""},
      {Mail, "Anna <anna@example.org>", "mailto:anna@example.org"},
      {Mail, "a@example.org?cc=b@example.org", "mailto:a@example.org%3Fcc=b@example.org"},
      {Mail, "anna", ""},
      {Web, "www.example.org/a?b=1", "https://www.example.org/a?b=1"},
      {Web, "http://example", "http://example"},
      {Web, "javascript:alert(1)", ""},
      {Web, "javascript://example.org/%0Aalert(1)", ""},
      {Web, "file:///etc/passwd", ""},
      {Web, "see the card", ""},
      {Text, "www.example.org", ""},
      {Address, "0160 555", ""},
  };
  for (const auto& one : cases) {
    const auto link = Link_To(one.Kind, QString::fromLatin1(one.Text));
    EXPECT_EQ(link ? link->toEncoded().toStdString() : "", one.Link) << one.Text;
  }
  for (const auto& [text, document] : {std::pair(" /tmp/a b.pdf", "file:///tmp/a%20b.pdf"),
                                       {"file:///tmp/a.pdf", "file:///tmp/a.pdf"},
                                       {"www.example.org", "https://www.example.org"},
                                       {"a.pdf/", "https://a.pdf/"},
                                       {"ftp://example.org", ""},
                                       {"notes", ""}}) {
    const auto link = Document_Link(QString::fromLatin1(text));
    EXPECT_EQ(link ? link->toEncoded().toStdString() : "", document) << text;
  }
}

TEST_F(Contact_Forms, The_List_Is_Sorted_By_A_Column_And_Narrowed_As_One_Types) {
  const auto add = [&](const char* name, const char* telephone) {
    TContact_Details details;
    details.Fields[13] = telephone;
    return Add(name, details);
  };
  add("anna", "3");
  add("Bert", "2");
  const std::string carl = add("Carl", "1");
  TContacts_Page page;
  page.Set_Keys(book, {});
  page.Reload();
  Show(page);
  auto* list = Control<QTableView>(&page, "Contacts");
  const QAbstractItemModelTester tester(list->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  const auto shown = [&] {
    std::string names;
    for (int row = 0; row < list->model()->rowCount(); ++row) {
      const QString name = list->model()->index(row, 0).data().toString();
      names += (row == list->currentIndex().row() ? "*" : "") + name.toStdString() + " ";
    }
    return names + Seen(&page, "Shown_Count");
  };
  EXPECT_EQ(shown(), "*anna Bert Carl 3 contacts");
  QTest::keyClicks(Control<QLineEdit>(&page, "Filter"), "r");
  EXPECT_EQ(shown(), "*Bert Carl 2 of 3 contacts");
  auto* header = list->horizontalHeader();
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {header->sectionViewportPosition(1) + 8, 8});
  EXPECT_EQ(shown(), "Carl *Bert 2 of 3 contacts") << "the contact stays selected";
  QTest::keyClick(Control<QLineEdit>(&page, "Filter"), Qt::Key_Down);
  EXPECT_EQ(Where(&page), "Contacts");
  QTest::keyClick(list, Qt::Key_Up);
  QSignalSpy opened(&page, &TContacts_Page::Open_Contact);
  Confirm(list);
  ASSERT_EQ(opened.size(), 1);
  EXPECT_EQ(opened[0][0].toString().toStdString(), carl);
  In_Update([&] { Set_Contact_Deleted(carl, true); });
  page.Reload();
  EXPECT_EQ(shown(), "*Bert 1 of 2 contacts") << "order and filter stay";
  Act(&page, "Filter=");
  EXPECT_EQ(shown(), "*Bert anna 2 contacts");
  list->selectAll();
  QTest::keyClick(list, Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(Tagged_Contacts().size(), 2U);
  EXPECT_EQ(list->model()->index(1, 0).data(Qt::AccessibleTextRole).toString(), "anna, tagged");
  list->sortByColumn(0, Qt::AscendingOrder);
  page.Reload();
  EXPECT_EQ(shown() + std::to_string(list->selectionModel()->selectedRows().size()),
            "anna *Bert 2 contacts2");
  QTest::keyClick(list, Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(Tagged_Contacts().size(), 0U);
  const auto columns = [&](int width) {
    page.resize(width, 300);
    Settle();
    std::string names;
    for (int column = 0; column < list->model()->columnCount(); ++column) {
      if (!list->isColumnHidden(column))
        names += list->model()->headerData(column, Qt::Horizontal).toString().toStdString() + " ";
    }
    return names;
  };
  EXPECT_EQ(columns(1200), "Name Telephone E-mail Template Folder Categories ");
  EXPECT_EQ(columns(300), "Name Telephone E-mail Template ");
  seams.Prompts.Expect_Question("Delete Contact",
                                "Delete the 2 selected contacts? They are kept with their entries among the "
                                "deleted contacts and can be restored.",
                                Answer_Yes);
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_EQ(shown(), "0 contacts");
  page.Close_Form();
}

}  // namespace
