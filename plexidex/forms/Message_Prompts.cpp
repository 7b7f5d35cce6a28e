#include "Message_Prompts.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>
#include <QStatusBar>
#include <utility>

#include "Kt_forms.h"

namespace Kt_forms {

namespace {

QString Displayed(const std::string& text) {
  QString shown = To_Qt(text);
  shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return shown;
}

int Ask(QMessageBox::Icon icon, const std::string& caption, const std::string& text,
        QMessageBox::StandardButtons buttons) {
  QMessageBox box(icon, To_Qt(caption), Displayed(text), buttons, Active_Window());
  box.setTextFormat(Qt::PlainText);
  box.setWindowModality(Qt::WindowModal);
  if (buttons & QMessageBox::No) {
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
  }
  const TModal_Scope modal;
  return box.exec();
}

}  // namespace

TMessage_Prompts::TMessage_Prompts(std::function<void(const QString&)> tell_elsewhere)
    : tell_elsewhere(std::move(tell_elsewhere)) {}

void TMessage_Prompts::Error(const std::string& caption, const std::string& text) {
  Ask(QMessageBox::Warning, caption, text, QMessageBox::Ok);
}

void TMessage_Prompts::Info(const std::string& caption, const std::string& text) {
  Ask(QMessageBox::Information, caption, text, QMessageBox::Ok);
}

int TMessage_Prompts::Question(const std::string& caption, const std::string& text) {
  const bool yes =
      Ask(QMessageBox::Question, caption, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
  return yes ? Kt_util_01::Answer_Yes : Kt_util_01::Answer_No;
}

void TMessage_Prompts::Notice(const std::string& text) {
  constexpr int shown_msecs = 15'000, until_another = 0;
  bool seen = false;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* main = qobject_cast<QMainWindow*>(window);
    if (!main) continue;
    seen = QApplication::activeWindow() && main->isVisible() && !main->isMinimized();
    main->statusBar()->showMessage(Displayed(text), seen ? shown_msecs : until_another);
  }
  if (!seen && tell_elsewhere) tell_elsewhere(Displayed(text));
}

}  // namespace Kt_forms
