#include "Waiting.h"

#include <QApplication>
#include <QPointer>
#include <QProgressDialog>
#include <QTimer>

#include "Kt_forms.h"

namespace Plexidex {

namespace {

using std::chrono::milliseconds;

// Goes by itself soon after it was last asked for.
QProgressDialog* Show_Dialog() {
  constexpr milliseconds stays{300};
  static QPointer<QProgressDialog> dialog;
  static QPointer<QTimer> end;
  if (!dialog) {
    dialog =
        new QProgressDialog(QObject::tr("Another program is writing to the database. Waiting for its end..."),
                            QObject::tr("Cancel"), 0, 0, Kt_forms::Active_Window());
    dialog->setWindowModality(Qt::ApplicationModal);
    end = new QTimer(dialog);
    end->setSingleShot(true);
    QObject::connect(end, &QTimer::timeout, dialog, &QObject::deleteLater);
    dialog->show();
  }
  end->start(stays);
  return dialog;
}

bool Go_On_Waiting(milliseconds waited) {
  constexpr milliseconds unnoticed{500};
  if (waited < unnoticed) return true;
  const Kt_forms::TModal_Scope modal;
  const QPointer<QProgressDialog> dialog = Show_Dialog();
  QApplication::processEvents();
  if (!dialog) return true;
  if (dialog->wasCanceled()) dialog->deleteLater();
  return !dialog->wasCanceled();
}

}  // namespace

Kt_data_01::TSqlite_Options Window_Options() {
  return {.Go_On_Waiting = &Go_On_Waiting};
}

}  // namespace Plexidex
