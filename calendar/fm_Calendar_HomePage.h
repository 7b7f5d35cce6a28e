#pragma once

#include <memory>
#include <string>

#include "Home_Page.h"

namespace Ui {
class Calendar_HomePage_Frm;
}

namespace KTReminds {

/// The calendar's home page: one calendar view at a time.
class TCalendar_HomePage_Frm : public THome_Page {
  Q_OBJECT

 public:
  TCalendar_HomePage_Frm();
  ~TCalendar_HomePage_Frm() override;

  /// Shows the remembered view, read again from the store.
  void DoRefresh() override;
  /// Remembers the page if it is a view.
  void Show_Page(int Index) override;

 protected:
  void Handle_Message(const Kt_forms::TMessage& message) override;

 private:
  void New_Event();
  void New_Task();

  bool read_only = false;
  std::unique_ptr<Ui::Calendar_HomePage_Frm> ui;
};

/// Embeds the calendar's home page into a parent. `NodeKey` is the book, `OwnerKey` the record whose rights
/// count and that owns new entries; the page puts its tool button into `ToolPanel`, which may be null. An
/// existing home page in the reference is used again, another page is closed first: false, with nothing made,
/// when it refuses.
bool Display_Calendar_Home_Page(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& NodeKey,
                                const std::string& OwnerKey, QWidget* ToolPanel);

}  // namespace KTReminds
