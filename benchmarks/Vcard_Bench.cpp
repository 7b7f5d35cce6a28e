// Importing 20,000 contacts as telephones write them, into an empty book and once more.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "Database.h"
#include "Kt_util_01.h"
#include "Vcard_Export.h"
#include "Vcard_Import.h"

namespace {

constexpr int Cards = 20'000;

struct TCard_File {
  std::filesystem::path Folder =
      std::filesystem::temp_directory_path() / ("kt_vcard_" + Kt_util_01::Get_GUID());
  std::string Path = (Folder / "contacts.vcf").string(), Out = (Folder / "out.vcf").string(),
              Database = (Folder / "contacts.db").string();

  TCard_File() {
    std::filesystem::create_directories(Folder);
    std::ofstream file(Path, std::ios::binary);
    for (int i = 0; i < Cards; ++i) {
      const std::string n = std::to_string(i);
      file << "BEGIN:VCARD\r\nVERSION:3.0\r\nPRODID:-//Bench//EN\r\nUID:contact-" << n
           << "@bench\r\nN:Number " << n << ";Somebody;;;\r\nFN:Somebody Number " << n << "\r\nORG:Firm "
           << i % 100 << ";Sales\r\nTITLE:Clerk\r\nTEL;type=CELL;type=VOICE;type=pref:0160 555 " << n
           << "\r\nTEL;type=HOME;type=VOICE:030 555 " << n << "\r\nEMAIL;type=INTERNET;type=WORK:somebody."
           << n << "@example.org\r\nitem1.ADR;type=HOME;type=pref:;;Long Street " << i % 300
           << ";Town;;12345;Country\r\n"
           << "item1.X-ABADR:de\r\nNOTE:Met at the fair\\, will call back.\r\nCATEGORIES:Customers,Group "
           << i % 20 << "\r\nREV:2024-01-01T00:00:00Z\r\nEND:VCARD\r\n";
    }
  }
  ~TCard_File() { std::filesystem::remove_all(Folder); }

  void Open_New() const {
    Kt_data_01::Close_Database();
    for (const char* end : {"", "-wal", "-shm"}) std::filesystem::remove(Database + end);
    Kt_data_01::Open_Database(Database, Kt_data_01::TDatabase::TMode::Create_If_Missing);
  }
};

const TCard_File& File() {
  static const TCard_File file;
  return file;
}

void Count(benchmark::State& state) {
  state.counters["cards/s"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * Cards, benchmark::Counter::kIsRate);
}

void Import_Vcards(benchmark::State& state) {
  const TCard_File& file = File();
  for (auto _ : state) {
    state.PauseTiming();
    file.Open_New();
    state.ResumeTiming();
    if (Plexidex::Import_Vcards(file.Path, {}).Added != Cards) state.SkipWithError("not all were added");
  }
  Count(state);
  Kt_data_01::Close_Database();
}
BENCHMARK(Import_Vcards)->UseRealTime()->Unit(benchmark::kMillisecond);

void Import_Vcards_Again(benchmark::State& state) {
  const TCard_File& file = File();
  file.Open_New();
  Plexidex::Import_Vcards(file.Path, {});
  for (auto _ : state) {
    if (Plexidex::Import_Vcards(file.Path, {}).Unchanged != Cards)
      state.SkipWithError("something was changed");
  }
  Count(state);
  Kt_data_01::Close_Database();
}
BENCHMARK(Import_Vcards_Again)->UseRealTime()->Unit(benchmark::kMillisecond);

void Export_Vcards(benchmark::State& state) {
  const TCard_File& file = File();
  file.Open_New();
  Plexidex::Import_Vcards(file.Path, {});
  for (auto _ : state) Plexidex::Export_Vcards(file.Out, {}, std::nullopt, nullptr);
  Count(state);
  Kt_data_01::Close_Database();
}
BENCHMARK(Export_Vcards)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
