#include "Image_List.h"

#include <QCache>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <string_view>

namespace KTReminds {

namespace {

// Lists store these positions: never renumber.
constexpr const char* View_Images[] = {
    "mark_done", "add_event",  "delete",    "open",       "previous",   "next",     "day_view",
    "week_view", "month_view", "today",     "open_event", "sort",       "reminder", "note",
    "clock",     "holiday",    "open_task", "done_task",  "done_event", "add_task", "all_events"};
constexpr const char* Home_Images[] = {"search"};
constexpr const char* Contact_Images[] = {"folder", "tagged"};

// The colour that stands for the ink in the drawings.
constexpr const char* Placeholder = "#101010";

struct TRendered_Key {
  std::string_view Image;
  QRgb Ink = 0;
  int Pixels = 0;
  bool Enabled = true;
  bool operator==(const TRendered_Key&) const = default;
};

size_t qHash(const TRendered_Key& key, size_t seed) {
  return qHashMulti(seed, QLatin1StringView(key.Image.data(), static_cast<int>(key.Image.size())), key.Ink,
                    key.Pixels, key.Enabled);
}

// Some scales and palettes times all images. Images and not pixmaps, as these may outlive the application
// object.
QCache<TRendered_Key, QImage>& Rendered_Images() {
  static QCache<TRendered_Key, QImage> cache(1000);
  return cache;
}

QImage Render(const TRendered_Key& key, const QColor& ink) {
  QFile file(QStringLiteral(":/icons/") + QString::fromLatin1(key.Image.data()) + QStringLiteral(".svg"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  QSvgRenderer drawing(file.readAll().replace(Placeholder, ink.name().toLatin1()));
  QImage image(key.Pixels, key.Pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawing.render(&painter);
  if (!key.Enabled) {
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), ink);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(image.rect(), QColor(0, 0, 0, 110));
  }
  return image;
}

QImage Rendered(const char* image, const QColor& ink, int pixels, bool enabled) {
  const TRendered_Key key{image, ink.rgb(), pixels, enabled};
  if (const QImage* kept = Rendered_Images().object(key)) return *kept;
  QImage made = Render(key, ink);
  Rendered_Images().insert(key, new QImage(made));
  return made;
}

void Paint(QPainter& painter, const QRect& place, const char* image, const QColor& ink, bool enabled) {
  const int pixels = qRound(place.width() * painter.device()->devicePixelRatioF());
  painter.drawImage(place, Rendered(image, ink, pixels, enabled));
}

class TImage_Engine : public QIconEngine {
 public:
  TImage_Engine(const char* image, bool enabled) : image(image), enabled(enabled) {}

  QIconEngine* clone() const override { return new TImage_Engine(image, enabled); }
  QString key() const override { return QStringLiteral("KTReminds"); }
  QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override {
    const int side = qMin(size.width(), size.height());
    return {side, side};
  }
  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    return {QSize(TImage_List::Size, TImage_List::Size)};
  }
  // The size is in device pixels.
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    return QPixmap::fromImage(
        Rendered(image, Ink(mode), qMin(size.width(), size.height()), enabled && mode != QIcon::Disabled));
  }
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    QRect place(QPoint(), actualSize(rect.size(), mode, state));
    place.moveCenter(rect.center());
    Paint(*painter, place, image, Ink(mode), enabled && mode != QIcon::Disabled);
  }

 private:
  static QColor Ink(QIcon::Mode mode) {
    return QGuiApplication::palette().color(
        QPalette::Active, mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText);
  }

  const char* image;
  bool enabled;
};

}  // namespace

TImage_List::TImage_List(const char* name) {
  const std::string_view list = name;
  if (list == "P3_Enabled" || list == "P3_Disabled") {
    images = View_Images;
    enabled = list == "P3_Enabled";
  } else if (list == "CalHome_Enabled" || list == "TaskHome_Enabled") {
    images = Home_Images;
  } else if (list == "Contacts") {
    images = Contact_Images;
  }
}

const char* TImage_List::Find(int image) const {
  return image >= 0 && image < Count() ? images[static_cast<std::size_t>(image)] : nullptr;
}

QIcon TImage_List::Icon(int image) const {
  const char* found = Find(image);
  return found ? QIcon(new TImage_Engine(found, enabled)) : QIcon();
}

void TImage_List::Draw(QPainter& painter, QPoint top_left, int image, const QColor& ink) const {
  if (const char* found = Find(image))
    Paint(painter, QRect(top_left, QSize(Size, Size)), found, ink, enabled);
}

void Free_Images() {
  Rendered_Images().clear();
}

}  // namespace KTReminds
