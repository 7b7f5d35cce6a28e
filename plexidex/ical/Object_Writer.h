#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Alerts.h"
#include "Books.h"
#include "Event_Creation.h"
#include "Planned.h"
#include "Report.h"

namespace Plexidex {

/// Writes planned objects into a book, inside the caller's bracket, and counts them in the report. An object
/// whose UID an earlier import brought takes the place of that, as does one whose UID is the key of an event
/// of the book: so an exported book can come back. Dates that were marked done stay so where their moment is
/// the same.
class TObject_Writer {
 public:
  /// Book and report must outlive the writer; `until` is the last day of endless rules.
  TObject_Writer(const Kt_data_01::TBook& book, TDateTime until, TImport_Report& report);

  /// Why the user may not have what is in the book already take this over, or be withdrawn by it; "" when it
  /// may be written.
  std::string Fault(const TPlanned_Object& object);
  /// What takes the place of an event stays its user's and its contact's. Throws EData_Error, or
  /// EAlready_Reported when a part of the writing has reported its failure.
  void Write(TPlanned_Object& object);

 private:
  struct TKnown {
    std::string Event;
    int Part = 0;
    std::string Contact{}, User{};  // whose it is
    bool Private = false;
  };
  struct TReplaced {
    std::map<std::int64_t, std::int64_t> Done;  // by moment, with the day a task was completed on
    std::vector<TKnown> Events{};
    std::map<std::int64_t, Kt_data_01::TWaiting_Alert> Waiting{};  // by moment of the occurrence

    // The event of a part; what a part that is new belongs to is told by the others. Null without any.
    const TKnown* Event_Of(int part) const;
  };

  void Keep_Text(const TPlanned_Object& object);
  std::vector<TKnown> Known_Events(const std::string& uid);
  TReplaced Remove_Old(const std::string& uid);
  void Remove_Event(TKnown& known, TReplaced& replaced);
  void Keep_Waiting(const std::string& event, const TReplaced& replaced);
  bool Is_Event_Of_Book(const std::string& event);
  void Write_Single(const TPlanned_Object& object, const TPlanned_Event& event, TDateTime date,
                    const TReplaced& replaced);
  void Write_Set(const TPlanned_Object& object, const TPlanned_Event& event, const TReplaced& replaced);
  void Write_Task(const TPlanned_Object& object, const TPlanned_Event& event, TDateTime due,
                  const TReplaced& replaced);
  KTReminds::TNew_Event Begin(const TPlanned_Event& event, TDateTime date, const TReplaced& replaced) const;
  void Create(const TPlanned_Object& object, int part, const KTReminds::TNew_Event& event,
              const TReplaced& replaced);

  const Kt_data_01::TBook& book;
  const TDateTime until;
  TImport_Report& report;
  Kt_data_01::TTable events, occurrences, cards, imports, import_events, texts, zones;
  std::set<std::string> known_zones;
};

}  // namespace Plexidex
