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
  const QPointer<TBook_Page> alive = this;
  // Copied: the page may be shown for another book while the editor is open.
  const std::string book = book_key, owner = owner_key;
  const bool made = task ? KTReminds::Task_Properties({}, owner, book, {}, false)
                         : KTReminds::Reminder_Properties({}, owner, book, {}, false);
  if (made && alive && !Is_Closed()) Reload();
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
