#include "Value_Box.h"

#include <QComboBox>
#include <QLineEdit>

#include "Kt_forms.h"

namespace KTReminds {

using namespace Kt_forms;

TValue_Box::TValue_Box(QWidget* parent)
    : QStackedWidget(parent), edit(new QLineEdit(this)), list(new QComboBox(this)) {
  edit->setObjectName(QStringLiteral("Edit1_Text"));
  list->setObjectName(QStringLiteral("Edit1_List"));
  for (QWidget* box : {static_cast<QWidget*>(edit), static_cast<QWidget*>(list)}) {
    box->setAccessibleName(tr("Value"));
    addWidget(box);
  }
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  setFocusProxy(edit);
}

void TValue_Box::Ask(const QString& hint) {
  edit->setText(To_Qt(Text()));
  edit->setPlaceholderText(hint);
  setCurrentWidget(edit);
  setFocusProxy(edit);
}

void TValue_Box::Offer(const TSearch_Choices& choices) {
  const std::string before = currentWidget() == list ? Text() : std::string();
  list->clear();
  for (const TSearch_Choice& choice : choices) list->addItem(To_Qt(choice.Name));
  setCurrentWidget(list);
  setFocusProxy(list);
  Set_Text(before);
}

std::string TValue_Box::Text() const {
  return From_Qt(currentWidget() == edit ? edit->text() : list->currentText());
}

void TValue_Box::Set_Text(const std::string& text) {
  if (currentWidget() == edit) return edit->setText(To_Qt(text));
  // What has gone meanwhile, as a category may have, is still what was chosen.
  if (!text.empty() && list->findText(To_Qt(text)) < 0) list->addItem(To_Qt(text));
  list->setCurrentIndex(list->findText(To_Qt(text)));
}

void TValue_Box::Select_All() {
  setFocus();
  edit->selectAll();
}

}  // namespace KTReminds
