#pragma once

#include <QScrollArea>

namespace Plexidex {

/// Scrolls its content up and down once that is higher than it may be; as high as the content otherwise.
class TContent_Scroll : public QScrollArea {
  Q_OBJECT

 public:
  explicit TContent_Scroll(QWidget* parent = nullptr);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  /// How high it may be by itself.
  virtual int Most_High() const;
  void resizeEvent(QResizeEvent* event) override;
};

}  // namespace Plexidex
