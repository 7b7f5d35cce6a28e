#pragma once

#include <string>

#include "Image_List.h"
#include "Kt_forms.h"

class QAction;
class QMenu;
class QToolBar;

namespace KTReminds {

/// What a home page calls its things, and how it differs from the others.
struct THome_Texts {
  const char* Images;                     // name of the image list, whose first image stands for the search
  const char* Tool_Bar;                   // name of the bar of the search tool
  QString Search_Hint;                    // of the search tool, "short|long"
  int Search_Page;                        // the page for searching, which the form around the home page shows
  QString Permissions, Permissions_Hint;  // of the menu item
  std::string Permissions_Title;          // of the permissions page
  const char* Empty_Name;  // what answers umGetFormName while no page is shown; null for the page's own name
};

/// The frame of a home page: a bar of things to do beside a panel in which one page at a time is shown, a
/// menu in the host's menu bar and a search tool in its tool area. A home page adds its layout and the pages
/// that it shows.
class THome_Page : public Kt_forms::TForm {
  Q_OBJECT

 public:
  ~THome_Page() override;

  /// `node_key` is the book, `owner_key` the record whose rights count and that owns new entries.
  void Set_Keys(const std::string& node_key, const std::string& owner_key);
  /// Reads anew what is shown.
  virtual void DoRefresh() = 0;
  /// Shows a page by its number; a number that is none of its pages' empties the panel.
  virtual void Show_Page(int Index);

  /// Where the home pages that are made from now on put their tools; null for those that are part of another
  /// page, which have neither tools nor a navigation bar.
  static void Set_Tool_Panel(QWidget* panel);

 protected:
  struct TControls {
    QWidget* Navigation_Bar;      // shown beside tools unless the user has done without
    QWidget* Setup_Panel;         // gets the page that is shown
    QList<QWidget*> Permissions;  // shown where there are permissions
  };

  explicit THome_Page(const THome_Texts& texts);
  /// To be called in a home page's constructor, once its layout is there.
  void Set_Up(const TControls& controls);

  /// The page that is shown; null when there is none.
  Kt_forms::TForm* Current() const { return current.Get(); }
  void Close_Current();
  /// Asks the page that is shown whether it may close, upon which it saves what it holds.
  bool Save_Data();
  void Search();
  /// Whether the user may not make entries for the owner. A failed look is reported and counts as a refusal.
  bool Is_Read_Only() const;

  void FormActivate() override;
  void FormDeactivate() override;
  bool FormCloseQuery() override;
  void FormClose() override;
  /// umDisplayForm, umGetFormName and umSetActiveControl, which go on to the page shown, and umAddContact,
  /// which is the host's.
  void Handle_Message(const Kt_forms::TMessage& message) override;

  std::string NodeKey, OwnerKey;
  Kt_forms::TForm_Reference current;
  TControls controls{};

 private:
  void Make_Tool_Bar();
  void Make_Menu();
  void Show_Permissions_Page();
  void Tools1Click();

  const THome_Texts texts;
  const TImage_List EnabledIcons;
  QPointer<QToolBar> tool_bar;  // lies in the host's tool area, but is the page's; null without one
  QMenu* Tools1 = nullptr;
  QAction *Administration1 = nullptr, *ChangePassword1 = nullptr;
};

/// What the entry point of each home page does up to its first refresh: the page, embedded and with its keys,
/// or null when the page in the way refuses to close.
template <class TPage>
TPage* Embed_Home_Page(QWidget* parent, Kt_forms::TForm_Reference& form, const std::string& node_key,
                       const std::string& owner_key, QWidget* tool_panel) {
  THome_Page::Set_Tool_Panel(tool_panel);
  auto* page = form.Reuse_Or_Replace<TPage>();
  if (!page) return nullptr;
  Kt_forms::Embed_Page(page, parent);
  page->Set_Keys(node_key, owner_key);
  return page;
}

}  // namespace KTReminds
