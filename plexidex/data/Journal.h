#pragma once

// The journal of a contact: what its user did (Populate_Activities), and what was done to the contact. What
// writes must be called inside an update bracket; reading and writing throw EData_Error.

#include <string>
#include <string_view>
#include <vector>

#include "Kt_data_01.h"

namespace Kt_data_01 {

/// `Type` of a row of Log_Table that the host writes. Stored: never renumber. All others are activities.
enum class TJournal_Type {
  Imported = 3,
  Created = 4,
  Updated = 5,
  Deleted = 6,
  Restored = 7,
  Owner_Changed = 9,
  Link_Added = 10,
  Link_Opened = 11,
  Link_Removed = 12,
};

struct TJournal_Entry {
  int Type = 0;
  TDateTime Date = 0;
  TDateTime Second_Date = 0;  // of the event that it is about
  std::string Title{}, Text{};
  std::string Occurrence{};  // that was marked as done
  int Minutes = 0;           // spent
  std::string Private_To{};  // the user whose private entry it tells of
  bool operator==(const TJournal_Entry&) const = default;
};

/// "Meeting", "Contact Created"; "Journal Entry 99" for a type that is neither.
std::string Journal_Type_Name(int type);
/// Newest first. Of what another user has made private nothing is told but that.
std::vector<TJournal_Entry> List_Journal(std::string_view contact);

/// Whether the user entered it: an activity that no occurrence stands behind.
bool Is_By_Hand(const TJournal_Entry& entry);
void Add_Journal_Entry(std::string_view contact, const TJournal_Entry& entry);
/// Writes over, or removes, an entry that was made by hand. False, with nothing written, when the contact has
/// no such entry any more.
bool Change_Journal_Entry(std::string_view contact, const TJournal_Entry& before,
                          const TJournal_Entry& after);
bool Remove_Journal_Entry(std::string_view contact, const TJournal_Entry& entry);

/// An entry of now.
void Log_Contact(std::string_view contact, TJournal_Type type, std::string_view title,
                 std::string_view text = {});

}  // namespace Kt_data_01
