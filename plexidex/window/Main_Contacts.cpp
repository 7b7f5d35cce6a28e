// The main window's commands on contacts and their folders.

#include "Category_Dialogs.h"
#include "Contact_Dialog.h"
#include "Contacts_Page.h"
#include "Folder_Dialogs.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Page_Place.h"
#include "Template_Dialogs.h"

namespace Plexidex {

using namespace Kt_forms;

bool TMain_Window::Show_Contacts(const TNode& node) {
  if (auto* shown = page.As<TContacts_Page>()) shown->Set_Folder(node.Folder);
  return Display_Book_Page<TContacts_Page>(place, page, node.Book, node.Calendar, [&](TContacts_Page& made) {
    made.Set_Folder(node.Folder);
    // Queued: the page that asks is closed by what it asks for.
    connect(
        &made, &TContacts_Page::Open_Contact, this,
        [this](const QString& key) { Show_Contact(From_Qt(key)); }, Qt::QueuedConnection);
    connect(&made, &TContacts_Page::Contacts_Changed, this, &TMain_Window::Reload_Tree);
  });
}

void TMain_Window::Show_Contact(const std::string& contact) {
  tree->Select(TNode_Kind::Contact, tree->Current().Book, contact);
}

void TMain_Window::Add_Contact() {
  const std::string book = tree->Current().Book;
  const std::string key = book.empty() ? std::string() : New_Contact(this, book, tree->Current().Folder);
  if (key.empty()) return void(Reload_Tree());
  Read_Tree();
  if (!tree->Select(TNode_Kind::Contact, book, key)) Node_Selected();
}

void TMain_Window::Edit_Selected_Contact() {
  if (Edit_Contact(this, tree->Current().Contact)) {
    Refresh();
  } else {
    Reload_Tree();
  }
}

void TMain_Window::Delete_Selected_Contact() {
  const TNode node = tree->Current();
  if (!Delete_Contacts({node.Contact})) return void(Reload_Tree());
  Read_Tree();
  if (!tree->Select(TNode_Kind::Contacts, node.Book)) Node_Selected();
}

void TMain_Window::Edit_Templates_Of_Selected_Book() {
  Edit_Templates(this, tree->Current().Book);
  Refresh();
}

void TMain_Window::Edit_Categories_Of_Selected_Book() {
  Edit_Categories(this, tree->Current().Book);
  Refresh();
}

void TMain_Window::Add_Folder() {
  const TNode node = tree->Current();
  const std::string key = New_Folder(this, node.Book, node.Folder);
  Read_Tree();
  if (key.empty() || !tree->Select(TNode_Kind::Folder, node.Book, key)) Node_Selected();
}

void TMain_Window::Rename_Selected_Folder() {
  Edit_Folder(this, tree->Current().Folder);
  Refresh();
}

void TMain_Window::Remove_Selected_Folder() {
  const TNode node = tree->Current();
  if (!Delete_Folder_After_Asking(node.Folder)) return void(Reload_Tree());
  Read_Tree();
  if (!tree->Select(TNode_Kind::Contacts, node.Book)) Node_Selected();
}

// Those selected in the list where it has the keyboard, or else what is selected in the tree.
void TMain_Window::Move_Selected() {
  const TNode node = tree->Current();
  auto* contacts = page.As<TContact_List_Page>();
  if (contacts && (node.Kind != TNode_Kind::Folder || contacts->isAncestorOf(focusWidget())))
    return contacts->Move();
  if (Move_With_Dialog(this, node.Book, {node.Kind == TNode_Kind::Folder ? node.Folder : node.Contact}))
    Refresh();
}

void TMain_Window::Move_Dropped(const QString& book, const QStringList& keys, const QString& folder) {
  std::vector<std::string> moved;
  for (const QString& key : keys) moved.push_back(From_Qt(key));
  if (Move_Contacts(From_Qt(book), moved, From_Qt(folder))) Refresh();
}

}  // namespace Plexidex
