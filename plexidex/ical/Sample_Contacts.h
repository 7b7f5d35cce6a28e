#pragma once

#include <cstdint>

#include "Books.h"

namespace Plexidex {

struct TSample_Contacts {
  std::int64_t Contacts = 0, Entries = 0;  // written
};
/// Contacts of several templates, which the book gets where it has them not, in folders, with categories,
/// links, a journal and some events around the day `today`. To be called inside an update bracket; throws
/// EData_Error.
TSample_Contacts Write_Sample_Contacts(const Kt_data_01::TBook& book, Kt_util_01::TDateTime today);

}  // namespace Plexidex
