// Imports whatever the fuzzer thinks of, and what was taken once more from its export. Ends the program where
// the store is not sound or an entry has not come back as it was.

#include "Calendar_Export.h"
#include "Calendar_Import.h"
#include "Import_Frame.h"

namespace {

using namespace Plexidex;

struct TFuzzed : TImport_Frame {
  TFuzzed() : TImport_Frame(2000) {}
  void Empty() {
    TImport_Frame::Empty(
        "DELETE FROM KT_Alarms; DELETE FROM KT_Alerts; DELETE FROM KT_Events_Data; DELETE FROM KT_Events; "
        "DELETE FROM KT_Imports; "
        "DELETE FROM KT_Import_Events; DELETE FROM KT_Import_Texts");
  }
  bool Import(const std::string& file) const { return Take(Import_Calendar, file); }
  static std::string Held() {
    return Query_Rows(
        "round(EventDate,5), Title, Location, d.Actioned, Priority, EventType, Type, AllDay, Private, "
        "Percentage, Started, Completed, Status, Budget, Worked, CAST(Notes AS TEXT), Offset || WAVFile",
        "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key LEFT JOIN KT_Alarms a ON a.Key = d.Key ORDER "
        "BY 1");
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static TFuzzed fuzzed;
  const std::string file = fuzzed.Write("in.ics", data, size), back = fuzzed.Folder.File("back.ics");
  fuzzed.Empty();
  const bool taken = fuzzed.Import(file);
  TFuzzed::Check_Store();
  const std::string held = TFuzzed::Held();
  TFuzzed::Check("refused, but something was written", taken || held.empty());
  if (held.empty()) return 0;
  Export_Calendar(back, fuzzed.Database.Book().Name, nullptr);
  fuzzed.Empty();
  TFuzzed::Check("its own export was refused", fuzzed.Import(back));
  const std::string came_back = TFuzzed::Held();
  TFuzzed::Check("was\n" + held + "\ncame back as\n" + came_back, held == came_back);
  return 0;
}
