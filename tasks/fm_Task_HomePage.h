#pragma once

#include <memory>
#include <string>

#include "Entry_Commands.h"
#include "Home_Page.h"
#include "Task_List.h"

namespace Ui {
class Task_HomePage_Frm;
}

namespace KTReminds {

/// The tasks' home page: a list of tasks by filter, or of what a search has found, beside which or in whose
/// place a page for searching or the permissions can be shown.
class TTask_HomePage_Frm : public THome_Page, private TEntry_Page {
  Q_OBJECT

 public:
  TTask_HomePage_Frm();
  ~TTask_HomePage_Frm() override;

  /// One of the page numbers: Page_Task_Results shows what a search has found, Page_Tasks forgets the search.
  void Set_Mode(int mode);
  /// Reads the list again, by the filter and order of before, and selects a row: the last one when there are
  /// not so many, none for -1.
  void DoRefresh(int SelectIndex);
  void DoRefresh() override { DoRefresh(0); }
  void Show_Page(int Index) override;

 protected:
  void Handle_Message(const Kt_forms::TMessage& message) override;
  void Rows_Changed() override;

 private:
  TOwner Owner_Of_New(TEntry_Type type) const override;
  void Refresh_After(const TEntry_Change& change) override;
  void Set_Up_Menus();
  void Set_Filter(TTask_Filter new_filter);
  void Fill_List();

  TTask_Filter filter;
  bool search_results = false;
  std::unique_ptr<Ui::Task_HomePage_Frm> ui;
  std::unique_ptr<TEntry_Commands> commands;
};

/// Embeds the tasks' home page into a parent. `NodeKey` is the book, `OwnerKey` its calendar record, which
/// stands for all tasks of the book, or a contact, which stands for its own alone. `Mode` as Set_Mode has it;
/// any other shows the tasks too. The page puts its tool button into `ToolPanel`; without one it is a part of
/// another page, and has neither that nor its navigation bar. An existing page in the reference is used
/// again, another page is closed first: false, with nothing made, when it refuses.
bool Display_Task_Home_Page(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& NodeKey,
                            const std::string& OwnerKey, int Mode, QWidget* ToolPanel);

}  // namespace KTReminds
