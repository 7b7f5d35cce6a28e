#pragma once

#include <array>
#include <memory>
#include <string>

#include "Image_List.h"
#include "Kt_forms.h"

class QAction;
class QMenu;
class QToolBar;

namespace Ui {
class Calendar_HomePage_Frm;
}

namespace KTReminds {

/// Numbers of the pages that a home page shows: stored, and carried by umDisplayForm.
inline constexpr int Page_Day = 2;
inline constexpr int Page_Week = 11;
inline constexpr int Page_Month = 12;
inline constexpr int Page_All = 13;
inline constexpr int Page_Permissions = 99;
/// The host's page for searching the calendar.
inline constexpr int Host_Page_Calendar_Search = 51;

/// The calendar's home page: one calendar view at a time beside a bar of things to do, with a menu and a tool
/// button in the host's window.
class TCalendar_HomePage_Frm : public Kt_forms::TForm {
  Q_OBJECT

 public:
  TCalendar_HomePage_Frm();
  ~TCalendar_HomePage_Frm() override;

  void Set_Keys(const std::string& node_key, const std::string& owner_key);
  /// Shows the remembered view, read again from the store.
  void DoRefresh();
  /// Shows a page by its number and remembers it if it is a view; another number empties the place. A view
  /// that does not exist opens the day view, and what was remembered stays.
  void Show_Page(int Index);

 protected:
  void FormActivate() override;
  void FormDeactivate() override;
  bool FormCloseQuery() override;
  void FormClose() override;
  void Handle_Message(const Kt_forms::TMessage& message) override;

 private:
  void Make_Menu();
  void Connect_Labels();
  bool Show_View(int Index);
  void Show_Permissions_Page();
  void Close_View();
  bool Save_Data();
  void New_Event();
  void New_Task();
  void Search_Calendar();
  void Tools1Click();

  bool read_only = false;
  Kt_forms::TForm_Reference current_view;
  std::string NodeKey, OwnerKey;

  std::unique_ptr<Ui::Calendar_HomePage_Frm> ui;
  TImage_List EnabledIcons;
  QPointer<QToolBar> ToolBar1;  // lies in the host's tool area, but is the page's
  QMenu* Tools1 = nullptr;
  QAction *Administration1 = nullptr, *ChangePassword1 = nullptr;
};

/// Embeds the calendar's home page into a parent. `NodeKey` is the book, `OwnerKey` the record whose rights
/// count and that owns new entries; the page puts its tool button into `ToolPanel`. An existing home page in
/// the reference is used again, another page is closed first: false, with nothing made, when it refuses.
bool Display_Calendar_Home_Page(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& NodeKey,
                                const std::string& OwnerKey, QWidget* ToolPanel);

}  // namespace KTReminds
