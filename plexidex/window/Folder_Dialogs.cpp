#include "Folder_Dialogs.h"

#include <QLabel>
#include <QTreeWidget>
#include <algorithm>

#include "Contacts.h"
#include "Folders.h"
#include "Host_Dialog.h"
#include "Image_List.h"
#include "In_Quotes.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Name_Dialog.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

void Say_Removed(const std::string& caption) {
  Kt_util_01::Raise_Error(caption, "The folder has been removed.");
}

// A new folder has no key yet. The key, or "" when it was cancelled.
std::string Enter(const std::string& book, TFolder edited, QWidget* window) {
  const TSave_Name save = [&](const std::string& name) -> std::optional<std::string> {
    std::string written = edited.Key;
    // Another program may have removed where it lies, or used the name.
    bool is_there = false, taken = false;
    const bool saved = Update_Host("Folder_Dialogs:Save [KT_Contacts]", [&] {
      is_there = edited.Parent.empty() ? !Calendar_Of_Book(book).empty()
                                       : Find_Folder(book, edited.Parent).has_value();
      taken = is_there && Is_Folder_Name_Taken(book, edited.Parent, name, written);
      if (!is_there || taken) return;
      if (written.empty()) {
        written = Create_Contact(book, name, edited.Parent, Contact_Type_Folder);
      } else {
        is_there = Rename_Contact(written, name);
      }
    });
    if (!saved) return std::string();
    if (taken) return "There is a folder \"" + name + "\" there already; choose another name.";
    if (!is_there) return std::string("The folder has been removed.");
    edited.Key = written;
    return {};
  };
  const QString title = edited.Key.empty() ? QWidget::tr("New Folder") : QWidget::tr("Rename Folder");
  return Enter_Name(window, title, QWidget::tr("folder"), edited.Name, save) ? edited.Key : std::string();
}

// The folders of a book under its contacts, which stand for no folder.
class TMove_Dialog : public THost_Dialog {
 public:
  TMove_Dialog(const std::string& book, const QString& what, QWidget* parent)
      : THost_Dialog(tr("Move to Folder"), parent), tree(new QTreeWidget) {
    setObjectName(QStringLiteral("Move_Dialog"));
    tree->setObjectName(QStringLiteral("Folders"));
    tree->setHeaderHidden(true);
    auto* caption = new QLabel(tr("&Move %1 to:").arg(what));
    caption->setObjectName(QStringLiteral("What"));
    caption->setTextFormat(Qt::PlainText);
    caption->setWordWrap(true);
    caption->setBuddy(tree);
    Form()->addRow(caption);
    Form()->addRow(tree);
    auto* top = new QTreeWidgetItem(tree, {tr("Contacts (no folder)")});
    QList<QTreeWidgetItem*> last{top};
    for (const TFolder& one : List_Folders(book)) {
      last.resize(one.Depth + 1);
      auto* item = new QTreeWidgetItem(last.back(), {To_Qt(one.Name)});
      item->setData(0, Qt::UserRole, To_Qt(one.Key));
      item->setIcon(0, KTReminds::TImage_List("Contacts").Icon(0));
      last.append(item);
    }
    tree->expandAll();
    tree->setCurrentItem(top);
    connect(tree, &QTreeWidget::itemActivated, this, [this] { accept(); });
    constexpr int chars_wide = 45, lines_high = 16;
    tree->setMinimumSize(fontMetrics().averageCharWidth() * chars_wide,
                         fontMetrics().lineSpacing() * lines_high);
    Finish();
  }
  std::string Chosen() const {
    return tree->currentItem() ? From_Qt(tree->currentItem()->data(0, Qt::UserRole).toString())
                               : std::string();
  }

 protected:
  bool Save() override { return true; }

 private:
  QTreeWidget* tree;
};

struct TPlaced {
  std::string Name, Book;
  TFolder Folder;  // its own key, name and parent
};

std::optional<TPlaced> Place_Of(const std::string& key) {
  TTable table(Contacts_Table, "Key", {"DisplayName", "Book", "Parent", "Type"});
  if (!table.FindKey({key}) || table.Integer(table.Field("Type")) == Contact_Type_Calendar) return {};
  TPlaced placed{
      std::string(table.Text(table.Field("DisplayName"))), std::string(table.Text(table.Field("Book"))), {}};
  placed.Folder = {key, placed.Name, std::string(table.Text(table.Field("Parent")))};
  return placed;
}

std::optional<TPlaced> Read_Place(const std::string& key, const std::string& caption) {
  std::optional<TPlaced> place;
  if (Read("Folder_Dialogs:Read_Place [KT_Contacts]", [&] { place = Place_Of(key); }) && !place)
    Say_Removed(caption);
  return place;
}

}  // namespace

std::string New_Folder(QWidget* window, const std::string& book, const std::string& parent) {
  std::string key;
  Read("Folder_Dialogs:New_Folder [KT_Contacts]", [&] {
    if (!May(Owner_Of_Place(book, parent), Access_Create)) return;
    key = Enter(book, {{}, {}, parent}, window);
  });
  return key;
}

bool Edit_Folder(QWidget* window, const std::string& folder) {
  const auto place = Read_Place(folder, "Rename Folder");
  if (!place || !May(folder, Access_Update)) return false;
  return !Enter(place->Book, place->Folder, window).empty();
}

bool Delete_Folder_After_Asking(const std::string& folder) {
  const auto place = Read_Place(folder, "Remove Folder");
  if (!place) return false;
  TFolder_Content content;
  TFolder above;
  bool may = false, sees_above = false;
  if (!Read("Folder_Dialogs:Delete_Folder [KT_Contacts]", [&] {
        may = May_Remove_Folder(folder);
        content = Content_Of_Folder(folder);
        above = Find_Folder(place->Book, place->Folder.Parent).value_or(TFolder{});
        sees_above = Access_Allowed(above.Key, Access_See);
      }))
    return false;
  if (may) {
    std::string question = "Remove the folder " + In_Quotes(place->Name) + "?";
    if (content.Contacts + content.Folders > 0)
      question += " Its contacts and folders are kept and move to " +
                  (above.Key.empty() ? "the top of the book"
                   : sees_above      ? "the folder " + In_Quotes(above.Name)
                                     : "the folder above it") +
                  ".";
    if (Kt_util_01::Raise_Question("Remove Folder", question) != Kt_util_01::Answer_Yes) return false;
    if (!Update_Host("Folder_Dialogs:Delete_Folder [KT_Contacts]", [&] {
          may = May_Remove_Folder(folder);
          if (may) Remove_Folder(folder);
        }))
      return false;
  }
  if (!may) Kt_util_01::Sound(5);
  return may;
}

bool Move_Contacts(const std::string& book, const std::vector<std::string>& keys, const std::string& folder) {
  std::string refused;
  bool allowed = true;
  const bool saved = Update_Host("Folder_Dialogs:Move [KT_Contacts]", [&] {
    // All are looked at first, so that nothing is written when one stays.
    allowed = Access_Allowed(Owner_Of_Place(book, folder), Access_Create) &&
              std::all_of(keys.begin(), keys.end(), May_Be_Moved);
    if (!allowed) return;
    for (const std::string& key : keys) {
      const auto place = Place_Of(key);
      switch (Move_To_Folder(key, folder)) {
        case TMove::Done:
          break;
        case TMove::Gone:
          refused = "The folder, or what was to be moved there, has been removed; nothing was moved.";
          break;
        case TMove::Into_Itself:
          refused = "The folder " + In_Quotes(place->Name) +
                    " cannot be moved into itself or into a folder below it; nothing was moved.";
          break;
        case TMove::Other_Book:
          refused = In_Quotes(place->Name) + " cannot be moved to another book; nothing was moved.";
          break;
      }
      if (!refused.empty()) throw EAlready_Reported();
    }
  });
  if (!allowed) Kt_util_01::Sound(5);
  if (!refused.empty()) Kt_util_01::Raise_Error("Move to Folder", refused);
  return saved && allowed && refused.empty();
}

bool Move_With_Dialog(QWidget* window, const std::string& book, const std::vector<std::string>& keys) {
  std::optional<std::string> folder;
  if (keys.empty() || !Read("Folder_Dialogs:Move [KT_Contacts]", [&] {
        const auto first = Place_Of(keys.front());
        const QString what = keys.size() == 1 && first
                                 ? QLatin1Char('"') + To_Qt(first->Name) + QLatin1Char('"')
                                 : QWidget::tr("%1 contacts").arg(keys.size());
        TMove_Dialog dialog(book, what, window);
        if (dialog.exec() == QDialog::Accepted) folder = dialog.Chosen();
      }))
    return false;
  return folder && Move_Contacts(book, keys, *folder);
}

}  // namespace Plexidex
