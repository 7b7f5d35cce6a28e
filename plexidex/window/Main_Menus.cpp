// The main window's own menus, its settings and where it stands.

#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QSplitter>
#include <utility>

#include "Backup.h"
#include "Backup_Dialogs.h"
#include "Database.h"
#include "KTReminds.h"
#include "Kt_util_01.h"
#include "Login_Dialog.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Preferences.h"
#include "Print_Dialogs.h"
#include "Start_Page.h"
#include "Version.h"
#include "Waiting.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

QMenu* Add_Menu(QMenuBar* bar, const char* name, const QString& caption) {
  QMenu* menu = bar->addMenu(caption);
  menu->setObjectName(QString::fromLatin1(name));
  return menu;
}

}  // namespace

void TMain_Window::Make_Menus() {
  const auto add = [this](QMenu* menu, const QString& text, const QKeySequence& keys, const QString& hint,
                          auto run) {
    QAction* action = menu->addAction(text);
    action->setShortcut(keys);
    action->setStatusTip(hint);
    connect(action, &QAction::triggered, this, run);
    return action;
  };
  QMenu* file = Add_Menu(menuBar(), "File", tr("&File"));
  new_event = add(file, tr("New &Event..."), QKeySequence::New, tr("Create a New Calendar Event"),
                  [this] { New_Entry(false); });
  new_task = add(file, tr("New &Task..."), Qt::CTRL | Qt::SHIFT | Qt::Key_N,
                 tr("Create a New Address Book Task"), [this] { New_Entry(true); });
  new_contact = add(file, tr("New &Contact..."), Qt::CTRL | Qt::SHIFT | Qt::Key_C,
                    tr("Adds a contact to the address book"), [this] { Send_To_Page(umAddContact, 0); });
  file->addSeparator();
  import_file =
      add(file, tr("&Import..."), Qt::CTRL | Qt::Key_I,
          tr("Brings a file of a calendar or of contacts into the selected book"), [this] { Import(); });
  export_book =
      add(file, tr("E&xport..."), Qt::CTRL | Qt::Key_E,
          tr("Writes the calendar of the selected book, or its contacts, to a file"), [this] { Export(); });
  file->addSeparator();
  const auto add_print = [&](const QString& text, const QKeySequence& keys, const QString& hint, auto run) {
    print_actions << add(file, text, keys, hint, [this, run] {
      if (const auto request = Shown_Sheet()) run(this, *request);
    });
  };
  add_print(tr("&Print..."), QKeySequence::Print, tr("Prints the day, week, month or list that is shown"),
            Print_With_Dialog);
  add_print(tr("Print Pre&view..."), {}, tr("Shows the pages as they would be printed"), Preview_Print);
  add_print(tr("Save as P&DF..."), {}, tr("Writes the pages to a PDF file"), Save_As_Pdf);
  file->addSeparator();
  add(file, tr("&Back Up..."), {}, tr("Copies the database into a file"), [this] {
    Back_Up_With_Dialog(this);
    backups->Try_Again();
  });
  add(file, tr("&Restore Backup..."), {}, tr("Puts a backup in place of the database, which is kept"),
      [this] { Restore_Backup(); });
  file->addSeparator();
  Add_User_Commands(file);
  file->addSeparator();
  add(file, tr("&Quit"), QKeySequence::Quit, tr("Leaves the program"), [this] { Quit(); });

  QMenu* book = Add_Menu(menuBar(), "Book", tr("&Book"));
  add(book, tr("&New Book..."), {}, tr("Adds a book with a calendar, tasks and contacts"),
      [this] { Add_Book(); });
  set_up_book = add(book, tr("Book &Set-up..."), {}, tr("Allows the book's name and fields to be changed"),
                    [this] { Set_Up_Selected_Book(); });
  edit_templates = add(book, tr("Contact &Templates..."), {},
                       tr("Allows the kinds of contact and their fields to be changed"),
                       [this] { Edit_Templates_Of_Selected_Book(); });
  edit_categories = add(book, tr("Contact Cate&gories..."), {},
                        tr("Allows the categories of the book's contacts to be changed"),
                        [this] { Edit_Categories_Of_Selected_Book(); });
  edit_permissions = add(book, tr("&Permissions..."), {},
                         tr("Says who may do what with the book, or what of it is selected"),
                         [this] { Edit_Selected_Permissions(); });
  delete_book = add(book, tr("&Delete Book..."), {}, tr("Removes the selected book with all it holds"),
                    [this] { Delete_Selected_Book(); });
  book->addSeparator();
  edit_contact =
      add(book, tr("&Edit Contact..."), {}, tr("Allows the contact's name and details to be changed"),
          [this] { Edit_Selected_Contact(); });
  delete_contact =
      add(book, tr("Delete &Contact..."), {}, tr("Deletes the selected contact, which can be restored"),
          [this] { Delete_Selected_Contact(); });
  move_contacts = add(book, tr("&Move to Folder..."), Qt::CTRL | Qt::SHIFT | Qt::Key_M,
                      tr("Moves what is selected to a folder of the book"), [this] { Move_Selected(); });
  book->addSeparator();
  new_folder = add(book, tr("New &Folder..."), Qt::CTRL | Qt::SHIFT | Qt::Key_F,
                   tr("Adds a folder for contacts, in the one that is selected"), [this] { Add_Folder(); });
  rename_folder = add(book, tr("&Rename Folder..."), Qt::Key_F2, tr("Allows the folder's name to be changed"),
                      [this] { Rename_Selected_Folder(); });
  remove_folder = add(book, tr("Rem&ove Folder..."), {}, tr("Removes the folder and keeps what lies in it"),
                      [this] { Remove_Selected_Folder(); });

  QMenu* view = Add_Menu(menuBar(), "View", tr("&View"));
  add(view, tr("&Refresh"), QKeySequence::Refresh, tr("Reads what is shown again"), [this] {
    if (!Reload_Tree()) Send_To_Page(umRefreshDisplay, 0);
  });
  reminders = add(view, {}, {}, tr("Shows the reminders that wait for an answer"),
                  [this] { emit Reminders_Wanted(); });
  view->addSeparator();
  add(view, tr("&Preferences..."), {}, tr("Allows Plexidex to be configured to meet a user's preferences"),
      [this] { Preferences(); });

  QMenu* search = Add_Menu(menuBar(), "Search", tr("&Search"));
  const auto add_search = [&](const QString& text, int index, const QString& hint) {
    search_actions << add(search, text, {}, hint, [this, index] { Display_Host_Page(index); });
  };
  add_search(tr("&Calendar..."), KTReminds::Page_Calendar_Search, tr("Searches events, tasks and holidays"));
  add_search(tr("&Tasks..."), KTReminds::Page_Task_Search, tr("Searches the tasks"));
  add_search(tr("C&ontacts..."), KTReminds::Page_Contact_Search, tr("Searches all that contacts have"));
  add_search(tr("&Notes..."), KTReminds::Page_Notes_Search, tr("Searches the notes of contacts"));
  add_search(tr("&Advanced..."), KTReminds::Page_Advanced_Search,
             tr("Searches for anything, and stores searches or loads them"));

  search->addSeparator();
  const auto add_filter = [&](const QString& text, const QString& hint, auto run) {
    filter_actions << add(search, text, {}, hint, run);
  };
  add_filter(tr("&Run Search"), tr("Searches again for what the stored search asks for"),
             [this] { Node_Selected(); });
  add_filter(tr("&Edit Search..."), tr("Allows the criteria of the stored search to be changed"),
             [this] { Edit_Selected_Filter(); });
  add_filter(tr("&Delete Search..."), tr("Removes the stored search"), [this] { Delete_Selected_Filter(); });

  QMenu* help = Add_Menu(menuBar(), "Help", tr("&Help"));
  add(help, tr("&About Plexidex..."), {}, tr("Says what this program is and where its data lies"),
      [this] { About(); });
  Install_Menu_Bar(menuBar(), help->menuAction());
}

void TMain_Window::Make_Tree_Menu() {
  tree->setContextMenuPolicy(Qt::ActionsContextMenu);
  const auto separator = [this] {
    auto* line = new QAction(tree);
    line->setSeparator(true);
    return line;
  };
  tree->addActions({new_event, new_task, new_contact, new_folder, separator(), edit_contact, delete_contact,
                    move_contacts, rename_folder, remove_folder});
  tree->addActions(filter_actions);
  tree->addActions(
      {separator(), set_up_book, edit_templates, edit_categories, edit_permissions, delete_book});
  auto* erase = new QShortcut(Qt::Key_Delete, tree);
  erase->setContext(Qt::WidgetShortcut);
  connect(erase, &QShortcut::activated, this, [this] {
    for (QAction* remove : {delete_contact, remove_folder, filter_actions.last()}) {
      if (remove->isEnabled() && remove->isVisible()) return remove->trigger();
    }
  });
}

void TMain_Window::Preferences() {
  if (!Is_Free()) return;
  const std::string before = Kt_data_01::Shared_Database().Path();
  const auto database = Edit_Preferences(this, before);
  if (!database) return;
  if (*database != before && Switch_Database(*database, "User Preferences")) {
    Kt_util_01::Write_String("General", "Database", *database);
    for (const std::string& each : {before, *database}) Remember_Database(each);
  }
  // A page reads its settings when it is made.
  if (Close_Page()) Refresh();
  backups->Try_Again();
}

void TMain_Window::Restore_Backup() {
  if (!Is_Free()) return;
  const std::string file = Ask_What_To_Restore(this), database = Kt_data_01::Shared_Database().Path();
  if (file.empty()) return;
  const bool restored = Switch_Database(database, "Restore Backup", [&] {
    Kt_data_01::Close_Database();
    return "The backup has been restored. What was there before is kept in \"" +
           Kt_data_01::Restore(file, database, Window_Options()) + "\".";
  });
  if (!restored && isVisible()) Refresh();
}

bool TMain_Window::Switch_Database(const std::string& file, const char* caption,
                                   const std::function<std::string()>& before_opening) {
  const std::string before = Kt_data_01::Shared_Database().Path(), user = Kt_util_01::User_Key();
  std::string done;
  try {
    if (!Close_Page()) return false;
    if (before_opening) done = before_opening();
    Kt_data_01::Open_Database(file, Kt_data_01::TDatabase::TMode::Must_Exist, Window_Options());
    if (!done.empty()) Kt_util_01::Raise_Info(caption, std::exchange(done, {}));
    if (Begin_Session(this)) {
      Start_Session();
      backups->Start_Anew();
      return true;
    }
    // It is the same file: whoever does not log in has no other to go back to.
    if (file == before) Quit();
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error(caption, done.empty() ? e.what() : done + " " + e.what());
  }
  if (Kt_data_01::Shared_Database().Path() == before) return false;
  try {
    Kt_data_01::Open_Database(before, Kt_data_01::TDatabase::TMode::Must_Exist, Window_Options());
    Kt_util_01::Set_User_Key(user);
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error(caption, e.what());
  }
  return false;
}

void TMain_Window::About() {
  Kt_util_01::Raise_Info("About Plexidex", std::string("Plexidex ") + Version() +
                                               ": contacts, calendar, reminders and tasks.\n\nDatabase: " +
                                               Kt_data_01::Shared_Database().Path());
}

void TMain_Window::Restore_Place() {
  const auto bytes = [](const char* name) {
    return QByteArray::fromBase64(QByteArray::fromStdString(Kt_util_01::Read_String("Window", name, "")));
  };
  restoreGeometry(bytes("Geometry"));
  splitter->restoreState(bytes("Splitter"));
}

void TMain_Window::Save_Place() const {
  Kt_util_01::Write_String("Window", "Geometry", saveGeometry().toBase64().toStdString());
  Kt_util_01::Write_String("Window", "Splitter", splitter->saveState().toBase64().toStdString());
  Remember_Node(tree->Current());
}

}  // namespace Plexidex
