// Reads whatever the fuzzer thinks of as a stored search. Ends the program where what was taken does not come
// back from its own bytes as it was.

#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "Filter_Store.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace KTReminds;
  const std::string untouched = "as it was";
  TSearchRecord record;
  record.Group = untouched;
  try {
    Read_Settings({reinterpret_cast<const char*>(data), size}, record);
  } catch (const EFilter_Error&) {
    if (record.Group == untouched && record.Items.empty()) return 0;
    std::cerr << "refused, but something was taken" << std::endl;
    std::abort();
  }
  const std::string stored = Stored_Settings(record);
  TSearchRecord back;
  Read_Settings(stored, back);
  if (Stored_Settings(back) == stored) return 0;
  std::cerr << "it came back as something else" << std::endl;
  std::abort();
}
