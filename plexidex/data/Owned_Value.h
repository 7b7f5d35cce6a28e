#pragma once

#include <cstdint>
#include <string>

#include "Engine.h"
#include "Kt_data_01.h"

namespace Kt_data_01 {

inline void Bind(TStatement& statement, int parameter, const TValue& value) {
  switch (value.Kind()) {
    case TValue::TKind::Integer:
      statement.Bind(parameter, value.Integer());
      break;
    case TValue::TKind::Real:
      statement.Bind(parameter, value.Real());
      break;
    case TValue::TKind::Text:
      statement.Bind(parameter, value.Text());
      break;
  }
}

/// A TValue with its own copy of the text.
struct TOwned_Value {
  TValue::TKind Kind = TValue::TKind::Integer;
  std::int64_t Integer = 0;
  double Real = 0;
  std::string Text;

  /// Reuses the memory of an earlier text.
  void Assign(const TValue& value) {
    Kind = value.Kind();
    switch (Kind) {
      case TValue::TKind::Integer:
        Integer = value.Integer();
        break;
      case TValue::TKind::Real:
        Real = value.Real();
        break;
      case TValue::TKind::Text:
        Text = value.Text();
        break;
    }
  }
  TValue Value() const {
    switch (Kind) {
      case TValue::TKind::Integer:
        return Integer;
      case TValue::TKind::Real:
        return Real;
      default:
        return Text;
    }
  }
  friend bool operator==(const TOwned_Value& a, const TOwned_Value& b) {
    if (a.Kind != b.Kind) return false;
    switch (a.Kind) {
      case TValue::TKind::Integer:
        return a.Integer == b.Integer;
      case TValue::TKind::Real:
        return a.Real == b.Real;
      default:
        return a.Text == b.Text;
    }
  }
};

}  // namespace Kt_data_01
