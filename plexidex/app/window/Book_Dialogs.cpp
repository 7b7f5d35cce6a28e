#include "Book_Dialogs.h"

#include <QGroupBox>
#include <QLineEdit>
#include <array>

#include "Books.h"
#include "Contacts.h"
#include "Host_Dialog.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

// A book's row by its key; without a key when there is none.
TBook Book_Of(const std::string& key) {
  for (const TBook& book : List_Books()) {
    if (book.Key == key) return book;
  }
  return {};
}

class TBook_Dialog : public THost_Dialog {
 public:
  // A new book has no key yet.
  TBook_Dialog(const TBook& edited, QWidget* parent)
      : THost_Dialog(edited.Key.empty() ? tr("New Book") : tr("Book Set-up"), parent),
        Key(edited.Key),
        name(new QLineEdit(To_Qt(edited.Name))) {
    setObjectName(QStringLiteral("Book_Dialog"));
    name->setObjectName(QStringLiteral("Name"));
    Form()->addRow(tr("&Name of the book:"), name);
    auto* group = new QGroupBox(tr("Labels of the contacts' \"Other\" fields"));
    auto* fields = new QFormLayout(group);
    const TOther_Texts known = Other_Labels(Key);
    for (std::size_t i = 0; i < Other_Fields; ++i) {
      labels[i] = new QLineEdit(To_Qt(known[i]));
      labels[i]->setObjectName(QStringLiteral("Label%1").arg(i + 1));
      fields->addRow(tr("Field &%1:").arg(i + 1), labels[i]);
    }
    Form()->addRow(group);
    setMinimumWidth(fontMetrics().averageCharWidth() * 55);
    Finish();
    name->setFocus();
  }

  std::string Key;

 protected:
  bool Save() override {
    const std::string text = From_Qt(name->text().trimmed());
    TBook same;
    if (text.empty() || (Find_Book(text, same) && same.Key != Key)) {
      Kt_util_01::Raise_Error(From_Qt(windowTitle()), text.empty() ? "A book needs a name."
                                                                   : "There is a book \"" + text +
                                                                         "\" already; choose another name.");
      name->setFocus();
      name->selectAll();
      return false;
    }
    TOther_Texts texts;
    for (std::size_t i = 0; i < Other_Fields; ++i) texts[i] = From_Qt(labels[i]->text().trimmed());
    std::string written = Key;
    const bool saved = Update_Host("Book_Dialogs:Save [KT_Books/KT_Fields]", [&] {
      if (written.empty()) {
        written = Create_Book(text).Key;
      } else {
        Rename_Book(written, text);
      }
      Set_Other_Labels(written, texts);
    });
    if (saved) Key = written;
    return saved;
  }

 private:
  QLineEdit* name;
  std::array<QLineEdit*, Other_Fields> labels{};
};

std::string Run(QWidget* window, const TBook& book) {
  TBook_Dialog dialog(book, window);
  return dialog.exec() == QDialog::Accepted ? dialog.Key : std::string();
}

}  // namespace

bool Set_Up_Book(QWidget* window, const std::string& key) {
  const TBook book = Book_Of(key);
  if (book.Key.empty()) return false;
  if (!Access_Allowed(book.Calendar, Access_Update)) {
    Kt_util_01::Sound(5);
    return false;
  }
  return !Run(window, book).empty();
}

std::string New_Book(QWidget* window) {
  return Run(window, {});
}

bool Delete_Book_After_Asking(const std::string& key) {
  const TBook book = Book_Of(key);
  if (book.Key.empty()) return false;
  if (!Access_Allowed(book.Calendar, Access_Delete)) {
    Kt_util_01::Sound(5);
    return false;
  }
  const std::string question =
      "Delete the book \"" + book.Name +
      "\" with its calendar, its tasks and all its contacts? They cannot be restored.";
  if (Kt_util_01::Raise_Question("Delete Book", question) != Kt_util_01::Answer_Yes) return false;
  return Update_Host("Book_Dialogs:Delete_Book [KT_Books/KT_Contacts/KT_Events/KT_Events_Data/KT_Alarms]",
                     [&] { Delete_Book(key); });
}

}  // namespace Plexidex
