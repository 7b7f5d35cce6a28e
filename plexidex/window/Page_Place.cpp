#include "Page_Place.h"

#include <QVBoxLayout>

#include "KTReminds.h"

namespace Plexidex {

using namespace Kt_forms;

TPage_Place::TPage_Place(QWidget* parent) : TForm(parent) {
  setObjectName(QStringLiteral("Page_Place"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
}

void TPage_Place::Handle_Message(const TMessage& message) {
  if (message.Number() == umDisplayForm) emit Display_Page(static_cast<int>(message.WParam));
  if (message.Number() == umAddContact) emit Add_Contact();
}

void TBook_Page::Set_Keys(const std::string& book, const std::string& owner) {
  book_key = book;
  owner_key = owner;
}

void TBook_Page::New_Entry(bool task) {
  if (book_key.empty()) return;
  const auto edit = task ? KTReminds::Task_Properties : KTReminds::Reminder_Properties;
  bool made = false;
  // The keys are copied: the page may be shown for another book while the editor is open.
  if (Outlives(this, [&, book = book_key, owner = owner_key] { made = edit({}, owner, book, {}, false); }) &&
      made)
    Reload();
}

void TBook_Page::Handle_Message(const TMessage& message) {
  switch (message.Number()) {
    case umRefreshDisplay:
    case umDateChanged:
    case umSelectNode:
      Reload();
      break;
    case umAddContactEvent:
      New_Entry(message.LParam == 1);
      break;
    case umAddContact:
      Post_Message(Get_ParentForm(this), umAddContact, 0, message.LParam);
      break;
    case umGetFormName:
      Copy_Form_Name(*this, message);
      break;
    default:
      break;
  }
}

}  // namespace Plexidex
