#pragma once

// Passwords: how they are held while they are needed, and what is stored of them.

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace Kt_data_01 {

/// A password as it was typed. Its memory is wiped when it goes; what does not fit is cut off.
class TSecret {
 public:
  static constexpr std::size_t Most_Bytes = 1024;

  explicit TSecret(std::string_view text = {});
  TSecret(TSecret&& other) noexcept = default;
  TSecret& operator=(TSecret&& other) noexcept = default;
  void Add(char byte);
  /// Takes the last character away, whole in UTF-8.
  void Remove_Last();
  std::string_view View() const { return {bytes.get(), size}; }
  bool operator==(const TSecret& other) const { return View() == other.View(); }

 private:
  struct TWipe {
    void operator()(char* memory) const noexcept;
  };
  std::unique_ptr<char[], TWipe> bytes;
  std::size_t size = 0;
};

/// Overwrites memory, in a way that a compiler does not leave out.
void Wipe(void* memory, std::size_t bytes) noexcept;

/// Why it cannot be a password, as a sentence for the user; "" when it can.
std::string Password_Fault(const TSecret& password);

/// What is stored of a password, with the parameters to check it by. Takes as long as a try shall cost.
/// Throws EData_Error when there is too little memory.
std::string Hash_Password(const TSecret& password);
/// As slow as Hash_Password, also when `hash` is "", that of nobody, which no password meets.
bool Is_Password(const std::string& hash, const TSecret& password);
/// Whether the hash was made at another cost than now.
bool Is_Outdated(const std::string& hash);

/// Makes a try cost the least that is possible, for tests, or what is usual again.
void Install_Least_Password_Cost(bool least);

}  // namespace Kt_data_01
