#pragma once

// Colours that rows and cells are drawn in on any palette.

#include <QColor>

namespace KTReminds {

inline constexpr QRgb Silver = qRgb(0xC0, 0xC0, 0xC0);

inline bool Is_Dark(const QColor& ground) {
  return ground.lightness() < 128;
}

/// The sign that a place has more than it shows is found by its colours, so nothing else is drawn in them.
inline constexpr QRgb Overflow_Ground = qRgb(0xFF, 0xFF, 0x00), Overflow_Ink = qRgb(0x00, 0x00, 0x80);

inline bool Is_Overflow(const QColor& colour) {
  return colour.rgb() == Overflow_Ground || colour.rgb() == Overflow_Ink;
}
/// The colour, or when a palette has one of the sign's, its nearest neighbour.
inline QColor Beside_Overflow(const QColor& colour) {
  return Is_Overflow(colour) ? QColor(colour.rgb() ^ 1U) : colour;
}

}  // namespace KTReminds
