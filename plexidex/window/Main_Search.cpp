// The pages for searching, which are shown in place of the page of the selected node.

#include <QKeyEvent>
#include <QLayout>
#include <QShortcut>
#include <algorithm>

#include "Criteria_Page.h"
#include "Filter_Store.h"
#include "Found_Contacts_Page.h"
#include "KTReminds.h"
#include "Kt_util_01.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Page_Place.h"
#include "Quick_Field.h"

namespace Plexidex {

using namespace Kt_forms;
using namespace KTReminds;

namespace {

using TDisplay_Search = bool (*)(QWidget*, TForm_Reference&, const std::string&, bool);

TDisplay_Search Search_Page(int index) {
  switch (index) {
    case Page_Calendar_Search:
      return Display_Simple_Calendar_Search;
    case Page_Contact_Search:
      return Display_Simple_Search;
    case Page_Notes_Search:
      return Display_Simple_Notes_Search;
    case Page_Advanced_Search:
      return Display_Advanced_Search;
    default:
      return nullptr;
  }
}

}  // namespace

void TMain_Window::Display_Host_Page(int index) {
  const TNode node = tree->Current();
  if (node.Book.empty()) return;
  // What was found asks for the criteria that found it.
  if (index == Page_Calendar_Search && page.As<TCalendar_Search_Results_Frm>() &&
      last_search.second == node.Book)
    index = last_search.first;
  if (Search_Page(index)) {
    if (!Show_Search_Page(index, node.Book)) return;
  } else if (index == Page_Calendar_Results) {
    if (!Display_Calendar_Search_Results(place, page, node.Book, node.Calendar)) return;
  } else if (index == Page_Contact_Results) {
    Keep_Search();
    tree->Show_Results(node.Book, {});
    tree->Select(TNode_Kind::Results, node.Book);
    return;
  } else {
    return Display_Own_Page(index, node);
  }
  other_page = true;
  Send_Message(page.Get(), umSetActiveControl, 0, 0);
}

bool TMain_Window::Show_Search_Page(int index, const std::string& book) {
  // Another kind of search begins anew; the same one goes on where it was.
  const std::pair begun(index, book);
  const bool anew = begun != last_search;
  if (!Search_Page(index)(place, page, book, anew)) return false;
  last_search = begun;
  connect(page.As<TCriteria_Page>(), &TCriteria_Page::Search_Cleared, this, &TMain_Window::Forget_Found,
          Qt::UniqueConnection);
  if (anew) Forget_Found();
  return true;
}

void TMain_Window::Make_Quick_Search() {
  auto* field = new TQuick_Field;
  tool_area->setFixedHeight(std::max(tool_area->height(), field->sizeHint().height()));
  tool_area->layout()->addWidget(field);
  tool_area->layout()->setAlignment(field, Qt::AlignVCenter);
  auto* shortcut = new QShortcut(QKeySequence::Find, this);
  connect(shortcut, &QShortcut::activated, field, [field] {
    field->setFocus(Qt::ShortcutFocusReason);
    field->selectAll();
  });
  connect(field, &TQuick_Field::Open_Entry, this,
          [this](bool task, const QString& key, const QString& owner, const QString& book) {
            Open_Entry(task, From_Qt(key), From_Qt(owner), From_Qt(book));
          });
  connect(field, &TQuick_Field::Open_Contact, this, [this](const QString& key, const QString& book) {
    if (tree->Select(TNode_Kind::Contact, From_Qt(book), From_Qt(key))) tree->setFocus();
  });
  connect(field, &TQuick_Field::Show_All, this, [this](int group, const QString& text, const QString& book) {
    Show_All_Quick(group, From_Qt(text), From_Qt(book));
  });
}

void TMain_Window::Open_Entry(bool task, const std::string& key, const std::string& owner,
                              const std::string& book, bool hidden) {
  (task ? Task_Properties : Reminder_Properties)(key, owner, book, {}, hidden);
  Look_At_Rows(this);
}

// As the advanced search would be asked, so that it can be changed there.
void TMain_Window::Show_All_Quick(int group, const std::string& text, const std::string& book) {
  if (tree->Current().Book != book && !tree->Select(TNode_Kind::Contacts, book)) return;
  Clear_Search();
  last_search = {Page_Advanced_Search, book};
  switch (group) {
    case TQuick_Search::Events:
      CurrentSearch->Add_Field(Group_Calendar_Events, Search_Calendar_Description, Action_Contains, text, {},
                               false, false);
      break;
    case TQuick_Search::Tasks:
      CurrentSearch->Add_Field(Group_Tasks, Search_Task_Description, Action_Contains, text, {}, false, false);
      break;
    default:
      CurrentSearch->Add_Field(Group_Field_Types, Search_Any_Text, Action_Contains, text, {}, false, false);
      break;
  }
  Display_Host_Page(Results_Of_Search());
  if (page.Get()) page.Get()->setFocus();
}

// The node's own page, or that of another one of its book.
void TMain_Window::Display_Own_Page(int index, const TNode& node) {
  const auto show = [&](TNode_Kind kind) {
    if (node.Kind != kind) return tree->Select(kind, node.Book);
    if (other_page) Node_Selected();
    return true;
  };
  switch (index) {
    case Page_Day:
      if (show(TNode_Kind::Calendar)) Send_Message(page.Get(), umDisplayForm, Page_Day, 0);
      break;
    case Page_Task_Search:
      if (!show(TNode_Kind::Tasks)) break;
      last_search = {Page_Task_Search, node.Book};
      Send_Message(page.Get(), umDisplayForm, Page_Task_Search, 0);
      Send_Message(page.Get(), umSetActiveControl, 0, 0);
      break;
    case Page_Task_Results: {
      // The tasks' page clears the search when it is shown without one.
      const auto asked = CurrentSearch ? *CurrentSearch : TSearchRecord();
      if (!show(TNode_Kind::Tasks)) break;
      *CurrentSearch = asked;
      Display_Task_Home_Page(place, page, node.Book, node.Calendar, Page_Task_Results, tool_area);
      break;
    }
    case Page_None:
      if (node.Kind == TNode_Kind::Searches) {
        tree->Select(TNode_Kind::Book, node.Book);
        break;
      }
      Node_Selected();
      break;
    default:
      break;
  }
}

// The search goes on to be edited; what was found belongs to it as it is now.
void TMain_Window::Keep_Search() {
  if (!CurrentSearch) Clear_Search();
  found = std::make_unique<TSearchRecord>(*CurrentSearch);
}

bool TMain_Window::Show_Found_Contacts(const TNode& node) {
  *CurrentSearch = *found;
  return Display_Book_Page<TFound_Contacts_Page>(
      place, page, node.Book, node.Calendar, [this](TFound_Contacts_Page& made) {
        // Queued: the page that asks is closed by what it asks for.
        connect(
            &made, &TContact_List_Page::Open_Contact, this,
            [this](const QString& key) { tree->Select_Found(tree->Current().Book, From_Qt(key)); },
            Qt::QueuedConnection);
        connect(&made, &TContact_List_Page::Contacts_Changed, this, &TMain_Window::Reload_Tree);
        connect(&made, &TFound_Contacts_Page::Searched, this, [this] {
          if (auto* shown = page.As<TFound_Contacts_Page>())
            tree->Show_Results(shown->Book(), shown->Found());
        });
        connect(
            &made, &TFound_Contacts_Page::Settings_Wanted, this,
            [this] {
              const bool is_of_contacts =
                  last_search.first == Page_Contact_Search || last_search.first == Page_Notes_Search;
              Display_Host_Page(is_of_contacts && last_search.second == tree->Current().Book
                                    ? last_search.first
                                    : Page_Advanced_Search);
            },
            Qt::QueuedConnection);
        connect(&made, &TFound_Contacts_Page::Close_Wanted, this, &TMain_Window::Close_Found,
                Qt::QueuedConnection);
      });
}

// Its criteria become those of the advanced search.
bool TMain_Window::Load_Filter(const TNode& node) {
  if (!Load_Filter_Settings(node.Book, node.Filter, node.Shared)) return false;
  last_search = {Page_Advanced_Search, node.Book};
  return true;
}

// The results are shown beside the filter, which stays selected.
bool TMain_Window::Run_Filter(const TNode& node) {
  if (!Load_Filter(node)) return false;
  switch (const int results = Results_Of_Search()) {
    case Page_Calendar_Results:
      return Display_Calendar_Search_Results(place, page, node.Book, node.Calendar);
    case Page_Task_Results:
      return Display_Task_Home_Page(place, page, node.Book, node.Calendar, results, tool_area);
    default:
      Keep_Search();
      tree->Show_Results(node.Book, {});
      return Show_Found_Contacts(node);
  }
}

void TMain_Window::Edit_Selected_Filter() {
  if (Load_Filter(tree->Current())) Display_Host_Page(Page_Advanced_Search);
}

void TMain_Window::Delete_Selected_Filter() {
  const TNode node = tree->Current();
  if (!May_Delete_Filter(node.Book, node.Shared)) return Kt_util_01::Sound(5);
  const std::string question = "Are you sure you wish to delete the Search Filter \"" + node.Filter + "\"?";
  if (Kt_util_01::Raise_Question("Delete Search Filter", question) != Kt_util_01::Answer_Yes ||
      !Delete_Filter(node.Book, node.Filter, node.Shared))
    return void(Reload_Tree());
  Read_Tree();
  if (!tree->Select(TNode_Kind::Searches, node.Book)) tree->Select(TNode_Kind::Book, node.Book);
}

void TMain_Window::Forget_Found() {
  tree->Hide_Results();
  found.reset();
  Set_Actions();
}

void TMain_Window::Close_Found() {
  const TNode node = tree->Current();
  Forget_Found();
  if (!tree->Select(TNode_Kind::Contacts, node.Book)) Node_Selected();
}

void TMain_Window::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // What the control with the keyboard has no use for is its page's.
      if (QWidget* control = focusWidget()) Send_Message(Get_ParentForm(control), umEnterPressed, 0, 0);
      break;
    case Qt::Key_F3:
      // The home pages have an item for it.
      Display_Host_Page(Page_Contact_Search);
      break;
    default:
      QMainWindow::keyPressEvent(event);
  }
}

}  // namespace Plexidex
