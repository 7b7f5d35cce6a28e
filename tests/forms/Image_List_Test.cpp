#include "Image_List.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <set>

using namespace KTReminds;

namespace {

QImage Drawn(const TImage_List& list, int image, const QColor& ink, qreal ratio = 1) {
  QImage canvas(QSize(TImage_List::Size, TImage_List::Size) * ratio, QImage::Format_ARGB32_Premultiplied);
  canvas.setDevicePixelRatio(ratio);
  canvas.fill(Qt::transparent);
  QPainter painter(&canvas);
  list.Draw(painter, {}, image, ink);
  return canvas;
}

// Whether all dots, whatever their opacity, have one colour.
bool Only(const QImage& image, QRgb ink) {
  for (int dot = 0; dot < image.width() * image.height(); ++dot)
    if (const QColor colour = image.pixelColor(dot % image.width(), dot / image.width());
        colour.alpha() > 0 && (colour.rgb() & 0xFFFFFF) != (ink & 0xFFFFFF))
      return false;
  return true;
}

bool Has_Dot(const QImage& image, const QColor& ink) {
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixelColor(x, y) == ink) return true;
  return false;
}

TEST(Image_List, Has_Different_Pictures_By_Number) {
  for (const auto& [name, count] :
       {std::pair("P3_Enabled", 21), {"P3_Disabled", 21}, {"TaskHome_Enabled", 1}, {"p3_enabled", 0}}) {
    const TImage_List list(name);
    ASSERT_EQ(list.Count(), count) << name;
    std::set<QByteArray> pictures;
    for (int image = -1; image < count; ++image) {
      const QImage drawn = Drawn(list, image, Qt::black);
      pictures.emplace(reinterpret_cast<const char*>(drawn.constBits()), drawn.sizeInBytes());
    }
    EXPECT_EQ(pictures.size(), static_cast<std::size_t>(count) + 1) << name << ", and nothing for none";
    EXPECT_TRUE(list.Icon(count).isNull());
  }
}

TEST(Image_List, Draws_In_The_Given_Ink_At_The_Scale_Of_The_Device) {
  const TImage_List list("P3_Enabled"), disabled("P3_Disabled");
  for (int image = 0; image < list.Count(); ++image) {
    EXPECT_TRUE(Has_Dot(Drawn(list, image, Qt::black, 2), Qt::black)) << image;
    EXPECT_TRUE(Has_Dot(Drawn(list, image, Qt::white, 2), Qt::white)) << image;
  }
  const QRgb black = qRgb(0, 0, 0);
  EXPECT_TRUE(Only(Drawn(disabled, 2, Qt::black), black)) << "the accent of deleting is gone";
  EXPECT_FALSE(Only(Drawn(list, 2, Qt::black), black));
  const QImage fine = Drawn(list, 12, Qt::black, 2);
  EXPECT_NE(fine, Drawn(list, 12, Qt::black).scaled(32, 32)) << "drawn at its size, not stretched";
  Free_Images();
  EXPECT_EQ(Drawn(list, 12, Qt::black, 2), fine) << "made again after having been freed";
}

TEST(Image_List, Icon_Follows_Palette_And_Scale) {
  const QPalette before = QApplication::palette();
  const QIcon icon = TImage_List("P3_Enabled").Icon(16);
  QPalette palette = before;
  const QSize size(TImage_List::Size, TImage_List::Size);
  for (const QColor ink : {QColor(Qt::black), QColor(Qt::white)}) {
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::HighlightedText, Qt::green);
    QApplication::setPalette(palette);
    EXPECT_TRUE(Has_Dot(icon.pixmap(size, 2.0).toImage(), ink));
  }
  EXPECT_EQ(icon.pixmap(size, 2.0).size(), QSize(32, 32));
  EXPECT_TRUE(Has_Dot(icon.pixmap(size, 2.0, QIcon::Selected).toImage(), Qt::green));
  EXPECT_FALSE(Has_Dot(icon.pixmap(size, 2.0, QIcon::Disabled).toImage(), Qt::white));
  QApplication::setPalette(before);
}

}  // namespace
