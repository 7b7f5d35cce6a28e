#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace Kt_data_01 {

/// Without blanks and control characters at its ends.
inline std::string_view Trimmed(std::string_view text) {
  const auto is_blank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

/// An immutable UTF-8 text shared by all who hold it: one pointer wide, copied in constant time, so that the
/// entries of a long list share the title of their set and the name of their contact. For one thread.
class TText {
 public:
  TText() = default;
  TText(std::string_view text) : block(text.empty() ? nullptr : Make(text)) {}
  TText(const char* text) : TText(std::string_view(text)) {}
  TText(const std::string& text) : TText(std::string_view(text)) {}
  TText(const TText& other) noexcept : block(other.block) {
    if (block) ++block->count;
  }
  TText(TText&& other) noexcept : block(std::exchange(other.block, nullptr)) {}
  TText& operator=(TText other) noexcept {
    std::swap(block, other.block);
    return *this;
  }
  ~TText() {
    if (block && --block->count == 0) std::free(block);
  }

  std::string_view View() const {
    return block ? std::string_view(reinterpret_cast<const char*>(block + 1), block->length)
                 : std::string_view();
  }
  operator std::string_view() const { return View(); }
  std::string Str() const { return std::string(View()); }
  bool Empty() const { return !block; }

  friend bool operator==(const TText& a, std::string_view b) { return a.View() == b; }
  friend bool operator==(const TText& a, const std::string& b) { return a.View() == b; }
  friend bool operator==(const TText& a, const char* b) { return a.View() == b; }
  friend bool operator==(const TText& a, const TText& b) {
    return a.block == b.block || a.View() == b.View();
  }

 private:
  struct TBlock {
    std::uint32_t count;
    std::uint32_t length;
  };

  static TBlock* Make(std::string_view text) {
    void* memory = std::malloc(sizeof(TBlock) + text.size());
    if (!memory) throw std::bad_alloc();
    auto* made = new (memory) TBlock{1, static_cast<std::uint32_t>(text.size())};
    std::memcpy(made + 1, text.data(), text.size());
    return made;
  }

  TBlock* block = nullptr;
};

}  // namespace Kt_data_01
