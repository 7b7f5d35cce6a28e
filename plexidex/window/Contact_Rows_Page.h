#pragma once

#include <QStringList>

#include "Page_Place.h"

class QHBoxLayout;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace Plexidex {

/// A list of what a contact has, with buttons, a menu and keys to add, open, edit and remove one.
class TContact_Rows_Page : public TBook_Page {
  Q_OBJECT

 public:
  void Reload() override;

 protected:
  /// `name` is the list's object name, its buttons are named after `thing`. Without `open_text` Enter edits.
  TContact_Rows_Page(const char* name, const QStringList& headings, const QString& thing,
                     const QString& open_text = {});

  struct TRow {
    QStringList Texts;
    bool Can_Change = true, Can_Open = false;  // what can be opened has its last text as a link
  };
  /// Reads them anew, in order; may throw EData_Error.
  virtual std::vector<TRow> Read_Rows() = 0;
  /// Each may ask the user, and says whether it wrote anything.
  virtual bool Add_Row() = 0;
  virtual bool Edit_Row(std::size_t row) = 0;
  virtual bool Remove_Row(std::size_t row) = 0;
  virtual void Open_Row(std::size_t /*row*/) {}

 private:
  void Set_Buttons();
  void Enter_Row();
  void Run(const std::function<bool()>& act);
  void Run_On_Current(const QAction* command, const std::function<bool(std::size_t)>& act);
  QAction* Add_Command(const char* verb, const QString& text, const QKeySequence& keys, QHBoxLayout* row);

  const QString thing;
  QTreeWidget* list;
  QAction *open = nullptr, *add = nullptr, *edit = nullptr, *remove = nullptr;
  std::vector<TRow> rows;
};

}  // namespace Plexidex
