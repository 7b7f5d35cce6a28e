#include "Links_Page.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "Contacts.h"
#include "Host_Dialog.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Web_Links.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

void Say_Gone(const std::string& title) {
  Kt_util_01::Raise_Error("Link", "The link \"" + title + "\" has been removed.");
}

class TLink_Dialog : public THost_Dialog {
 public:
  // A new link has no text yet.
  TLink_Dialog(const std::string& contact, const TLink& edited, QWidget* parent)
      : THost_Dialog(edited == TLink{} ? tr("New Link") : tr("Link"), parent),
        contact(contact),
        edited(edited),
        title(new QLineEdit(To_Qt(edited.Title))),
        target(new QLineEdit(To_Qt(edited.Target))) {
    setObjectName(QStringLiteral("Link_Dialog"));
    title->setObjectName(QStringLiteral("Title"));
    target->setObjectName(QStringLiteral("Target"));
    auto* browse = new QPushButton(tr("&Browse..."));
    browse->setObjectName(QStringLiteral("Browse"));
    browse->setAutoDefault(false);
    auto* file = new QHBoxLayout;
    file->addWidget(target, 1);
    file->addWidget(browse);
    Form()->addRow(tr("&Title:"), title);
    auto* caption = new QLabel(tr("&File or web address:"));
    caption->setBuddy(target);
    Form()->addRow(caption, file);
    connect(browse, &QPushButton::clicked, this, &TLink_Dialog::Browse);
    setMinimumWidth(fontMetrics().averageCharWidth() * 75);
    Finish();
    Guard_Inputs();
  }

 protected:
  bool Save() override {
    TLink link{From_Qt(title->text().simplified()), From_Qt(target->text().trimmed())};
    if (link.Target.empty() && link.Title.empty())
      return Refuse(target, "A link needs a title, a file or a web address.");
    if (link.Title.empty()) link.Title = From_Qt(QFileInfo(To_Qt(link.Target)).fileName());
    if (link.Title.empty()) link.Title = link.Target;
    bool is_there = false;
    const bool saved = Update_Host("Links_Page:Save [KT_Links]", [&] {
      is_there = Find_Contact(contact).has_value();
      if (!is_there) return;
      if (edited == TLink{}) {
        Add_Link(contact, link);
      } else {
        is_there = Change_Link(contact, edited, link);
      }
    });
    if (saved && !is_there) Say_Gone(edited.Title.empty() ? link.Title : edited.Title);
    return saved && is_there;
  }

 private:
  void Browse() {
    QString file;
    if (!Outlives(this, [&] { file = QFileDialog::getOpenFileName(this, tr("File to Link")); }) ||
        file.isEmpty())
      return;
    target->setText(QDir::toNativeSeparators(file));
    if (title->text().isEmpty()) title->setText(QFileInfo(file).completeBaseName());
  }

  const std::string contact;
  const TLink edited;
  QLineEdit *title, *target;
};

bool Edit(QWidget* window, const std::string& contact, const TLink& link) {
  TLink_Dialog dialog(contact, link, window);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace

bool Enter_Link(QWidget* window, const std::string& contact) {
  return Edit(window, contact, {});
}

TLinks_Page::TLinks_Page()
    : TContact_Rows_Page("Links", {tr("Title"), tr("File or web address")}, tr("Link"), tr("&Open")) {
  setObjectName(QStringLiteral("Links_Page"));
}

std::vector<TContact_Rows_Page::TRow> TLinks_Page::Read_Rows() {
  links = List_Links(Owner());
  std::vector<TRow> rows;
  for (const TLink& link : links)
    rows.push_back({{To_Qt(link.Title), To_Qt(link.Target)}, true, !link.Target.empty()});
  return rows;
}

bool TLinks_Page::Add_Row() {
  return Enter_Link(window(), Owner());
}

bool TLinks_Page::Edit_Row(std::size_t row) {
  return Edit(window(), Owner(), links[row]);
}

bool TLinks_Page::Remove_Row(std::size_t row) {
  const TLink link = links[row];
  if (Kt_util_01::Raise_Question("Link", "Remove the link \"" + link.Title + "\"? The file itself stays.") !=
      Kt_util_01::Answer_Yes)
    return false;
  return Update_Host("Links_Page:Remove [KT_Links]", [&] { Remove_Link(Owner(), link); });
}

// Also for who may not change the contact, whose journal does not tell then.
void TLinks_Page::Open_Row(std::size_t row) {
  const TLink link = links[row];
  const std::string contact = Owner();
  if (!Open_Document(To_Qt(link.Target))) return;
  bool allowed = false;
  Read("Links_Page:Open [KT_Rights]", [&] { allowed = Access_Allowed(contact, Access_Update); });
  if (allowed) Update("Links_Page:Open [KT_Log]", [&] { Log_Link_Opened(contact, link); });
}

}  // namespace Plexidex
