#pragma once

// What criteria ask of a contact.

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "Matchers.h"

namespace KTReminds {

/// The criteria of a search against contacts. Owns its cursors; to be used inside a snapshot, and throws
/// EData_Error. The search must outlive it.
class TContact_Criteria {
 public:
  /// The tags are those of the user.
  TContact_Criteria(const TSearchRecord& search, TDateTime now, std::string_view user);
  ~TContact_Criteria();
  TContact_Criteria(const TContact_Criteria&) = delete;
  TContact_Criteria& operator=(const TContact_Criteria&) = delete;

  /// A cursor on contacts that has what is asked of them. Meets may be called for its current
  /// row alone, and only while it is walked; it must live as long as this.
  Kt_data_01::TTable& Contacts();
  /// Whether the current contact meets all criteria.
  bool Meets();
  /// How many contacts the cursor has come past since the last call, those that it left out because of their
  /// names included.
  std::int64_t Take_Passed();

 private:
  class TImpl;
  const std::unique_ptr<TImpl> impl;
};

}  // namespace KTReminds
