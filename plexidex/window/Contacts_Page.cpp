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
#include <algorithm>

#include "Contact_Model.h"
#include "Contacts.h"
#include "Folder_Dialogs.h"
#include "Host_Dialog.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Tags.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

constexpr std::pair<TContact_Column, int> Column_Chars[] = {
    {TContact_Column::Telephone, 20}, {TContact_Column::Template, 13}, {TContact_Column::Folder, 14}};
// A narrower page drops the column.
constexpr std::pair<TContact_Column, int> Least_Chars[] = {{TContact_Column::Categories, 105},
                                                           {TContact_Column::Folder, 85}};

// A user without the right hears the warning sound.
bool May_Delete(const std::vector<std::string>& contacts) {
  bool allowed = false;
  Read("Contacts_Page:May_Delete [KT_Contacts/KT_Rights]", [&] {
    allowed = std::all_of(contacts.begin(), contacts.end(),
                          [](const std::string& key) { return Access_Allowed(key, Access_Delete); });
  });
  if (!allowed) Kt_util_01::Sound(5);
  return allowed;
}

bool Set_Deleted(const std::vector<std::string>& contacts, bool gone) {
  return Update_Host("Contacts_Page:Set_Deleted [KT_Contacts]", [&] {
    for (const std::string& key : contacts) Set_Contact_Deleted(key, gone);
  });
}

}  // namespace

TContact_List_Page::TContact_List_Page()
    : deleted(new QCheckBox(tr("&Show deleted contacts"))),
      model(new TContact_Model(this)),
      list(new QTableView),
      filter(new QLineEdit),
      count(new QLabel),
      add(new QPushButton(tr("&New Contact..."))),
      open(new QPushButton(tr("&Open"))),
      remove(new QPushButton) {
  Set_Up_List();
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

  Add_Commands();
  auto* down = new QAction(filter);
  down->setShortcut(Qt::Key_Down);
  down->setShortcutContext(Qt::WidgetShortcut);
  filter->addAction(down);
  connect(down, &QAction::triggered, list, [this] { list->setFocus(Qt::ShortcutFocusReason); });
  connect(filter, &QLineEdit::returnPressed, this, &TContact_List_Page::Open);
  connect(filter, &QLineEdit::textChanged, this, [this](const QString& text) {
    Keep_Selected([&] { model->Narrow(text); });
    Say_Count();
  });
  connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &TContact_List_Page::Set_Buttons);
  connect(list, &QTableView::activated, this, &TContact_List_Page::Open);
  connect(deleted, &QCheckBox::toggled, this, [this] { Reload(); });
  connect(add, &QPushButton::clicked, this,
          [this] { Post_Message(Get_ParentForm(this), umAddContact, 0, 0); });
  connect(open, &QPushButton::clicked, this, &TContact_List_Page::Open);
  connect(remove, &QPushButton::clicked, this, &TContact_List_Page::Delete_Or_Restore);
}

void TContact_List_Page::Set_Up_List() {
  list->setObjectName(QStringLiteral("Contacts"));
  list->setAccessibleName(tr("Contacts"));
  list->setModel(model);
  list->setSelectionBehavior(QAbstractItemView::SelectRows);
  list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list->setDragDropMode(QAbstractItemView::DragOnly);
  list->setTabKeyNavigation(false);
  list->setShowGrid(false);
  list->setWordWrap(false);
  list->verticalHeader()->hide();
  list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() + 6);
  QHeaderView* header = list->horizontalHeader();
  header->setHighlightSections(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  header->setSectionResizeMode(QHeaderView::Stretch);
  for (const auto& [column, chars] : Column_Chars) {
    header->setSectionResizeMode(static_cast<int>(column), QHeaderView::Interactive);
    header->resizeSection(static_cast<int>(column), list->fontMetrics().averageCharWidth() * chars);
  }
  header->setSortIndicator(static_cast<int>(TContact_Column::Name), Qt::AscendingOrder);
  list->setSortingEnabled(true);
}

void TContact_List_Page::Add_Commands() {
  list->setContextMenuPolicy(Qt::ActionsContextMenu);
  const auto add_command = [this](const char* name, const QString& text, const QString& hint, auto run) {
    auto* action = new QAction(text, list);
    action->setObjectName(QLatin1String(name));
    action->setStatusTip(hint);
    connect(action, &QAction::triggered, this, run);
    list->addAction(action);
    return action;
  };
  // The first and the last are for those that are not deleted.
  add_command("Open", tr("&Open"), open->statusTip(), &TContact_List_Page::Open);
  tag = add_command("Tag", tr("&Tag"), tr("Marks the selected contacts, for yourself alone"),
                    &TContact_List_Page::Tag);
  tag->setCheckable(true);
  tag->setShortcut(Qt::CTRL | Qt::Key_T);
  add_command("Move", tr("&Move to Folder..."), tr("Moves the selected contacts to a folder of the book"),
              &TContact_List_Page::Move);
  QAction* erase =
      add_command("Delete", tr("&Delete..."), tr("Deletes the selected contacts, which can be restored"),
                  &TContact_List_Page::Delete_Or_Restore);
  erase->setShortcut(Qt::Key_Delete);
  erase->setShortcutContext(Qt::WidgetShortcut);
}

void TContact_List_Page::resizeEvent(QResizeEvent* event) {
  TBook_Page::resizeEvent(event);
  for (const auto& [column, chars] : Least_Chars)
    list->setColumnHidden(static_cast<int>(column), width() < list->fontMetrics().averageCharWidth() * chars);
}

void TContact_List_Page::Reload() {
  Rows_Are_Shown();
  Show_Rows();
}

void TContact_List_Page::Show_Rows() {
  model->Set_Book(Book());
  Read("Contacts_Page:Reload [KT_Contacts/KT_Contacts_Data/KT_Templates/KT_Categories/KT_Flags]", [this] {
    auto rows = Read_Rows();
    Keep_Selected([&] { model->Show_Rows(std::move(rows)); });
  });
  Say_Count();
}

void TContact_List_Page::Add_Above(QLayout* added) {
  static_cast<QVBoxLayout*>(layout())->insertLayout(0, added);
}

void TContact_List_Page::Keep_Selected(const std::function<void()>& change) {
  const QString current = Selected();
  const std::vector<std::string> selected = All_Selected();
  const int row = list->currentIndex().row();
  change();
  Select(current, row);
  if (selected.size() > 1)
    list->selectionModel()->select(model->Rows_Of({selected.begin(), selected.end()}),
                                   QItemSelectionModel::Select);
  Set_Buttons();
}

void TContact_List_Page::Select(const QString& key, int row) {
  const auto found = model->List().Position_Of(From_Qt(key));
  const int last = model->rowCount() - 1;
  if (last < 0) return;
  list->setCurrentIndex(model->index(found ? static_cast<int>(*found) : qBound(0, row, last), 0));
}

void TContact_List_Page::Say_Count() {
  const auto shown = static_cast<qulonglong>(model->List().Count()),
             all = static_cast<qulonglong>(model->List().Count_Of_All());
  const QLocale locale;
  const QString of = all == 1 ? tr("1 contact") : tr("%1 contacts").arg(locale.toString(all));
  count->setText(shown == all ? of : tr("%1 of %2").arg(locale.toString(shown), of));
}

QString TContact_List_Page::Selected() const {
  const QModelIndex current = list->currentIndex();
  return current.isValid() ? To_Qt(model->List().Row(static_cast<std::size_t>(current.row())).Key)
                           : QString();
}

std::vector<std::string> TContact_List_Page::All_Selected() const {
  QModelIndexList rows = list->selectionModel()->selectedRows();
  std::sort(rows.begin(), rows.end());
  std::vector<std::string> keys;
  for (const QModelIndex& one : rows)
    keys.push_back(model->List().Row(static_cast<std::size_t>(one.row())).Key);
  return keys;
}

void TContact_List_Page::Set_Buttons() {
  const bool restoring = deleted->isChecked();
  remove->setText(restoring ? tr("&Restore") : tr("&Delete..."));
  remove->setAccessibleName(restoring ? tr("Restore") : tr("Delete"));
  remove->setStatusTip(restoring ? tr("Brings the selected contact back, with all its entries")
                                 : tr("Deletes the selected contact, which can be restored"));
  const bool any = list->selectionModel()->hasSelection() && !Selected().isEmpty();
  bool allowed = false;
  Read("Contacts_Page:Set_Buttons [KT_Rights/KT_Users]",
       [&] { allowed = any && Access_Allowed(From_Qt(Selected()), Access_Delete); });
  remove->setEnabled(allowed);
  open->setEnabled(any && !restoring);
  const auto commands = list->actions();
  for (QAction* action : commands) action->setEnabled(any);
  for (QAction* action : {commands.first(), commands.last()}) action->setEnabled(any && !restoring);
  tag->setChecked(any && model->List().Row(static_cast<std::size_t>(list->currentIndex().row())).Tagged);
}

// As the current one is to be, so are all.
void TContact_List_Page::Tag() {
  const auto keys = All_Selected();
  const bool tagged = tag->isChecked();
  Change_In_Place([&] {
    if (Update_Host("Contacts_Page:Tag [KT_Flags]", [&] {
          for (const std::string& key : keys) Set_Tagged(key, tagged);
        })) {
      model->Set_Tagged({keys.begin(), keys.end()}, tagged);
    }
  });
  Set_Buttons();
}

void TContact_List_Page::Move() {
  bool moved = false;
  if (!Outlives(this, [&] { moved = Move_With_Dialog(window(), Book(), All_Selected()); }) || !moved) return;
  Reload();
  emit Contacts_Changed();
}

void TContact_List_Page::Open() {
  if (open->isEnabled()) emit Open_Contact(Selected());
}

void TContact_List_Page::Delete_Or_Restore() {
  if (!remove->isEnabled()) return Kt_util_01::Sound(5);
  const std::vector<std::string> contacts = All_Selected();
  bool done = false;
  if (!Outlives(this,
                [&, restoring = deleted->isChecked()] {
                  done = restoring ? May_Delete(contacts) && Set_Deleted(contacts, false)
                                   : Delete_Contacts(contacts);
                }) ||
      !done)
    return;
  Reload();
  emit Contacts_Changed();
}

TContacts_Page::TContacts_Page() {
  setObjectName(QStringLiteral("Contacts_Page"));
}

std::vector<TContact_Row> TContacts_Page::Read_Rows() {
  return Read_Contact_Rows(Book(), deleted->isChecked(), folder);
}

bool Delete_Contacts(const std::vector<std::string>& contacts) {
  std::optional<TContact> first;
  if (contacts.empty() ||
      !Read("Contacts_Page:Delete_Contacts [KT_Contacts]", [&] { first = Find_Contact(contacts.front()); }) ||
      !first || !May_Delete(contacts))
    return false;
  const std::string question =
      contacts.size() == 1
          ? "Delete the contact \"" + first->Name +
                "\"? It is kept with its entries among the deleted contacts and can be restored."
          : "Delete the " + std::to_string(contacts.size()) +
                " selected contacts? They are kept with their entries among the deleted contacts and can be "
                "restored.";
  if (Kt_util_01::Raise_Question("Delete Contact", question) != Kt_util_01::Answer_Yes) return false;
  return Set_Deleted(contacts, true);
}

}  // namespace Plexidex
