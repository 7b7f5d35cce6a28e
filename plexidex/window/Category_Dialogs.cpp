#include "Category_Dialogs.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

#include "Book_Dialogs.h"
#include "Categories.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "List_Dialog.h"
#include "Name_Dialog.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

std::string Taken(const std::string& name) {
  return "There is a category \"" + name + "\" already; choose another name.";
}

class TCategories_Dialog : public TList_Dialog {
 public:
  TCategories_Dialog(const TBook& book, QWidget* parent)
      : TList_Dialog(tr("Categories"),
                     tr("&Categories of contacts in \"%1\":")
                         .arg(To_Qt(book.Name).replace(QLatin1Char('&'), QLatin1String("&&"))),
                     QStringLiteral("Category"), tr("Rena&me..."), parent),
        book(book.Key) {
    TCategories_Dialog::Show_Names({});
    Finish();
  }

 protected:
  QStringList Read_Names() override {
    categories = List_Categories(book);
    QStringList names;
    for (const TCategory& one : categories) names << To_Qt(one.Name);
    return names;
  }
  int Position_Of(const std::string& key) const override {
    const auto found = std::find_if(categories.begin(), categories.end(),
                                    [&](const TCategory& one) { return one.Key == key; });
    return found == categories.end() ? -1 : static_cast<int>(found - categories.begin());
  }
  std::string Add() override { return Enter({}); }
  std::string Edit(std::size_t position) override { return Enter(categories[position]); }
  void Remove(std::size_t position) override {
    const TCategory removed = categories[position];
    std::int64_t members = 0;
    if (!Read("Category_Dialogs:Remove [KT_Categories_InUse]", [&] { members = Members_Of(removed.Key); }))
      return;
    std::string question = "Remove the category \"" + removed.Name + "\"?";
    if (members > 0)
      question += (members == 1 ? " The contact that belongs"
                                : " The " + std::to_string(members) + " contacts that belong") +
                  std::string(" to it stay without it.");
    if (members == 1) question.replace(question.rfind("stay"), 4, "stays");
    if (Kt_util_01::Raise_Question("Categories", question) != Kt_util_01::Answer_Yes) return;
    Update_Host("Category_Dialogs:Remove [KT_Categories/KT_Categories_InUse]",
                [&] { Remove_Category(removed.Key); });
  }

 private:
  // One without a key is new.
  std::string Enter(const TCategory& edited) {
    std::string key = edited.Key;
    const TSave_Name save = [&](const std::string& name) -> std::optional<std::string> {
      bool has_book = true, taken = false, is_there = true;
      const bool saved = Update_Host("Category_Dialogs:Save [KT_Categories]", [&] {
        has_book = !Calendar_Of_Book(book).empty();
        taken = Is_Category_Name_Taken(book, name, key);
        if (!has_book || taken) return;
        if (edited.Key.empty()) {
          key = Find_Or_Add_Category(book, name);
        } else {
          is_there = Rename_Category(key, name);
        }
      });
      if (!saved) return std::string();
      if (taken) return Taken(name);
      if (!has_book) return std::string("The book has been removed; the category was not saved.");
      if (!is_there) return "The category \"" + edited.Name + "\" has been removed.";
      return {};
    };
    Enter_Name(this, edited.Key.empty() ? tr("New Category") : tr("Rename Category"), tr("category"),
               edited.Name, save);
    return key;
  }

  const std::string book;
  std::vector<TCategory> categories;
};

}  // namespace

void Edit_Categories(QWidget* window, const std::string& key) {
  TBook book;
  if (!May_Act_On_Book(key, Access_Update, "Categories", book)) return;
  Read("Category_Dialogs:Edit_Categories [KT_Categories]", [&] {
    TCategories_Dialog dialog(book, window);
    dialog.exec();
  });
}

TCategory_Boxes::TCategory_Boxes(const std::string& book, const std::string& contact)
    : book(book), boxes(new QListWidget), add(new QPushButton(tr("Ne&w Category..."))) {
  boxes->setObjectName(QStringLiteral("Categories"));
  boxes->setAccessibleName(tr("Categories"));
  boxes->setFlow(QListView::LeftToRight);
  boxes->setWrapping(true);
  boxes->setResizeMode(QListView::Adjust);
  boxes->setTabKeyNavigation(false);
  boxes->setSpacing(2);
  boxes->setSelectionMode(QAbstractItemView::NoSelection);
  // As behind other check boxes, which cannot be seen on the ground of a dark list.
  boxes->viewport()->setAutoFillBackground(false);
  constexpr int lines = 3;
  boxes->setFixedHeight(
      qMax(boxes->minimumSizeHint().height(), (boxes->fontMetrics().lineSpacing() + 8) * lines));
  add->setObjectName(QStringLiteral("New_Category"));
  static_cast<QPushButton*>(add)->setAutoDefault(false);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(boxes, 1);
  layout->addWidget(add, 0, Qt::AlignTop);
  add->setEnabled(Access_Allowed(book, Access_Create));
  const auto member = contact.empty() ? std::vector<TCategory>() : Categories_Of(contact);
  for (const TCategory& one : List_Categories(book))
    Add(To_Qt(one.Name), To_Qt(one.Key), std::find(member.begin(), member.end(), one) != member.end());
  connect(boxes, &QListWidget::itemChanged, this, &TCategory_Boxes::Changed);
  connect(static_cast<QPushButton*>(add), &QPushButton::clicked, this, &TCategory_Boxes::Enter_New);
}

void TCategory_Boxes::Add(const QString& name, const QString& key, bool checked) {
  auto* box = new QListWidgetItem(name);
  box->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
  box->setData(Qt::UserRole, key);
  box->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
  boxes->addItem(box);
}

void TCategory_Boxes::Enter_New() {
  const TSave_Name save = [this](const std::string& name) -> std::optional<std::string> {
    for (int i = 0; i < boxes->count(); ++i) {
      if (Kt_util_01::CompareText(From_Qt(boxes->item(i)->text()), name) == 0) return Taken(name);
    }
    Add(To_Qt(name), {}, true);
    boxes->scrollToBottom();
    emit Changed();
    return {};
  };
  Enter_Name(window(), tr("New Category"), tr("category"), {}, save);
}

void TCategory_Boxes::Set_Read_Only() {
  add->hide();
  for (int i = 0; i < boxes->count(); ++i) boxes->item(i)->setFlags(Qt::ItemIsEnabled);
}

std::vector<std::string> TCategory_Boxes::Keys() const {
  const auto known = List_Categories(book);
  std::vector<std::string> keys;
  for (int i = 0; i < boxes->count(); ++i) {
    const QListWidgetItem* box = boxes->item(i);
    if (box->checkState() != Qt::Checked) continue;
    const std::string key = From_Qt(box->data(Qt::UserRole).toString());
    const bool is_there =
        std::any_of(known.begin(), known.end(), [&](const TCategory& one) { return one.Key == key; });
    keys.push_back(is_there ? key : Find_Or_Add_Category(book, From_Qt(box->text())));
  }
  return keys;
}

}  // namespace Plexidex
