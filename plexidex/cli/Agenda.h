#pragma once

// The entries of a range of days, with what the lists of the calendar pages do not carry.

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "Books.h"
#include "Recurrence.h"

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
  KTReminds::TFrequency Freq = KTReminds::TFrequency::None;
  bool Private = false;  // whoever's it is

  bool Is_Holiday() const { return Data->Is_Holiday(); }
};

/// An entry with what its master says, which is not asked for a holiday's.
TAgenda_Entry Agenda_Entry(std::unique_ptr<Kt_data_01::TEventKey> data, const Kt_data_01::TTable& master);

/// By day; within it holidays first, then all-day entries, tasks without a time, and the others by time.
/// Throws EData_Error.
std::vector<TAgenda_Entry> Build_Agenda(const TAgenda_Range& range);
/// Puts entries into the same order.
void Sort_Agenda(std::vector<TAgenda_Entry>& entries);

/// Days with their entries, to be read by people. `with_keys` adds the ending of each key, by which an entry
/// can be named.
void Write_Agenda_Text(std::ostream& out, const TAgenda_Range& range,
                       const std::vector<TAgenda_Entry>& entries, bool with_keys);

/// One array with an object per entry, to be read by programs.
void Write_Agenda_Json(std::ostream& out, const std::vector<TAgenda_Entry>& entries);

}  // namespace Plexidex
