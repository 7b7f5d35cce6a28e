#include "Window_Pictures.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <array>
#include <functional>
#include <iostream>

#include "Alert_Window.h"
#include "Book_Dialogs.h"
#include "Books.h"
#include "Category_Dialogs.h"
#include "Contact_Dialog.h"
#include "Contacts.h"
#include "Database.h"
#include "Folder_Dialogs.h"
#include "Folders.h"
#include "Host_Dialog.h"
#include "Journal_Page.h"
#include "KTAccess.h"
#include "KTReminds.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Links.h"
#include "Links_Page.h"
#include "Login_Dialog.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Page_Place.h"
#include "Permissions_Dialog.h"
#include "Preferences.h"
#include "Print_Dialogs.h"
#include "Rights.h"
#include "Template_Dialogs.h"
#include "Tray.h"
#include "User_Dialogs.h"
#include "Users.h"
#include "Waiting.h"
#include "Welcome.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

class TPictures {
 public:
  explicit TPictures(const QString& folder) : folder(folder) {}

  void Take(QWidget* window, const QString& name) {
    const QString file = folder + QLatin1Char('/') + name + QStringLiteral(".png");
    if (window->grab().save(file)) {
      std::cout << From_Qt(file) << std::endl;
      return;
    }
    std::cerr << "The picture \"" << From_Qt(file) << "\" cannot be written." << std::endl;
    failed = true;
  }

  // Takes a picture of the dialog that a call opens, or of each of its groups, and cancels it.
  void Take_Dialog(const QString& name, const std::function<void()>& call) {
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, qApp, [this, name] {
      if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        auto* groups = dialog->findChild<QTabWidget*>(QStringLiteral("Groups"));
        if (!groups) Take(dialog, name);
        for (int i = 0; groups && i < groups->count(); ++i) {
          groups->setCurrentIndex(i);
          QApplication::processEvents();
          Take(dialog, name + QLatin1Char('_') + groups->tabText(i).toLower());
        }
        dialog->reject();
      } else {
        std::cerr << "There is no window for the picture \"" << From_Qt(name) << "\"." << std::endl;
        failed = true;
      }
    });
    timer.start(150);
    call();
  }

  bool Failed() const { return failed; }

 private:
  QString folder;
  bool failed = false;
};

// Every page that the tree leads to, and every view of the calendar, under the name that the page gives.
void Take_Pages(TPictures& pictures, TMain_Window& window, const std::string& book) {
  const auto take = [&](TNode_Kind kind, const char* name, const std::string& contact = {}) {
    if (!window.Tree().Select(kind, book, contact)) return;
    QApplication::processEvents();
    pictures.Take(&window, To_Qt(std::string(name) + '_' + window.Page_Name()));
  };
  take(TNode_Kind::Book, "coming_weeks");
  take(TNode_Kind::Tasks, "tasks");
  take(TNode_Kind::Contacts, "contacts");
  const auto contacts = Kt_data_01::List_Contacts(book, false);
  constexpr std::size_t most_contacts = 10;
  for (std::size_t i = 0; i < contacts.size() && i < most_contacts; ++i)
    take(TNode_Kind::Contact, ("contact_" + std::to_string(i + 1)).c_str(), contacts[i].Key);
  const auto full = std::find_if(contacts.begin(), contacts.end(), [](const Kt_data_01::TContact& one) {
    return !Kt_data_01::List_Links(one.Key).empty();
  });
  if (auto* tabs = window.findChild<QTabBar*>(QStringLiteral("Tabs")); tabs && full != contacts.end()) {
    const int shown = tabs->currentIndex();
    for (int tab = 0; tab < tabs->count(); ++tab) {
      tabs->setCurrentIndex(tab);
      if (tab != shown) take(TNode_Kind::Contact, "contact", full->Key);
    }
    tabs->setCurrentIndex(shown);
  }
  if (const auto folders = Kt_data_01::List_Folders(book); !folders.empty())
    take(TNode_Kind::Folder, "folder", folders.front().Key);
  window.Tree().Select(TNode_Kind::Calendar, book);
  auto* calendar = window.findChild<KTReminds::TCalendar_HomePage_Frm*>();
  if (!calendar) return;
  const auto remembered =
      static_cast<int>(Kt_util_01::Read_Integer("General", "Calendar View", KTReminds::Page_Day));
  for (const int view :
       {KTReminds::Page_Day, KTReminds::Page_Week, KTReminds::Page_Month, KTReminds::Page_All}) {
    calendar->Show_Page(view);
    take(TNode_Kind::Calendar, "calendar");
  }
  calendar->Show_Page(KTReminds::Page_Permissions);
  QApplication::processEvents();
  pictures.Take(&window, QStringLiteral("calendar_permissions"));
  calendar->Show_Page(remembered);
}

// Each page of a search, empty and with criteria, and what it finds.
void Take_Searches(TPictures& pictures, TMain_Window& window, const std::string& book) {
  using namespace KTReminds;
  struct TSearch {
    const char* Name;
    int Page, Results;
    std::array<std::array<int, 3>, 3> Criteria;  // group, field, action
    std::array<const char*, 3> Values;
  };
  static const TSearch searches[] = {
      {"calendar",
       Page_Calendar_Search,
       Page_Calendar_Results,
       {{{Group_Calendar_Types, Search_Any_Description, Action_Contains},
         {Group_Calendar_Types, Search_Any_Date, Action_In_Next},
         {Group_Calendar_Events, Search_Calendar_Status, Action_Calendar_Outstanding}}},
       {"e", "30", ""}},
      {"tasks",
       Page_Task_Search,
       Page_Task_Results,
       {{{Group_Tasks, Search_Task_Description, Action_Contains},
         {Group_Tasks, Search_Task_Priority, Action_Less},
         {Group_Tasks, Search_Task_Percentage, Action_Less}}},
       {"e", "9", "100"}},
      {"contacts",
       Page_Contact_Search,
       Page_Contact_Results,
       {{{Group_Contact, Search_Contact_Name, Action_Contains},
         {Group_Contact, Search_Modified, Action_Anytime},
         {Group_Contact, Search_Contact_Status, Action_Not_Tagged}}},
       {"a", "", ""}},
      {"notes",
       Page_Notes_Search,
       Page_Contact_Results,
       {{{Group_Contact, Search_Notes, Action_Contains},
         {Group_Contact, Search_Notes, Action_Not_Blank},
         {Group_Contact, Search_Notes, Action_Does_Not_Contain}}},
       {"e", "", "xyz"}},
      {"advanced",
       Page_Advanced_Search,
       Page_Contact_Results,
       {{{Group_Contact, Search_Contact_Name, Action_Contains},
         {Group_Field_Types, Search_Any_Mail, Action_Not_Blank},
         {Group_Contact, Search_Category, Action_In_A_Category}}},
       {"a", "", ""}}};
  auto* place = window.findChild<TPage_Place*>();
  const auto take = [&](const std::string& name) {
    QApplication::processEvents();
    pictures.Take(&window, To_Qt("search_" + name));
  };
  for (const TSearch& search : searches) {
    window.Tree().Select(TNode_Kind::Calendar, book);
    Clear_Search();
    Send_Message(place, umDisplayForm, search.Page, 0);
    take(std::string(search.Name) + "_empty");
    for (std::size_t i = 0; i < search.Criteria.size(); ++i) {
      const auto& [group, field, action] = search.Criteria[i];
      CurrentSearch->Add_Field(group, field, action, search.Values[i], {}, false, false);
    }
    for (auto* page : window.findChildren<TForm*>()) {
      if (page->isVisible() && page->inherits("KTReminds::TCriteria_Page"))
        Send_Message(page, umRefreshDisplay, 0, 0);
    }
    take(search.Name);
    if (search.Page == Page_Advanced_Search) {
      pictures.Take_Dialog(QStringLiteral("filter_save"), [&] { Save_Filter(book); });
      pictures.Take_Dialog(QStringLiteral("filter_load"), [&] { Load_Filter(book); });
    }
    Send_Message(place, umDisplayForm, search.Results, 0);
    take(std::string(search.Name) + "_results");
  }
  auto* field = window.findChild<QLineEdit*>(QStringLiteral("Quick_Search"));
  window.activateWindow();
  field->setFocus();
  QApplication::processEvents();
  field->setText(QStringLiteral("e"));
  QElapsedTimer since;
  constexpr int enough_msecs = 500;
  for (since.start(); since.elapsed() < enough_msecs;) QApplication::processEvents();
  take("quick");
  field->clear();
}

// Reminders, as many as would go off in some months; and the menu of the icon.
void Take_Reminders(TPictures& pictures, TMain_Window& main_window, const std::string& book) {
  const Kt_util_01::TDateTime today = Kt_util_01::Today();
  Kt_data_01::TEventKey_List list;
  KTReminds::Build_Events_Data({}, book, list, today - 1, today + 120, true);
  std::vector<TAlert_Entry> entries;
  for (const auto& each : list) {
    TAlert_Entry entry;
    entry.Alert.Occurrence = each->Key.Str();
    entry.Title = each->Description.Str();
    if (!each->Is_Task()) entry.Location = each->SecondText.Str();
    entry.EventDate = each->EventDate;
    entry.Timeless = each->Timeless;
    entry.May_Change = true;
    if (entries.size() % 3 == 1) entry.Owner_Name = "Jonas Weber";
    entries.push_back(std::move(entry));
  }
  TAlert_Window window;
  for (const std::size_t count : {1, 5, 50}) {
    const auto end = entries.begin() + static_cast<std::ptrdiff_t>(std::min(count, entries.size()));
    window.Set_Entries({entries.begin(), end});
    window.Appear();
    QApplication::processEvents();
    pictures.Take(&window, QStringLiteral("reminders_%1").arg(count));
  }
  // And what the main window says of them and of a backup that failed.
  auto* failed = main_window.findChild<QLabel*>(QStringLiteral("Backup_Failed"));
  main_window.Show_Waiting(3);
  failed->show();
  pictures.Take(&main_window, QStringLiteral("status_bar"));
  main_window.Show_Waiting(0);
  failed->hide();
  TTray tray;
  tray.Set_Count(2);
  tray.Menu().popup({});
  QApplication::processEvents();
  pictures.Take(&tray.Menu(), QStringLiteral("tray_menu"));
  tray.Menu().close();
}

// In a database of their own: that of the user is not changed.
void Take_Users(TPictures& pictures, TMain_Window& window) {
  using namespace Kt_data_01;
  const std::string before = Shared_Database().Path(), user = Kt_util_01::User_Key();
  const QTemporaryDir folder;
  Open_Database(From_Qt(folder.filePath(QStringLiteral("users.db"))), TDatabase::TMode::Create_If_Missing);
  std::string key, book, friends, contact;
  Update_Host("Window_Pictures:Take_Users", [&] {
    for (const char* name : {"Anna", "Bert", "Carla"}) Add_User(name, false, key);
    Store_Password(Kt_util_01::User_Key(), "no hash");
    book = Create_Book("Work").Key;
    friends = Create_Contact(book, "Friends", {}, Contact_Type_Folder);
    contact = Create_Contact(book, "Jonas Weber", friends);
    Set_Rights(book, Global_User, {.Create = true, .See = true});
    Set_Rights(friends, key, {.Create = true, .Update = true, .See = true});
  });
  const auto take_inner = [&](const char* name, const char* button) {
    QTimer::singleShot(0, &window, [&pictures, name, button] {
      QWidget* list = QApplication::activeModalWidget();
      pictures.Take_Dialog(QLatin1String(name),
                           [&] { list->findChild<QPushButton*>(QLatin1String(button))->click(); });
      list->close();
    });
    Edit_Users(&window);
  };
  pictures.Take_Dialog(QStringLiteral("users"), [&] { Edit_Users(&window); });
  pictures.Take_Dialog(QStringLiteral("permissions"),
                       [&] { Edit_Permissions(&window, book, friends, KTAccess::Kind_Folder); });
  pictures.Take_Dialog(QStringLiteral("permissions_contact"),
                       [&] { Edit_Permissions(&window, book, contact, KTAccess::Kind_Contact); });
  take_inner("user", "Edit_User");
  take_inner("user_removed", "Remove_User");
  pictures.Take_Dialog(QStringLiteral("security"), [&] { Edit_Security(&window); });
  pictures.Take_Dialog(QStringLiteral("choose_user"), [&] { Log_In_Again(&window); });
  Update_Host("Window_Pictures:Take_Users", [] { Set_Secure(true); });
  pictures.Take_Dialog(QStringLiteral("log_in"), [&] { Log_In_Again(&window); });
  pictures.Take_Dialog(QStringLiteral("change_password"), KTAccess::Change_Password);
  Open_Database(before, TDatabase::TMode::Must_Exist, Window_Options());
  Kt_util_01::Set_User_Key(user);
}

}  // namespace

int Write_Pictures(TMain_Window& main_window, const std::string& target) {
  const QString folder = To_Qt(target);
  if (!QDir().mkpath(folder)) {
    std::cerr << "The folder \"" << target << "\" cannot be made." << std::endl;
    return 1;
  }
  TPictures pictures(folder);
  main_window.show();
  QApplication::processEvents();
  const auto books = Kt_data_01::List_Books();
  const std::string book = books.empty() ? std::string() : books.front().Key;
  Take_Pages(pictures, main_window, book);
  Take_Searches(pictures, main_window, book);
  Take_Reminders(pictures, main_window, book);
  pictures.Take_Dialog(QStringLiteral("new_event"),
                       [&] { KTReminds::Reminder_Properties({}, {}, book, {}, false); });
  pictures.Take_Dialog(QStringLiteral("new_task"),
                       [&] { KTReminds::Task_Properties({}, {}, book, {}, false); });
  pictures.Take_Dialog(QStringLiteral("reminder_properties"), [&] {
    Kt_util_01::TDateTime next_time = 0;
    bool on = true;
    int offset = 15;
    std::string sound;
    KTReminds::Alarm_Properties({}, Kt_util_01::Now(), next_time, on, offset, sound, false);
  });
  pictures.Take_Dialog(QStringLiteral("open_recurring_event"), [] {
    bool whole = false;
    KTReminds::Update_Recurring(whole);
  });
  pictures.Take_Dialog(QStringLiteral("new_contact"), [&] { New_Contact(&main_window, book); });
  if (const auto contacts = Kt_data_01::List_Contacts(book, false); !contacts.empty())
    pictures.Take_Dialog(QStringLiteral("contact_dialog"),
                         [&] { Edit_Contact(&main_window, contacts.front().Key); });
  if (const auto templates = Kt_data_01::List_Templates(book); !templates.empty()) {
    pictures.Take_Dialog(QStringLiteral("templates"), [&] { Edit_Templates(&main_window, book); });
    pictures.Take_Dialog(QStringLiteral("template"), [&] { Edit_Template(&main_window, templates.front()); });
  }
  pictures.Take_Dialog(QStringLiteral("categories"), [&] { Edit_Categories(&main_window, book); });
  pictures.Take_Dialog(QStringLiteral("new_folder"), [&] { New_Folder(&main_window, book, {}); });
  if (const auto contacts = Kt_data_01::List_Contacts(book, false); !contacts.empty()) {
    pictures.Take_Dialog(QStringLiteral("move_to_folder"),
                         [&] { Move_With_Dialog(&main_window, book, {contacts.front().Key}); });
    pictures.Take_Dialog(QStringLiteral("link"), [&] { Enter_Link(&main_window, contacts.front().Key); });
    pictures.Take_Dialog(QStringLiteral("journal_entry"),
                         [&] { Enter_Journal_Entry(&main_window, contacts.front().Key); });
  }
  pictures.Take_Dialog(QStringLiteral("book_set_up"), [&] { Set_Up_Book(&main_window, book); });
  pictures.Take_Dialog(QStringLiteral("print_preview"), [&] {
    Preview_Print(&main_window, {TSheet_Kind::Month, {book, {}}, true, Kt_util_01::CurrentDate, {}, {}});
  });
  const std::string database = Kt_data_01::Shared_Database().Path();
  pictures.Take_Dialog(QStringLiteral("preferences"), [&] { Edit_Preferences(&main_window, database); });
  pictures.Take_Dialog(QStringLiteral("welcome"), [&] { Welcome(database); });
  Take_Users(pictures, main_window);
  return pictures.Failed() ? 1 : 0;
}

}  // namespace Plexidex
