#pragma once

#include <string>
#include <string_view>

namespace Kt_util_01 {

/// A text of a named charset as UTF-8; what is valid UTF-8 stays, also where the name says otherwise, and one
/// of an unknown charset is read as Windows-1252.
std::string UTF8_From(std::string_view text, const std::string& charset);

}  // namespace Kt_util_01
