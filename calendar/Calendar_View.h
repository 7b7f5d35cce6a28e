#pragma once

#include <QActionGroup>
#include <functional>
#include <memory>
#include <string>

#include "Kt_forms.h"
#include "Kt_lists.h"

class QLabel;

namespace Kt_forms {
class TWebLabel;
}

namespace Ui {
class View_Tools;
}

namespace KTReminds {

class TCalendarFrm;
class TEntry_List;

/// What the views of the calendar have in common: lists of entries, the tool bar and the popup menu with
/// their commands, the order, and the date picker beside the lists. A view adds its layout and fills its
/// lists.
class TCalendar_View : public Kt_forms::TForm {
  Q_OBJECT

 public:
  ~TCalendar_View() override;

  /// `owner_key` is whose entries are shown, and who gets new ones; with `whole_calendar` those of the whole
  /// book are shown.
  void Set_Keys(const std::string& node_key, const std::string& owner_key, bool whole_calendar);
  /// Builds anew what is shown. Nothing is selected then.
  virtual void DoRefresh() = 0;
  /// Whether the enclosing page can show the view of that index; all are until it says otherwise.
  void Set_View_Available(int page_index, bool available);

 protected:
  struct TControls {
    QWidget* Tool_Panel;        // empty; gets the tool bar
    QLabel* Title;              // says what is shown
    QList<TEntry_List*> Lists;  // of which at most one has a selection
    QWidget* Calendar_Panel;    // gets the date picker, and is hidden at first
  };

  /// `page_index` is the view's own.
  explicit TCalendar_View(int page_index);
  /// To be called at the end of a view's constructor.
  void Set_Up(const TControls& controls);
  /// Has a label sort by the column in its "Tag".
  void Set_Up_Sort_Label(Kt_forms::TWebLabel* label);

  /// Runs what may open a modal form or message, during which the view may be closed or even freed. True when
  /// it is still there.
  bool Outlives(const std::function<void()>& call);
  /// Has the commands follow the selected entry.
  void Set_Btns();
  /// After an entry was added ("" as its key), opened or deleted.
  virtual void Refresh_After(const std::string& /*key*/) { DoRefresh(); }
  void Handle_Message(const Kt_forms::TMessage& message) override;

  const int page;
  std::string NodeKey, OwnerKey;
  bool WholeCalendar = false;
  std::unique_ptr<Ui::View_Tools> tools;

 private:
  void Set_Up_Actions();
  void Connect_Commands();
  void Connect_List(TEntry_List* list);
  Kt_data_01::TList_Item* Selected() const;
  void Tell_Picker();

  void Add_Event();
  void Add_Task();
  void Open();
  void Delete();
  void Toggle_State();
  void Go_To_Entry(bool backwards);
  void Go_To_Today();
  void Show_Or_Hide_Calendar();
  void Show_View(int page_index);
  void Sort();
  void Check_Order();

  TControls controls{};
  QActionGroup columns{this}, directions{this};
  QPointer<TCalendarFrm> picker;
};

}  // namespace KTReminds
