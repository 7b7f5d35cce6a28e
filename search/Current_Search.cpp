#include "Current_Search.h"

namespace KTReminds {

std::unique_ptr<TSearchRecord> CurrentSearch;

void Clear_Search() {
  if (CurrentSearch) return CurrentSearch->Clear_Search();
  CurrentSearch = std::make_unique<TSearchRecord>();
}

bool Load_Filter_Settings(const std::string& Book, const std::string& Name, bool Global) {
  auto loaded = std::make_unique<TSearchRecord>();
  if (loaded->Load(Book, Name, Global) == TFilter_Load::Refused) return false;
  CurrentSearch = std::move(loaded);
  return true;
}

}  // namespace KTReminds
