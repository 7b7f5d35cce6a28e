// A long step of a page, and looking at the rows of pages while there is none.

#include <QApplication>
#include <QKeyEvent>

#include "Kt_forms.h"

namespace Kt_forms {

namespace {

bool Is_Input(const QObject* receiver, const QEvent* event) {
  switch (event->type()) {
    case QEvent::Shortcut:
      return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ContextMenu:
      // From here it would go on to the control.
      return receiver->isWindowType();
    default:
      return false;
  }
}

}  // namespace

TBusy_Scope::TBusy_Scope() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
}

TBusy_Scope::~TBusy_Scope() {
  QApplication::restoreOverrideCursor();
  for (auto& [receiver, event] : waiting) {
    if (receiver) QCoreApplication::postEvent(receiver, event.release());
  }
}

void TBusy_Scope::Service() {
  qApp->installEventFilter(this);
  QApplication::processEvents();
  qApp->removeEventFilter(this);
}

bool TBusy_Scope::eventFilter(QObject* receiver, QEvent* event) {
  // A dialog that has opened meanwhile must be answered before the step can go on.
  if (QApplication::activeModalWidget() || !Is_Input(receiver, event)) return false;
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
    escaped = true;
  waiting.emplace_back(receiver, event->clone());
  return true;
}

bool Rows_May_Change() {
  return !QApplication::activeModalWidget() && !QApplication::activePopupWidget() &&
         QApplication::mouseButtons() == Qt::NoButton;
}

void Look_At_Rows(QWidget* window) {
  if (!Rows_May_Change()) return;
  QList<QPointer<TForm>> pages;
  for (TForm* page : window->findChildren<TForm*>()) pages.append(page);
  for (const QPointer<TForm>& page : pages) {
    if (page) page->Look_At_Rows();
  }
}

}  // namespace Kt_forms
