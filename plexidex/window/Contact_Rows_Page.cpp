#include "Contact_Rows_Page.h"

#include <QAction>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "Kt_update.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

TContact_Rows_Page::TContact_Rows_Page(const char* name, const QStringList& headings, const QString& thing,
                                       const QString& open_text)
    : thing(thing), list(new QTreeWidget) {
  list->setObjectName(QLatin1String(name));
  list->setAccessibleName(QLatin1String(name));
  list->setHeaderLabels(headings);
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setTextElideMode(open_text.isEmpty() ? Qt::ElideRight : Qt::ElideMiddle);
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->header()->setStretchLastSection(true);
  list->setContextMenuPolicy(Qt::ActionsContextMenu);
  auto* buttons = new QHBoxLayout;
  if (!open_text.isEmpty()) open = Add_Command("Open", open_text, {}, buttons);
  add = Add_Command("Add", tr("Add &%1...").arg(thing), Qt::Key_Insert, buttons);
  edit = Add_Command("Edit", tr("Ed&it..."), {}, buttons);
  remove = Add_Command("Remove", tr("&Remove..."), Qt::Key_Delete, buttons);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(8, 4, 8, 8);
  layout->addLayout(buttons);
  layout->addWidget(list, 1);
  setFocusProxy(list);
  Initialise_Form(this);
  const auto edit_row = [this](std::size_t row) { return Edit_Row(row); };
  connect(add, &QAction::triggered, this, [this] { Run([this] { return Add_Row(); }); });
  connect(edit, &QAction::triggered, this, [this, edit_row] { Run_On_Current(edit, edit_row); });
  connect(remove, &QAction::triggered, this,
          [this] { Run_On_Current(remove, [this](std::size_t row) { return Remove_Row(row); }); });
  if (open) connect(open, &QAction::triggered, this, &TContact_Rows_Page::Enter_Row);
  connect(list, &QTreeWidget::itemActivated, this, &TContact_Rows_Page::Enter_Row);
  connect(list, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem*, int column) {
    if (open && column == list->columnCount() - 1) Enter_Row();
  });
  connect(list, &QTreeWidget::currentItemChanged, this, &TContact_Rows_Page::Set_Buttons);
}

// A button and an entry of the list's menu, with a key there.
QAction* TContact_Rows_Page::Add_Command(const char* verb, const QString& text, const QKeySequence& keys,
                                         QHBoxLayout* row) {
  auto* action = new QAction(text, list);
  action->setShortcut(keys);
  action->setShortcutContext(Qt::WidgetShortcut);
  list->addAction(action);
  auto* button = new QPushButton(text);
  button->setObjectName(QLatin1String(verb) + QLatin1Char('_') + thing);
  connect(button, &QPushButton::clicked, action, &QAction::trigger);
  connect(action, &QAction::changed, button, [=] { button->setEnabled(action->isEnabled()); });
  row->addWidget(button);
  return action;
}

void TContact_Rows_Page::Reload() {
  Rows_Are_Shown();
  const int before = list->indexOfTopLevelItem(list->currentItem());
  list->clear();
  Read("Contact_Rows_Page:Reload [KT_Links/KT_Log]", [&] {
    rows = Read_Rows();
    QList<QTreeWidgetItem*> items;
    for (const TRow& row : rows) {
      auto* item = new QTreeWidgetItem(row.Texts);
      const int last = static_cast<int>(row.Texts.size()) - 1;
      item->setToolTip(last, row.Texts.back());
      if (row.Can_Open) {
        QFont underlined = list->font();
        underlined.setUnderline(true);
        item->setFont(last, underlined);
        item->setForeground(last, list->palette().link());
      }
      items.append(item);
    }
    list->addTopLevelItems(items);
  });
  if (list->topLevelItemCount() > 0)
    list->setCurrentItem(list->topLevelItem(qBound(0, before, list->topLevelItemCount() - 1)));
  Set_Buttons();
}

void TContact_Rows_Page::Set_Buttons() {
  const auto row = static_cast<std::size_t>(list->indexOfTopLevelItem(list->currentItem()));
  bool allowed = false;
  Read("Contact_Rows_Page:Set_Buttons [KT_Rights]",
       [&] { allowed = Access_Allowed(Owner(), Access_Update); });
  add->setEnabled(allowed);
  for (QAction* action : {edit, remove})
    action->setEnabled(allowed && row < rows.size() && rows[row].Can_Change);
  if (open) open->setEnabled(row < rows.size() && rows[row].Can_Open);
}

void TContact_Rows_Page::Enter_Row() {
  if (!open) return edit->trigger();
  if (!open->isEnabled()) return;
  Run_On_Current(open, [this](std::size_t row) {
    Open_Row(row);
    return false;
  });
}

void TContact_Rows_Page::Run(const std::function<bool()>& act) {
  bool written = false;
  if (Outlives(this, [&] { written = act(); }) && written) Reload();
}

void TContact_Rows_Page::Run_On_Current(const QAction* command, const std::function<bool(std::size_t)>& act) {
  const int row = list->indexOfTopLevelItem(list->currentItem());
  if (row >= 0 && command->isEnabled()) Run([&] { return act(static_cast<std::size_t>(row)); });
}

}  // namespace Plexidex
