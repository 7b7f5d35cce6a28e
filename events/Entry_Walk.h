#pragma once

#include <memory>

#include "Event_Record.h"

namespace KTReminds {

/// Which key an occurrence's alarm is looked up by. The month's list looks under the set's key.
enum class TAlarm_Key { Occurrence, Set };

/// How the records that belong to an occurrence are read: along with it, which suits the few days of a
/// window, or by scanning their tables once, which suits a whole book.
enum class TReading { Window, Whole };

/// What a walk goes through: the occurrences of a contact, or with By_Book of a whole book, from one moment
/// to another, both included.
struct TWalk_Range {
  TOwner Owner;
  bool By_Book = false;
  TDateTime From = 0, To = 0;
};

/// The range from the beginning of one day to the end of another.
TWalk_Range Days_Of(const TOwner& owner, bool by_book, TDateTime first_day, TDateTime last_day);
/// The whole of a day, where the other range ends with the last second.
TWalk_Range Day_Of(const TOwner& owner, bool by_book, TDateTime day);
/// All that there is.
TWalk_Range All_Of(const TOwner& owner, bool by_book);

/// Cursors with the columns that an entry is made from; the contacts by key.
TTable Entry_Events(std::string_view index);
TTable Entry_Contacts();
/// Whether the current user may see entries of an owner, on whose row the contacts then stand: it is there
/// and not deleted. Both throw EData_Error.
bool Is_Visible(TTable& contacts, std::string_view owner);
/// The entry of the rows at which three cursors stand, as if it had no alarm.
std::unique_ptr<Kt_data_01::TEventKey> Entry_At(const TTable& occurrences, const TTable& events,
                                                const TTable& contacts);

/// Walks the occurrences that the current user may see, as entries. Owns its cursors; must not outlive a
/// call, and throws EData_Error.
class TEntry_Walk {
 public:
  TEntry_Walk(const TWalk_Range& range, TAlarm_Key alarm_key, TReading reading);

  /// How many occurrences lie in the range, seen or not.
  std::int64_t Count() { return occurrences.Record_Count(); }
  /// The next entry in order of time; null at the end. `passed` counts the occurrences gone through.
  std::unique_ptr<Kt_data_01::TEventKey> Next();
  std::int64_t Passed() const { return passed; }
  /// The master of the entry that Next gave last, for what the entry does not carry. Only Key, Title,
  /// Location, Freq and what the entry is made from can be read.
  const TTable& Master() const { return events; }

 private:
  std::unique_ptr<Kt_data_01::TEventKey> Entry();

  Kt_data_01::TSnapshot snapshot;
  TTable occurrences, events, contacts, alarms;
  const TAlarm_Key alarm_key;
  std::int64_t passed = 0;
  bool started = false;
};

}  // namespace KTReminds
