#include "Contact_Dialog.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <array>

#include "Books.h"
#include "Contacts.h"
#include "Host_Dialog.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

class TContact_Dialog : public THost_Dialog {
 public:
  // A new contact has no key yet.
  TContact_Dialog(const TContact& edited, QWidget* parent)
      : THost_Dialog(edited.Key.empty() ? tr("New Contact") : tr("Contact"), parent),
        Key(edited.Key),
        book(edited.Book),
        name(new QLineEdit(To_Qt(edited.Name))),
        notes(new QPlainTextEdit) {
    setObjectName(QStringLiteral("Contact_Dialog"));
    name->setObjectName(QStringLiteral("Name"));
    notes->setObjectName(QStringLiteral("Notes"));
    notes->setTabChangesFocus(true);
    Form()->addRow(tr("&Name:"), name);
    const TContact_Details details = Key.empty() ? TContact_Details{} : Read_Contact_Details(Key);
    const TOther_Texts labels = Other_Labels(book);
    for (std::size_t i = 0; i < Other_Fields; ++i) {
      others[i] = new QLineEdit(To_Qt(details.Other[i]));
      others[i]->setObjectName(QStringLiteral("Other%1").arg(i + 1));
      // A label is the user's own text: an ampersand in it is no mnemonic.
      Form()->addRow(To_Qt(labels[i]).replace(QLatin1Char('&'), QLatin1String("&&")) + QLatin1Char(':'),
                     others[i]);
    }
    notes->setPlainText(To_Qt(details.Notes));
    notes->setMinimumHeight(notes->fontMetrics().lineSpacing() * 4);
    Form()->addRow(tr("N&otes:"), notes);
    if (!Key.empty() && !Access_Allowed(Key, Access_Update)) Make_Read_Only();
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    Finish();
    Guard_Inputs();
  }

  std::string Key;

 protected:
  bool Save() override {
    if (name->isReadOnly()) return true;
    const std::string text = From_Qt(name->text().trimmed());
    if (text.empty()) {
      Kt_util_01::Raise_Error("Contact", "A contact needs a name.");
      name->setFocus();
      return false;
    }
    TContact_Details details;
    for (std::size_t i = 0; i < Other_Fields; ++i) details.Other[i] = From_Qt(others[i]->text());
    details.Notes = From_Qt(notes->toPlainText());
    std::string written = Key;
    // Another program may have removed what it belongs to.
    bool is_there = false;
    const bool saved = Update_Host("Contact_Dialog:Save [KT_Contacts/KT_Contacts_Data]", [&] {
      if (written.empty() && !Calendar_Of_Book(book).empty()) written = Create_Contact(book, text);
      is_there = Write_Contact(written, text, details);
    });
    if (saved && !is_there)
      Kt_util_01::Raise_Error("Contact", Key.empty() ? "The book has been removed; the contact was not saved."
                                                     : "The contact has been removed and was not saved.");
    if (!saved || !is_there) return false;
    Key = written;
    return true;
  }

 private:
  void Make_Read_Only() {
    name->setReadOnly(true);
    notes->setReadOnly(true);
    for (QLineEdit* other : others) other->setReadOnly(true);
    Buttons()->button(QDialogButtonBox::Cancel)->hide();
  }

  std::string book;
  QLineEdit* name;
  std::array<QLineEdit*, Other_Fields> others{};
  QPlainTextEdit* notes;
};

std::optional<TContact> Found(const std::string& key) {
  std::optional<TContact> contact;
  Read("Contact_Dialog:Found [KT_Contacts]", [&] { contact = Find_Contact(key); });
  return contact;
}

bool Run(const TContact& contact, QWidget* window, std::string& key) {
  bool confirmed = false;
  return Read("Contact_Dialog:Run [KT_Contacts_Data/KT_Fields]",
              [&] {
                TContact_Dialog dialog(contact, window);
                confirmed = dialog.exec() == QDialog::Accepted;
                if (confirmed) key = dialog.Key;
              }) &&
         confirmed;
}

}  // namespace

bool Is_Contact(const std::string& key) {
  return Found(key).has_value();
}

bool Edit_Contact(QWidget* window, const std::string& contact) {
  const auto found = Found(contact);
  std::string key;
  return found && Run(*found, window, key);
}

std::string New_Contact(QWidget* window, const std::string& book) {
  TContact contact;
  contact.Book = book;
  std::string key;
  Run(contact, window, key);
  return key;
}

}  // namespace Plexidex
