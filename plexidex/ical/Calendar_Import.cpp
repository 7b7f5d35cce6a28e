#include "Calendar_Import.h"

#include <optional>

#include "Books.h"
#include "File_Plan.h"
#include "Import_Update.h"
#include "Kt_util_01.h"
#include "Object_Writer.h"
#include "Transfer_Books.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// Brings a file into a book, object by object, so that no more than one of them is held.
class TImporter {
 public:
  TImporter(const TImport_Options& options, TImport_Report& report)
      : name(options.Book),
        until(Import_Until(options)),
        imports("KT_Imports", "BookandUID"),
        occurrences(Events_Data, "Event", {"Book"}),
        report(report) {}

  void Choose() { book = Import_Book(name, TImported::Entries); }

  bool Is_Unchanged(const std::string& uid, const std::string& digest) {
    return !book.Key.empty() && imports.FindKey({book.Key, uid}) &&
           imports.Text(imports.Field("Digest")) == digest;
  }

  void Write(TPlanned_Object& object) {
    // What has no dates and was never here leaves nothing to write.
    if (object.Events.empty() && !imports.FindKey({book.Key, object.UID}) &&
        !occurrences.FindKey({object.UID}))
      return;
    if (book.Key.empty()) book = Create_Book(book.Name);
    if (!writer) writer.emplace(book, until, report);
    if (const std::string fault = writer->Fault(object); !fault.empty()) {
      report.Unused.push_back(
          {(object.Events.empty() ? std::string() : object.Events.front().Record.Title + ' ') + '(' +
               object.UID + ')',
           fault});
      return;
    }
    writer->Write(object);
  }

 private:
  const std::string name;
  const TDateTime until;
  TBook book;
  TTable imports, occurrences;
  std::optional<TObject_Writer> writer;
  TImport_Report& report;
};

TImport_Report Read_And_Write(const std::string& file, const TImport_Options& options) {
  TImport_Report report;
  TImporter importer(options, report);
  importer.Choose();
  TImport_Budget budget = Import_Budget(options);
  const TCalendar_File calendar(file, budget, options.Progress);
  TPlan_Options plan_options;
  plan_options.Until = Import_Until(options);
  plan_options.Until_Was_Given = options.Has_Until;
  plan_options.Progress = options.Progress;
  TFile_Plan plan(calendar, plan_options, budget, report);
  const auto is_unchanged = [&](const std::string& uid, const std::string& digest) {
    return importer.Is_Unchanged(uid, digest);
  };
  const auto run = [&] { plan.Run(is_unchanged, [&](TPlanned_Object& object) { importer.Write(object); }); };
  Run_Import(
      file, plan.Is_Unchanged(is_unchanged), [&] { importer.Choose(); }, run);
  return report;
}

}  // namespace

TImport_Report Import_Calendar(const std::string& file, const TImport_Options& options) {
  return Reading_Data(file, [&] { return Read_And_Write(file, options); });
}

}  // namespace Plexidex
