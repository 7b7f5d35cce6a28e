#include "Contacts_Page.h"

#include <QAction>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "Contact_Model.h"
#include "Contacts.h"
#include "Host_Dialog.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

TContacts_Page::TContacts_Page()
    : model(new TContact_Model(this)),
      list(new QTableView),
      filter(new QLineEdit),
      count(new QLabel),
      deleted(new QCheckBox(tr("&Show deleted contacts"))),
      add(new QPushButton(tr("&New Contact..."))),
      open(new QPushButton(tr("&Open"))),
      remove(new QPushButton) {
  setObjectName(QStringLiteral("Contacts_Page"));
  list->setObjectName(QStringLiteral("Contacts"));
  list->setAccessibleName(tr("Contacts"));
  list->setModel(model);
  list->setSelectionBehavior(QAbstractItemView::SelectRows);
  list->setSelectionMode(QAbstractItemView::SingleSelection);
  list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list->setTabKeyNavigation(false);
  list->setShowGrid(false);
  list->setWordWrap(false);
  list->verticalHeader()->hide();
  list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() + 6);
  constexpr int chars_of_a_telephone = 20, chars_of_a_template = 16;
  QHeaderView* header = list->horizontalHeader();
  header->setHighlightSections(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->setSectionResizeMode(QHeaderView::Stretch);
  for (const auto& [column, chars] : {std::pair(TContact_Column::Telephone, chars_of_a_telephone),
                                      {TContact_Column::Template, chars_of_a_template}}) {
    header->setSectionResizeMode(static_cast<int>(column), QHeaderView::Interactive);
    header->resizeSection(static_cast<int>(column), list->fontMetrics().averageCharWidth() * chars);
  }
  header->setSortIndicator(static_cast<int>(TContact_Column::Name), Qt::AscendingOrder);
  list->setSortingEnabled(true);
  filter->setObjectName(QStringLiteral("Filter"));
  filter->setPlaceholderText(tr("Type to narrow the list"));
  filter->setClearButtonEnabled(true);
  filter->setStatusTip(tr("Leaves the contacts in which each of these words occurs"));
  count->setObjectName(QStringLiteral("Shown_Count"));
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
  auto* narrowing = new QHBoxLayout;
  auto* caption = new QLabel(tr("&Filter:"));
  caption->setBuddy(filter);
  narrowing->addWidget(caption);
  narrowing->addWidget(filter, 1);
  narrowing->addWidget(count);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(buttons);
  layout->addLayout(narrowing);
  layout->addWidget(list);
  Initialise_Form(this);

  auto* erase = new QAction(list);
  erase->setShortcut(Qt::Key_Delete);
  erase->setShortcutContext(Qt::WidgetShortcut);
  list->addAction(erase);
  connect(erase, &QAction::triggered, this, [this] {
    if (!deleted->isChecked()) Delete_Or_Restore();
  });
  auto* down = new QAction(filter);
  down->setShortcut(Qt::Key_Down);
  down->setShortcutContext(Qt::WidgetShortcut);
  filter->addAction(down);
  connect(down, &QAction::triggered, list, [this] { list->setFocus(Qt::ShortcutFocusReason); });
  connect(filter, &QLineEdit::returnPressed, this, &TContacts_Page::Open);
  connect(filter, &QLineEdit::textChanged, this, [this](const QString& text) {
    Keep_Selected([&] { model->Narrow(text); });
    Say_Count();
  });
  connect(list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &TContacts_Page::Set_Buttons);
  connect(list, &QTableView::activated, this, &TContacts_Page::Open);
  connect(deleted, &QCheckBox::toggled, this, [this] { Reload(); });
  connect(add, &QPushButton::clicked, this,
          [this] { Post_Message(Get_ParentForm(this), umAddContact, 0, 0); });
  connect(open, &QPushButton::clicked, this, &TContacts_Page::Open);
  connect(remove, &QPushButton::clicked, this, &TContacts_Page::Delete_Or_Restore);
}

void TContacts_Page::Reload() {
  Rows_Are_Shown();
  Read("Contacts_Page:Reload [KT_Contacts/KT_Contacts_Data/KT_Templates]", [this] {
    auto rows = Read_Contact_Rows(Book(), deleted->isChecked());
    Keep_Selected([&] { model->Show_Rows(std::move(rows)); });
  });
  Say_Count();
}

void TContacts_Page::Keep_Selected(const std::function<void()>& change) {
  const QString selected = Selected();
  const int row = list->currentIndex().row();
  change();
  Select(selected, row);
  Set_Buttons();
}

void TContacts_Page::Select(const QString& key, int row) {
  const auto found = model->List().Position_Of(From_Qt(key));
  const int last = model->rowCount() - 1;
  if (last < 0) return;
  list->setCurrentIndex(model->index(found ? static_cast<int>(*found) : qBound(0, row, last), 0));
}

void TContacts_Page::Say_Count() {
  const auto shown = static_cast<qulonglong>(model->List().Count()),
             all = static_cast<qulonglong>(model->List().Count_Of_All());
  const QLocale locale;
  const QString of = all == 1 ? tr("1 contact") : tr("%1 contacts").arg(locale.toString(all));
  count->setText(shown == all ? of : tr("%1 of %2").arg(locale.toString(shown), of));
}

QString TContacts_Page::Selected() const {
  const QModelIndex current = list->currentIndex();
  return current.isValid() ? To_Qt(model->List().Row(static_cast<std::size_t>(current.row())).Key)
                           : QString();
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
