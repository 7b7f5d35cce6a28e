#include "Form_Driver.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QPixmap>
#include <QTest>
#include <QTimer>
#include <memory>

namespace {

constexpr int Deadline_Msecs = 10'000;
constexpr int Look_Again_Msecs = 5;

void Reject_All() {
  while (QWidget* modal = QApplication::activeModalWidget()) {
    modal->close();
    if (modal->isVisible()) break;
  }
}

}  // namespace

struct TModal_Driver::TState : std::enable_shared_from_this<TState> {
  std::function<void(QWidget*)> Act;
  QElapsedTimer Since;
  bool Acted = false, Abandoned = false;

  void Look() {
    if (Abandoned) return;
    QWidget* modal = QApplication::activeModalWidget();
    const bool late = Since.elapsed() > Deadline_Msecs;
    if (late) {
      ADD_FAILURE() << (Acted ? "a dialog stays open" : "no dialog came");
      Reject_All();
      return;
    }
    Look_Later();
    if (Acted || !modal || !modal->isVisible()) return;
    // Keys go astray until the window is the active one, which it is not at once after another has closed.
    if (!modal->isActiveWindow()) return modal->activateWindow();
    Acted = true;
    try {
      Act(modal);
    } catch (const std::exception& e) {
      ADD_FAILURE() << e.what();
      Reject_All();
    }
  }
  void Look_Later() {
    QTimer::singleShot(Look_Again_Msecs, qApp, [self = shared_from_this()] { self->Look(); });
  }
};

TModal_Driver::TModal_Driver(std::function<void(QWidget*)> act) : state(std::make_shared<TState>()) {
  state->Act = std::move(act);
  state->Since.start();
  state->Look_Later();
}

TModal_Driver::~TModal_Driver() {
  state->Abandoned = true;
  if (!state->Acted) ADD_FAILURE() << "no dialog came";
}

void Picture(QWidget* widget, const QString& name) {
  const QString folder = qEnvironmentVariable("KT_PICTURES");
  if (!folder.isEmpty()) widget->grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
}

void Settle() {
  QTest::qWait(1);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
