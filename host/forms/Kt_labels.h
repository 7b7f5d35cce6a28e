#pragma once

// Controls that the forms share.

#include <QLabel>
#include <QLineEdit>

namespace Kt_forms {

/// A time of day as text. Up and Down step it by a quarter of an hour when it holds a valid time. What is
/// typed stays as it is; whoever reads it decides whether it is a time.
class TTimeEdit : public QLineEdit {
  Q_OBJECT

 public:
  explicit TTimeEdit(QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

/// A file's path, shortened from the left at its separators to the width there is; the whole path is the tool
/// tip.
class TFileLabel : public QLabel {
  Q_OBJECT

 public:
  explicit TFileLabel(QWidget* parent = nullptr);
  void Set_File(const QString& path);
  const QString& File() const { return file; }
  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Shorten();
  QString file;
};

/// A title that is written shorter where there is no room for the whole of it.
class TTitle_Label : public QLabel {
  Q_OBJECT

 public:
  explicit TTitle_Label(QWidget* parent = nullptr);
  /// The whole title, and shorter ones.
  void Set_Texts(const QStringList& longest_first);
  QString Whole() const { return texts.value(0); }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Choose_Text();
  QStringList texts;
};

/// A link-like label: clicked by the mouse, or by Enter or the space bar while it has the focus. Its colour
/// is that of links, made lighter where the ground is too dark for it.
class TWebLabel : public QLabel {
  Q_OBJECT

 public:
  explicit TWebLabel(QWidget* parent = nullptr);
  explicit TWebLabel(const QString& text, QWidget* parent = nullptr);

 signals:
  void Clicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Look_Like_A_Link();
  void Choose_Colour();
};

}  // namespace Kt_forms
