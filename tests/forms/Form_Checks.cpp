#include "Form_Checks.h"

#include <QtTest>
#include <QtWidgets>
#include <algorithm>
#include <map>

namespace {

constexpr int Screen_Height = 768;

bool Needs_Name(const QWidget* control) {
  const auto kinds = {"QLineEdit", "QComboBox", "QAbstractButton", "QAbstractSpinBox", "QPlainTextEdit"};
  return std::any_of(kinds.begin(), kinds.end(), [&](const char* kind) { return control->inherits(kind); });
}

std::string Look_At(QWidget* form) {
  std::string wrong;
  const auto note = [&wrong](const QWidget* control, const char* what) {
    wrong += control->objectName().toStdString() + " " + what + "\n";
  };
  std::map<QString, const QWidget*> mnemonics;
  const int frame = 40;
  if (form->minimumSizeHint().height() + frame > Screen_Height) note(form, "is too high");
  for (const QWidget* control : form->findChildren<QWidget*>()) {
    const QString own = control->objectName();
    if (!control->isVisible() || own.isEmpty() || own.startsWith(QStringLiteral("qt_"))) continue;
    if (Needs_Name(control) && control->accessibleName().isEmpty()) note(control, "has no accessible name");
    const bool captioned =
        qobject_cast<const QLabel*>(control) || qobject_cast<const QAbstractButton*>(control);
    const QString caption = captioned ? control->property("text").toString() : QString();
    const QSize needed = control->minimumSizeHint();
    if (control->width() < needed.width() || control->height() < needed.height()) note(control, "is clipped");
    if (const QString key = QKeySequence::mnemonic(caption).toString(); !key.isEmpty()) {
      if (!mnemonics.emplace(key, control).second) note(control, "shares its mnemonic");
    }
  }
  return wrong;
}

}  // namespace

std::string Make_Checks(QWidget* form) {
  // Layouts settle over several rounds of events.
  constexpr int patience_msecs = 1000;
  const bool fine = QTest::qWaitFor([form] { return Look_At(form).empty(); }, patience_msecs);
  return fine ? std::string() : Look_At(form);
}

TPalette_Scope::TPalette_Scope(bool dark) : before(QApplication::palette()) {
  if (!dark) return;
  QPalette colours(QColor(0x35, 0x35, 0x35));
  colours.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
  for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
    colours.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
  QApplication::setPalette(colours);
  QCoreApplication::processEvents();
}

TPalette_Scope::~TPalette_Scope() {
  QApplication::setPalette(before);
}
