#pragma once

// The one shape in which code opens an update bracket, or catches a failed read.

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "Kt_data_01.h"

namespace Kt_data_01 {

/// How an update ended. Refused: no bracket could be opened, and the host has told the user why. Failed: all
/// of it was undone and reported.
struct TUpdate_Result {
  enum class TEnd { Done, Refused, Failed };
  TEnd End = TEnd::Done;
  std::string Reason;  // of a failure, as the exception gave it

  explicit operator bool() const { return End == TEnd::Done; }
};

/// Runs a body inside an update bracket and keeps what it wrote. Whatever it throws, or the end of the
/// bracket does, undoes all of it and is reported with the tag; nothing is thrown further. The tag is read
/// when the report is made, so that the body may change it to say how far it got.
template <class TBody>
TUpdate_Result Update(const std::string& tag, TBody&& body) {
  if (!Start_Update()) return {TUpdate_Result::TEnd::Refused, {}};
  try {
    std::forward<TBody>(body)();
    EndUpdate();
    return {};
  } catch (const std::exception& e) {
    FailUpdate(tag);
    return {TUpdate_Result::TEnd::Failed, e.what()};
  } catch (...) {
    FailUpdate(tag);
    return {TUpdate_Result::TEnd::Failed, "an unknown error"};
  }
}

/// Runs a body that reads. What it throws is reported with the tag: then the result is false, or for a body
/// that returns something, nothing.
template <class TBody>
auto Read(std::string_view tag, TBody&& body) {
  using TValue_Read = std::decay_t<decltype(std::forward<TBody>(body)())>;
  if constexpr (std::is_void_v<TValue_Read>) {
    try {
      std::forward<TBody>(body)();
      return true;
    } catch (...) {
      FailRead(tag);
      return false;
    }
  } else {
    try {
      return std::optional<TValue_Read>(std::forward<TBody>(body)());
    } catch (...) {
      FailRead(tag);
      return std::optional<TValue_Read>();
    }
  }
}

}  // namespace Kt_data_01
