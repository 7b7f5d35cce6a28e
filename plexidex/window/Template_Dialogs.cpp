#include "Template_Dialogs.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "Book_Dialogs.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "List_Dialog.h"
#include "Templates.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

void Say_Removed(const TTemplate& gone) {
  Kt_util_01::Raise_Error("Contact Templates", "The template \"" + gone.Name + "\" has been removed.");
}

class TTemplate_Dialog : public THost_Dialog {
 public:
  // A new template has no key yet.
  TTemplate_Dialog(const TTemplate& edited, QWidget* parent)
      : THost_Dialog(edited.Key.empty() ? tr("New Template") : tr("Template"), parent),
        Edited(edited),
        name(new QLineEdit(To_Qt(edited.Name))),
        style(new QComboBox) {
    setObjectName(QStringLiteral("Template_Dialog"));
    name->setObjectName(QStringLiteral("Name"));
    style->setObjectName(QStringLiteral("Address_Style"));
    Form()->addRow(tr("&Name of the template:"), name);
    auto* hint =
        new QLabel(tr("Name the fields that its contacts have. One without a name is shown only "
                      "where a contact has something there."));
    hint->setWordWrap(true);
    Form()->addRow(hint);
    auto *left = new QVBoxLayout, *right = new QVBoxLayout;
    Add_Section(left, tr("Texts"), TField_Kind::Text);
    QFormLayout* address = Add_Section(left, tr("Address"), TField_Kind::Address);
    Add_Section(right, tr("Telephones"), TField_Kind::Telephone);
    Add_Section(right, tr("E-mail"), TField_Kind::Mail);
    Add_Section(right, tr("Web"), TField_Kind::Web);
    for (const auto& [value, text] :
         {std::pair(TAddress_Style::International, tr("International: lines as they are written")),
          {TAddress_Style::US, tr("US: street, city, state, ZIP code, country")},
          {TAddress_Style::UK, tr("UK: lines, postcode, country")}})
      style->addItem(text, static_cast<int>(value));
    style->setCurrentIndex(style->findData(static_cast<int>(edited.Address_Style)));
    address->addRow(tr("&Style:"), style);
    auto* sections = new QHBoxLayout;
    for (QVBoxLayout* column : {left, right}) {
      column->addStretch();
      sections->addLayout(column, 1);
    }
    Form()->addRow(sections);
    Finish();
    Guard_Inputs();
  }

  TTemplate Edited;

 protected:
  bool Save() override {
    TTemplate written = Edited;
    written.Name = From_Qt(name->text().simplified());
    if (written.Name.empty()) return Refuse(name, "A template needs a name.");
    for (std::size_t i = 0; i < labels.size(); ++i) written.Labels[i] = From_Qt(labels[i]->text().trimmed());
    written.Address_Style = static_cast<TAddress_Style>(style->currentData().toInt());
    // Another program may have removed it or its book, or used the name.
    bool has_book = true, is_there = true, taken = false;
    const bool saved = Update_Host("Template_Dialogs:Save [KT_Templates]", [&] {
      has_book = !Calendar_Of_Book(written.Book).empty();
      taken = Is_Template_Name_Taken(written.Book, written.Name, written.Key);
      is_there = has_book && (taken || Write_Template(written));
    });
    if (taken)
      return Refuse(name, "There is a template \"" + written.Name + "\" already; choose another name.");
    if (saved && !has_book) {
      Kt_util_01::Raise_Error(From_Qt(windowTitle()),
                              "The book has been removed; the template was not saved.");
    } else if (saved && !is_there) {
      Say_Removed(Edited);
    }
    if (!saved || !is_there) return false;
    Edited = written;
    return true;
  }

 private:
  QFormLayout* Add_Section(QVBoxLayout* column, const QString& title, TField_Kind kind) {
    auto* group = new QGroupBox(title);
    auto* form = new QFormLayout(group);
    const auto count = std::count_if(Template_Fields.begin(), Template_Fields.end(),
                                     [kind](const TTemplate_Field& field) { return field.Kind == kind; });
    int number = 0;
    for (std::size_t i = 0; i < Template_Fields.size(); ++i) {
      if (Template_Fields[i].Kind != kind) continue;
      labels[i] = new QLineEdit(To_Qt(Edited.Labels[i]));
      labels[i]->setObjectName(QStringLiteral("Label%1").arg(Template_Fields[i].Code));
      labels[i]->setAccessibleName(tr("%1, field %2").arg(title).arg(++number));
      constexpr int chars_of_a_label = 20;
      labels[i]->setMinimumWidth(fontMetrics().averageCharWidth() * chars_of_a_label);
      form->addRow(count > 1 ? tr("Field %1:").arg(number) : tr("Field:"), labels[i]);
    }
    column->addWidget(group);
    return form;
  }

  QLineEdit* name;
  std::array<QLineEdit*, Template_Fields.size()> labels{};
  QComboBox* style;
};

class TTemplates_Dialog : public TList_Dialog {
 public:
  TTemplates_Dialog(const TBook& book, QWidget* parent)
      : TList_Dialog(tr("Contact Templates"),
                     tr("&Kinds of contact in \"%1\":")
                         .arg(To_Qt(book.Name).replace(QLatin1Char('&'), QLatin1String("&&"))),
                     QStringLiteral("Template"), tr("&Edit..."), parent),
        book(book) {
    TTemplates_Dialog::Show_Names({});
    Finish();
  }

 protected:
  QStringList Read_Names() override {
    templates = List_Templates(book.Key);
    QStringList names;
    for (const TTemplate& one : templates) names << To_Qt(one.Name);
    return names;
  }
  int Position_Of(const std::string& key) const override {
    const auto found = std::find_if(templates.begin(), templates.end(),
                                    [&](const TTemplate& one) { return one.Key == key; });
    return found == templates.end() ? -1 : static_cast<int>(found - templates.begin());
  }
  std::string Add() override { return Edit_Template(this, {{}, book.Key, {}, {}, {}}); }
  std::string Edit(std::size_t position) override { return Edit_Template(this, templates[position]); }

  // The contacts that have the template get the first of the others.
  void Remove(std::size_t position) override {
    const TTemplate removed = templates[position];
    const auto other = std::find_if(templates.begin(), templates.end(),
                                    [&](const TTemplate& one) { return one.Key != removed.Key; });
    if (other == templates.end())
      return Kt_util_01::Raise_Error("Contact Templates",
                                     "\"" + removed.Name + "\" is the book's last template and stays.");
    const TTemplate instead = *other;
    std::int64_t contacts = 0;
    if (!Read("Template_Dialogs:Remove [KT_Contacts_Data]", [&] { contacts = Contacts_With(removed.Key); }))
      return;
    std::string question = "Remove the template \"" + removed.Name + "\"?";
    if (contacts > 0)
      question += (contacts == 1 ? " The contact that has it gets"
                                 : " The " + std::to_string(contacts) + " contacts that have it get") +
                  std::string(" the template \"") + instead.Name +
                  "\"; what has no field there goes into the notes.";
    if (Kt_util_01::Raise_Question("Contact Templates", question) != Kt_util_01::Answer_Yes) return;
    bool are_there = false;
    TTemplate gone = removed;
    const bool done = Update_Host("Template_Dialogs:Remove [KT_Templates/KT_Contacts_Data]", [&] {
      // As they are now: another program may have changed them.
      const auto from = Find_Template(removed.Key), to = Find_Template(instead.Key);
      are_there = from && to;
      if (from) gone = instead;
      if (are_there) Remove_Template(*from, *to);
    });
    if (done && !are_there) Say_Removed(gone);
  }

 private:
  const TBook book;
  std::vector<TTemplate> templates;
};

}  // namespace

std::string Edit_Template(QWidget* window, const TTemplate& edited) {
  TTemplate_Dialog dialog(edited, window);
  dialog.exec();
  return dialog.Edited.Key;
}

void Edit_Templates(QWidget* window, const std::string& key) {
  TBook book;
  if (!May_Act_On_Book(key, Access_Update, "Contact Templates", book)) return;
  Read("Template_Dialogs:Edit_Templates [KT_Templates]", [&] {
    TTemplates_Dialog dialog(book, window);
    dialog.exec();
  });
}

}  // namespace Plexidex
