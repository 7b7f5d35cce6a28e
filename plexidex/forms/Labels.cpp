#include <QDir>
#include <QKeyEvent>
#include <QMouseEvent>

#include "Kt_forms.h"
#include "Kt_labels.h"
#include "Kt_util_01.h"

namespace Kt_forms {

TTimeEdit::TTimeEdit(QWidget* parent) : QLineEdit(parent) {}

void TTimeEdit::keyPressEvent(QKeyEvent* event) {
  const int direction = event->key() == Qt::Key_Up ? 1 : event->key() == Qt::Key_Down ? -1 : 0;
  Kt_util_01::TDateTime time = 0;
  if (direction == 0 || isReadOnly() || !Kt_util_01::Str2Time(From_Qt(text()), time))
    return QLineEdit::keyPressEvent(event);
  constexpr std::int64_t step = 15 * 60 * 1000;
  const std::int64_t now = Kt_util_01::Msec_Of_Day(time);
  // To the next full quarter in that direction, round midnight.
  const std::int64_t quarter = direction > 0 ? now / step + 1 : (now + step - 1) / step - 1;
  const std::int64_t next =
      (quarter * step % Kt_util_01::Msecs_Per_Day + Kt_util_01::Msecs_Per_Day) % Kt_util_01::Msecs_Per_Day;
  setText(To_Qt(Kt_util_01::FormatDateTime("t", Kt_util_01::From_Msecs(next))));
  emit textEdited(text());
}

TFileLabel::TFileLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void TFileLabel::Set_File(const QString& path) {
  file = path;
  setToolTip(path);
  Shorten();
}

QSize TFileLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 12, QLabel::minimumSizeHint().height()};
}

void TFileLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Shorten();
}

void TFileLabel::Shorten() {
  QString shown = QDir::toNativeSeparators(file);
  const QChar separator = QDir::separator();
  const QString ellipsis(QChar(0x2026));
  qsizetype at = 0;
  const QString whole = shown;
  while (fontMetrics().horizontalAdvance(shown) > width() && (at = whole.indexOf(separator, at + 1)) >= 0) {
    shown = ellipsis + whole.mid(at);
  }
  setText(fontMetrics().elidedText(shown, Qt::ElideMiddle, width()));
}

TTitle_Label::TTitle_Label(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void TTitle_Label::Set_Texts(const QStringList& longest_first) {
  texts = longest_first;
  setAccessibleName(Whole().trimmed());
  Choose_Text();
}

void TTitle_Label::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Choose_Text();
}

void TTitle_Label::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange) Choose_Text();
}

void TTitle_Label::Choose_Text() {
  const int room = contentsRect().width();
  for (const QString& one : texts) {
    setText(one);
    if (fontMetrics().horizontalAdvance(one) <= room) break;
  }
  setText(fontMetrics().elidedText(text(), Qt::ElideRight, room));
  setToolTip(text() == Whole() ? QString() : Whole().trimmed());
}

TWebLabel::TWebLabel(QWidget* parent) : QLabel(parent) {
  Look_Like_A_Link();
}

TWebLabel::TWebLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  Look_Like_A_Link();
}

void TWebLabel::Look_Like_A_Link() {
  setTextFormat(Qt::PlainText);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  QFont underlined = font();
  underlined.setUnderline(true);
  setFont(underlined);
  setForegroundRole(QPalette::Link);
  Choose_Colour();
}

void TWebLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) Choose_Colour();
}

// Many dark palettes keep the dark blue that links have on white.
void TWebLabel::Choose_Colour() {
  constexpr int dark = 128, least_difference = 90;
  const QColor ground = palette().color(QPalette::Window), link = palette().color(QPalette::Link);
  if (ground.lightness() >= dark || qGray(link.rgb()) - qGray(ground.rgb()) >= least_difference) return;
  QPalette lighter = palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive})
    lighter.setColor(group, QPalette::Link, QColor(0x6c, 0xa8, 0xff));
  setPalette(lighter);
}

void TWebLabel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) emit Clicked();
}

void TWebLabel::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      emit Clicked();
      break;
    default:
      QLabel::keyPressEvent(event);
  }
}

void TWebLabel::focusInEvent(QFocusEvent* event) {
  setFrameShape(QFrame::Box);
  QLabel::focusInEvent(event);
}

void TWebLabel::focusOutEvent(QFocusEvent* event) {
  setFrameShape(QFrame::NoFrame);
  QLabel::focusOutEvent(event);
}

}  // namespace Kt_forms
