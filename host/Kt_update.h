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
  std::string Reason;  // of a failure, for the user

  explicit operator bool() const { return End == TEnd::Done; }
};

namespace Kt_update {

template <class TBody, class TFail>
TUpdate_Result Run(TBody&& body, TFail fail) {
  if (!Start_Update()) return {TUpdate_Result::TEnd::Refused, {}};
  const auto failed = [&fail](const std::string& reason) -> TUpdate_Result {
    fail();
    return {TUpdate_Result::TEnd::Failed, reason};
  };
  try {
    std::forward<TBody>(body)();
    EndUpdate();
    return {};
  } catch (const EData_Error& e) {
    return failed(e.Reason);
  } catch (const std::exception& e) {
    return failed(e.what());
  } catch (...) {
    return failed("an unknown error");
  }
}

}  // namespace Kt_update

/// Runs a body inside an update bracket and keeps what it wrote. Whatever it throws, or the end of the
/// bracket does, undoes all of it and is reported with the tag; nothing is thrown further. The tag is read
/// when the report is made, so that the body may change it to say how far it got.
template <class TBody>
TUpdate_Result Update(const std::string& tag, TBody&& body) {
  return Kt_update::Run(std::forward<TBody>(body), [&tag] { FailUpdate(tag); });
}

/// The same without a report, for who tells the user in words of his own.
template <class TBody>
TUpdate_Result Update_Unreported(TBody&& body) {
  return Kt_update::Run(std::forward<TBody>(body), [] {
    try {
      throw EAlready_Reported();
    } catch (...) {
      FailUpdate({});
    }
  });
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
