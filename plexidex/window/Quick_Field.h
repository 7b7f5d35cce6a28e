#pragma once

#include <QLineEdit>
#include <QPointer>
#include <map>
#include <string>

#include "Quick_Search.h"

class QTimer;
class QTreeWidget;
class QTreeWidgetItem;

namespace Plexidex {

/// Finds what is typed, in events, tasks and contacts, and lists it below itself, where Down, Up and Enter
/// choose. Escape empties it and gives the keyboard back.
class TQuick_Field : public QLineEdit {
  Q_OBJECT

 public:
  TQuick_Field();

 signals:
  void Open_Entry(bool task, const QString& key, const QString& owner, const QString& book);
  void Open_Contact(const QString& key, const QString& book);
  /// More is found than is listed: all of a group (TQuick_Search::TGroup) in a book.
  void Show_All(int group, const QString& text, const QString& book);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Make_List();
  void Look();
  void Go_On();
  void Show_Found();
  void Add_Group(KTReminds::TQuick_Search::TGroup group);
  QTreeWidgetItem* Add_Line(const QString& text, bool choosable);
  void Place_List();
  void Close_List();
  void Move(int by);
  void Choose(const QTreeWidgetItem* item);

  QTimer* slices;
  QPointer<QTreeWidget> list;  // of the window around
  QPointer<QWidget> before;    // had the keyboard
  KTReminds::TQuick_Search search;
  std::map<std::string, QString> books;  // names by keys
  bool goes_on = false;
};

}  // namespace Plexidex
