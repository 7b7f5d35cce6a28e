#pragma once

#include <string>

#include "Kt_lists.h"

namespace KTReminds {

/// What became of marking an occurrence.
struct TMarking {
  enum class TEnd {
    Marked,
    Refused,  // the database takes no update; the host has told the user
    Gone,     // there is no such occurrence, or its master is missing
    Failed    // reported
  };
  TEnd End = TEnd::Gone;
  bool Is_Task = false;
  std::string Title;  // of the master
};

/// Marks an occurrence as done or not, its alarm and, for a task, its status, with a journal entry where the
/// master asks for one.
TMarking Mark_Occurrence(const std::string& key, bool done);

/// Marks the item's occurrence, and then the item itself, in place. The item is changed too when the database
/// refuses updates, and is left alone when the occurrence is gone or the update failed, which is reported.
void Set_Event_as_Actioned(Kt_data_01::TList_Item& Item, bool Actioned, bool PlaySound, int DoneEventImage,
                           int OpenEventImage, int DoneTaskImage, int OpenTaskImage);

}  // namespace KTReminds
