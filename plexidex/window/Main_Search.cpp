// The pages for searching, which are shown in place of the page of the selected node.

#include <QKeyEvent>

#include "KTReminds.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Page_Place.h"

namespace Plexidex {

using namespace Kt_forms;
using namespace KTReminds;

namespace {

using TDisplay_Search = bool (*)(QWidget*, TForm_Reference&, const std::string&, bool);

TDisplay_Search Search_Page(int index) {
  switch (index) {
    case Page_Calendar_Search:
      return Display_Simple_Calendar_Search;
    case Page_Contact_Search:
      return Display_Simple_Search;
    case Page_Notes_Search:
      return Display_Simple_Notes_Search;
    case Page_Advanced_Search:
      return Display_Advanced_Search;
    default:
      return nullptr;
  }
}

}  // namespace

void TMain_Window::Display_Host_Page(int index) {
  const TNode node = tree->Current();
  if (node.Book.empty()) return;
  if (const auto display = Search_Page(index)) {
    // Another kind of search begins anew; the same one goes on where it was.
    const std::pair begun(index, node.Book);
    if (!display(place, page, node.Book, begun != last_search)) return;
    last_search = begun;
  } else if (index == Page_Calendar_Results) {
    if (!Display_Calendar_Search_Results(place, page, node.Book, node.Calendar)) return;
  } else {
    return Display_Own_Page(index, node);
  }
  other_page = true;
  Send_Message(page.Get(), umSetActiveControl, 0, 0);
}

// The node's own page, or that of another one of its book.
void TMain_Window::Display_Own_Page(int index, const TNode& node) {
  const auto show = [&](TNode_Kind kind) {
    if (node.Kind != kind) return tree->Select(kind, node.Book);
    if (other_page) Node_Selected();
    return true;
  };
  switch (index) {
    case Page_Day:
      if (show(TNode_Kind::Calendar)) Send_Message(page.Get(), umDisplayForm, Page_Day, 0);
      break;
    case Page_Task_Search:
      if (!show(TNode_Kind::Tasks)) break;
      Send_Message(page.Get(), umDisplayForm, Page_Task_Search, 0);
      Send_Message(page.Get(), umSetActiveControl, 0, 0);
      break;
    case Page_Task_Results:
      if (show(TNode_Kind::Tasks))
        Display_Task_Home_Page(place, page, node.Book, node.Calendar, Page_Task_Results, tool_area);
      break;
    case Page_None:
      Node_Selected();
      break;
    default:
      break;
  }
}

void TMain_Window::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // What the control with the keyboard has no use for is its page's.
      if (QWidget* control = focusWidget()) Send_Message(Get_ParentForm(control), umEnterPressed, 0, 0);
      break;
    case Qt::Key_F3:
      // The home pages have an item for it.
      Display_Host_Page(Page_Contact_Search);
      break;
    default:
      QMainWindow::keyPressEvent(event);
  }
}

}  // namespace Plexidex
