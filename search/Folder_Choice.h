#pragma once

#include <QWidget>
#include <string>

class QCheckBox;
class QComboBox;

namespace KTReminds {

/// Chooses the folder that the current search looks in, and whether in those below it too.
class TFolder_Choice : public QWidget {
  Q_OBJECT

 public:
  explicit TFolder_Choice(QWidget* parent = nullptr);
  /// Reads the folders of a book, and shows what the current search, which must be there, says.
  void Show_Folders(const std::string& book);

 private:
  void Choose();

  QComboBox* folders;
  QCheckBox* sub_folders;
};

}  // namespace KTReminds
