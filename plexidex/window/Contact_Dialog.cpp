#include "Contact_Dialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include "Books.h"
#include "Categories.h"
#include "Category_Dialogs.h"
#include "Contact_Sections.h"
#include "Content_Scroll.h"
#include "Folders.h"
#include "Host_Dialog.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

// "Title", "Title and Fax", "Title, Company and Fax".
std::string Names_Of(const TFitted& fitted) {
  std::string names;
  for (std::size_t i = 0; i < fitted.Left.size(); ++i)
    names += (i == 0 ? "" : i + 1 == fitted.Left.size() ? " and " : ", ") + fitted.Left[i].first;
  return names;
}

class TContact_Dialog : public THost_Dialog {
 public:
  // A new contact has no key yet.
  TContact_Dialog(const TContact& edited, QWidget* parent)
      : THost_Dialog(edited.Key.empty() ? tr("New Contact") : tr("Contact"), parent),
        Key(edited.Key),
        book(edited.Book),
        folder(edited.Folder),
        name(new QLineEdit(To_Qt(edited.Name))),
        kind(new QComboBox),
        scroll(new TContent_Scroll),
        templates(List_Templates(book)),
        others(Other_Labels(book)),
        categories(new TCategory_Boxes(book, Key)) {
    setObjectName(QStringLiteral("Contact_Dialog"));
    name->setObjectName(QStringLiteral("Name"));
    kind->setObjectName(QStringLiteral("Template"));
    Form()->addRow(tr("&Name:"), name);
    Form()->addRow(tr("&Template:"), kind);
    static_cast<QVBoxLayout*>(layout())->insertWidget(1, scroll, 1);
    auto* below = new QFormLayout;
    below->addRow(tr("&Categories:"), categories);
    static_cast<QVBoxLayout*>(layout())->insertLayout(2, below);
    connect(categories, &TCategory_Boxes::Changed, this, [this] { Note_Change(); });
    const TContact_Details details = Key.empty() ? TContact_Details{} : Read_Contact_Details(Key);
    for (std::size_t i = 0; i < templates.size(); ++i) {
      kind->addItem(To_Qt(templates[i].Name));
      if (templates[i].Key == details.Template) shown = static_cast<int>(i);
    }
    kind->setCurrentIndex(shown);
    kind->setEnabled(!templates.empty());
    Lay_Out(details);
    setMinimumWidth(fontMetrics().averageCharWidth() * 65);
    Finish();
    if (!Key.empty() && !Access_Allowed(Key, Access_Update)) Make_Read_Only();
    connect(kind, &QComboBox::currentIndexChanged, this, &TContact_Dialog::Change_Template);
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
    const TContact_Details details = sections->Details();
    std::string written = Key;
    // Another program may have removed what it belongs to.
    bool is_there = false, has_template = true, may_create = true;
    const bool saved = Update_Host("Contact_Dialog:Save [KT_Contacts/KT_Contacts_Data/KT_Templates]", [&] {
      const bool has_book = !Calendar_Of_Book(book).empty();
      has_template = !has_book || details.Template.empty() || Find_Template(details.Template);
      if (!has_template) return;
      if (!written.empty()) {
        is_there = Write_Contact(written, text, details);
        if (is_there) Change_Categories(written, categories->Keys());
      } else if (has_book) {
        const std::string place = Find_Folder(book, folder) ? folder : std::string();
        may_create = Access_Allowed(Owner_Of_Place(book, place), Access_Create);
        if (!may_create) return;
        written = Create_Contact(book, text, place);
        is_there = Write_Contact_Details(written, details);
        Set_Categories(written, categories->Keys());
      }
    });
    if (saved && !has_template) {
      Kt_util_01::Raise_Error(
          "Contact", "The template \"" + Shown_Template().Name + "\" has been removed; choose another one.");
    } else if (saved && !may_create) {
      Kt_util_01::Raise_Error(
          "Contact",
          "The folder has been removed, or its permissions are others now; the contact was "
          "not saved, as you may not make contacts there.");
    } else if (saved && !is_there) {
      Kt_util_01::Raise_Error("Contact", Key.empty() ? "The book has been removed; the contact was not saved."
                                                     : "The contact has been removed and was not saved.");
    }
    if (!saved || !is_there) return false;
    Key = written;
    return true;
  }

 private:
  TTemplate Shown_Template() const {
    return templates.empty() ? TTemplate{} : templates[static_cast<std::size_t>(shown)];
  }

  void Lay_Out(const TContact_Details& details) {
    sections = new TContact_Sections(Shown_Template(), details, others);
    // Frees the earlier ones.
    scroll->setWidget(sections);
    QWidget* before = kind;
    for (auto* input : sections->findChildren<QWidget*>(QRegularExpression(QStringLiteral("^[A-Z]")))) {
      setTabOrder(before, input);
      before = input;
    }
  }

  // What has no field in the other template is kept in the notes, or all stays as it was.
  void Change_Template(int chosen) {
    if (chosen < 0 || chosen == shown) return;
    TContact_Details details = sections->Details();
    const TTemplate& to = templates[static_cast<std::size_t>(chosen)];
    const TFitted fitted = Fit(details.Fields, Shown_Template(), to);
    const std::string question = "The template \"" + to.Name + "\" has no field for " + Names_Of(fitted) +
                                 ". Put what the contact has there into its notes?";
    if (!fitted.Left.empty() && Kt_util_01::Raise_Question("Contact", question) != Kt_util_01::Answer_Yes)
      return kind->setCurrentIndex(shown);
    shown = chosen;
    details.Fields = fitted.Fields;
    details.Notes = Notes_With(std::move(details.Notes), fitted);
    Lay_Out(details);
    Initialise_Form(this);
  }

  void Make_Read_Only() {
    name->setReadOnly(true);
    kind->setEnabled(false);
    sections->Set_Read_Only();
    categories->Set_Read_Only();
    Buttons()->button(QDialogButtonBox::Cancel)->hide();
  }

  const std::string book, folder;
  QLineEdit* name;
  QComboBox* kind;
  TContent_Scroll* scroll;
  const std::vector<TTemplate> templates;
  const TOther_Texts others;
  TCategory_Boxes* categories;
  TContact_Sections* sections = nullptr;
  int shown = 0;
};

std::optional<TContact> Found(const std::string& key) {
  std::optional<TContact> contact;
  Read("Contact_Dialog:Found [KT_Contacts]", [&] { contact = Find_Contact(key); });
  return contact;
}

bool Run(const TContact& contact, QWidget* window, std::string& key) {
  bool confirmed = false;
  return Read("Contact_Dialog:Run [KT_Contacts_Data/KT_Fields/KT_Templates]",
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

std::string New_Contact(QWidget* window, const std::string& book, const std::string& folder) {
  if (!May(Owner_Of_Place(book, folder), Access_Create)) return {};
  TContact contact;
  contact.Folder = folder;
  contact.Book = book;
  std::string key;
  Run(contact, window, key);
  return key;
}

}  // namespace Plexidex
