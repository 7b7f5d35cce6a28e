#include "Image_List.h"

#include <set>

#include "Editor_Fixture.h"

namespace {

QImage Drawn(const TImage_List& list, int image, const QColor& ink, qreal ratio = 1) {
  QImage canvas(QSize(TImage_List::Size, TImage_List::Size) * ratio, QImage::Format_ARGB32_Premultiplied);
  canvas.setDevicePixelRatio(ratio);
  canvas.fill(Qt::transparent);
  QPainter painter(&canvas);
  list.Draw(painter, {}, image, ink);
  return canvas;
}

/// The colours of all dots that are opaque, or whatever their opacity.
std::set<QRgb> Colours(const QImage& image, int least_opacity = 255) {
  std::set<QRgb> colours;
  for (int dot = 0; dot < image.width() * image.height(); ++dot) {
    const QColor colour = image.pixelColor(dot % image.width(), dot / image.width());
    if (colour.alpha() >= least_opacity) colours.insert(colour.rgb());
  }
  return colours;
}

constexpr QRgb Black = qRgb(0, 0, 0), White = qRgb(255, 255, 255);

TEST(Image_List, Has_Different_Pictures_By_Number) {
  for (const auto& [name, count] : {std::pair("P3_Enabled", 21),
                                    {"P3_Disabled", 21},
                                    {"TaskHome_Enabled", 1},
                                    {"Contacts", 2},
                                    {"p3_enabled", 0}}) {
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
  for (int image = 0; image < list.Count(); ++image)
    EXPECT_TRUE(Colours(Drawn(list, image, Qt::white, 2)).count(White)) << image;
  EXPECT_EQ(Colours(Drawn(disabled, 2, Qt::black), 1), std::set{Black}) << "the accent of deleting is gone";
  EXPECT_GT(Colours(Drawn(list, 2, Qt::black), 1).size(), 1u);
  const QImage fine = Drawn(list, 12, Qt::black, 2);
  EXPECT_NE(fine, Drawn(list, 12, Qt::black).scaled(32, 32)) << "drawn at its size, not stretched";
  Free_Images();
  EXPECT_EQ(Drawn(list, 12, Qt::black, 2), fine) << "made again after having been freed";
}

TEST(Image_List, Icon_Follows_Palette_And_Scale) {
  const TPalette_Scope back(false);
  const QIcon icon = TImage_List("P3_Enabled").Icon(16);
  QPalette palette = QApplication::palette();
  palette.setColor(QPalette::HighlightedText, Qt::green);
  const auto colours = [&icon](QIcon::Mode mode) {
    return Colours(icon.pixmap(QSize(TImage_List::Size, TImage_List::Size), 2.0, mode).toImage());
  };
  for (const QRgb ink : {Black, White}) {
    palette.setColor(QPalette::WindowText, QColor(ink));
    QApplication::setPalette(palette);
    EXPECT_TRUE(colours(QIcon::Normal).count(ink));
  }
  EXPECT_TRUE(colours(QIcon::Selected).count(qRgb(0, 255, 0)));
  EXPECT_FALSE(colours(QIcon::Disabled).count(White));
}

}  // namespace
