#include "Transfer.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QPointer>

#include "Books.h"
#include "Calendar_Export.h"
#include "Calendar_Import.h"
#include "Kt_forms.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Progress_Dialog.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

QString Summary(const TImport_Report& report) {
  QString text =
      QObject::tr(
          "%1 components read: %2 recurring sets, %3 single events and %4 tasks written, %5 unchanged, "
          "%6 replaced.")
          .arg(report.Read)
          .arg(report.Sets)
          .arg(report.Events)
          .arg(report.Tasks)
          .arg(report.Unchanged)
          .arg(report.Replaced);
  if (const std::string ends = Ends_Remark(report); !ends.empty())
    text += QObject::tr("\n\nNote: %1.").arg(To_Qt(ends));
  constexpr std::size_t most = 12;
  const auto add = [&](const QString& heading, const std::vector<TImport_Remark>& remarks) {
    if (!remarks.empty()) text += QStringLiteral("\n\n") + heading;
    for (std::size_t i = 0; i < std::min(most, remarks.size()); ++i)
      text += QLatin1Char('\n') + To_Qt(remarks[i].What) + QStringLiteral(": ") + To_Qt(remarks[i].Why);
    if (remarks.size() > most) text += QObject::tr("\nand %1 more").arg(remarks.size() - most);
  };
  add(QObject::tr("Not used:"), report.Unused);
  add(QObject::tr("Notes:"), report.Left_Out);
  return text;
}

}  // namespace

std::int64_t Read_Most_Entries() {
  return std::max<std::int64_t>(1, Kt_util_01::Read_Integer("Import", "Most Entries", Default_Entries));
}

void Write_Most_Entries(std::int64_t entries) {
  Kt_util_01::Write_Integer("Import", "Most Entries", entries);
}

bool Import_With_Progress(QWidget* window, const std::string& book, QString file) {
  if (file.isEmpty()) {
    file = QFileDialog::getOpenFileName(window, QObject::tr("Import a Calendar"), {},
                                        QObject::tr("Calendars (*.ics);;All files (*)"));
  }
  if (file.isEmpty()) return false;
  try {
    TImport_Report report;
    {
      TProgress_Dialog progress(window, QObject::tr("Reading the calendar..."));
      TImport_Options options;
      options.Book = book;
      options.Most_Entries = Read_Most_Entries();
      options.How_To_Raise = "the user preferences allow more";
      options.Progress = &progress;
      report = Import_Calendar(From_Qt(file), options);
    }
    Kt_util_01::Raise_Info("Import", From_Qt(Summary(report)));
    return true;
  } catch (const ECancelled&) {
    Kt_util_01::Raise_Notice("The import was cancelled; nothing was imported.");
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error("Import", e.what());
  }
  return false;
}

bool Import_Into_Chosen_Book(QWidget* window, const QString& file) {
  QStringList books;
  if (!Kt_data_01::Read("Transfer:Import_Into_Chosen_Book [KT_Books]", [&books] {
        for (const Kt_data_01::TBook& book : Kt_data_01::List_Books()) books << To_Qt(book.Name);
      }))
    return false;
  bool chosen = false;
  const TModal_Scope modal;
  const QString book = QInputDialog::getItem(
      window, QObject::tr("Import a Calendar"),
      QObject::tr("Import the entries of \"%1\" into the book:").arg(QFileInfo(file).fileName()), books, 0,
      false, &chosen);
  return chosen && Import_With_Progress(window, From_Qt(book), file);
}

void Export_With_Progress(QWidget* window, const std::string& book) {
  const QString file =
      QFileDialog::getSaveFileName(window, QObject::tr("Export a Calendar"), QStringLiteral("calendar.ics"),
                                   QObject::tr("Calendars (*.ics)"));
  if (file.isEmpty()) return;
  try {
    TProgress_Dialog progress(window, QObject::tr("Writing the calendar..."));
    const TExport_Report report = Export_Calendar(From_Qt(file), book, &progress);
    Kt_util_01::Raise_Notice(From_Qt(QObject::tr("Written: %1 sets, %2 single events, %3 tasks")
                                         .arg(report.Rules + report.Dates)
                                         .arg(report.Events)
                                         .arg(report.Tasks)));
  } catch (const ECancelled&) {
    Kt_util_01::Raise_Notice("The export was cancelled; the file is as it was.");
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error("Export", e.what());
  }
}

}  // namespace Plexidex
