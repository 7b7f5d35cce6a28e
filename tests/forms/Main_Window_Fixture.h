#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Editor_Fixture.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"

using Plexidex::TNode_Kind;

/// With a book and, when it has been opened, the main window on it.
struct Main_Window : TEditor_Fixture {
  Plexidex::TNavigation_Tree& Open() {
    window.emplace().show();
    return window->Tree();
  }
  // Chooses an item of the menu bar and acts on the dialog that it opens, if any.
  void Choose(const char* item, const std::function<void(QWidget*)>& act = {}) {
    const auto choose = [&] {
      for (QAction* action : window->findChildren<QAction*>())
        if (action->text() == QLatin1String(item)) action->trigger();
      // A page hands some commands on to the host.
      Settle();
    };
    act ? With_Dialog(act, choose) : choose();
  }
  static void Press_Cancel(QWidget* dialog) {
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
  }
  // The entries of the coming weeks, each with its time.
  std::string Shown() {
    QStringList shown;
    for (QTreeWidgetItemIterator i(Control<QTreeWidget>(&*window, "Entries")); *i; ++i)
      if ((*i)->parent())
        shown << QStringList{(*i)->text(0), (*i)->text(1), (*i)->text(2)}.join(QLatin1Char(' '));
    return shown.join(QLatin1Char('|')).toStdString();
  }
  /// The page that is shown, and the menus.
  std::string Page() const {
    std::string menus;
    for (const QAction* action : window->menuBar()->actions()) menus += ' ' + action->text().toStdString();
    return window->Page_Name() + menus;
  }
  /// The book that is selected, the window's title and the page.
  std::string State() {
    return window->Tree().Current().Book_Name + "/" + window->windowTitle().toStdString() + "/" +
           window->Page_Name();
  }
  /// The tree's texts below a node, in its order, as far as they have been read.
  static std::string Below(const QTreeWidgetItem* node) {
    QStringList texts;
    for (int i = 0; i < node->childCount(); ++i) texts << node->child(i)->text(0);
    return texts.join(QLatin1Char('|')).toStdString();
  }

  const std::string book = database.Book().Key;
  std::optional<Plexidex::TMain_Window> window;
};
