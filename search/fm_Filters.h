#pragma once

#include <memory>
#include <string>

#include "Kt_forms.h"

namespace Ui {
class Filters_Frm;
}

namespace KTReminds {

/// Stores the current search as a filter, or chooses a filter to be loaded.
class TFilters_Frm : public Kt_forms::TDialog_Form {
  Q_OBJECT

 public:
  /// Kept in the "Tag" of the dialog and of its button.
  enum class TMode { Load = 0, Save = 1 };
  TFilters_Frm(TMode mode, const std::string& book, QWidget* parent);
  ~TFilters_Frm() override;

  /// As it was accepted.
  std::string Filter_Name() const;
  bool Is_Shared() const;

 protected:
  void FormShow() override;

 private:
  void Populate_Filter_List();
  /// Whether the dialog may be closed with OK; otherwise the user has been told why not.
  bool Process_Action();
  void OpenBtnClick();
  void DelbtnClick();
  void ListView1Click();

  const std::unique_ptr<Ui::Filters_Frm> ui;
  const TMode mode;
  const std::string book;
};

/// Asks under which name the current search, which must be there, is to be stored as a filter of the book,
/// and stores it. False when the user cancels.
bool Save_Filter(const std::string& Book);
/// Asks which filter of the book to load; it becomes the current search. False when the user cancels.
/// One that cannot be loaded is reported, and leaves the search unchanged.
bool Load_Filter(const std::string& Book);

}  // namespace KTReminds
