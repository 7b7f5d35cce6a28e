#include <pthread.h>
#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <system_error>

#include "Kt_util_01.h"

namespace Kt_util_01 {

namespace {

/// Random bytes, fetched from the system in large pieces: one call per key would cost more than the key.
class TRandom_Source {
 public:
  TRandom_Source() {
    // A child process must not hand out the bytes that its parent will.
    pthread_atfork(nullptr, nullptr, [] { Instance().used = Buffer_Size; });
  }

  static TRandom_Source& Instance() {
    static TRandom_Source source;
    return source;
  }

  std::uint64_t Next() {
    if (used + sizeof(std::uint64_t) > Buffer_Size) Refill();
    std::uint64_t value = 0;
    std::memcpy(&value, buffer.data() + used, sizeof value);
    used += sizeof value;
    return value;
  }

 private:
  static constexpr std::size_t Buffer_Size = 4096;

  void Refill() {
    for (std::size_t filled = 0; filled < Buffer_Size;) {
      const ssize_t count = getrandom(buffer.data() + filled, Buffer_Size - filled, 0);
      if (count < 0 && errno != EINTR)
        throw std::system_error(errno, std::generic_category(), "The system gives no random numbers");
      filled += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    used = 0;
  }

  std::array<unsigned char, Buffer_Size> buffer{};
  std::size_t used = Buffer_Size;
};

/// Milliseconds since 1970 above twelve bits that count up within one. Strictly increasing, also when the
/// clock steps back.
std::uint64_t Next_Tick() {
  static std::uint64_t last = 0;
  const auto since_epoch = std::chrono::system_clock::now().time_since_epoch();
  const auto nanoseconds =
      static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(since_epoch).count());
  const std::uint64_t fraction = nanoseconds % 1'000'000 * 4096 / 1'000'000;
  last = std::max(last + 1, nanoseconds / 1'000'000 << 12 | fraction);
  return last;
}

}  // namespace

std::string Get_GUID() {
  constexpr std::uint64_t version = std::uint64_t{7} << 12;
  constexpr std::uint64_t variant = std::uint64_t{2} << 62;
  const std::uint64_t tick = Next_Tick();
  const std::uint64_t high = tick >> 12 << 16 | version | (tick & 0xFFF);
  const std::uint64_t low = variant | TRandom_Source::Instance().Next() >> 2;

  // Where each of the sixteen bytes goes among the hyphens.
  constexpr std::array<std::size_t, 16> places = {0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};
  constexpr char digits[] = "0123456789abcdef";
  std::array<char, 36> guid;
  guid.fill('-');
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::uint64_t byte = (i < 8 ? high : low) >> (7 - i % 8) * 8 & 0xFF;
    guid[places[i]] = digits[byte >> 4];
    guid[places[i] + 1] = digits[byte & 15];
  }
  return {guid.data(), guid.size()};
}

}  // namespace Kt_util_01
