#pragma once

#include <QMainWindow>
#include <QPointer>
#include <string>

#include "Kt_lists.h"

class QSplitter;
class QTreeWidget;
class QTreeWidgetItem;

namespace Plexidex {

class TUpcoming_Page;

/// The host's window: the books on the left, the entries of the coming weeks of the selected one on the
/// right.
class TMain_Window : public QMainWindow {
  Q_OBJECT

 public:
  TMain_Window();
  ~TMain_Window() override;

  /// Reads the books and what is shown of them again.
  void Refresh();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void Make_Menus();
  void Import();
  void Export();
  void Show_Selected();
  std::string Selected_Book() const;

  QSplitter* splitter;
  QTreeWidget* books;
  TUpcoming_Page* page;
};

}  // namespace Plexidex
