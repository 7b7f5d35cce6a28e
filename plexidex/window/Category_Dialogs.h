#pragma once

#include <QWidget>
#include <string>
#include <vector>

class QListWidget;

namespace Plexidex {

/// Lets the user add, rename and remove the categories of a book. Each change is kept at once.
void Edit_Categories(QWidget* window, const std::string& book);

/// The categories of a book as boxes to check; new ones can be named here, which are kept with the contact.
class TCategory_Boxes : public QWidget {
  Q_OBJECT

 public:
  /// Reads them; `contact` may be empty. Throws EData_Error.
  TCategory_Boxes(const std::string& book, const std::string& contact);
  void Set_Read_Only();
  /// The keys of those that are checked, inside an update bracket: what is not there yet, or no longer, is
  /// added to the book.
  std::vector<std::string> Keys() const;

 signals:
  void Changed();

 private:
  void Add(const QString& name, const QString& key, bool checked);
  void Enter_New();

  const std::string book;
  QListWidget* boxes;
  QWidget* add;
};

}  // namespace Plexidex
