#include "Book_Dialogs.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <array>

#include "Category_Dialogs.h"
#include "Contacts.h"
#include "Host_Dialog.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Rights.h"
#include "Template_Dialogs.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

void Say_Removed(const std::string& caption) {
  Kt_util_01::Raise_Error(caption, "The book has been removed.");
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
    if (!Key.empty()) {
      auto* templates = new QPushButton(tr("Contact &Templates..."));
      templates->setObjectName(QStringLiteral("Templates"));
      templates->setAutoDefault(false);
      connect(templates, &QPushButton::clicked, this, [this] { Edit_Templates(this, Key); });
      auto* categories = new QPushButton(tr("&Categories..."));
      categories->setObjectName(QStringLiteral("Categories"));
      categories->setAutoDefault(false);
      connect(categories, &QPushButton::clicked, this, [this] { Edit_Categories(this, Key); });
      auto* both = new QHBoxLayout;
      both->addWidget(templates);
      both->addWidget(categories);
      Form()->addRow(both);
    }
    setMinimumWidth(fontMetrics().averageCharWidth() * 55);
    Finish();
    Guard_Inputs();
  }

  std::string Key;

 protected:
  bool Save() override {
    const std::string text = From_Qt(name->text().trimmed());
    if (text.empty()) return Refuse(name, "A book needs a name.");
    TOther_Texts texts;
    for (std::size_t i = 0; i < Other_Fields; ++i) texts[i] = From_Qt(labels[i]->text().trimmed());
    std::string written = Key;
    // Another program may have removed the book, or used the name.
    bool is_there = true, taken = false;
    const bool saved = Update_Host("Book_Dialogs:Save [KT_Books/KT_Fields]", [&] {
      const auto same = Find_Book(text);
      taken = same && same->Key != Key;
      if (taken) return;
      if (written.empty()) {
        written = Create_Book(text).Key;
      } else {
        is_there = Rename_Book(written, text);
      }
      if (is_there) Set_Other_Labels(written, texts);
    });
    if (taken) return Refuse(name, "There is a book \"" + text + "\" already; choose another name.");
    if (saved && !is_there) Say_Removed(From_Qt(windowTitle()));
    if (!saved || !is_there) return false;
    Key = written;
    return true;
  }

 private:
  QLineEdit* name;
  std::array<QLineEdit*, Other_Fields> labels{};
};

std::string Run(QWidget* window, const TBook& book) {
  std::string key;
  Read("Book_Dialogs:Run [KT_Fields]", [&] {
    TBook_Dialog dialog(book, window);
    if (dialog.exec() == QDialog::Accepted) key = dialog.Key;
  });
  return key;
}

}  // namespace

bool May_Act_On_Book(const std::string& key, int level, const std::string& caption, TBook& book) {
  bool allowed = false;
  if (key.empty() || !Read("Book_Dialogs:May_Act [KT_Books/KT_Contacts/KT_Rights]", [&] {
        for (const TBook& candidate : List_Books()) {
          if (candidate.Key == key) book = candidate;
        }
        allowed = !book.Key.empty() &&
                  (level == Access_Delete ? May_Delete_Book(book) : Access_Allowed(book.Key, level));
      }))
    return false;
  if (book.Key.empty()) {
    Say_Removed(caption);
  } else if (!allowed) {
    Kt_util_01::Sound(5);
  }
  return allowed;
}

bool Set_Up_Book(QWidget* window, const std::string& key) {
  TBook book;
  return May_Act_On_Book(key, Access_Update, "Book Set-up", book) && !Run(window, book).empty();
}

std::string New_Book(QWidget* window) {
  return May(std::string(Whole_Database), Access_Create) ? Run(window, {}) : std::string();
}

bool Delete_Book_After_Asking(const std::string& key) {
  TBook book;
  if (!May_Act_On_Book(key, Access_Delete, "Delete Book", book)) return false;
  const std::string question =
      "Delete the book \"" + book.Name +
      "\" with its calendar, its tasks and all its contacts? They cannot be restored.";
  if (Kt_util_01::Raise_Question("Delete Book", question) != Kt_util_01::Answer_Yes) return false;
  return Update_Host("Book_Dialogs:Delete_Book [KT_Books/KT_Contacts/KT_Events/KT_Events_Data/KT_Alarms]",
                     [&] { Delete_Book(key); });
}

}  // namespace Plexidex
