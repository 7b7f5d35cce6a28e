#pragma once

// Events to test with. For programs that link the module's core.

#include <string>

#include "Books.h"
#include "Database_Test.h"
#include "Event_Creation.h"

using namespace KTReminds;

/// An event of the first book's calendar and the current user, to be changed before it is written: at one
/// moment, or as a daily set on so many days.
inline TNew_Event New_Event(const std::string& title, TDateTime first, int days = 1) {
  const TBook book = List_Books().front();
  TNew_Event event;
  event.Owner = {book.Key, book.Calendar};
  event.Record.Title = title;
  event.Record.User = User_Key();
  event.Record.FirstDate = first;
  event.Record.Pattern.LastDate = first + days - 1;
  if (days > 1) event.Record.Pattern.Freq = TFrequency::Daily;
  return event;
}

/// Writes it; the key of its first occurrence, "" when it was not written.
inline std::string Write(const TNew_Event& event) {
  std::string master;
  return Create_Event(event, master);
}
