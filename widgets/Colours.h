#pragma once

// Colours that rows and cells are drawn in on any palette.

#include <QColor>

namespace KTReminds {

inline constexpr QRgb Silver = qRgb(0xC0, 0xC0, 0xC0);

inline bool Is_Dark(const QColor& ground) {
  return ground.lightness() < 128;
}

/// What a mark is drawn in whose place is found by its colours. Nothing else may be drawn in them.
inline constexpr QRgb Mark_Ground = qRgb(0xFF, 0xFF, 0x00), Mark_Ink = qRgb(0x00, 0x00, 0x80);

inline bool Is_Of_Mark(const QColor& colour) {
  return colour.rgb() == Mark_Ground || colour.rgb() == Mark_Ink;
}
/// The colour, or when a palette has one of the mark's, its nearest neighbour.
inline QColor Beside_Mark(const QColor& colour) {
  return Is_Of_Mark(colour) ? QColor(colour.rgb() ^ 1U) : colour;
}

}  // namespace KTReminds
