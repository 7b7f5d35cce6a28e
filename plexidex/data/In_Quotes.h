#pragma once

#include <string>
#include <string_view>

namespace Kt_data_01 {

/// A name as messages show it.
inline std::string In_Quotes(std::string_view text) {
  return '"' + std::string(text) + '"';
}

}  // namespace Kt_data_01
