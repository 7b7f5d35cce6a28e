// Imports whatever the fuzzer thinks of, and what was taken once more from its export. Ends the program where
// the store is not sound or an entry has not come back as it was.

#include <cstdlib>
#include <fstream>
#include <iostream>

#include "Calendar_Export.h"
#include "Calendar_Import.h"
#include "Kt_util_01.h"
#include "Store_Check.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

namespace {

using namespace Plexidex;

struct TFuzzed {
  TTest_Seams Seams;
  TTemporary_Database Database;
  TTemporary_Folder Folder;
  TImport_Options Options;

  TFuzzed() {
    Run_Sql("PRAGMA synchronous = OFF");
    Options.Most_Entries = 2000;
    Options.Has_Until = true;
    Options.Until = Kt_util_01::Encode_Date(2025, 12, 31);
  }

  void Empty() {
    Run_Sql(
        "BEGIN; DELETE FROM KT_Alarms; DELETE FROM KT_Events_Data; DELETE FROM KT_Events;"
        "DELETE FROM KT_Imports; DELETE FROM KT_Import_Events; DELETE FROM KT_Import_Texts; COMMIT");
    Database.Reopen();  // no view may keep what it has read
    Run_Sql("PRAGMA synchronous = OFF");
  }
  bool Import(const std::string& file) const {
    try {
      Import_Calendar(file, Options);
      return true;
    } catch (const EImport_Error&) {
      return false;
    }
  }
  static std::string Held() {
    return Query_Rows(
        "round(EventDate,5), Title, Location, d.Actioned, Priority, EventType, Type, AllDay, Private, "
        "Percentage, Started, Completed, Status, Budget, Worked, CAST(Notes AS TEXT), Offset || WAVFile",
        "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key LEFT JOIN KT_Alarms a ON a.Key = d.Key ORDER "
        "BY 1");
  }
  void Check(const std::string& what, bool holds) const {
    if (holds) return;
    std::cerr << what << std::endl;
    std::abort();
  }
  void Check_Store(const std::string& when) const {
    for (const std::string& finding : Kt_data_01::Check_Store()) Check(when + ": " + finding, false);
    Check(when + ": an update is open", !Kt_data_01::Update_Is_Open());
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static TFuzzed fuzzed;
  const std::string file = fuzzed.Folder.File("in.ics"), back = fuzzed.Folder.File("back.ics");
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  fuzzed.Empty();
  const bool taken = fuzzed.Import(file);
  fuzzed.Check_Store("after the import");
  const std::string held = TFuzzed::Held();
  fuzzed.Check("refused, but something was written", taken || held.empty());
  if (held.empty()) return 0;
  Export_Calendar(back, fuzzed.Database.Book().Name, nullptr);
  fuzzed.Empty();
  fuzzed.Check("its own export was refused", fuzzed.Import(back));
  const std::string came_back = TFuzzed::Held();
  fuzzed.Check("was\n" + held + "\ncame back as\n" + came_back, held == came_back);
  return 0;
}
