#pragma once

#include <memory>
#include <string>

#include "Entry_Commands.h"
#include "Kt_util_01.h"

namespace Kt_forms {
class TTitle_Label;
}

namespace KTReminds {

class TCalendarFrm;

/// Which controls give the commands on the date; what is missing, the view has not.
struct TDate_Controls {
  Kt_forms::TTitle_Label* Title = nullptr;  // says what is shown
  QWidget* Calendar_Panel = nullptr;        // gets the date picker, and is hidden at first
  TCommand Calendar = {};                   // shows and hides the panel
  TCommand Previous = {}, Next = {};        // entry
  TCommand Today = {};
  QList<QAction*> Views = {};  // each asks for the view that is its "Tag"
};

/// What the views of the calendar have in common: the commands on their entries, and those on the date that
/// is shown, with a date picker where a view has one. A view adds its layout and shows its entries.
class TCalendar_View : public Kt_forms::TForm, protected TEntry_Page {
  Q_OBJECT

 public:
  ~TCalendar_View() override;

  /// `owner_key` is whose entries are shown, and who gets new ones; with `whole_calendar` those of the whole
  /// book are shown.
  void Set_Keys(const std::string& node_key, const std::string& owner_key, bool whole_calendar);
  /// Builds anew what is shown, and says so by Rows_Are_Shown. Nothing is selected then.
  virtual void DoRefresh() = 0;
  /// Key of the selected entry; "" without one.
  std::string Selected_Key() const;
  /// Selects the entry with the key if it is shown; otherwise nothing changes.
  void Select_Entry(const std::string& key);

  /// By its page number, and whose entries as Set_Keys has it.
  struct TShown {
    int Page;
    TOwner Owner;
    bool Whole_Calendar;
  };
  TShown Shown() const { return {page, {NodeKey, OwnerKey}, WholeCalendar}; }

 protected:
  /// `page` is the view's own page number.
  explicit TCalendar_View(int page);
  /// To be called in a view's constructor once its layout is there, with the panel and the bar of its tools;
  /// then its lists can join the commands.
  void Set_Up(QWidget* tool_panel, QToolBar* tool_bar, const TEntry_Controls& entries,
              const TDate_Controls& dates);

  void Tell_Picker();
  /// Asks the page around the view for another one.
  void Show_View(int page_index);

  TOwner Owner_Of_New(TEntry_Type type) const override;
  void Refresh_After(const TEntry_Change& change) override;
  void Handle_Message(const Kt_forms::TMessage& message) override;
  void Rows_Changed() override;

  const int page;
  std::string NodeKey, OwnerKey;
  bool WholeCalendar = false;
  std::unique_ptr<TEntry_Commands> commands;  // null until Set_Up

 private:
  void Go_To_Entry(bool backwards);
  void Go_To_Today();
  void Show_Or_Hide_Calendar();
  void Show_Calendar_State();

  TDate_Controls controls;
  QPointer<TCalendarFrm> picker;
};

/// What the entry point of each view does.
template <class TView>
bool Display_View(QWidget* parent, Kt_forms::TForm_Reference& form, const std::string& node_key,
                  const std::string& owner_key, bool whole_calendar) {
  Kt_util_01::Sound(2);
  auto* view = form.Reuse_Or_Replace<TView>();
  if (!view) return false;
  Kt_forms::Embed_Page(view, parent);
  view->Set_Keys(node_key, owner_key, whole_calendar);
  view->show();
  view->DoRefresh();
  return true;
}

}  // namespace KTReminds
