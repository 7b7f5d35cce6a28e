#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace Bench {

/// What a generated database holds. One book; the sets' occurrences are written set by set, as the program
/// writes them, so that the rows of a day lie scattered over the table.
struct TSize {
  int Occurrences;
  int Sets;
  int Contacts;
  int Days;  // over which the occurrences are spread evenly, from First_Day
  int Alarm_Percent;
};

inline constexpr int First_Day = 45292;  // 1 January 2024

/// A table that grows in time, not in density: about 48 entries a day.
TSize Size_Of(int occurrences);

/// Path of a database of that size, made at the first call; `copy` tells copies of equal content apart.
const std::string& Database_File(const TSize& size, int copy = 0);

/// Key of the book, the same in all of them.
inline const std::string Book = "book";
inline const std::string Calendar = "calendar";

/// Makes the file the shared database, if it is not yet. With the owner as the user of all events.
void Use_Database(const std::string& path);

/// A bare connection with the settings that the program uses, kept open.
sqlite3* Bare_Connection(const std::string& path);

/// Prepares or stops the benchmark run with the engine's message.
sqlite3_stmt* Prepare(sqlite3* connection, std::string_view sql);
void Execute(sqlite3* connection, const char* sql);

/// Bytes in use on the heap.
std::size_t Heap_In_Use();

}  // namespace Bench
