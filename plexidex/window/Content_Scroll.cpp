#include "Content_Scroll.h"

#include <QLayout>
#include <QScreen>
#include <QScrollBar>

namespace Plexidex {

TContent_Scroll::TContent_Scroll(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
}

int TContent_Scroll::Most_High() const {
  return screen()->availableSize().height() * 3 / 5;
}

QSize TContent_Scroll::sizeHint() const {
  if (!widget() || !widget()->layout()) return QScrollArea::sizeHint();
  const QLayout* content = widget()->layout();
  const QSize natural = content->totalSizeHint();
  const int high = testAttribute(Qt::WA_WState_Created) && content->hasHeightForWidth() && width() > 0
                       ? content->totalHeightForWidth(width())
                       : natural.height();
  return {natural.width() + verticalScrollBar()->sizeHint().width(), qMin(high, Most_High())};
}

QSize TContent_Scroll::minimumSizeHint() const {
  return QScrollArea::minimumSizeHint().boundedTo(sizeHint());
}

// Texts wrap at another place.
void TContent_Scroll::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  updateGeometry();
}

}  // namespace Plexidex
