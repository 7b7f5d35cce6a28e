#include "Charsets.h"

#include <unicode/ucnv.h>

#include <memory>

#include "ICU_Texts.h"
#include "Kt_util_01.h"

namespace Kt_util_01 {

std::string UTF8_From(std::string_view text, const std::string& charset) {
  std::string valid = Valid_UTF8(text);
  if (valid == text) return valid;
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(charset.c_str(), &status),
                                                                     ucnv_close);
  if (U_FAILURE(status)) return valid;
  const icu::UnicodeString read(text.data(), static_cast<std::int32_t>(text.size()), converter.get(), status);
  return U_FAILURE(status) ? valid : From_ICU(read);
}

}  // namespace Kt_util_01
