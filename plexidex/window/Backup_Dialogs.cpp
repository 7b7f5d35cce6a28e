#include "Backup_Dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QStatusBar>
#include <regex>
#include <utility>

#include "Backup.h"
#include "Database.h"
#include "Kt_forms.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Plain_Tip.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

const std::string& Database_File() {
  return Kt_data_01::Shared_Database().Path();
}

QString Backup_Files() {
  return QObject::tr("Databases (*.db);;All files (*)");
}

}  // namespace

void Back_Up_With_Dialog(QWidget* window) {
  const QString folder = To_Qt(Kt_data_01::Chosen_Backup_Folder(Database_File()));
  QDir().mkpath(folder);
  const QString name = To_Qt(Kt_data_01::Dated_Name(Database_File()));
  const QString file =
      QFileDialog::getSaveFileName(window, QObject::tr("Back Up"), QDir(folder).filePath(name + ".db"),
                                   Backup_Files(), nullptr, QFileDialog::DontConfirmOverwrite);
  if (file.isEmpty()) return;
  try {
    Kt_util_01::Raise_Notice("Backup made: " + Kt_data_01::Back_Up(Database_File(), From_Qt(file)));
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error("Back Up", e.what());
  }
}

std::string Ask_What_To_Restore(QWidget* window) {
  const auto fault = Kt_data_01::Read("Backup_Dialogs:Ask_What_To_Restore [KT_Users]",
                                      [] { return Kt_data_01::Restore_Fault(); });
  if (!fault) return "";
  if (!fault->empty()) {
    Kt_util_01::Raise_Error("Restore Backup", *fault);
    return "";
  }
  const QString file =
      QFileDialog::getOpenFileName(window, QObject::tr("Restore a Backup"),
                                   To_Qt(Kt_data_01::Chosen_Backup_Folder(Database_File())), Backup_Files());
  if (file.isEmpty()) return "";
  const std::string question = "Put \"" + From_Qt(file) + "\" in place of the database \"" + Database_File() +
                               "\"? What is there now is kept beside it.";
  return Kt_util_01::Raise_Question("Restore Backup", question) == Kt_util_01::Answer_Yes ? From_Qt(file)
                                                                                          : "";
}

TDaily_Backups::TDaily_Backups(QMainWindow* window)
    : QObject(window), window(window), failed(new QLabel(tr("The daily backup failed"))) {
  failed->setObjectName(QStringLiteral("Backup_Failed"));
  failed->setTextFormat(Qt::PlainText);
  failed->hide();
  window->statusBar()->addPermanentWidget(failed);
  connect(&timer, &QTimer::timeout, this, &TDaily_Backups::Look);
  Start_Anew();
}

void TDaily_Backups::Start_Anew() {
  // Not at once: the window comes first.
  constexpr int first_msecs = 60'000;
  timer.start(first_msecs);
  Forget_Failure();
}

void TDaily_Backups::Forget_Failure() {
  told.clear();
  failed->hide();
}

void TDaily_Backups::Look() {
  constexpr int every_msecs = 15 * 60'000, after_failure_msecs = 60 * 60'000;
  timer.start(every_msecs);
  if (Database_File().empty() || Kt_data_01::Update_Is_Open()) return;
  try {
    const std::string file = Kt_data_01::Back_Up_Daily(Database_File());
    // That all is well is not worth a notification.
    constexpr int shown_msecs = 15'000;
    if (!file.empty()) window->statusBar()->showMessage(tr("Backup made: %1").arg(To_Qt(file)), shown_msecs);
    Forget_Failure();
  } catch (const std::exception& e) {
    timer.start(after_failure_msecs);
    failed->setToolTip(KTReminds::As_Plain_Tip(To_Qt(e.what())));
    failed->setAccessibleDescription(To_Qt(e.what()));
    failed->show();
    // The file that was to be made is called otherwise each time.
    static const std::regex dated_name("-\\d{4}-\\d{2}-\\d{2}-\\d{4}[^\"]*");
    const std::string fault = std::regex_replace(e.what(), dated_name, "");
    if (std::exchange(told, fault) != fault) Kt_util_01::Raise_Notice(e.what());
  }
}

void TDaily_Backups::Try_Again() {
  if (!told.empty()) Look();
}

}  // namespace Plexidex
