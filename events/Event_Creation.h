#pragma once

#include <string>
#include <string_view>

#include "Kt_data_01.h"
#include "Recurrence.h"

namespace KTReminds {

using Kt_data_01::TMemory_Stream;

/// An event, task or recurring set to be written.
struct TNew_Event {
  std::string Contact;  // key of the owner of the occurrences
  std::string Book;
  std::string Title, Location;
  std::string WAVFile;              // sound of the alarms; without Alarm ignored, as is Offset
  std::string User;                 // key of the user who owns the event
  TMemory_Stream* Notes = nullptr;  // written whole, whatever its position; not owned; null for none
  bool Alarm = false;               // an alarm for every occurrence
  bool AllDay = false;
  bool Private = false;
  bool Actioned = false;          // of occurrences from today on; heeded only with MarkPastActioned
  bool MarkPastActioned = false;  // occurrences before today are written as dealt with
  TDateTime FirstDate = 0;
  TRecurrence_Pattern Pattern;  // with the last date
  int Priority = 5;
  int Offset = 0;  // minutes before each occurrence
  int EventType = 0;
};

/// Writes the master record and all its occurrences, one for FirstDate and one for every date that follows by
/// the pattern up to its last date, in one update bracket. A pattern that does not move forward ends there.
/// Returns the key of the first occurrence and sets EventKey to the key of the master; "" when nothing was
/// written: the update was refused, or failed and was reported. EventKey keeps the key of an event that
/// failed.
std::string Create_Event(const TNew_Event& event, std::string& EventKey);

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

/// Writes many occurrences of one event with cursors of its own, inside the caller's bracket.
class TOccurrence_Writer {
 public:
  struct TOf {
    std::string_view EventKey, Contact, Book, User, WAVFile;
    bool Alarm = false;
    int Offset = 0;
  };

  /// The texts are not copied and must outlive the writer.
  explicit TOccurrence_Writer(const TOf& written_for);
  /// Returns the new occurrence's key.
  std::string Write(TDateTime EventDate, bool Actioned);

 private:
  TOf of;
  Kt_data_01::TTable occurrences, alarms;
};

}  // namespace KTReminds
