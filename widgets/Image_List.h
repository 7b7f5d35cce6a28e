#pragma once

// The module's small images, drawn for the palette in use.

#include <QColor>
#include <QIcon>
#include <QPoint>

class QPainter;

namespace KTReminds {

/// A named row of images, numbered from 0: "P3_Enabled" and "P3_Disabled" for the calendar views,
/// "CalHome_Enabled" for the calendar's home page. The disabled ones are the same shapes in grey.
class TImage_List {
 public:
  /// Of every image, in device-independent pixels.
  static constexpr int Size = 16;

  /// An unknown name gives an empty list.
  explicit TImage_List(const char* name);

  int Count() const { return count; }
  /// For buttons and menus: crisp at every scale, its ink the palette's text colour, also after a change of
  /// palette. An image that does not exist gives a null icon.
  QIcon Icon(int image) const;
  /// Draws one at a place in the given ink; nothing when it does not exist. What an image has in colours of
  /// its own stays so.
  void Draw(QPainter& painter, QPoint top_left, int image, const QColor& ink) const;

 private:
  QString folder;
  int count = 0;
  bool enabled = true;
};

}  // namespace KTReminds
