#pragma once

// The module's small images, drawn for the palette in use.

#include <QColor>
#include <QIcon>
#include <QPoint>
#include <span>

class QPainter;

namespace KTReminds {

/// A named row of images, numbered from 0: "P3_Enabled" and "P3_Disabled" for lists and their tool bars,
/// "CalHome_Enabled" and "TaskHome_Enabled" for the home pages, "Contacts" for the host's contacts. The
/// disabled ones are the same shapes, all of it in the ink and half transparent.
class TImage_List {
 public:
  /// Of every image, in device-independent pixels.
  static constexpr int Size = 16;

  /// An unknown name gives an empty list.
  explicit TImage_List(const char* name);

  int Count() const { return static_cast<int>(images.size()); }
  /// For buttons and menus: crisp at every scale, its ink the palette's text colour, also after a change of
  /// palette. An image that does not exist gives a null icon.
  QIcon Icon(int image) const;
  /// Draws one at a place in the given ink; nothing when it does not exist. What an image has in colours of
  /// its own stays so, unless it is a disabled one.
  void Draw(QPainter& painter, QPoint top_left, int image, const QColor& ink) const;

 private:
  const char* Find(int image) const;

  std::span<const char* const> images;
  bool enabled = true;
};

/// Frees the rendered images that all lists keep. They are made again when one is drawn.
void Free_Images();

}  // namespace KTReminds
