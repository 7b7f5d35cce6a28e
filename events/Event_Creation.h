#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Event_Record.h"

namespace KTReminds {

using Kt_data_01::TMemory_Stream;

/// One occurrence that is about to be written.
struct TNew_Occurrence {
  TDateTime Date = 0;
  bool Actioned = false;
  TAlarm Alarm;
};

/// An event, task or recurring set to be written.
struct TNew_Event {
  TOwner Owner;          // of the occurrences
  TEvent_Record Record;  // its Key is not used
  /// Of the first occurrence, where that is not the master's FirstDate: when a task is due.
  std::optional<TDateTime> Date;
  TAlarm Alarm;                   // of every occurrence
  bool Actioned = false;          // of occurrences from today on; heeded only with MarkPastActioned
  bool MarkPastActioned = false;  // occurrences before today are written as dealt with
  std::vector<TDateTime> Extra;   // further occurrences, that the pattern does not give
  /// Called for each occurrence before it is written, and may change it; false leaves it out. Null for none.
  std::function<bool(TNew_Occurrence& occurrence)> Adjust;
};

/// Writes the master and its occurrences, one for the first date, one for every date that follows by the
/// pattern up to its last date, and the extra ones, in one update bracket. A pattern that does not move
/// forward ends there. Returns the key of the first occurrence and sets EventKey to the key of the master; ""
/// when nothing was written: the update was refused, or failed and was reported. EventKey keeps the key of an
/// event that failed.
std::string Create_Event(const TNew_Event& event, std::string& EventKey);

/// The same; Notes are written whole, whatever the stream's position, and null for none. Without Alarm,
/// WAVFile and Offset (minutes before each occurrence) are ignored.
std::string Create_Event(const std::string& Contact, const std::string& Book, const std::string& Title,
                         const std::string& Location, const std::string& WAVFile, const std::string& User,
                         std::string& EventKey, TMemory_Stream* Notes, bool Alarm, bool AllDay, bool Actioned,
                         bool PeriodDefault, TDateTime FirstDate, TDateTime LastDate, int Freq, int Period,
                         int Priority, int Offset, bool P1, bool P2, bool P3, bool P4, bool P5, bool P6,
                         bool P7, bool P8, bool P9, bool P10, int Instance, int Month, int EventType,
                         bool MarkPastActioned);

/// Writes one occurrence and, with Alarm, its alarm; returns the occurrence's key. The caller holds the
/// update bracket; exceptions pass through to it.
std::string Create_Event_Entry(const std::string& EventKey, const std::string& Contact,
                               const std::string& Book, const std::string& User, const std::string& WAVFile,
                               bool Alarm, bool Actioned, TDateTime EventDate, int Offset);

}  // namespace KTReminds
