#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Kt_forms.h"
#include "Sheet.h"

class QAction;
class QLabel;
class QMenu;
class QSplitter;
class QToolButton;

namespace KTReminds {
class TSearchRecord;
}

namespace Plexidex {

class TDaily_Backups;
class TNavigation_Tree;
class TPage_Place;
struct TNode;

/// The host's window: the books with their calendars, tasks and contacts on the left, the page of the
/// selected node on the right, which merges its menu into the menu bar and shows its tools above.
class TMain_Window : public QMainWindow {
  Q_OBJECT

 public:
  TMain_Window();
  ~TMain_Window() override;

  /// Reads the tree and the page that is shown again.
  void Refresh();
  /// Name and number of the page that is shown, as it gives them; "" without a page.
  std::string Page_Name() const;
  TNavigation_Tree& Tree() { return *tree; }
  /// Asks for a new event or task of the book that is selected.
  void New_Entry(bool task);
  /// Opens the editor of an entry; of another user's private one with `hidden`.
  void Open_Entry(bool task, const std::string& key, const std::string& owner, const std::string& book,
                  bool hidden = false);
  /// Shows the window in front, wherever it was, and asks who one is when the current user is gone. False
  /// when the user leaves that, and with it the program.
  bool Come_Forward();
  /// Follows what has been changed about the users, by whomever; `own_change` says by the current one. Only a
  /// window in front asks who one is when the current user is gone, or has never been asked because there
  /// were no users or passwords; until then there is none, and nothing is shown. False without a user.
  bool Look_At_Session(bool in_front, bool own_change = false);
  /// Says how many reminders wait for an answer.
  void Show_Waiting(int count);
  /// Closes the window, whether or not it may go on hidden.
  void Quit();
  /// What says whether the program goes on without its window when that is closed.
  void Install_Background(std::function<bool()> goes_on);

 signals:
  void Reminders_Wanted();
  /// The window was closed for good.
  void Closed();
  /// Another user is the current one, or nobody is.
  void User_Changed();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Make_Menus();
  void Make_Tree_Menu();
  void Add_User_Commands(QMenu* file);
  void Set_Actions();
  /// What can be printed of the page that is shown: the view of a calendar that it holds.
  std::optional<TSheet_Request> Shown_Sheet() const;
  void Set_Print_Actions();
  void Read_Tree();
  /// Reads the tree again, and shows another page when what was selected is gone or called otherwise. True
  /// when it did.
  bool Reload_Tree();
  void Node_Selected();
  bool Show_Page(const TNode& node);
  bool Show_Contacts(const TNode& node);
  bool Show_Found_Contacts(const TNode& node);
  void Keep_Search();
  /// The page that is shown stays.
  void Forget_Found();
  bool Load_Filter(const TNode& node);
  bool Run_Filter(const TNode& node);
  void Edit_Selected_Filter();
  void Delete_Selected_Filter();
  void Close_Found();
  void Show_Hint_Without_Page();
  void Show_Contact(const std::string& contact);
  void Send_To_Page(int message, qintptr l_param);
  void Make_Quick_Search();
  void Show_All_Quick(int group, const std::string& text, const std::string& book);
  void Display_Host_Page(int index);
  bool Show_Search_Page(int index, const std::string& book);
  void Display_Own_Page(int index, const TNode& node);

  void Add_Contact();
  void Edit_Selected_Contact();
  void Delete_Selected_Contact();
  void Add_Folder();
  void Rename_Selected_Folder();
  void Remove_Selected_Folder();
  void Move_Selected();
  void Move_Dropped(const QString& book, const QStringList& keys, const QString& folder);
  void Add_Book();
  void Set_Up_Selected_Book();
  void Edit_Templates_Of_Selected_Book();
  void Edit_Categories_Of_Selected_Book();
  void Delete_Selected_Book();
  void Import();
  void Export();
  QString Title_Of(const std::string& book) const;
  /// False when the page that is shown refuses.
  bool Close_Page();
  /// Shows the database to a user who has just become the current one; no page is shown.
  void Start_Session();
  void End_Session();
  static bool Has_User();
  /// Whether no dialog is open anywhere, as one from a reminder may be; says so otherwise.
  static bool Is_Free();
  void Log_In_As_Another();
  void Edit_Selected_Permissions();
  void Manage_Users();
  void Set_Up_Security();
  void Preferences();
  void Restore_Backup();
  /// Does something to the files between closing the page and opening the database, if told to; what became
  /// of it is said before anybody logs in.
  bool Switch_Database(const std::string& file, const char* caption,
                       const std::function<std::string()>& before_opening = {});
  void About();

  void Restore_Place();
  void Save_Place() const;

  // As whose, and of what kind of database, the pages are shown.
  struct TSession {
    bool Permissions = false, Secure = false;
    std::string User;
    bool operator==(const TSession&) const = default;
  };
  static TSession Session();

  QSplitter* splitter;
  QWidget* tool_area;
  TNavigation_Tree* tree;
  TPage_Place* place;
  QLabel* no_page;
  Kt_forms::TForm_Reference page;
  QAction *new_event = nullptr, *new_task = nullptr, *new_contact = nullptr, *import_file = nullptr,
          *export_book = nullptr, *set_up_book = nullptr, *edit_templates = nullptr,
          *edit_categories = nullptr, *delete_book = nullptr, *edit_contact = nullptr,
          *delete_contact = nullptr, *new_folder = nullptr, *rename_folder = nullptr,
          *remove_folder = nullptr, *move_contacts = nullptr, *edit_permissions = nullptr;
  QAction* reminders = nullptr;
  QToolButton* waiting;
  TDaily_Backups* backups;
  QList<QAction*> filter_actions;  // run, edit, delete
  QList<QAction*> print_actions, search_actions;
  std::function<bool()> goes_on_hidden;
  bool quitting = false;
  bool other_page = false;                  // one for searching is shown in place of the node's own
  std::pair<int, std::string> last_search;  // its page, and the book
  TSession session = Session();
  // What the contacts were searched for that the tree shows as found; null when there are none.
  std::unique_ptr<KTReminds::TSearchRecord> found;
};

}  // namespace Plexidex
