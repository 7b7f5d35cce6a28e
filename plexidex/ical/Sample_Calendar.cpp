#include "Sample_Calendar.h"

#include <cstdlib>
#include <filesystem>

#include "Books.h"
#include "Calendar_Import.h"
#include "Contacts.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Output_File.h"
#include "Sample_Contacts.h"
#include "Transfer_Books.h"

namespace Plexidex {

// resources/sample.ics as it stands, put into the program by the build.
extern const char* const Sample_Text;

namespace {

// A date in words: "3 days", "10 days ago", "next monday 7 days" (from the Monday after today on).
Kt_util_01::TDateTime Day_Of(const std::string& words, Kt_util_01::TDateTime today) {
  const std::string next_monday = "next monday ";
  Kt_util_01::TDateTime day = today;
  std::size_t at = 0;
  if (words.compare(0, next_monday.size(), next_monday) == 0) {
    at = next_monday.size();
    constexpr int some_monday = 2;  // 1 January 1900
    const auto since = Kt_util_01::Whole_Day(today) - some_monday;
    day = today + static_cast<double>(7 - (since % 7 + 7) % 7);
  }
  const int days = std::atoi(words.c_str() + at);
  return words.find("ago") == std::string::npos ? day + days : day - days;
}

// A file that goes when it is no longer needed.
struct TTemporary_File {
  std::string Path = (std::filesystem::temp_directory_path() / (Kt_util_01::Get_GUID() + ".ics")).string();
  ~TTemporary_File() {
    std::error_code ignored;
    std::filesystem::remove(Path, ignored);
  }
};

}  // namespace

TSample_Report Fill_With_Sample(const std::string& book_name, Kt_util_01::TDateTime today) {
  // Refused before anything is written.
  const std::string name = Import_Book(book_name, TImported::Contacts).Name;
  const TTemporary_File file;
  Write_Sample_Calendar(file.Path, today);
  TImport_Options options;
  options.Book = book_name;
  TSample_Report report;
  report.Calendar = Import_Calendar(file.Path, options);
  const Kt_data_01::TBook book = Kt_data_01::Find_Book(name).value_or(Kt_data_01::TBook());
  report.Book = book.Name;
  if (!Kt_data_01::List_Contacts(book.Key, false).empty()) return report;
  TSample_Contacts written;
  if (Kt_data_01::Update("Sample_Calendar:Fill_With_Sample [KT_Contacts/KT_Contacts_Data/KT_Events]",
                         [&] { written = Write_Sample_Contacts(book, today); })) {
    report.Contacts = written.Contacts;
    report.Entries = written.Entries;
  }
  return report;
}

std::string Sample_Calendar(Kt_util_01::TDateTime today) {
  const std::string text = Sample_Text;
  std::string filled;
  std::size_t at = 0;
  for (std::size_t open = text.find('{'); open != std::string::npos; open = text.find('{', at)) {
    const std::size_t close = text.find('}', open);
    filled.append(text, at, open - at);
    filled += Kt_util_01::FormatDateTime("yyyymmdd", Day_Of(text.substr(open + 1, close - open - 1), today));
    at = close + 1;
  }
  return filled.append(text, at, std::string::npos);
}

std::int64_t Write_Sample_Calendar(const std::string& file, Kt_util_01::TDateTime today) {
  const std::string text = Sample_Calendar(today);
  Kt_data_01::TOutput_File output(file);
  output.Stream() << text;
  output.Keep();
  std::int64_t components = 0;
  for (const char* begin : {"BEGIN:VEVENT", "BEGIN:VTODO"}) {
    for (std::size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at + 1))
      ++components;
  }
  return components;
}

}  // namespace Plexidex
