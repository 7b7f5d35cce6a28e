#pragma once

#include "Host_Dialog.h"

class QListWidget;
class QPushButton;

namespace Plexidex {

/// A list of named things, of which each change is kept at once, with buttons to add, edit and remove them.
class TList_Dialog : public THost_Dialog {
  Q_OBJECT

 protected:
  /// `thing` names the list and the buttons: "Template" gives "Template_List", "New_Template" and so on.
  TList_Dialog(const QString& title, const QString& caption, const QString& thing, const QString& edit_text,
               QWidget* parent);
  bool Save() override { return true; }

  /// Reads the things anew and returns their names, in order. May throw EData_Error.
  virtual QStringList Read_Names() = 0;
  /// The position of a thing by its key, or -1.
  virtual int Position_Of(const std::string& key) const = 0;
  /// Lets the user enter a new one, change one, or remove one after asking. The key of what is to be selected
  /// afterwards, if any.
  virtual std::string Add() = 0;
  virtual std::string Edit(std::size_t position) = 0;
  virtual void Remove(std::size_t position) = 0;

  /// Shows the things at first, at the end of a constructor.
  void Show_Names(const std::string& selected);

 private:
  void Run(const std::function<std::string()>& act);
  void Run_On_Selected(const std::function<std::string(std::size_t position)>& act);

  QListWidget* list;
  QPushButton *edit, *remove;
};

}  // namespace Plexidex
