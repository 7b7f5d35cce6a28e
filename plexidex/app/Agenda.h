#pragma once

// The entries of a range of days, with what the lists of the calendar pages do not carry.

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "Books.h"
#include "Kt_data_01.h"

namespace Plexidex {

using Kt_data_01::TDateTime;
using Kt_data_01::TText;

struct TAgenda_Range {
  std::vector<Kt_data_01::TBook> Books;
  TDateTime From = 0, To = 0;  // days, both included
};

struct TAgenda_Entry {
  std::unique_ptr<Kt_data_01::TEventKey> Data;
  TText Event;            // key of the master; empty for a holiday
  TText Title, Location;  // of another user's private entry "Private" and nothing
  int Freq = 0;           // 0 none, 1 daily .. 4 yearly
  bool Alarm = false;     // outstanding, the current user's, and with an alarm of its own
  bool Private = false;   // whoever's it is

  /// A stored entry may have the type of a holiday; only a holiday has no key.
  bool Is_Holiday() const { return Data->Key.Empty(); }
};

/// By day; within it holidays first, then all-day entries, tasks without a time, and the others by time. A
/// failed read of the entries is reported by a prompt and gives none of that book; other failures throw
/// EData_Error.
std::vector<TAgenda_Entry> Build_Agenda(const TAgenda_Range& range);

/// Days with their entries, to be read by people. `with_keys` adds the ending of each key, by which an entry
/// can be named.
void Write_Agenda_Text(std::ostream& out, const TAgenda_Range& range,
                       const std::vector<TAgenda_Entry>& entries, bool with_keys);

/// One array with an object per entry, to be read by programs.
void Write_Agenda_Json(std::ostream& out, const std::vector<TAgenda_Entry>& entries);

}  // namespace Plexidex
