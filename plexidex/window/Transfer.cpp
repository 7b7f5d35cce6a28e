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
#include "Vcard_Export.h"
#include "Vcard_File.h"
#include "Vcard_Import.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

// What was not used, and what else is to be said.
QString Remarks(const std::vector<TImport_Remark>& unused, const std::vector<TImport_Remark>& notes) {
  QString text;
  constexpr std::size_t most = 12;
  const auto add = [&](const QString& heading, const std::vector<TImport_Remark>& remarks) {
    if (!remarks.empty()) text += QStringLiteral("\n\n") + heading;
    for (std::size_t i = 0; i < std::min(most, remarks.size()); ++i)
      text += QLatin1Char('\n') + To_Qt(remarks[i].What) + QStringLiteral(": ") + To_Qt(remarks[i].Why);
    if (remarks.size() > most) text += QObject::tr("\nand %1 more").arg(remarks.size() - most);
  };
  add(QObject::tr("Not used:"), unused);
  add(QObject::tr("Notes:"), notes);
  return text;
}

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
  return text + Remarks(report.Unused, report.Left_Out);
}

QString Summary(const TVcard_Report& report) {
  return QObject::tr("%1 cards read: %2 contacts added, %3 updated, %4 birthdays written, %5 unchanged.")
             .arg(report.Read)
             .arg(report.Added)
             .arg(report.Updated)
             .arg(report.Birthdays)
             .arg(report.Unchanged) +
         Remarks(report.Unused, report.Notes);
}

QString Import_File(QWidget* window, const std::string& book, const std::string& file) {
  const bool is_vcard = Is_Vcard_File(file);
  TProgress_Dialog progress(
      window, is_vcard ? QObject::tr("Reading the contacts...") : QObject::tr("Reading the calendar..."));
  TImport_Options options;
  options.Book = book;
  options.Most_Entries = Read_Most_Entries();
  options.How_To_Raise = "the user preferences allow more";
  options.Progress = &progress;
  return is_vcard ? Summary(Import_Vcards(file, options)) : Summary(Import_Calendar(file, options));
}

// What was written.
QString Export_File(QWidget* window, const std::string& book, const std::string& file,
                    std::optional<TVcard_Version> version) {
  if (Has_Vcard_Name(file)) {
    TProgress_Dialog progress(window, QObject::tr("Writing the contacts..."));
    return QObject::tr("Written: %1 contacts").arg(Export_Vcards(file, book, version, &progress));
  }
  TProgress_Dialog progress(window, QObject::tr("Writing the calendar..."));
  const TExport_Report report = Export_Calendar(file, book, &progress);
  return QObject::tr("Written: %1 sets, %2 single events, %3 tasks")
      .arg(report.Rules + report.Dates)
      .arg(report.Events)
      .arg(report.Tasks);
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
    file = QFileDialog::getOpenFileName(
        window, QObject::tr("Import a Calendar or Contacts"), {},
        QObject::tr("Calendars and contacts (*.ics *.vcf *.vcard);;All files (*)"));
  }
  if (file.isEmpty()) return false;
  try {
    const QString summary = Import_File(window, book, From_Qt(file));
    Kt_util_01::Raise_Info("Import", From_Qt(summary));
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
        for (const Kt_data_01::TBook& book : Kt_data_01::Visible_Books()) books << To_Qt(book.Name);
      }))
    return false;
  bool chosen = false;
  const TModal_Scope modal;
  const bool is_vcard = Is_Vcard_File(From_Qt(file));
  const QString question = is_vcard ? QObject::tr("Import the contacts of \"%1\" into the book:")
                                    : QObject::tr("Import the entries of \"%1\" into the book:");
  const QString book = QInputDialog::getItem(
      window, is_vcard ? QObject::tr("Import Contacts") : QObject::tr("Import a Calendar"),
      question.arg(QFileInfo(file).fileName()), books, 0, false, &chosen);
  return chosen && Import_With_Progress(window, From_Qt(book), file);
}

void Export_With_Progress(QWidget* window, const std::string& book) {
  const QString calendars = QObject::tr("Calendars (*.ics)"), cards = QObject::tr("Contacts (*.vcf)"),
                version_3 = QObject::tr("Contacts, all in vCard 3.0 (*.vcf)"),
                version_4 = QObject::tr("Contacts, all in vCard 4.0 (*.vcf)");
  QString chosen;
  QString file = QFileDialog::getSaveFileName(
      window, QObject::tr("Export a Calendar or Contacts"), QStringLiteral("calendar.ics"),
      QStringList{calendars, cards, version_3, version_4}.join(QStringLiteral(";;")), &chosen);
  if (file.isEmpty()) return;
  // What was chosen besides a name of the other kind.
  const QFileInfo named(file);
  const bool wants_cards = !chosen.isEmpty() && chosen != calendars;
  if (wants_cards && !Has_Vcard_Name(From_Qt(file))) {
    file = named.path() + QLatin1Char('/') + named.completeBaseName() + QStringLiteral(".vcf");
    // The file dialog has asked about another one.
    if (QFileInfo::exists(file) &&
        Kt_util_01::Raise_Question("Export", "\"" + From_Qt(file) + "\" is there already. Write over it?") !=
            Kt_util_01::Answer_Yes)
      return;
  }
  const auto version = chosen == version_3   ? std::optional(TVcard_Version::V3_0)
                       : chosen == version_4 ? std::optional(TVcard_Version::V4_0)
                                             : std::nullopt;
  try {
    const QString written = Export_File(window, book, From_Qt(file), version);
    Kt_util_01::Raise_Notice(From_Qt(written));
  } catch (const ECancelled&) {
    Kt_util_01::Raise_Notice("The export was cancelled; the file is as it was.");
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error("Export", e.what());
  }
}

}  // namespace Plexidex
