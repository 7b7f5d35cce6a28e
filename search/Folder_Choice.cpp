#include "Folder_Choice.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

#include "Current_Search.h"
#include "Kt_forms.h"
#include "Kt_update.h"

namespace KTReminds {

using namespace Kt_forms;

TFolder_Choice::TFolder_Choice(QWidget* parent)
    : QWidget(parent),
      folders(new QComboBox(this)),
      sub_folders(new QCheckBox(tr("And its sub-folders"), this)) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* caption = new QLabel(tr("Look in:"), this);
  caption->setBuddy(folders);
  folders->setObjectName(QStringLiteral("Folder_Box"));
  sub_folders->setObjectName(QStringLiteral("SubGroups_Box"));
  layout->addWidget(caption);
  layout->addWidget(folders);
  layout->addWidget(sub_folders);
  layout->addStretch();
  connect(folders, &QComboBox::activated, this, &TFolder_Choice::Choose);
  connect(sub_folders, &QCheckBox::clicked, this, &TFolder_Choice::Choose);
}

void TFolder_Choice::Show_Folders(const std::string& book) {
  const QSignalBlocker silent(folders);
  folders->clear();
  folders->addItem(tr("<All Contacts>"), QString());
  const auto found = Kt_data_01::Read("Folder_Choice:Show_Folders [KT_Contacts]",
                                      [&] { return Kt_data_01::List_Folders(book); });
  if (found) {
    for (const auto& folder : *found)
      folders->addItem(QString(2 * folder.Depth, QLatin1Char(' ')) + To_Qt(folder.Name), To_Qt(folder.Key));
  }
  const int at = folders->findData(To_Qt(CurrentSearch->Group));
  folders->setCurrentIndex(at < 0 ? 0 : at);
  if (found && at < 0) CurrentSearch->Group.clear();
  sub_folders->setChecked(CurrentSearch->SubGroups);
  sub_folders->setEnabled(folders->currentIndex() > 0);
}

void TFolder_Choice::Choose() {
  CurrentSearch->Group = From_Qt(folders->currentData().toString());
  CurrentSearch->SubGroups = sub_folders->isChecked();
  sub_folders->setEnabled(folders->currentIndex() > 0);
}

}  // namespace KTReminds
