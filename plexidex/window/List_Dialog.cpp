#include "List_Dialog.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "Kt_update.h"

namespace Plexidex {

using namespace Kt_forms;

TList_Dialog::TList_Dialog(const QString& title, const QString& caption, const QString& thing,
                           const QString& edit_text, QWidget* parent)
    : THost_Dialog(title, parent),
      list(new QListWidget),
      edit(new QPushButton(edit_text)),
      remove(new QPushButton(tr("&Remove..."))) {
  setObjectName(thing + QStringLiteral("_List_Dialog"));
  list->setObjectName(thing + QStringLiteral("_List"));
  edit->setObjectName(QStringLiteral("Edit_") + thing);
  remove->setObjectName(QStringLiteral("Remove_") + thing);
  auto* add = new QPushButton(tr("&New..."));
  add->setObjectName(QStringLiteral("New_") + thing);
  auto* label = new QLabel(caption);
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(list);
  auto* buttons = new QVBoxLayout;
  for (QPushButton* button : {add, edit, remove}) {
    button->setAutoDefault(false);
    buttons->addWidget(button);
  }
  buttons->addStretch();
  auto* row = new QHBoxLayout;
  row->addWidget(list, 1);
  row->addLayout(buttons);
  Form()->addRow(label);
  Form()->addRow(row);
  Buttons()->button(QDialogButtonBox::Cancel)->hide();
  Buttons()->button(QDialogButtonBox::Ok)->setText(tr("&Close"));
  const auto edit_one = [this](std::size_t position) { return Edit(position); };
  connect(add, &QPushButton::clicked, this, [this] { Run([this] { return Add(); }); });
  connect(edit, &QPushButton::clicked, this, [this, edit_one] { Run_On_Selected(edit_one); });
  connect(list, &QListWidget::itemActivated, this, [this, edit_one] { Run_On_Selected(edit_one); });
  connect(remove, &QPushButton::clicked, this, [this] {
    Run_On_Selected([this](std::size_t position) {
      Remove(position);
      return std::string();
    });
  });
  setMinimumWidth(fontMetrics().averageCharWidth() * 55);
}

void TList_Dialog::Show_Names(const std::string& selected) {
  const int row = list->currentRow();
  list->clear();
  list->addItems(Read_Names());
  const int found = selected.empty() ? -1 : Position_Of(selected);
  list->setCurrentRow(found >= 0 ? found : qMin(qMax(0, row), list->count() - 1));
  edit->setEnabled(list->count() > 0);
  remove->setEnabled(list->count() > 0);
}

void TList_Dialog::Run(const std::function<std::string()>& act) {
  std::string selected;
  if (Outlives(this, [&] { selected = act(); }))
    Kt_data_01::Read("List_Dialog:Read", [&] { Show_Names(selected); });
}

void TList_Dialog::Run_On_Selected(const std::function<std::string(std::size_t position)>& act) {
  const int row = list->currentRow();
  if (row >= 0) Run([&] { return act(static_cast<std::size_t>(row)); });
}

}  // namespace Plexidex
