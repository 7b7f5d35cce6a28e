#include "Contact_Page.h"

#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>

#include "Contact_Details.h"
#include "Contact_Dialog.h"
#include "Contacts.h"
#include "Host_Dialog.h"
#include "Image_List.h"
#include "Journal_Page.h"
#include "KTAccess.h"
#include "KTReminds.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Links_Page.h"
#include "Permissions_Dialog.h"
#include "Tags.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

// As they are stored: never renumber.
enum class TTab { Calendar, Tasks, Links, Journal };

}  // namespace

TContact_Page::TContact_Page()
    : name(new QLabel),
      tag(new QPushButton(KTReminds::TImage_List("Contacts").Icon(1), tr("&Tag"))),
      edit(new QPushButton(tr("E&dit Contact..."))),
      permissions(new QPushButton(tr("Per&missions..."))),
      details(new TContact_Details_View),
      tabs(new QTabBar),
      view_panel(new QWidget) {
  setObjectName(QStringLiteral("Contact_Page"));
  name->setObjectName(QStringLiteral("Contact_Name"));
  edit->setObjectName(QStringLiteral("Edit_Contact"));
  edit->setStatusTip(tr("Allows the contact's name and details to be changed"));
  permissions->setObjectName(QStringLiteral("Contact_Permissions"));
  permissions->setStatusTip(tr("Says who may see, change or delete the contact"));
  tag->setObjectName(QStringLiteral("Tag"));
  tag->setCheckable(true);
  tag->setShortcut(Qt::CTRL | Qt::Key_T);
  tag->setToolTip(tr("Tag (%1)").arg(tag->shortcut().toString(QKeySequence::NativeText)));
  tag->setStatusTip(tr("Marks the contact, for yourself alone"));
  QFont large = name->font();
  large.setBold(true);
  large.setPointSizeF(large.pointSizeF() * 1.3);
  name->setFont(large);
  name->setWordWrap(true);
  auto* top = new QHBoxLayout;
  top->addWidget(name, 1);
  top->addWidget(tag);
  top->addWidget(edit);
  top->addWidget(permissions);
  auto* head = new QVBoxLayout;
  head->setContentsMargins(8, 6, 8, 0);
  head->addLayout(top);
  head->addWidget(details);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(head);
  tabs->setObjectName(QStringLiteral("Tabs"));
  tabs->setAccessibleName(tr("Calendar, tasks, links or journal"));
  tabs->setDrawBase(false);
  tabs->setExpanding(false);
  tabs->addTab(tr("C&alendar"));
  tabs->addTab(tr("Tas&ks"));
  tabs->addTab(tr("&Links"));
  tabs->addTab(tr("&Journal"));
  layout->addWidget(tabs);
  layout->addWidget(view_panel, 1);
  Initialise_Form(this);
  tabs->setCurrentIndex(
      qBound(0, static_cast<int>(Kt_util_01::Read_Integer("General", "Contact Tab", 0)), tabs->count() - 1));
  connect(tabs, &QTabBar::currentChanged, this, [this](int tab) {
    Kt_util_01::Write_Integer("General", "Contact Tab", tab);
    Show_Tab();
  });
  connect(tag, &QPushButton::clicked, this, &TContact_Page::Tag);
  connect(edit, &QPushButton::clicked, this, &TContact_Page::Edit);
  connect(permissions, &QPushButton::clicked, this, &TContact_Page::Permit);
}

void TContact_Page::Show_Details() {
  const auto contact = Kt_data_01::Find_Contact(Owner());
  name->setText(contact ? To_Qt(contact->Name) : QString());
  contact ? details->Show_Details(*contact) : details->Clear();
}

void TContact_Page::Show_Contact() {
  Kt_data_01::Read("Contact_Page:Reload [KT_Contacts/KT_Contacts_Data/KT_Templates]", [this] {
    Show_Details();
    tag->setChecked(Kt_data_01::Is_Tagged(Owner()));
    permissions->setVisible(Kt_data_01::DB_Permissions);
    edit->setText(Kt_data_01::Access_Allowed(Owner(), Kt_data_01::Access_Update) ? tr("E&dit Contact...")
                                                                                 : tr("&Open Contact..."));
  });
}

void TContact_Page::Reload() {
  Rows_Are_Shown();
  Show_Contact();
  Show_Tab();
}

void TContact_Page::Show_Tab() {
  switch (static_cast<TTab>(tabs->currentIndex())) {
    case TTab::Tasks:
      KTReminds::Display_Task_Home_Page(view_panel, view, Book(), Owner(), KTReminds::Page_Tasks, nullptr);
      break;
    case TTab::Links:
      Display_Book_Page<TLinks_Page>(view_panel, view, Book(), Owner());
      break;
    case TTab::Journal:
      Display_Book_Page<TJournal_Page>(view_panel, view, Book(), Owner());
      break;
    default:
      Show_View(static_cast<int>(Kt_util_01::Read_Integer("General", "Contact View", KTReminds::Page_Day)));
  }
}

void TContact_Page::Tag() {
  Change_In_Place([this] {
    if (!Update_Host("Contact_Page:Tag [KT_Flags]",
                     [this] { Kt_data_01::Set_Tagged(Owner(), tag->isChecked()); }))
      tag->setChecked(!tag->isChecked());
  });
}

void TContact_Page::Show_View(int page) {
  if (!KTReminds::Is_Calendar_View(page)) page = KTReminds::Page_Day;
  if (KTReminds::Display_Calendar_View(page, view_panel, view, Book(), Owner(), false))
    Kt_util_01::Write_Integer("General", "Contact View", page);
}

void TContact_Page::Edit() {
  bool changed = false;
  if (!Outlives(this, [&, contact = Owner()] { changed = Edit_Contact(window(), contact); }) || !changed)
    return;
  Reload();
  emit Contact_Changed();
}

void TContact_Page::Permit() {
  if (Outlives(this, [&, book = Book(), contact = Owner()] {
        Edit_Permissions(window(), book, contact, KTAccess::Kind_Contact);
      }))
    Look_At_Rows();
}

bool TContact_Page::FormCloseQuery() {
  return !view.Get() || view.Get()->Ask_Close();
}

void TContact_Page::FormClose() {
  if (TForm* shown = view.Get()) shown->Close_Form();
}

void TContact_Page::Handle_Message(const TMessage& message) {
  if (message.Number() == umGetFormName && view.Get()) {
    Send_Message(view.Get(), umGetFormName, 0, message.LParam);
  } else if (message.Number() == umDisplayForm && message.WParam == KTReminds::Page_Task_Search) {
    Send_Message(view.Get(), umDisplayForm, message.WParam, 0);
    Send_Message(view.Get(), umSetActiveControl, 0, 0);
  } else if (message.Number() == umDisplayForm && message.WParam == KTReminds::Page_Task_Results) {
    KTReminds::Display_Task_Home_Page(view_panel, view, Book(), Owner(), KTReminds::Page_Task_Results,
                                      nullptr);
  } else if (message.Number() == umDisplayForm) {
    Show_View(static_cast<int>(message.WParam));
  } else {
    TBook_Page::Handle_Message(message);
  }
}

}  // namespace Plexidex
