#include "Main_Window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include "Alert_Watch.h"
#include "Backup_Dialogs.h"
#include "Book_Dialogs.h"
#include "Contact_Dialog.h"
#include "Contact_Page.h"
#include "Database.h"
#include "Image_List.h"
#include "KTReminds.h"
#include "Kt_util_01.h"
#include "Navigation_Tree.h"
#include "Page_Place.h"
#include "Start_Page.h"
#include "Transfer.h"
#include "Upcoming_Page.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

// Of a row of tools, so that nothing moves when a page brings some.
int Height_Of_Tools() {
  QToolBar bar;
  bar.setIconSize({KTReminds::TImage_List::Size, KTReminds::TImage_List::Size});
  bar.addAction(QIcon(QPixmap(bar.iconSize())), QString());
  return bar.sizeHint().height();
}

// Leaves room for the frame that the desktop puts around.
QSize First_Size(const QScreen* screen) {
  constexpr int wide = 1000, high = 660, frame = 40;
  return QSize(wide, high).boundedTo(screen->availableSize() - QSize(frame, frame));
}

}  // namespace

TMain_Window::TMain_Window()
    : splitter(new QSplitter),
      tool_area(new QWidget),
      tree(new TNavigation_Tree),
      place(new TPage_Place),
      no_page(new QLabel),
      waiting(new QToolButton),
      backups(new TDaily_Backups(this)) {
  setWindowTitle(QStringLiteral("Plexidex"));
  setObjectName(QStringLiteral("Main_Window"));
  tool_area->setObjectName(QStringLiteral("Tool_Area"));
  auto* tools = new QHBoxLayout(tool_area);
  tools->setContentsMargins(2, 0, 2, 0);
  tools->addStretch();
  tool_area->setFixedHeight(Height_Of_Tools());
  Make_Quick_Search();
  no_page->setObjectName(QStringLiteral("No_Page"));
  no_page->setAlignment(Qt::AlignCenter);
  no_page->setWordWrap(true);
  no_page->setTextFormat(Qt::PlainText);
  place->layout()->addWidget(no_page);
  splitter->addWidget(tree);
  splitter->addWidget(place);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({190, 800});
  splitter->setChildrenCollapsible(false);
  auto* whole = new QWidget;
  auto* layout = new QVBoxLayout(whole);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(tool_area);
  layout->addWidget(splitter, 1);
  setCentralWidget(whole);
  Install_Main_Form(this);
  Make_Menus();
  waiting->setObjectName(QStringLiteral("Waiting_Reminders"));
  waiting->setAutoRaise(true);
  waiting->setDefaultAction(reminders);
  statusBar()->addPermanentWidget(waiting);
  Show_Waiting(0);
  Make_Tree_Menu();
  resize(First_Size(screen()));
  Restore_Place();
  // What other programs change appears while the window is in use.
  constexpr int every_msecs = 3'000;
  auto* look = new QTimer(this);
  connect(look, &QTimer::timeout, this, [this] {
    if (Look_At_Session(isActiveWindow()) && isActiveWindow()) Look_At_Rows(this);
  });
  look->start(every_msecs);
  connect(tree, &TNavigation_Tree::Node_Selected, this, &TMain_Window::Node_Selected);
  connect(tree, &TNavigation_Tree::Node_Clicked_Again, this, [this] {
    if (other_page) return Node_Selected();
    Send_To_Page(umSelectNode, 0);
  });
  connect(tree, &TNavigation_Tree::Node_Entered, this, [this] {
    if (page.Get() && page.Get()->focusProxy()) page.Get()->setFocus();
  });
  // Queued: the drag ends first.
  connect(tree, &TNavigation_Tree::Dropped, this, &TMain_Window::Move_Dropped, Qt::QueuedConnection);
  connect(place, &TPage_Place::Tree_Is_Stale, this, &TMain_Window::Reload_Tree);
  connect(place, &TPage_Place::Display_Page, this, &TMain_Window::Display_Host_Page);
  connect(place, &TPage_Place::Add_Contact, this, &TMain_Window::Add_Contact);
  Install_Contact_Opener({Is_Contact, [this](const std::string& contact) {
                            if (Edit_Contact(Active_Window(), contact)) Refresh();
                          }});
  qApp->installEventFilter(this);
  Read_Tree();
  if (!Select_Start_Node(*tree)) Node_Selected();
}

TMain_Window::~TMain_Window() {
  Install_Contact_Opener({});
  if (TForm* shown = page.Get()) shown->Close_Form();
  Install_Menu_Bar(nullptr, nullptr);
  Install_Main_Form(nullptr);
}

void TMain_Window::Read_Tree() {
  place->Tree_Is_Shown();
  tree->Reload();
}

void TMain_Window::Refresh() {
  Read_Tree();
  Node_Selected();
}

bool TMain_Window::Reload_Tree() {
  const TNode before = tree->Current();
  Read_Tree();
  if (tree->Current() == before) return false;
  Node_Selected();
  return true;
}

void TMain_Window::Node_Selected() {
  const TNode node = tree->Current();
  Set_Actions();
  if (Show_Page(node)) {
    other_page = false;
    setWindowTitle(Title_Of(node.Book_Name));
    Show_Hint_Without_Page();
  }
  Set_Print_Actions();
}

// The page that was shown may have refused to make way: false.
bool TMain_Window::Show_Page(const TNode& node) {
  switch (node.Kind) {
    case TNode_Kind::Calendar:
      return KTReminds::Display_Calendar_Home_Page(place, page, node.Book, node.Calendar, tool_area);
    case TNode_Kind::Tasks:
      return KTReminds::Display_Task_Home_Page(place, page, node.Book, node.Calendar, KTReminds::Page_Tasks,
                                               tool_area);
    case TNode_Kind::Book:
      return Display_Book_Page<TUpcoming_Page>(place, page, node.Book, node.Calendar);
    case TNode_Kind::Contacts:
    case TNode_Kind::Folder:
      return Show_Contacts(node);
    case TNode_Kind::Results:
      return Show_Found_Contacts(node);
    case TNode_Kind::Searches:
      return Show_Search_Page(KTReminds::Page_Advanced_Search, node.Book);
    case TNode_Kind::Filter:
      return Run_Filter(node);
    case TNode_Kind::Contact:
      return Display_Book_Page<TContact_Page>(
          place, page, node.Book, node.Contact, [this](TContact_Page& made) {
            connect(&made, &TContact_Page::Contact_Changed, this, &TMain_Window::Reload_Tree);
          });
    case TNode_Kind::None:
      return !page.Get() || page.Get()->Close_Form();
  }
  return false;
}

void TMain_Window::Show_Hint_Without_Page() {
  no_page->setText(!Has_User() ? tr("Nobody is logged in.")
                   : tree->Was_Read()
                       ? tr("There is no book yet. Choose \"New Book...\" in the Book menu to make one.")
                       : tr("The books cannot be read. Choose \"Refresh\" in the View menu to try again."));
  no_page->setVisible(!page.Get());
}

void TMain_Window::Set_Actions() {
  const TNode node = tree->Current();
  const bool book = node.Kind != TNode_Kind::None, contact = node.Kind == TNode_Kind::Contact,
             folder = node.Kind == TNode_Kind::Folder;
  for (QAction* action : {new_event, new_task, new_contact, import_file, export_book, set_up_book,
                          edit_templates, edit_categories, delete_book, new_folder})
    action->setEnabled(book);
  edit_permissions->setEnabled(book);
  edit_permissions->setVisible(Kt_data_01::DB_Permissions);
  for (QAction* action : search_actions) action->setEnabled(book);
  for (QAction* action : filter_actions) action->setVisible(node.Kind == TNode_Kind::Filter);
  for (QAction* action : {edit_contact, delete_contact}) action->setEnabled(contact);
  for (QAction* action : {rename_folder, remove_folder}) action->setEnabled(folder);
  move_contacts->setEnabled(contact || folder || node.Kind == TNode_Kind::Contacts ||
                            node.Kind == TNode_Kind::Results);
}

std::optional<TSheet_Request> TMain_Window::Shown_Sheet() const {
  const TForm* shown = page.Get();
  if (!shown) return {};
  static constexpr std::pair<int, TSheet_Kind> kinds[] = {{KTReminds::Page_Day, TSheet_Kind::Day},
                                                          {KTReminds::Page_Week, TSheet_Kind::Week},
                                                          {KTReminds::Page_Month, TSheet_Kind::Month},
                                                          {KTReminds::Page_All, TSheet_Kind::List}};
  for (const auto* view : shown->findChildren<KTReminds::TCalendar_View*>()) {
    if (view->Is_Closed() || !view->isVisibleTo(shown)) continue;
    const auto what = view->Shown();
    for (const auto& [number, kind] : kinds) {
      if (number == what.Page)
        return TSheet_Request{kind, what.Owner, what.Whole_Calendar, Kt_util_01::CurrentDate, {}, {}};
    }
  }
  return {};
}

void TMain_Window::Set_Print_Actions() {
  const bool printable = Shown_Sheet().has_value();
  for (QAction* action : print_actions) action->setEnabled(printable);
}

// A page changes its view without the host being told.
bool TMain_Window::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  if ((type == QEvent::Show || type == QEvent::Hide) && qobject_cast<KTReminds::TCalendar_View*>(watched))
    Set_Print_Actions();
  return QMainWindow::eventFilter(watched, event);
}

void TMain_Window::Send_To_Page(int message, qintptr l_param) {
  Send_Message(page.Get(), message, 0, l_param);
}

void TMain_Window::New_Entry(bool task) {
  const bool on_tasks = page.As<KTReminds::TTask_HomePage_Frm>();
  if (!on_tasks && !other_page) return Send_To_Page(umAddContactEvent, task);
  if (on_tasks && task) return Send_To_Page(umAddTask, 0);
  const TNode node = tree->Current();
  const auto edit = task ? KTReminds::Task_Properties : KTReminds::Reminder_Properties;
  edit({}, node.Calendar, node.Book, {}, false);
}

std::string TMain_Window::Page_Name() const {
  char name[256] = "";
  Send_Message(page.Get(), umGetFormName, 0, reinterpret_cast<qintptr>(name));
  return name;
}

void TMain_Window::Add_Book() {
  const std::string key = New_Book(this);
  if (key.empty()) return;
  Read_Tree();
  if (!tree->Select(TNode_Kind::Calendar, key)) Node_Selected();
}

void TMain_Window::Set_Up_Selected_Book() {
  if (Set_Up_Book(this, tree->Current().Book)) {
    Refresh();
  } else {
    Reload_Tree();
  }
}

void TMain_Window::Delete_Selected_Book() {
  Delete_Book_After_Asking(tree->Current().Book);
  Reload_Tree();
}

void TMain_Window::Import() {
  bool imported = false;
  if (Outlives(this, [&] { imported = Import_With_Progress(this, tree->Current().Book_Name); }) && imported)
    Refresh();
}

void TMain_Window::Export() {
  Export_With_Progress(this, tree->Current().Book_Name);
}

bool TMain_Window::event(QEvent* event) {
  if (event->type() != umSettingsCommand) return QMainWindow::event(event);
  switch (static_cast<TMessage*>(event)->LParam) {
    case Settings_Preferences:
      Preferences();
      break;
    case Settings_Book:
      Set_Up_Selected_Book();
      break;
    case Settings_Security:
      Set_Up_Security();
      break;
    case Settings_Users:
      Manage_Users();
      break;
    default:
      break;
  }
  return true;
}

void TMain_Window::closeEvent(QCloseEvent* event) {
  if (Kt_data_01::Update_Is_Open() || (page.Get() && !page.Get()->Ask_Close())) return event->ignore();
  Save_Place();
  if (!quitting && goes_on_hidden && goes_on_hidden()) {
    hide();
    return event->ignore();
  }
  // An editor that was opened from a reminder or the icon asks before it goes.
  if (QWidget* open = QApplication::activeModalWidget()) {
    open->raise();
    open->activateWindow();
    return event->ignore();
  }
  event->accept();
  emit Closed();
}

void TMain_Window::Show_Waiting(int count) {
  reminders->setText(count == 0 ? tr("Re&minders...") : tr("Re&minders (%1)...").arg(count));
  reminders->setIconText(To_Qt(Count_Text(count)));  // which the button shows
  waiting->setVisible(count > 0);
}

void TMain_Window::Install_Background(std::function<bool()> goes_on) {
  goes_on_hidden = std::move(goes_on);
}

void TMain_Window::Quit() {
  quitting = true;
  close();
  quitting = false;
}

bool TMain_Window::Come_Forward() {
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
  return Look_At_Session(true);
}

}  // namespace Plexidex
