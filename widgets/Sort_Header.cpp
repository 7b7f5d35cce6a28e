#include "Sort_Header.h"

#include <QAbstractItemModel>

#include "Entry_List.h"
#include "Entry_Painter.h"
#include "Kt_labels.h"

namespace KTReminds {

using Kt_forms::TWebLabel;

TSort_Header::TSort_Header(QWidget* parent) : QFrame(parent) {}

void TSort_Header::Stand_Over(TEntry_List* new_list) {
  constexpr int least_height = 21, room = 4;
  list = new_list;
  for (TWebLabel* label : findChildren<TWebLabel*>()) {
    label->setAccessibleName(label->text());
    labels.append({label, label->text()});
  }
  QWidget* panel = parentWidget();
  panel->setFixedHeight(qMax(least_height, panel->fontMetrics().height() + room));
  for (const auto& [label, text] : labels)
    connect(label, &TWebLabel::Clicked, this,
            [this, tag = label->property("Tag").toInt()] { emit Sort_Asked(tag); });
  connect(list, &TEntry_List::Resized, this, &TSort_Header::Place_Labels);
  const auto follow = [this] { setVisible(list->model()->rowCount() > 0); };
  connect(list->model(), &QAbstractItemModel::modelReset, this, follow);
  connect(list->model(), &QAbstractItemModel::rowsInserted, this, follow);
  connect(list->model(), &QAbstractItemModel::rowsRemoved, this, follow);
  follow();
}

void TSort_Header::Place_Labels() {
  constexpr int indent = 4, right_margin = 2, focus_frame = 4;
  QList<QRect> places;
  for (const auto& [label, text] : labels) {
    const auto span = list->Column_Span(label->property("Tag").toInt());
    label->setVisible(span.has_value());
    // Rounded up, or the label would be cut for a fraction.
    const int width = qCeil(QFontMetricsF(label->font(), label).horizontalAdvance(text));
    const int left = !span                       ? 0
                     : span->Side == TSide::Left ? span->Left + indent
                                                 : span->Right - right_margin - width;
    places.append(span ? QRect(list->viewport()->x() + left, 0, width + focus_frame, parentWidget()->height())
                       : QRect());
  }
  for (qsizetype i = 0; i < labels.size(); ++i) {
    QRect place = places[i];
    for (const QRect& other : places) {
      if (other.left() > place.left() && other.left() <= place.right()) place.setRight(other.left() - 1);
    }
    const auto& [label, text] = labels[i];
    label->setText(label->fontMetrics().elidedText(text, Qt::ElideRight, place.width() - focus_frame));
    label->setGeometry(place);
  }
}

}  // namespace KTReminds
