#pragma once

// Searches as filters store them: the bytes, and the rows. A personal filter is the current user's, a global
// one everybody's; the two are independent of each other.

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Search_Record.h"

namespace KTReminds {

/// Why stored bytes are no search.
class EFilter_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A search as bytes, without its name. Databases hold them: no width and no order may change.
std::string Stored_Settings(const TSearchRecord& record);
/// Throws EFilter_Error, and leaves the record as it is, for bytes that are cut short or whose lengths and
/// counts lead beyond them. Its name stays.
void Read_Settings(std::string_view bytes, TSearchRecord& record);

/// The names of the filters of a book, in no order; none after a failed read, which is reported.
std::vector<std::string> Filter_Names(const std::string& book, bool global);
bool Has_Filter(const std::string& book, const std::string& name, bool global);
/// A personal one always; of those of everybody new ones, other ones and none need the book's rights to
/// create, to change and to delete.
bool May_Save_Filter(const std::string& book, const std::string& name, bool global);
bool May_Delete_Filter(const std::string& book, bool global);
/// False when it was refused or failed, which is reported, and when the user may not; true also when there
/// was no such filter.
bool Delete_Filter(const std::string& book, const std::string& name, bool global);

}  // namespace KTReminds
