#pragma once

#include <QProgressDialog>
#include <exception>

#include "Kt_lists.h"

namespace Kt_forms {

/// Thrown from a step of what the user has cancelled. Whoever began it says what became of it.
class ECancelled : public std::exception {};

/// A progress dialog that can be cancelled; comes only when it takes a while.
class TProgress_Dialog : public Kt_data_01::TProgress_Bar {
 public:
  TProgress_Dialog(QWidget* parent, const QString& text) : dialog(text, QObject::tr("Cancel"), 0, 0, parent) {
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(300);
  }
  void Set_Max(std::int64_t steps) override { dialog.setMaximum(static_cast<int>(steps)); }
  void Set_Position(std::int64_t steps) override {
    dialog.setValue(static_cast<int>(steps));
    if (dialog.wasCanceled()) throw ECancelled();
  }

 private:
  QProgressDialog dialog;
};

}  // namespace Kt_forms
