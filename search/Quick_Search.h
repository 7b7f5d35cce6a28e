#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_dates.h"
#include "Kt_text.h"

namespace KTReminds {

/// Finds a text while it is typed, a few milliseconds at a time: in the titles of events and tasks, and in
/// the names and notes of contacts, of all books and as far as the user may see them. Case is ignored. As
/// "Contains" does, it looks at the first Searched_Characters, and at the whole of notes. To be used by one
/// thread.
class TQuick_Search {
 public:
  enum TGroup { Events, Tasks, Contacts };
  static constexpr int Groups = 3;
  static constexpr std::size_t Most_Rows = 20;  // of a group

  struct TRow {
    std::string Key;    // of an occurrence, or of a contact
    std::string Owner;  // of the occurrence: a contact, or the calendar record of the book
    std::string Book;
    Kt_data_01::TText Title;  // the name of a contact
    Kt_util_01::TDateTime Date = 0;
    bool Timeless = false;
  };
  struct TFound {
    /// Events and tasks: one row for each, with its next occurrence from today on or else its last, the
    /// coming ones first and then the latest. Contacts: those found by name first, by name.
    std::vector<TRow> Rows;
    std::size_t Count = 0;  // with those that are not among the rows
    bool Is_Least = false;  // there may be more of them
  };

  TQuick_Search();
  ~TQuick_Search();

  /// Forgets what was found and begins to look for another text; "" finds nothing, but gets the texts ready.
  void Look_For(std::string_view text);
  /// Goes on for some milliseconds; false when there is nothing left to do. What has changed in the database
  /// since the last step begins the search anew. Throws EData_Error.
  bool Step();
  const TFound& Found(TGroup group) const;

 private:
  class TImpl;
  const std::unique_ptr<TImpl> impl;
};

}  // namespace KTReminds
