// What forms find of the host's main window: the window itself, its menu bar, and how it opens contacts.

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include "Kt_forms.h"

namespace Kt_forms {

namespace {

QPointer<QWidget>& Installed_Main_Form() {
  static QPointer<QWidget> form;
  return form;
}

struct TMenu_Place {
  QPointer<QMenuBar> Bar;
  QPointer<QAction> Before;
  const TForm* Page = nullptr;  // compared, never followed
  QList<QPointer<QMenu>> Menus;
};

TMenu_Place& Menu_Place() {
  static TMenu_Place place;
  return place;
}

void Take_Out_Menus() {
  TMenu_Place& place = Menu_Place();
  for (const QPointer<QMenu>& menu : place.Menus) {
    if (menu && place.Bar) place.Bar->removeAction(menu->menuAction());
  }
  place.Menus.clear();
  place.Page = nullptr;
}

TContact_Opener& Contact_Opener() {
  static TContact_Opener opener;
  return opener;
}

}  // namespace

QWidget* Active_Window() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  QWidget* main = Installed_Main_Form();
  return main && main->isVisible() ? main->window() : nullptr;
}

QWidget* Main_Form() {
  return Installed_Main_Form();
}

void Install_Main_Form(QWidget* form) {
  Installed_Main_Form() = form;
}

void Install_Menu_Bar(QMenuBar* bar, QAction* before) {
  Take_Out_Menus();
  Menu_Place().Bar = bar;
  Menu_Place().Before = before;
}

void Merge_Menu(TForm* page, const QList<QMenu*>& menus) {
  TMenu_Place& place = Menu_Place();
  if (place.Page == page) return;
  Take_Out_Menus();
  if (!place.Bar) return;
  place.Page = page;
  for (QMenu* menu : menus) {
    place.Bar->insertAction(place.Before, menu->menuAction());
    place.Menus.append(menu);
  }
}

void Unmerge_Menu(const TForm* page) {
  if (Menu_Place().Page == page) Take_Out_Menus();
}

void Install_Contact_Opener(TContact_Opener opener) {
  Contact_Opener() = std::move(opener);
}

bool Can_Open_Contact(const std::string& contact) {
  return Contact_Opener().Can_Open && Contact_Opener().Can_Open(contact);
}

void Open_Contact(const std::string& contact) {
  if (Can_Open_Contact(contact)) Contact_Opener().Open(contact);
}

}  // namespace Kt_forms
