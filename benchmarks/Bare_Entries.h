#pragma once

// What the lists are measured against: one bare SQL join of the same rows, read into structs.

#include <string>
#include <vector>

#include "Bench_Database.h"

namespace Bench {

struct TBare_Entry {
  std::string Key, Title, Location, Contact, ContactName, User, Status;
  double EventDate, FirstDate;
  int Priority, EventType, Percentage;
  bool Private, AllDay, Done, Alarm;
};

/// The join of the book's visible occurrences, with alarms by this key; `rest` goes on with the conditions.
std::string Bare_Join(const char* alarm_key, const char* rest);
/// Runs a join whose parameters are bound, as its program's user.
std::vector<TBare_Entry> Read_Bare(sqlite3_stmt* join);
/// The occurrences of so many days from one on, with alarms by this key, in the engine's own order.
std::vector<TBare_Entry> Read_Bare_Window(const TSize& size, double first_day, int days,
                                          const char* alarm_key = "d.Event");

}  // namespace Bench
