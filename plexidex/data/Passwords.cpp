#include "Passwords.h"

#include <sodium.h>

#include <algorithm>
#include <cerrno>

#include "Kt_data_01.h"

namespace Kt_data_01 {

namespace {

constexpr std::size_t Fewest_Characters = 8;
constexpr const char* No_Memory = "there is too little memory to check passwords";

struct TPassword_Cost {
  unsigned long long Rounds;
  std::size_t Memory;
};

// A try takes most of a second and 256 MB. A person logs in once a day and does not mind, but whoever has got
// hold of the file may try passwords for ever.
constexpr TPassword_Cost Usual{crypto_pwhash_OPSLIMIT_MODERATE, crypto_pwhash_MEMLIMIT_MODERATE};

TPassword_Cost& Cost() {
  static TPassword_Cost cost = Usual;
  return cost;
}

void Prepare() {
  static const bool ready = sodium_init() >= 0;
  if (!ready) throw EData_Error("password", "", "this machine gives no random numbers");
}

// Of no password: its salt and digest are zeros.
std::string Nobodys_Hash() {
  constexpr std::size_t bytes_of_a_kib = 1024, salt_letters = 22, digest_letters = 43;
  return "$argon2id$v=19$m=" + std::to_string(Cost().Memory / bytes_of_a_kib) +
         ",t=" + std::to_string(Cost().Rounds) + ",p=1$" + std::string(salt_letters, 'A') + "$" +
         std::string(digest_letters, 'A');
}

bool Continues_A_Character(char byte) {
  constexpr unsigned mask = 0xC0, continuation = 0x80;
  return (static_cast<unsigned char>(byte) & mask) == continuation;
}

}  // namespace

TSecret::TSecret(std::string_view text) : bytes(new char[Most_Bytes]) {
  for (const char byte : text) Add(byte);
}

void TSecret::Add(char byte) {
  if (size < Most_Bytes) bytes[size++] = byte;
}

void TSecret::Remove_Last() {
  while (size > 0 && Continues_A_Character(bytes[size - 1])) --size;
  if (size > 0) --size;
}

void TSecret::TWipe::operator()(char* memory) const noexcept {
  Wipe(memory, Most_Bytes);
  delete[] memory;
}

void Wipe(void* memory, std::size_t bytes) noexcept {
  sodium_memzero(memory, bytes);
}

std::string Password_Fault(const TSecret& password) {
  const std::string_view text = password.View();
  const auto characters =
      text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), Continues_A_Character));
  if (characters < Fewest_Characters)
    return "A password needs at least " + std::to_string(Fewest_Characters) + " characters.";
  if (text.size() >= TSecret::Most_Bytes) return "The password is too long.";
  return {};
}

std::string Hash_Password(const TSecret& password) {
  Prepare();
  const std::string_view text = password.View();
  char hash[crypto_pwhash_STRBYTES];
  if (crypto_pwhash_str(hash, text.data(), text.size(), Cost().Rounds, Cost().Memory) != 0)
    throw EData_Error("password", "", No_Memory);
  return hash;
}

bool Is_Password(const std::string& hash, const TSecret& password) {
  Prepare();
  const std::string_view text = password.View();
  const std::string against = hash.empty() ? Nobodys_Hash() : hash;
  errno = 0;
  const bool met = crypto_pwhash_str_verify(against.c_str(), text.data(), text.size()) == 0;
  if (!met && errno == ENOMEM) throw EData_Error("password", "", No_Memory);
  return met && !hash.empty();
}

bool Is_Outdated(const std::string& hash) {
  return crypto_pwhash_str_needs_rehash(hash.c_str(), Cost().Rounds, Cost().Memory) != 0;
}

void Install_Least_Password_Cost(bool least) {
  Cost() = least ? TPassword_Cost{crypto_pwhash_OPSLIMIT_MIN, crypto_pwhash_MEMLIMIT_MIN} : Usual;
}

}  // namespace Kt_data_01
