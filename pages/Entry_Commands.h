#pragma once

#include <QActionGroup>
#include <functional>
#include <string>

#include "Command_Rules.h"
#include "Event_Record.h"
#include "Kt_forms.h"
#include "Page_Tools.h"

class QMenu;

namespace KTReminds {

class TEntry_List;
class TSort_Header;

/// What a command did to an entry.
struct TEntry_Change {
  enum class TKind { Event_Added, Task_Added, Opened, Deleted };
  TKind Kind;
  std::string Key;  // of the entry opened or deleted; empty for one that was added
  int Row = -1;     // that was selected in its list when the command was given; -1 for none
};

/// What differs from page to page.
class TEntry_Page {
 public:
  /// To whom a new event or task belongs; no contact stands for the book's calendar. Entries are opened as
  /// those of its book.
  virtual TOwner Owner_Of_New(TEntry_Type type) const = 0;
  /// Right before the editor of a new entry opens.
  virtual void Before_Adding() {}
  /// Shows the change. The user has confirmed it; what the page showed may be gone already.
  virtual void Refresh_After(const TEntry_Change& change) = 0;

 protected:
  ~TEntry_Page() = default;
};

/// By what the lists of a page are sorted.
struct TEntry_Order {
  int& Column;
  bool& Ascending;
  std::function<void(Kt_data_01::TItem_List&)> Sort;  // by the two
};

/// Which controls give the commands; any may be missing.
struct TEntry_Controls {
  TCommand Toggle = {}, Add_Event = {}, Add_Task = {}, Delete = {}, Open = {};
  QMenu* Popup = nullptr;
  QMenu* Sort_By = nullptr;         // its items are checked when it opens
  QList<QAction*> Columns = {};     // each sorts by its "Tag"
  QList<QAction*> Directions = {};  // "Tag" 0 is ascending
};

/// The commands on the entries of a page's lists, of which at most one has a selection: by tools, popup menu,
/// keys and mouse. Belongs to a page and dies with it, also while one of its editors is open.
class TEntry_Commands : public QObject {
  Q_OBJECT

 public:
  /// `noun` is what the page calls its entries in texts. The form is also what implements the page.
  TEntry_Commands(Kt_forms::TForm& form, TEntry_Page& page, const TEntry_Controls& controls,
                  TEntry_Order order, std::string noun);

  void Add_List(TEntry_List* list);
  /// Has a header stand over a list and sort.
  void Add_Header(TSort_Header* header, TEntry_List* list);

  /// Null without a selection. Valid until its list changes.
  Kt_data_01::TList_Item* Selected() const;
  /// "" without a selection.
  std::string Selected_Key() const;
  /// Selects the first entry with the key; nothing changes when there is none, nor for "".
  void Select_Key(const std::string& key);
  /// Has the commands follow the selected entry. False when the page did not outlive it.
  bool Set_Btns();
  /// Runs what builds the lists anew, and selects the same entry again, if it is still there.
  void Keep_Selection(const std::function<void()>& build);
  /// Opens the popup menu at a place of the screen.
  void Show_Popup(const QPoint& place);

  void Add(TEntry_Type type);
  /// Without a selection it adds an event, or a task where the page adds no events. So does the key Insert.
  void Open();
  void Delete();
  void Toggle_State();

 private:
  void Toggle(Kt_data_01::TList_Item* item);
  void Add_Usual();
  int Selected_Row() const;
  /// Runs a dialog, which says whether the user confirmed it, and has the page show what it did; an entry
  /// that was opened is selected again, or the one behind an entry that was deleted.
  void Run(const std::function<bool()>& dialog, const TEntry_Change& change);
  /// Runs what builds the lists anew, which stay scrolled as they were. False when the page did not outlive
  /// it.
  bool Keep_Place(const std::function<void()>& build);
  void Clear_Others(const TEntry_List* list);
  void Sort();
  void Check_Order();

  Kt_forms::TForm& form;
  TEntry_Page& page;
  const TEntry_Controls controls;
  const TEntry_Order order;
  const std::string noun;
  QList<TEntry_List*> lists;
  QActionGroup columns{this}, directions{this};
};

}  // namespace KTReminds
