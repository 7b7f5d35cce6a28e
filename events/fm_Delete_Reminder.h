#pragma once

#include <memory>
#include <string>

#include "Kt_forms.h"

namespace Ui {
class Delete_Reminder_Frm;
}

namespace KTReminds {

/// One small dialog for two questions about an occurrence: whether to delete it or its whole set, and whether
/// to open it or its whole set.
class TDelete_Reminder_Frm : public Kt_forms::TDialog_Form {
  Q_OBJECT

 public:
  /// Asks about a deletion, and carries it out on OK.
  explicit TDelete_Reminder_Frm(const std::string& occurrence_key, QWidget* parent = nullptr);
  /// Asks what to open, and writes nothing.
  explicit TDelete_Reminder_Frm(QWidget* parent = nullptr);
  ~TDelete_Reminder_Frm() override;

  bool Whole_Set() const;

 protected:
  void FormShow() override;

 private:
  void Set_Up();
  void Button2Click();

  std::unique_ptr<Ui::Delete_Reminder_Frm> ui;
  const std::string occurrence_key;
  const bool open_mode;
};

/// True when the user confirmed; the deletion has then been carried out, or its failure reported.
bool Delete_Reminder(const std::string& OccurrenceKey);

/// Asks whether to open one event or its whole set. True on OK, with the answer in OpenWholeSet; writes
/// nothing.
bool Update_Recurring(bool& OpenWholeSet);

}  // namespace KTReminds
