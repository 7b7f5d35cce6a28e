#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShowEvent>
#include <QStackedWidget>
#include <QStatusTipEvent>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "Kt_data_01.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace Kt_forms {

namespace {

bool Is_Message(const QEvent* event) {
  return event->type() >= First_Message && event->type() <= Last_Message;
}

// No exception may leave an event handler.
template <class TBody>
void Report_Failures(TBody body) {
  try {
    body();
  } catch (...) {
    Kt_data_01::FailRead("Kt_forms:Handle_Message");
  }
}

QString Without_Mnemonic(QString text) {
  text.remove(QLatin1Char('&'));
  if (text.endsWith(QLatin1Char(':'))) text.chop(1);
  return text;
}

struct THint {
  QString Short, Long;  // both the whole when it is not "short|long"
};

THint Split(const QString& hint) {
  const qsizetype bar = hint.indexOf(QLatin1Char('|'));
  return bar < 0 ? THint{hint, hint} : THint{hint.left(bar), hint.mid(bar + 1)};
}

void Split_Hint(QWidget* control) {
  const THint hint = Split(control->toolTip());
  if (hint.Short != hint.Long || control->statusTip().isEmpty()) control->setStatusTip(hint.Long);
  control->setToolTip(hint.Short);
}

int Modal_Depth = 0;

// Pages that wait for the end of the last modal form.
QList<QPointer<TForm>>& Closed_Forms() {
  static QList<QPointer<TForm>> forms;
  return forms;
}

// What the user has put into a form, of which only changes matter.
QString Inputs_Of(const QWidget* form) {
  QStringList inputs;
  for (const QWidget* control : form->findChildren<QWidget*>()) {
    if (control->window() != form) continue;
    if (const auto* line = qobject_cast<const QLineEdit*>(control)) inputs << line->text();
    if (const auto* memo = qobject_cast<const QPlainTextEdit*>(control)) inputs << memo->toPlainText();
    // What can be typed into counts as its text: leaving it selects the item of that text.
    if (const auto* box = qobject_cast<const QComboBox*>(control); box && !box->isEditable())
      inputs << QString::number(box->currentIndex());
    if (const auto* button = qobject_cast<const QAbstractButton*>(control))
      inputs << QString::number(button->isChecked() ? 1 : 0);
  }
  return inputs.join(QChar(0));
}

bool Is_Input(const QWidget* control) {
  return qobject_cast<const QLineEdit*>(control) || qobject_cast<const QComboBox*>(control) ||
         qobject_cast<const QAbstractSpinBox*>(control);
}

}  // namespace

void Reserve_Messages() {
  for (int number = First_Message; number <= Last_Message; ++number) QEvent::registerEventType(number);
}

void Post_Message(QWidget* form, int number, qintptr w_param, qintptr l_param) {
  if (form) QCoreApplication::postEvent(form, new TMessage(number, w_param, l_param));
}

void Send_Message(QWidget* form, int number, qintptr w_param, qintptr l_param) {
  if (!form) return;
  TMessage message(number, w_param, l_param);
  QCoreApplication::sendEvent(form, &message);
}

TModal_Scope::TModal_Scope() {
  ++Modal_Depth;
}

TModal_Scope::~TModal_Scope() {
  if (--Modal_Depth > 0) return;
  for (const QPointer<TForm>& form : Closed_Forms()) {
    if (form) form->deleteLater();
  }
  Closed_Forms().clear();
}

bool Outlives(QWidget* form, const std::function<void()>& call) {
  const QPointer<QWidget> alive = form;
  call();
  const auto* page = qobject_cast<const TForm*>(alive.data());
  return alive && !(page && page->Is_Closed());
}

TForm::TForm(QWidget* parent) : QWidget(parent) {}

TForm::~TForm() {
  Unmerge_Menu(this);
}

bool TForm::Close_Form() {
  if (closed) return true;
  if (!FormCloseQuery()) return false;
  closed = true;
  FormClose();
  hide();
  Unmerge_Menu(this);
  setParent(nullptr);
  if (Modal_Depth == 0) {
    deleteLater();
  } else {
    Closed_Forms().append(this);
  }
  return true;
}

void TForm::Rows_Are_Shown() {
  try {
    shown_rows = Kt_data_01::Change_Numbers().All;
  } catch (...) {
    // Whoever reads the rows will report it.
    shown_rows.reset();
  }
}

void TForm::Look_At_Rows() {
  if (closed || !shown_rows || Modal_Depth > 0 || !isVisible()) return;
  const std::uint64_t before = *shown_rows;
  Rows_Are_Shown();
  if (shown_rows != before) Report_Failures([this] { Rows_Changed(); });
}

void TForm::Change_In_Place(const std::function<void()>& change) {
  const auto numbers = [] {
    try {
      return Kt_data_01::Change_Numbers();
    } catch (...) {
      return Kt_data_01::TChange_Numbers();
    }
  };
  const auto before = numbers();
  if (!Outlives(this, change)) return;
  const auto after = numbers();
  if (shown_rows == before.All && after.Others == before.Others) shown_rows = after.All;
}

bool TForm::event(QEvent* event) {
  // Not before what closed the other window has run to its end; nor under the click that came to this one.
  if (event->type() == QEvent::WindowActivate) {
    const auto look = [this] {
      if (Rows_May_Change()) Look_At_Rows();
    };
    QMetaObject::invokeMethod(this, look, Qt::QueuedConnection);
  }
  if (!Is_Message(event)) return QWidget::event(event);
  if (!closed) Report_Failures([&] { Handle_Message(*static_cast<TMessage*>(event)); });
  return true;
}

void TForm::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous() || active || closed) return;
  active = true;
  Report_Failures([this] { FormActivate(); });
}

void TForm::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (event->spontaneous() || !active) return;
  active = false;
  Report_Failures([this] { FormDeactivate(); });
}

TDialog_Form::TDialog_Form(QWidget* parent) : QDialog(parent) {
  setWindowModality(Qt::WindowModal);
}

bool TDialog_Form::event(QEvent* event) {
  if (!Is_Message(event)) return QDialog::event(event);
  Report_Failures([&] { Handle_Message(*static_cast<TMessage*>(event)); });
  return true;
}

void TDialog_Form::Guard_Inputs() {
  guarded = Inputs_Of(this);
}

void TDialog_Form::reject() {
  if (guarded && guarded != Inputs_Of(this)) {
    const QPointer<TDialog_Form> alive = this;
    const int answer =
        Kt_util_01::Raise_Question("Discard changes?", "The changes in \"" + From_Qt(windowTitle()) +
                                                           "\" have not been saved.\r\n\r\nDiscard them?");
    if (!alive || answer != Kt_util_01::Answer_Yes) return;
  }
  Cancel_Form();
}

int TDialog_Form::exec() {
  const TModal_Scope modal;
  return QDialog::exec();
}

void TDialog_Form::showEvent(QShowEvent* event) {
  if (!shown) {
    Report_Failures([this] { FormShow(); });
    shown = true;
  }
  QDialog::showEvent(event);
}

void Initialise_Form(QWidget* form) {
  Split_Hint(form);
  for (QLabel* label : form->findChildren<QLabel*>()) {
    label->setTextFormat(Qt::PlainText);
    if (QWidget* buddy = label->buddy(); buddy && buddy->accessibleName().isEmpty()) {
      buddy->setAccessibleName(Without_Mnemonic(label->text()));
    }
  }
  for (QWidget* control : form->findChildren<QWidget*>()) {
    Split_Hint(control);
    if (!control->accessibleName().isEmpty()) continue;
    if (const auto* button = qobject_cast<QAbstractButton*>(control)) {
      control->setAccessibleName(
          Without_Mnemonic(button->text().isEmpty() ? control->toolTip() : button->text()));
    } else if (const auto* group = qobject_cast<QGroupBox*>(control)) {
      control->setAccessibleName(Without_Mnemonic(group->title()));
    } else if (Is_Input(control) && !control->toolTip().isEmpty()) {
      control->setAccessibleName(control->toolTip());
    }
  }
}

void Set_Hint(QAction* tool, const QString& hint) {
  const auto [short_half, long_half] = Split(hint);
  tool->setText(short_half);
  tool->setToolTip(short_half);
  tool->setStatusTip(long_half);
  for (QObject* shown : tool->associatedObjects()) {
    if (auto* button = qobject_cast<QToolButton*>(shown)) button->setAccessibleName(short_half);
  }
}

void Copy_Form_Name(const TForm& form, const TMessage& message) {
  const QString name = form.objectName() + QString::number(form.property("Tag").toInt());
  Answer_Form_Name(name.toUtf8(), message);
}

void Answer_Form_Name(const QByteArray& name, const TMessage& message) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a message carries its buffer as a number.
  qstrcpy(reinterpret_cast<char*>(message.LParam), name.constData());
}

void CentreForm(QWidget* form) {
  form->adjustSize();
  const QWidget* over = form->parentWidget() ? form->parentWidget()->window() : nullptr;
  const QScreen* screen = over ? over->screen() : QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect room = screen->availableGeometry();
  QRect place = form->frameGeometry();
  place.moveCenter(over ? over->frameGeometry().center() : room.center());
  place.moveRight(qMin(place.right(), room.right()));
  place.moveBottom(qMin(place.bottom(), room.bottom()));
  place.moveLeft(qMax(place.left(), room.left()));
  place.moveTop(qMax(place.top(), room.top()));
  form->move(place.topLeft());
}

TForm* Get_ParentForm(QWidget* control) {
  for (QWidget* around = control ? control->parentWidget() : nullptr; around;
       around = around->parentWidget()) {
    if (auto* form = qobject_cast<TForm*>(around)) return form;
  }
  return nullptr;
}

void Embed_Page(TForm* page, QWidget* parent) {
  auto* layout = parent->layout();
  if (!layout) {
    layout = new QVBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
  }
  page->setParent(parent);
  layout->addWidget(page);
}

void Focus_Control(QWidget* form, const std::string& name) {
  auto* control = form->findChild<QWidget*>(To_Qt(name));
  if (!control) return;
  for (QWidget* inside = control; inside && inside != form; inside = inside->parentWidget()) {
    auto* stack = qobject_cast<QStackedWidget*>(inside->parentWidget());
    if (!stack) continue;
    stack->setCurrentWidget(inside);
    if (auto* tabs = qobject_cast<QTabWidget*>(stack->parentWidget())) tabs->setCurrentWidget(inside);
  }
  control->setFocus(Qt::OtherFocusReason);
  if (auto* input = qobject_cast<QLineEdit*>(control)) input->selectAll();
  if (auto* combo = qobject_cast<QComboBox*>(control); combo && combo->lineEdit())
    combo->lineEdit()->selectAll();
}

QString To_Qt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string From_Qt(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace Kt_forms
