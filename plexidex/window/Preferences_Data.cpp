// The page of the preferences about the database and its backups.

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

#include "Backup.h"
#include "Database.h"
#include "Import_Budget.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Preference_Groups.h"
#include "Preferences.h"
#include "Transfer.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

constexpr const char *Section = "General", *Recent = "Recent Databases";

// The next start may be from another folder.
std::string Whole_Path(const QString& path) {
  return From_Qt(QFileInfo(path).absoluteFilePath());
}

// "" for none.
std::string Typed_Path(const QLineEdit* input) {
  const QString path = QDir::fromNativeSeparators(input->text().trimmed());
  return path.isEmpty() ? std::string() : Whole_Path(path);
}

QString Shown_Path(const std::string& path) {
  return QDir::toNativeSeparators(To_Qt(path));
}

QStringList Recent_Databases() {
  return To_Qt(Kt_util_01::Read_String(Section, Recent, "")).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QSpinBox* Number(const char* name, int lowest, int highest, int value) {
  auto* box = new QSpinBox;
  box->setObjectName(QString::fromLatin1(name));
  box->setRange(lowest, highest);
  box->setGroupSeparatorShown(true);
  box->setValue(value);
  return box;
}

}  // namespace

void TPreference_Group::Add_Row(const QString& label, QWidget* input, const QList<QWidget*>& behind) {
  auto* row = new QHBoxLayout;
  row->addWidget(input, 1);
  for (QWidget* each : behind) row->addWidget(each);
  form->addRow(label, row);
  qobject_cast<QLabel*>(form->labelForField(row))->setBuddy(input);
}

void Remember_Database(const std::string& path) {
  constexpr int most = 8;
  QStringList recent = Recent_Databases();
  recent.removeAll(To_Qt(path));
  recent.prepend(To_Qt(path));
  Kt_util_01::Write_String(Section, Recent, From_Qt(recent.mid(0, most).join(QLatin1Char('\n'))));
}

TData_Group::TData_Group(const std::string& database)
    : current(database),
      file(new QLineEdit(Shown_Path(database))),
      folder(new QLineEdit(Shown_Path(Kt_data_01::Chosen_Backup_Folder(database)))),
      most_entries(Number("Most_Entries", 1000, static_cast<int>(Highest_Entries),
                          static_cast<int>(Read_Most_Entries()))),
      kept(Number("Backups_Kept", 1, static_cast<int>(Kt_data_01::Most_Backups_Kept),
                  static_cast<int>(Kt_data_01::Backups_Kept()))),
      daily(new QCheckBox(tr("&Make a backup each day that the program runs"))) {
  file->setObjectName(QStringLiteral("Database"));
  folder->setObjectName(QStringLiteral("Backup_Folder"));
  daily->setObjectName(QStringLiteral("Daily_Backup"));
  daily->setChecked(Kt_data_01::Daily_Backup());
  most_entries->setSingleStep(50'000);
  auto *browse = new QPushButton(tr("&Browse...")), *recent = new QPushButton(tr("&Recent")),
       *browse_folder = new QPushButton(tr("Br&owse..."));
  recent->setObjectName(QStringLiteral("Recent"));
  auto* menu = new QMenu(recent);
  for (const QString& path : Recent_Databases()) {
    if (path == To_Qt(current) || !QFileInfo::exists(path)) continue;
    // An ampersand in a name is no mnemonic.
    QString text = QDir::toNativeSeparators(path);
    connect(menu->addAction(text.replace(QLatin1Char('&'), QStringLiteral("&&"))), &QAction::triggered, this,
            [this, path] { file->setText(QDir::toNativeSeparators(path)); });
  }
  recent->setMenu(menu);
  recent->setEnabled(!menu->isEmpty());
  for (QPushButton* button : {browse, recent, browse_folder}) button->setAutoDefault(false);
  Add_Row(tr("Database &file:"), file, {browse, recent});
  Form()->addRow(tr("&Entries of an import at most:"), most_entries);
  Form()->addRow(daily);
  Add_Row(tr("Folder for back&ups:"), folder, {browse_folder});
  Form()->addRow(tr("Backups to &keep:"), kept);
  connect(browse, &QPushButton::clicked, this, [this] {
    const QString chosen = QFileDialog::getSaveFileName(this, tr("Choose a Database"), file->text(),
                                                        tr("Databases (*.db);;All files (*)"), nullptr,
                                                        QFileDialog::DontConfirmOverwrite);
    if (!chosen.isEmpty()) file->setText(QDir::toNativeSeparators(chosen));
  });
  connect(browse_folder, &QPushButton::clicked, this, [this] {
    const QString chosen = QFileDialog::getExistingDirectory(this, tr("Folder for Backups"), folder->text());
    if (!chosen.isEmpty()) folder->setText(QDir::toNativeSeparators(chosen));
  });
}

std::string TData_Group::Database() const {
  return Typed_Path(file);
}

// The one in use stays open until it is known that the other can be: it may not open a second time.
std::optional<TPreference_Group::TWrong> TData_Group::Check_Database() {
  if (Database().empty()) return TWrong{file, "Name the file that holds the database."};
  if (Database() == Whole_Path(To_Qt(current))) return {};
  // A name that is mistyped is not to become an empty database.
  if (!QFileInfo::exists(To_Qt(Database())) &&
      Kt_util_01::Raise_Question("User Preferences", "There is no database \"" + Database() +
                                                         "\". Make a new one?") != Kt_util_01::Answer_Yes)
    return TWrong{file, ""};
  try {
    Kt_data_01::TDatabase().Open(Database(), Kt_data_01::TDatabase::TMode::Create_If_Missing);
    return {};
  } catch (const std::exception& e) {
    return TWrong{file, e.what()};
  }
}

std::optional<TPreference_Group::TWrong> TData_Group::Check() {
  const std::string wanted = Typed_Path(folder);
  // What is not mounted now stands in nobody's way.
  if (!wanted.empty() && wanted != Kt_data_01::Chosen_Backup_Folder(current)) {
    QFileInfo backups(To_Qt(wanted));
    if (backups.exists() && !backups.isDir())
      return TWrong{folder, "\"" + wanted + "\" is no folder; backups need one."};
    while (!backups.exists() && !backups.isRoot()) backups.setFile(backups.path());
    if (!backups.isDir() || !backups.isWritable())
      return TWrong{folder, "Backups cannot be written to \"" + wanted + "\"."};
  }
  return Check_Database();
}

void TData_Group::Save() {
  Write_Most_Entries(most_entries->value());
  // The folder beside the database goes with the database.
  std::string chosen = Typed_Path(folder);
  if (chosen == Kt_data_01::Backup_Folder_Of(current)) chosen.clear();
  Kt_data_01::Choose_Backups(daily->isChecked(), chosen, static_cast<std::size_t>(kept->value()));
}

}  // namespace Plexidex
