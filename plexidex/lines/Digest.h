#pragma once

#include <bit>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace Plexidex {

/// A number of 128 bits that differs, but for chance, for different texts; the same on every machine.
class TDigest {
 public:
  void Add(std::string_view text) {
    for (const char c : text) {
      const auto byte = static_cast<unsigned char>(c);
      one = (one ^ byte) * 0x100000001B3;
      other = (std::rotl(other, 5) ^ byte) * 0x9E3779B97F4A7C15;
    }
  }
  /// 32 digits.
  std::string Text() const {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (std::uint64_t part : {one, other}) {
      for (int i = 0; i < 16; ++i, part >>= 4) text += digits[part & 15];
    }
    return text;
  }
  auto operator<=>(const TDigest&) const = default;  // NOLINT(modernize-use-nullptr): not written here

 private:
  std::uint64_t one = 0xCBF29CE484222325, other = 0x6C62272E07BB0142;
};

}  // namespace Plexidex
