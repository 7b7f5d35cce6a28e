// Searches: a text in a long buffer against the same steps done one by one and against memmem, and the
// contacts and the calendar of a book against bare SQL with LIKE.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <cstring>
#include <map>
#include <random>

#include "Bare_Entries.h"
#include "Calendar_Search.h"
#include "Contact_Search.h"
#include "Current_Search.h"
#include "Kt_util_01.h"
#include "Quick_Search.h"
#include "Ratio_Main.h"
#include "Search_Buffer.h"

namespace {

using namespace Bench;
using namespace KTReminds;
using Ratio_Bench::TBound;

std::string Random_Text(std::mt19937& random, std::size_t length) {
  constexpr std::array words = {"meeting", "called",  "about", "the",   "order",   "of",    "Monday",
                                "house",   "contact", "needs", "paint", "Grüße",   "and",   "send",
                                "invoice", "later",   "with",  "nest",  "kneeled", "needs", "42"};
  std::string text;
  while (text.size() < length) text.append(words[random() % words.size()]).append(random() % 9 ? " " : ".\n");
  text.resize(length, ' ');
  // Not in the midst of a character.
  while (!text.empty() && static_cast<unsigned char>(text.back()) >= 0x80) text.pop_back();
  return text;
}

// ---- a buffer ------------------------------------------------------------------------------------------

constexpr std::string_view Wanted = "needle";

// 100 MB in which it is found at the end.
const std::string& Notes() {
  static const std::string notes = [] {
    std::mt19937 random(1);
    return Random_Text(random, 100'000'000).append(Wanted);
  }();
  return notes;
}

// The steps as they are laid down, through a table and without words, on characters of one byte.
std::size_t Step_By_Step(const std::string& buffer, std::string text, bool match_case) {
  std::array<char, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i)
    table[i] = static_cast<char>(match_case ? static_cast<int>(i) : std::toupper(static_cast<int>(i)));
  const auto translated = [&table](char c) { return table[static_cast<unsigned char>(c)]; };
  for (char& c : text) c = translated(c);
  const char* at = buffer.data();
  for (auto count = static_cast<std::int64_t>(buffer.size() - text.size()) + 1; count >= 0; --count, ++at) {
    std::size_t same = 0;
    while (same < text.size() && translated(at[same]) == text[same]) ++same;
    if (same == text.size()) return static_cast<std::size_t>(at - buffer.data());
  }
  return std::string::npos;
}

void Buffer(benchmark::State& state, bool match_case) {
  for (auto _ : state) benchmark::DoNotOptimize(SearchBuf(Notes(), 0, 0, Wanted, {.Match_Case = match_case}));
}
void Buffer_Step_By_Step(benchmark::State& state, bool match_case) {
  for (auto _ : state) benchmark::DoNotOptimize(Step_By_Step(Notes(), std::string(Wanted), match_case));
}
void Buffer_Memmem(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(memmem(Notes().data(), Notes().size(), Wanted.data(), Wanted.size()));
}
BENCHMARK_CAPTURE(Buffer, Case, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Buffer, No_Case, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Buffer_Step_By_Step, Case, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Buffer_Step_By_Step, No_Case, false)->Unit(benchmark::kMillisecond);
BENCHMARK(Buffer_Memmem)->Unit(benchmark::kMillisecond);

// ---- contacts ------------------------------------------------------------------------------------------

// 100,000 with 1 KB of notes each; one of a hundred has what is looked for.
const std::string& Contacts_Database() {
  static const std::string file = [] {
    const std::string& path = Database_File({1, 1, 100'000, 1, 0}, 2);
    sqlite3* connection = nullptr;
    sqlite3_open(path.c_str(), &connection);
    Execute(connection, "BEGIN");
    sqlite3_stmt* keys = Prepare(connection, "SELECT Key FROM KT_Contacts WHERE Type = 0 ORDER BY row_id");
    sqlite3_stmt* insert = Prepare(connection, "INSERT INTO KT_Contacts_Data (Contact, Notes) VALUES (?, ?)");
    std::mt19937 random(2);
    for (int i = 0; sqlite3_step(keys) == SQLITE_ROW; ++i) {
      std::string notes = Random_Text(random, 1000);
      if (i % 100 == 7) notes.replace(random() % 900, Wanted.size(), "Needle");
      sqlite3_bind_text(insert, 1, reinterpret_cast<const char*>(sqlite3_column_text(keys, 0)), -1,
                        SQLITE_TRANSIENT);
      sqlite3_bind_blob(insert, 2, notes.data(), static_cast<int>(notes.size()), SQLITE_TRANSIENT);
      sqlite3_step(insert);
      sqlite3_reset(insert);
    }
    sqlite3_finalize(keys);
    sqlite3_finalize(insert);
    Execute(connection, "COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
    sqlite3_close(connection);
    return path;
  }();
  return file;
}

// Has one criterion be searched for.
void Search_For(const std::string& database, int field, int action, const std::string& value) {
  Use_Database(database);
  Clear_Search();
  CurrentSearch->Add_Field(0, field, action, value, "", false, false);
}

std::vector<std::string> Contacts_Found(int field, const std::string& value) {
  Search_For(Contacts_Database(), field, Action_Contains, value);
  Kt_data_01::TTree tree;
  std::int64_t elapsed = 0;
  SearchContacts(Book, "", tree.Root(), tree, elapsed, Kt_data_01::Contact_Type_Contact);
  std::vector<std::string> found;
  for (const auto& node : tree.Root().Children) found.push_back(node->Key.Str());
  return found;
}

// Keys and names, as the tree has them.
std::vector<std::string> Contacts_Bare(sqlite3_stmt* statement) {
  std::vector<std::string> found, names;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    found.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 1)));
  }
  sqlite3_reset(statement);
  return found;
}

std::vector<std::string> Contacts_Bare_Notes() {
  static sqlite3_stmt* statement = Prepare(
      Bare_Connection(Contacts_Database()),
      "SELECT c.Key, c.DisplayName FROM KT_Contacts c JOIN KT_Contacts_Data d ON d.Contact = c.Key WHERE "
      "c.Book = 'book' AND c.Deleted = 0 AND c.Type = 0 AND CAST(d.Notes AS TEXT) LIKE '%needle%'");
  return Contacts_Bare(statement);
}

std::vector<std::string> Contacts_Bare_Names() {
  static sqlite3_stmt* statement =
      Prepare(Bare_Connection(Contacts_Database()),
              "SELECT Key, DisplayName FROM KT_Contacts WHERE Book = 'book' AND Deleted = 0 AND Type = 0 AND "
              "DisplayName LIKE '%number 77%'");
  return Contacts_Bare(statement);
}

void Contacts_By_Notes(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Contacts_Found(Search_Notes, "needle").data());
}
void Contacts_By_Notes_Bare(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Contacts_Bare_Notes().data());
}
void Contacts_By_Name(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Contacts_Found(Search_Contact_Name, "number 77").data());
}
void Contacts_By_Name_Bare(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Contacts_Bare_Names().data());
}
BENCHMARK(Contacts_By_Notes)->Unit(benchmark::kMillisecond);
BENCHMARK(Contacts_By_Notes_Bare)->Unit(benchmark::kMillisecond);
BENCHMARK(Contacts_By_Name)->Unit(benchmark::kMillisecond);
BENCHMARK(Contacts_By_Name_Bare)->Unit(benchmark::kMillisecond);

// ---- the calendar --------------------------------------------------------------------------------------

constexpr int Window_Day = First_Day + 9000, Window_Days = 31;

const TSize& Calendar_Size() {
  static const TSize size = Size_Of(1'000'000);
  return size;
}

std::vector<std::string> Calendar_Found(int field, int action, const std::string& value) {
  Search_For(Database_File(Calendar_Size()), field, action, value);
  Kt_data_01::TItem_List list;
  std::int64_t elapsed = 0;
  SearchCalendar(Book, list, elapsed);
  std::vector<std::string> found;
  for (std::size_t i = 0; i < list.Count(); ++i) found.push_back(list[i].Data->Key.Str());
  return found;
}

std::vector<std::string> Calendar_By_Text() {
  return Calendar_Found(Search_Any_Description, Action_Contains, "number 1234");
}
std::vector<std::string> Calendar_By_Date() {
  const auto day = [](int day) { return Kt_util_01::FormatDateTime("ddddd", day); };
  return Calendar_Found(Search_Any_Date, Action_Between,
                        day(Window_Day) + " and " + day(Window_Day + Window_Days - 1));
}

// `from` says in which order the tables are gone through.
std::vector<TBare_Entry> Calendar_Bare_Text(const std::string& from) {
  static std::map<std::string, sqlite3_stmt*> statements;
  sqlite3_stmt*& join = statements[from];
  if (!join)
    join = Prepare(Bare_Connection(Database_File(Calendar_Size())),
                   "SELECT d.Key, e.Title, e.Location, d.Contact, c.DisplayName, e.User, d.EventDate, "
                   "e.FirstDate, e.Priority, e.EventType, e.Percentage, e.Status, e.Private, e.AllDay, "
                   "d.Actioned, 0 FROM " +
                       from + " AND e.Title LIKE '%number 1234%'");
  return Read_Bare(join);
}
// As the engine thinks best, by the occurrences of the book; and by the masters, which is better.
const std::string As_Chosen =
    "KT_Events_Data d JOIN KT_Events e ON e.Key = d.Event JOIN KT_Contacts c ON c.Key = d.Contact WHERE "
    "d.Book = "
    "'book' AND c.Deleted = 0";
const std::string By_Master =
    "KT_Events e CROSS JOIN KT_Events_Data d ON d.Event = e.Key CROSS JOIN KT_Contacts c ON c.Key = "
    "d.Contact "
    "WHERE +d.Book = 'book' AND c.Deleted = 0";

void Calendar_Text(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Calendar_By_Text().data());
}
void Calendar_Text_Bare_Join(benchmark::State& state, const std::string& from) {
  for (auto _ : state) benchmark::DoNotOptimize(Calendar_Bare_Text(from).data());
}
void Calendar_Window(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Calendar_By_Date().data());
}
void Calendar_Window_Bare_Join(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(Read_Bare_Window(Calendar_Size(), Window_Day, Window_Days, "d.Key").data());
}
BENCHMARK(Calendar_Text)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Calendar_Text_Bare_Join, As_Chosen, As_Chosen)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Calendar_Text_Bare_Join, By_Master, By_Master)->Unit(benchmark::kMillisecond);
BENCHMARK(Calendar_Window)->Unit(benchmark::kMillisecond);
BENCHMARK(Calendar_Window_Bare_Join)->Unit(benchmark::kMillisecond);

// ---- as one types --------------------------------------------------------------------------------------

double Msecs_Since(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

bool Has_Found(const TQuick_Search& search) {
  return !search.Found(TQuick_Search::Events).Rows.empty() ||
         !search.Found(TQuick_Search::Tasks).Rows.empty() ||
         !search.Found(TQuick_Search::Contacts).Rows.empty();
}

// From a key to the first results, of those keys that have any: once the texts have been read, as they are
// a moment after the field got the keyboard, or before.
double Longest_Wait(const std::string& database, bool read, std::initializer_list<const char*> typed) {
  Use_Database(database);
  auto search = std::make_unique<TQuick_Search>();
  while (search->Step()) {
  }
  double longest = 0;
  for (const char* text : typed) {
    if (!read) search = std::make_unique<TQuick_Search>();
    const auto start = std::chrono::steady_clock::now();
    search->Look_For(text);
    while (search->Step() && !Has_Found(*search)) {
    }
    if (Has_Found(*search)) longest = std::max(longest, Msecs_Since(start));
  }
  return longest;
}

template <bool Read>
std::pair<double, double> Longest_Wait_In_Titles() {
  return {Longest_Wait(Database_File(Calendar_Size()), Read,
                       {"e", "ev", "n", "number", "number 1", "number 1234", "number 199", "xyz"}),
          50};
}
template <bool Read>
std::pair<double, double> Longest_Wait_In_Names() {
  return {Longest_Wait(Contacts_Database(), Read, {"n", "nu", "number 7", "number 777"}), 50};
}

// ---- checks --------------------------------------------------------------------------------------------

std::vector<std::string> Keys_Of(const std::vector<TBare_Entry>& entries) {
  std::vector<std::string> keys;
  for (const TBare_Entry& entry : entries) keys.push_back(entry.Key);
  return keys;
}

std::string Differ(const char* what, std::vector<std::string> ours, std::vector<std::string> bare) {
  std::sort(ours.begin(), ours.end());
  std::sort(bare.begin(), bare.end());
  if (!bare.empty() && ours == bare) return {};
  return std::string(what) + ": " + std::to_string(ours.size()) + " found, bare " +
         std::to_string(bare.size());
}

[[maybe_unused]] const bool Checks =
    Ratio_Bench::Check_First("searches find what the bare statements find", []() -> std::string {
      for (const bool match_case : {false, true}) {
        const auto found = SearchBuf(Notes(), 0, 0, Wanted, {.Match_Case = match_case});
        const std::string before = Notes().substr(0, Notes().size() - Wanted.size());
        if (found != Kt_util_01::Count_Characters(before) ||
            Step_By_Step(Notes(), std::string(Wanted), match_case) != before.size())
          return "the buffer's end is not found";
      }
      for (const std::string& complaint :
           {Differ("notes", Contacts_Found(Search_Notes, "needle"), Contacts_Bare_Notes()),
            Differ("names", Contacts_Found(Search_Contact_Name, "number 77"), Contacts_Bare_Names()),
            Differ("titles", Calendar_By_Text(), Keys_Of(Calendar_Bare_Text(As_Chosen))),
            Differ("titles by master", Calendar_By_Text(), Keys_Of(Calendar_Bare_Text(By_Master))),
            Differ("window", Calendar_By_Date(),
                   Keys_Of(Read_Bare_Window(Calendar_Size(), Window_Day, Window_Days, "d.Key")))}) {
        if (!complaint.empty()) return complaint;
      }
      return {};
    });

[[maybe_unused]] const bool Ratios[] = {
    Ratio_Bench::Expect_Amounts("Quick search, 200,000 titles, first results / 50 ms",
                                Longest_Wait_In_Titles<true>, 1, TBound::At_Most),
    Ratio_Bench::Expect_Amounts("Quick search, 200,000 titles not read yet, first results / 50 ms",
                                Longest_Wait_In_Titles<false>, 1, TBound::At_Most),
    Ratio_Bench::Expect_Amounts("Quick search, 100,000 contacts, first results / 50 ms",
                                Longest_Wait_In_Names<true>, 1, TBound::At_Most),
    Ratio_Bench::Expect_Amounts("Quick search, 100,000 contacts not read yet, first results / 50 ms",
                                Longest_Wait_In_Names<false>, 1, TBound::At_Most),
    Ratio_Bench::Expect_Ratio("SearchBuf, 100 MB, with case / step by step", "Buffer/Case",
                              "Buffer_Step_By_Step/Case", 5, TBound::At_Least),
    Ratio_Bench::Expect_Ratio("SearchBuf, 100 MB, no case / step by step", "Buffer/No_Case",
                              "Buffer_Step_By_Step/No_Case", 5, TBound::At_Least),
    Ratio_Bench::Expect_Ratio("SearchBuf, 100 MB, with case / memmem", "Buffer/Case", "Buffer_Memmem", 0.25,
                              TBound::At_Least),
    Ratio_Bench::Expect_Ratio("SearchBuf, 100 MB, no case / memmem", "Buffer/No_Case", "Buffer_Memmem", 0.1,
                              TBound::At_Least),
    Ratio_Bench::Expect_Ratio("SearchContacts, 100,000, notes / bare LIKE", "Contacts_By_Notes",
                              "Contacts_By_Notes_Bare", 0.6, TBound::At_Most),
    Ratio_Bench::Expect_Ratio("SearchContacts, 100,000, name / bare LIKE", "Contacts_By_Name",
                              "Contacts_By_Name_Bare", 1, TBound::At_Most),
    Ratio_Bench::Expect_Ratio("SearchCalendar, 1,000,000, text / bare join", "Calendar_Text",
                              "Calendar_Text_Bare_Join/As_Chosen", 0.5, TBound::At_Most),
    Ratio_Bench::Expect_Ratio("SearchCalendar, 1,000,000, text / bare join by master", "Calendar_Text",
                              "Calendar_Text_Bare_Join/By_Master", 3, TBound::At_Most),
    Ratio_Bench::Expect_Ratio("SearchCalendar, 31 days of 1,000,000 / bare join", "Calendar_Window",
                              "Calendar_Window_Bare_Join", 1.5, TBound::At_Most)};

}  // namespace
