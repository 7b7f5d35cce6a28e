// Imports whatever the fuzzer thinks of as cards, and what was taken once more, from their own export and
// from those in one version. Ends the program where the store is not sound, or a contact has not come back as
// it was.

#include "Import_Frame.h"
#include "Vcard_Export.h"
#include "Vcard_Import.h"

namespace {

using namespace Plexidex;

struct TFuzzed : TImport_Frame {
  TFuzzed() : TImport_Frame(100) {}
  void Empty() {
    TImport_Frame::Empty(
        "DELETE FROM KT_Events_Data; DELETE FROM KT_Events; DELETE FROM KT_Cards; "
        "DELETE FROM KT_Categories_InUse; DELETE FROM KT_Categories; DELETE FROM KT_Log; "
        "DELETE FROM KT_Contacts_Data; DELETE FROM KT_Contacts WHERE Type = 0");
  }
  bool Import(const std::string& file) const { return Take(Import_Vcards, file); }
  static std::string Held() {
    std::string columns = "DisplayName, CAST(Notes AS TEXT)";
    for (int code = 1; code <= 20; ++code) columns += ", Field" + std::to_string(code);
    return Query_Rows(columns,
                      "KT_Contacts c JOIN KT_Contacts_Data d ON d.Contact = c.Key ORDER BY c.row_id");
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static TFuzzed fuzzed;
  const std::string file = fuzzed.Write("in.vcf", data, size), back = fuzzed.Folder.File("back.vcf"),
                    again = fuzzed.Folder.File("again.vcf");
  fuzzed.Empty();
  const bool taken = fuzzed.Import(file);
  TFuzzed::Check_Store();
  const std::string held = TFuzzed::Held();
  TFuzzed::Check("refused, but something was written", taken || held.empty());
  if (held.empty()) return 0;
  Export_Vcards(back, fuzzed.Database.Book().Name, {}, nullptr);
  fuzzed.Empty();
  TFuzzed::Check("its own export was refused", fuzzed.Import(back));
  const std::string came_back = TFuzzed::Held();
  TFuzzed::Check("was\n" + held + "\ncame back as\n" + came_back, held == came_back);
  Export_Vcards(again, fuzzed.Database.Book().Name, {}, nullptr);
  TFuzzed::Check("the second export differs", File_Content(back) == File_Content(again));
  for (const auto version : {TVcard_Version::V3_0, TVcard_Version::V4_0}) {
    Export_Vcards(back, fuzzed.Database.Book().Name, version, nullptr);
    fuzzed.Empty();
    TFuzzed::Check("its own export in one version was refused", fuzzed.Import(back));
  }
  return 0;
}
