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

bool Is_Grey(const QImage& image) {
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (const QRgb dot = image.pixel(x, y); qRed(dot) != qGreen(dot) || qRed(dot) != qBlue(dot))
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
       {std::pair("P3_Enabled", 21), {"P3_Disabled", 21}, {"CalHome_Enabled", 1}, {"TaskHome_Enabled", 1}}) {
    const TImage_List list(name);
    ASSERT_EQ(list.Count(), count) << name;
    std::set<QByteArray> pictures;
    for (int image = 0; image < count; ++image) {
      const QImage drawn = Drawn(list, image, Qt::black);
      EXPECT_NE(drawn, Drawn(list, -1, Qt::black)) << name << image;
      pictures.emplace(reinterpret_cast<const char*>(drawn.constBits()), drawn.sizeInBytes());
    }
    EXPECT_EQ(pictures.size(), static_cast<std::size_t>(count)) << name;
  }
  const TImage_List none("p3_enabled"), list("P3_Enabled");
  EXPECT_EQ(none.Count(), 0);
  for (const int image : {-1, 21}) EXPECT_TRUE(list.Icon(image).isNull());
  EXPECT_TRUE(none.Icon(0).isNull());
  EXPECT_EQ(Drawn(list, 21, Qt::black), Drawn(none, 0, Qt::black));
}

TEST(Image_List, Draws_In_The_Given_Ink_At_The_Scale_Of_The_Device) {
  const TImage_List list("P3_Enabled"), disabled("P3_Disabled");
  for (int image = 0; image < list.Count(); ++image) {
    const QImage black = Drawn(list, image, Qt::black, 2);
    EXPECT_TRUE(Has_Dot(black, Qt::black)) << image;
    EXPECT_TRUE(Has_Dot(Drawn(list, image, Qt::white, 2), Qt::white)) << image;
    EXPECT_EQ(black, Drawn(list, image, Qt::black, 2)) << "the second comes from what was kept";
    EXPECT_TRUE(Is_Grey(Drawn(disabled, image, Qt::black))) << image;
  }
  EXPECT_FALSE(Is_Grey(Drawn(list, 2, Qt::black))) << "the accent of deleting";
  const QImage fine = Drawn(list, 12, Qt::black, 2);
  EXPECT_NE(fine, Drawn(list, 12, Qt::black).scaled(32, 32)) << "drawn at its size, not stretched";
  Free_Images();
  EXPECT_EQ(Drawn(list, 12, Qt::black, 2), fine) << "made again after having been freed";
}

TEST(Image_List, Icon_Follows_Palette_And_Scale) {
  const QPalette before = QApplication::palette();
  const TImage_List list("P3_Enabled");
  const QIcon icon = list.Icon(16);
  QPalette palette = before;
  palette.setColor(QPalette::WindowText, Qt::black);
  palette.setColor(QPalette::HighlightedText, Qt::green);
  QApplication::setPalette(palette);
  const QSize size(TImage_List::Size, TImage_List::Size);
  EXPECT_TRUE(Has_Dot(icon.pixmap(size, 2.0).toImage(), Qt::black));
  palette.setColor(QPalette::WindowText, Qt::white);
  QApplication::setPalette(palette);
  const QPixmap white = icon.pixmap(size, 2.0);
  EXPECT_TRUE(Has_Dot(white.toImage(), Qt::white));
  EXPECT_EQ(white.size(), QSize(32, 32));
  EXPECT_EQ(white.devicePixelRatio(), 2);
  EXPECT_TRUE(Has_Dot(icon.pixmap(size, 2.0, QIcon::Selected).toImage(), Qt::green));
  EXPECT_FALSE(Has_Dot(icon.pixmap(size, 2.0, QIcon::Disabled).toImage(), Qt::white));

  QImage canvas(32, 32, QImage::Format_ARGB32_Premultiplied);
  canvas.setDevicePixelRatio(2);
  canvas.fill(Qt::transparent);
  QPainter painter(&canvas);
  icon.paint(&painter, QRect(QPoint(), size));
  EXPECT_EQ(canvas, Drawn(list, 16, Qt::white, 2)) << "painted at the scale of what it is painted on";
  QApplication::setPalette(before);
}

}  // namespace
