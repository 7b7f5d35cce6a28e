// Importing a calendar of the size and shape of a large public one: some 1,300 birthdays that recur every
// year.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "Calendar_Import.h"
#include "Database.h"
#include "Kt_util_01.h"

namespace {

constexpr int Birthdays = 1300;

struct TCalendar_File {
  std::filesystem::path Folder =
      std::filesystem::temp_directory_path() / ("kt_import_" + Kt_util_01::Get_GUID());
  std::string Path = (Folder / "birthdays.ics").string();

  TCalendar_File() {
    std::filesystem::create_directories(Folder);
    std::ofstream file(Path, std::ios::binary);
    file << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Bench//EN\r\n";
    for (int i = 0; i < Birthdays; ++i) {
      const auto day = Kt_util_01::Date_From_Day(Kt_util_01::Day_From_Date(2004, 1, 1) + i % 365);
      char start[16];
      std::snprintf(start, sizeof start, "%04d%02d%02d", day.Year, day.Month, day.Day);
      file << "BEGIN:VEVENT\r\nUID:birthday-" << i
           << "@bench\r\nDTSTAMP:20240101T000000Z\r\nDTSTART;VALUE=DATE:" << start
           << "\r\nSUMMARY:" << 1700 + i % 300 << " Somebody Number " << i
           << "\r\nURL;VALUE=URI:http://example.org/people/" << i
           << "\r\nRRULE:FREQ=YEARLY;INTERVAL=1\r\nEND:VEVENT\r\n";
    }
    file << "END:VCALENDAR\r\n";
  }
  ~TCalendar_File() { std::filesystem::remove_all(Folder); }
};

void Import_Calendar(benchmark::State& state) {
  static const TCalendar_File calendar;
  int round = 0;
  std::int64_t occurrences = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const std::string path = (calendar.Folder / (std::to_string(round++) + ".db")).string();
    std::filesystem::remove(path);
    Kt_data_01::Open_Database(path, Kt_data_01::TDatabase::TMode::Create_If_Missing);
    state.ResumeTiming();
    Plexidex::TImport_Options options;
    options.Has_Until = true;
    options.Until = static_cast<double>(Kt_util_01::Day_From_Date(2036, 12, 31));
    occurrences += Plexidex::Import_Calendar(calendar.Path, options).Occurrences;
    state.PauseTiming();
    Kt_data_01::Close_Database();
    for (const char* end : {"", "-wal", "-shm"}) std::filesystem::remove(path + end);
    state.ResumeTiming();
  }
  state.counters["occurrences/s"] =
      benchmark::Counter(static_cast<double>(occurrences), benchmark::Counter::kIsRate);
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["peak MB of the process"] = static_cast<double>(usage.ru_maxrss) / 1024;
}
BENCHMARK(Import_Calendar)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
