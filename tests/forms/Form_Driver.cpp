#include "Form_Driver.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

namespace {

constexpr int Deadline_Msecs = 10'000;
constexpr int Look_Again_Msecs = 5;

void Fail(const char* why) {
  ADD_FAILURE() << why;
  while (QWidget* modal = QApplication::activeModalWidget()) {
    // Without being asked about its inputs.
    if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->done(QDialog::Rejected);
    modal->close();
    if (modal->isVisible()) break;
  }
}

// Of a menu; a tool is a button.
QAction* Command(const QWidget* form, const QString& name) {
  return form->findChild<QWidget*>(name) ? nullptr : form->findChild<QAction*>(name);
}

}  // namespace

TModal_Driver::TModal_Driver(std::function<void(QWidget*)> act) : act(std::move(act)) {
  since.start();
  Look_Later();
}

TModal_Driver::~TModal_Driver() {
  if (!acted) ADD_FAILURE() << "no dialog came";
}

void TModal_Driver::Look_Later() {
  QTimer::singleShot(Look_Again_Msecs, this, &TModal_Driver::Look);
}

void TModal_Driver::Look() {
  QWidget* modal = QApplication::activeModalWidget();
  if (since.elapsed() > Deadline_Msecs) return Fail(acted ? "a dialog stays open" : "no dialog came");
  Look_Later();
  if (acted || !modal || !modal->isVisible()) return;
  // Keys go astray until the window is the active one, which it is not at once after another has closed.
  if (!modal->isActiveWindow()) return modal->activateWindow();
  acted = true;
  try {
    act(modal);
  } catch (const std::exception& e) {
    Fail(e.what());
  }
}

void Act(QWidget* form, const std::string& inputs) {
  for (const QString& input : QString::fromStdString(inputs).split(QLatin1Char('|'))) {
    const QString name = input.section(QLatin1Char('='), 0, 0), value = input.section(QLatin1Char('='), 1);
    if (QAction* item = Command(form, name)) {
      item->trigger();
      continue;
    }
    auto* control = Control<QWidget>(form, name.toLatin1().constData());
    if (auto* box = qobject_cast<QComboBox*>(control)) {
      box->isEditable() ? box->setEditText(value) : box->setCurrentIndex(box->findText(value));
    } else if (auto* tabs = qobject_cast<QTabWidget*>(control)) {
      tabs->setCurrentIndex(value.toInt());
    } else if (qobject_cast<QLineEdit*>(control) || qobject_cast<QPlainTextEdit*>(control) ||
               qobject_cast<QAbstractSpinBox*>(control)) {
      if (qobject_cast<QDateEdit*>(control)) control->setFocus();
      QMetaObject::invokeMethod(control, "selectAll");
      QTest::keyClick(control, Qt::Key_Delete);
      QTest::keyClicks(control, value);
      if (qobject_cast<QDateEdit*>(control)) QTest::keyClick(control, Qt::Key_Tab);
    } else {
      // A check box takes clicks on what it shows, not on the room beside it.
      QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(8, control->height() / 2));
    }
  }
}

void Confirm(QWidget* dialog) {
  QTest::keyClick(dialog, Qt::Key_Return);
}

void Cancel(QWidget* dialog) {
  QTest::keyClick(dialog, Qt::Key_Escape);
}

std::function<void(QWidget*)> Confirm_With(const std::string& inputs) {
  return [inputs](QWidget* dialog) {
    Act(dialog, inputs);
    Confirm(dialog);
  };
}

std::string Seen(QWidget* form, const char* names) {
  QStringList seen;
  for (const QString& name : QString::fromLatin1(names).split(QLatin1Char(' '))) {
    if (const QAction* item = Command(form, name)) {
      const QString mark = !item->isCheckable() ? "" : item->isChecked() ? "+" : "-";
      seen << QString(item->isEnabled() ? "%1" : "(%1)").arg(mark + item->text());
      continue;
    }
    const auto* control = Control<QWidget>(form, name.toLatin1().constData());
    const auto* button = qobject_cast<const QAbstractButton*>(control);
    const bool chosen = control->property("currentText").isValid();
    QString text = control->property(chosen ? "currentText" : "text").toString();
    if (const auto* memo = qobject_cast<const QPlainTextEdit*>(control)) text = memo->toPlainText();
    if (button && button->isCheckable()) text = QLatin1Char(button->isChecked() ? '+' : '-');
    if (!control->isVisible()) text = QStringLiteral("hidden");
    const bool open = control->isEnabled() && !control->property("readOnly").toBool();
    seen << (open ? text : QStringLiteral("(%1)").arg(text));
  }
  return seen.join(QLatin1Char('|')).toStdString();
}

std::string Seen_After(const std::string& inputs, QWidget* form, const char* names) {
  Act(form, inputs);
  return Seen(form, names);
}

void Settle() {
  // A wait ends when its time is up, whatever is still due on a slow machine.
  constexpr int rounds = 3;
  for (int i = 0; i < rounds; ++i) QCoreApplication::processEvents();
  QTest::qWait(1);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
