#include "Contacts_Page.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "Books.h"
#include "Contacts.h"
#include "Host_Dialog.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {
constexpr int Key_Role = Qt::UserRole;
}

TContacts_Page::TContacts_Page()
    : list(new QListWidget),
      deleted(new QCheckBox(tr("&Show deleted contacts"))),
      add(new QPushButton(tr("&New Contact..."))),
      open(new QPushButton(tr("&Open"))),
      remove(new QPushButton) {
  setObjectName(QStringLiteral("Contacts_Page"));
  list->setObjectName(QStringLiteral("Contacts"));
  list->setAccessibleName(tr("Contacts"));
  list->setUniformItemSizes(true);
  deleted->setObjectName(QStringLiteral("Show_Deleted"));
  add->setObjectName(QStringLiteral("New_Contact"));
  open->setObjectName(QStringLiteral("Open_Contact"));
  remove->setObjectName(QStringLiteral("Delete_Or_Restore"));
  add->setStatusTip(tr("Adds a contact to the address book"));
  open->setStatusTip(tr("Shows the selected contact and its calendar"));
  deleted->setStatusTip(tr("Deleted contacts are kept with their entries and can be restored"));
  auto* buttons = new QHBoxLayout;
  for (QPushButton* button : {add, open, remove}) buttons->addWidget(button);
  buttons->addStretch();
  buttons->addWidget(deleted);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(buttons);
  layout->addWidget(list);
  Initialise_Form(this);

  auto* erase = new QAction(list);
  erase->setShortcut(Qt::Key_Delete);
  erase->setShortcutContext(Qt::WidgetShortcut);
  list->addAction(erase);
  connect(erase, &QAction::triggered, this, [this] {
    if (!deleted->isChecked()) Delete_Or_Restore();
  });
  connect(list, &QListWidget::currentItemChanged, this, &TContacts_Page::Set_Buttons);
  connect(list, &QListWidget::itemActivated, this, &TContacts_Page::Open);
  connect(deleted, &QCheckBox::toggled, this, [this] { Reload(); });
  connect(add, &QPushButton::clicked, this,
          [this] { Post_Message(Get_ParentForm(this), umAddContact, 0, 0); });
  connect(open, &QPushButton::clicked, this, &TContacts_Page::Open);
  connect(remove, &QPushButton::clicked, this, &TContacts_Page::Delete_Or_Restore);
}

void TContacts_Page::Reload() {
  Rows_Are_Shown();
  const QString selected = Selected();
  const int row = list->currentRow();
  list->clear();
  Read("Contacts_Page:Reload [KT_Contacts]", [&] {
    for (const TContact& contact : List_Contacts(Book(), deleted->isChecked())) {
      auto* item = new QListWidgetItem(To_Qt(contact.Name), list);
      item->setData(Key_Role, To_Qt(contact.Key));
      if (To_Qt(contact.Key) == selected) list->setCurrentItem(item);
    }
  });
  if (!list->currentItem()) list->setCurrentRow(qMax(0, qMin(row, list->count() - 1)));
  Set_Buttons();
}

QString TContacts_Page::Selected() const {
  const QListWidgetItem* item = list->currentItem();
  return item ? item->data(Key_Role).toString() : QString();
}

void TContacts_Page::Set_Buttons() {
  const bool restoring = deleted->isChecked();
  remove->setText(restoring ? tr("&Restore") : tr("&Delete..."));
  remove->setAccessibleName(restoring ? tr("Restore") : tr("Delete"));
  remove->setStatusTip(restoring ? tr("Brings the selected contact back, with all its entries")
                                 : tr("Deletes the selected contact, which can be restored"));
  bool allowed = false;
  Read("Contacts_Page:Set_Buttons [KT_Rights/KT_Users]",
       [&] { allowed = !Selected().isEmpty() && Access_Allowed(From_Qt(Selected()), Access_Delete); });
  remove->setEnabled(allowed);
  open->setEnabled(!Selected().isEmpty() && !restoring);
}

void TContacts_Page::Open() {
  if (open->isEnabled()) emit Open_Contact(Selected());
}

void TContacts_Page::Delete_Or_Restore() {
  if (!remove->isEnabled()) return Kt_util_01::Sound(5);
  const std::string contact = From_Qt(Selected());
  bool done = false;
  if (!Outlives(this,
                [&, restoring = deleted->isChecked()] {
                  done = restoring ? Update_Host("Contacts_Page:Restore [KT_Contacts]",
                                                 [&] { Set_Contact_Deleted(contact, false); })
                                   : Delete_Contact(contact);
                }) ||
      !done)
    return;
  Reload();
  emit Contacts_Changed();
}

bool Delete_Contact(const std::string& contact) {
  std::optional<TContact> found;
  bool allowed = false;
  if (!Read("Contacts_Page:Delete_Contact [KT_Contacts/KT_Rights]", [&] {
        found = Find_Contact(contact);
        allowed = found && Access_Allowed(contact, Access_Delete);
      }))
    return false;
  if (!allowed) {
    if (found) Kt_util_01::Sound(5);
    return false;
  }
  const std::string question =
      "Delete the contact \"" + found->Name +
      "\"? It is kept with its entries among the deleted contacts and can be restored.";
  if (Kt_util_01::Raise_Question("Delete Contact", question) != Kt_util_01::Answer_Yes) return false;
  return Update_Host("Contacts_Page:Delete_Contact [KT_Contacts]",
                     [&] { Set_Contact_Deleted(contact, true); });
}

}  // namespace Plexidex
