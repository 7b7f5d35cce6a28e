#pragma once

#include "Kt_data_01.h"

namespace KTReminds {

using Kt_data_01::TDateTime;

/// Which key an occurrence's alarm is looked up by. The month's list looks under the set's key.
enum class TAlarm_Key { Occurrence, Set };

/// How the records that belong to an occurrence are read: along with it, which suits the few days of a
/// window, or by scanning their tables once, which suits a whole book.
enum class TReading { Window, Whole };

/// Walks the occurrences of a contact or book that the current user may see, as entries. Owns its cursors;
/// must not outlive a call, and throws EData_Error.
class TEntry_Walk {
 public:
  /// From one moment to another, both included.
  TEntry_Walk(const std::string& contact, const std::string& book, bool by_book, TDateTime from, TDateTime to,
              TAlarm_Key alarm_key, TReading reading);

  /// How many occurrences lie in the range, seen or not.
  std::int64_t Count() { return occurrences.Record_Count(); }
  /// The next entry in order of time; null at the end. `passed` counts the occurrences gone through.
  std::unique_ptr<Kt_data_01::TEventKey> Next();
  std::int64_t Passed() const { return passed; }

 private:
  std::unique_ptr<Kt_data_01::TEventKey> Entry();

  Kt_data_01::TSnapshot snapshot;
  Kt_data_01::TTable occurrences, events, contacts, alarms;
  const TAlarm_Key alarm_key;
  const std::string user;
  std::int64_t passed = 0;
  bool started = false;
};

/// Image_Open_Event and its kin; -1 for an entry that has none.
int State_Image(const Kt_data_01::TEventKey& entry);

}  // namespace KTReminds
