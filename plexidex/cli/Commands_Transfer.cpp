// The commands that bring files in and write them.

#include "Calendar_Export.h"
#include "Calendar_Import.h"
#include "Commands_Run.h"
#include "Console_Text.h"
#include "Holiday_Import.h"
#include "Kt_util_01.h"
#include "Sample_Calendar.h"
#include "Vcard_Export.h"
#include "Vcard_File.h"
#include "Vcard_Import.h"

namespace Plexidex {

using namespace Kt_data_01;

namespace {

constexpr std::size_t Remarks_Shown = 20;
// All but some entries went through; those were named.
constexpr int Done_In_Part = 2;

// Writes remarks, the first ones only unless all are asked for. Both lists count together.
// Returns the exit status.
int Write_Remarks(const TConsole& console, const std::vector<TImport_Remark>& unused,
                  const std::vector<TImport_Remark>& notes, bool all) {
  std::size_t count = 0;
  const auto write = [&](const char* heading, const std::vector<TImport_Remark>& remarks) {
    for (const TImport_Remark& remark : remarks) {
      if (++count > Remarks_Shown && !all) continue;
      console.Out << "  " << heading << ": " << Printable(remark.What) << ": " << Printable(remark.Why)
                  << '\n';
    }
  };
  write("not used", unused);
  write("note", notes);
  if (count > Remarks_Shown && !all)
    console.Out << "  and " << count - Remarks_Shown << " more; --verbose shows them\n";
  return unused.empty() ? 0 : Done_In_Part;
}

int Report_Calendar(const TConsole& console, const std::string& file, const TImport_Report& report,
                    bool all) {
  console.Out << Printable(file) << ": " << Counted(report.Read, "component", "components") << " read; "
              << Counted(report.Sets, "recurring set", "recurring sets") << ", "
              << Counted(report.Events, "single event", "single events") << " and "
              << Counted(report.Tasks, "task", "tasks") << " written, "
              << Counted(report.Occurrences, "entry", "entries") << " in all; " << report.Unchanged
              << " unchanged, " << report.Replaced << " replaced, " << report.Unused.size() << " not used\n";
  if (const std::string ends = Ends_Remark(report); !ends.empty()) console.Out << "  note: " << ends << '\n';
  return Write_Remarks(console, report.Unused, report.Left_Out, all);
}

int Report_Vcards(const TConsole& console, const std::string& file, const TVcard_Report& report, bool all) {
  console.Out << Printable(file) << ": " << Counted(report.Read, "card", "cards") << " read; "
              << Counted(report.Added, "contact", "contacts") << " added, " << report.Updated << " updated, "
              << Counted(report.Birthdays, "birthday", "birthdays") << " written; " << report.Unchanged
              << " unchanged, " << report.Unused.size() << " not used\n";
  return Write_Remarks(console, report.Unused, report.Notes, all);
}

int Report_Holidays(const TConsole& console, const std::string& file, const THoliday_Report& report,
                    bool all) {
  console.Out << Printable(file) << ": " << Counted(report.Read, "component", "components") << " read; "
              << Counted(report.Added, "holiday", "holidays") << " added, " << report.Known
              << " known already, " << report.Unused.size() << " not used\n";
  return Write_Remarks(console, report.Unused, report.Left_Out, all);
}

}  // namespace

int Run_Import(const TConsole& console, const TImport_Command& command) {
  TImport_Options options;
  options.Book = command.Book.empty() ? "" : Known_Book(command.Book).Name;
  options.Progress = console.Progress;
  if (!command.Limit.empty() && (!Kt_util_01::Str2Int(command.Limit, options.Most_Entries) ||
                                 options.Most_Entries < 1 || options.Most_Entries > Highest_Entries)) {
    throw ECommand_Error("--limit: \"" + command.Limit + "\" is not a number of entries from 1 to " +
                         std::to_string(Highest_Entries) + ".");
  }
  options.How_To_Raise = "--limit allows more";
  options.Has_Until = !command.Until.empty();
  if (options.Has_Until) options.Until = Day_From_Text("--until", command.Until);

  int status = 0;
  for (const std::string& file : command.Files) {
    try {
      const int of_file =
          command.Holidays ? Report_Holidays(console, file, Import_Holidays(file, command.Country, options),
                                             command.Verbose)
          : Is_Vcard_File(file)
              ? Report_Vcards(console, file, Import_Vcards(file, options), command.Verbose)
              : Report_Calendar(console, file, Import_Calendar(file, options), command.Verbose);
      if (status == 0) status = of_file;
      console.Out.flush();
    } catch (const std::exception& e) {
      // One refused file does not keep the others from being imported.
      if (console.Progress) console.Progress->Set_Max(0);
      console.Err << Printable(e.what()) << std::endl;
      status = 1;
    }
  }
  return status;
}

int Run_Sample(const TConsole& console, const std::string& file) {
  if (!file.empty()) {
    const std::int64_t written = Write_Sample_Calendar(file, Kt_util_01::Today());
    console.Out << Printable(file) << ": " << Counted(written, "entry", "entries") << " written\n";
    return 0;
  }
  const TSample_Report sample = Fill_With_Sample({}, Kt_util_01::Today());
  const TImport_Report& calendar = sample.Calendar;
  console.Out << "Written into the book \"" << Printable(sample.Book)
              << "\": " << Counted(calendar.Sets, "recurring set", "recurring sets") << ", "
              << Counted(calendar.Events + sample.Entries, "single event", "single events") << ", "
              << Counted(calendar.Tasks, "task", "tasks") << " and "
              << Counted(sample.Contacts, "contact", "contacts") << "; " << calendar.Unchanged
              << " unchanged\n";
  return 0;
}

int Run_Export(const TConsole& console, const TExport_Command& command) {
  const std::string book = command.Book.empty() ? "" : Known_Book(command.Book).Name;
  if (!command.Vcard.empty() && command.Vcard != "3" && command.Vcard != "4")
    throw ECommand_Error("--vcard: \"" + command.Vcard + "\" is neither 3 nor 4.");
  if (Has_Vcard_Name(command.File)) {
    std::optional<TVcard_Version> version;
    if (!command.Vcard.empty()) version = command.Vcard == "3" ? TVcard_Version::V3_0 : TVcard_Version::V4_0;
    const std::int64_t written = Export_Vcards(command.File, book, version, console.Progress);
    console.Out << Printable(command.File) << ": " << Counted(written, "contact", "contacts") << " written\n";
    return 0;
  }
  if (!command.Vcard.empty()) throw ECommand_Error("--vcard belongs to a FILE.vcf.");
  const TExport_Report report = Export_Calendar(command.File, book, console.Progress);
  console.Out << Printable(command.File) << ": " << Counted(report.Rules, "set", "sets")
              << " written as rules, " << report.Dates << " as lists of dates, "
              << Counted(report.Events, "single event", "single events") << ", "
              << Counted(report.Tasks, "task", "tasks") << '\n';
  if (report.Left_Out == 0) return 0;
  console.Err << Counted(report.Left_Out, "entry has a date", "entries have dates")
              << " that a calendar file cannot hold, and so " << (report.Left_Out == 1 ? "was" : "were")
              << " left out.\n";
  return Done_In_Part;
}

}  // namespace Plexidex
