#include "Calendar_Import.h"

#include "Books.h"
#include "File_Plan.h"
#include "Import_Update.h"
#include "Kt_util_01.h"
#include "Object_Writer.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr auto Default_Book = "My Calendar";

// The book to import into; without a key when it is to be made.
TBook Choose_Book(const std::string& name) {
  if (name.empty()) {
    const std::vector<TBook> books = List_Books();
    return books.empty() ? TBook{{}, Default_Book, {}} : books.front();
  }
  if (auto book = Find_Book(name)) return *std::move(book);
  throw EImport_Error("There is no book \"" + name + "\"; nothing was imported.");
}

TImport_Report Plan_And_Write(const std::string& file, const TImport_Options& options) {
  TImport_Report report;
  TImport_Budget budget = Import_Budget(options);
  const TCalendar_File calendar(file, budget);
  TBook book = Choose_Book(options.Book);
  if (!book.Key.empty() && !Access_Allowed(book.Calendar, Access_Create)) {
    throw EImport_Error("You may not make entries in the book \"" + book.Name + "\"; nothing was imported.");
  }

  TPlan_Options plan;
  plan.Until = Import_Until(options);
  plan.Until_Was_Given = options.Has_Until;
  plan.Progress = options.Progress;
  TTable imports("KT_Imports", "BookandUID");
  plan.Is_Unchanged = [&](const std::string& uid, const std::string& digest) {
    return !book.Key.empty() && imports.FindKey({book.Key, uid}) &&
           imports.Text(imports.Field("Digest")) == digest;
  };
  std::vector<TPlanned_Object> objects = Plan_File(calendar, plan, budget, report);
  // What has no dates and was never here leaves nothing to write.
  TTable occurrences(Events_Data, "Event", {"Book"});
  std::erase_if(objects, [&](const TPlanned_Object& object) {
    return object.Events.empty() && !imports.FindKey({book.Key, object.UID}) &&
           !occurrences.FindKey({object.UID});
  });
  if (objects.empty()) return report;

  Write_Import(file, [&] {
    if (book.Key.empty()) book = Create_Book(book.Name);
    TObject_Writer writer(book, report);
    for (TPlanned_Object& object : objects) writer.Write(object);
  });
  return report;
}

}  // namespace

TImport_Report Import_Calendar(const std::string& file, const TImport_Options& options) {
  try {
    return Plan_And_Write(file, options);
  } catch (const EData_Error& e) {
    throw EImport_Error("Nothing was imported from \"" + file + "\": the data could not be read (" +
                        e.Reason + ").");
  }
}

}  // namespace Plexidex
