#include "fm_Advanced_Search.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

#include "Kt_labels.h"
#include "Page_Numbers.h"
#include "fm_Filters.h"

namespace KTReminds {

using namespace Kt_forms;

TAdvanced_Search_Frm::TAdvanced_Search_Frm()
    : TCriteria_Page(
          {.Title = tr("Advanced Search"),
           .List_Title = tr("Find what matches these criteria:"),
           .Search_Hint = tr("Click here to search for the criteria listed (or press the Enter key)"),
           .Results = Page_Contact_Results,
           .Closed = Page_None}),
      target(new QComboBox),
      folder(new TFolder_Choice) {
  setObjectName(QStringLiteral("Advanced_Search_Frm"));
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* find = new QLabel(tr("Find:"), row);
  find->setBuddy(target);
  target->setObjectName(QStringLiteral("Target"));
  target->addItem(tr("Contacts"), Page_Contact_Results);
  target->addItem(tr("Calendar Items"), Page_Calendar_Results);
  target->addItem(tr("Tasks"), Page_Task_Results);
  layout->addWidget(find);
  layout->addWidget(target);
  layout->addStretch();
  const auto add_link = [&](const char* name, const QString& text, const QString& hint) {
    auto* link = new TWebLabel(text, row);
    link->setObjectName(QString::fromLatin1(name));
    link->setToolTip(hint);
    layout->addWidget(link);
    return link;
  };
  auto* load = add_link("LoadFilter", tr("Load Filter..."), tr("Replaces the criteria by a stored search"));
  auto* save = add_link("SaveFilter", tr("Save Filter..."), tr("Stores the criteria under a name"));
  Add_Extras(row);
  Add_Extras(folder);
  connect(target, &QComboBox::currentIndexChanged, this, [this] {
    folder->setVisible(Target() == Page_Contact_Results);
    Read_Groups();
  });
  connect(load, &TWebLabel::Clicked, this, &TAdvanced_Search_Frm::Load);
  connect(save, &TWebLabel::Clicked, this, [this] {
    if (CurrentSearch) Save_Filter(Book);
  });
}

int TAdvanced_Search_Frm::Target() const {
  return target->currentData().toInt();
}

int TAdvanced_Search_Frm::Results() const {
  return Target();
}

TSearch_Choices TAdvanced_Search_Frm::Groups() const {
  TSearch_Choices groups;
  switch (Target()) {
    case Page_Calendar_Results:
      return Calendar_Groups();
    case Page_Task_Results:
      return {{Group_Tasks, Get_Group_Name(Group_Tasks, {})}};
    default:
      Populate_Search_Fields(Book, groups);
      return groups;
  }
}

void TAdvanced_Search_Frm::Load() {
  bool loaded = false;
  if (!Outlives(this, [&] { loaded = Load_Filter(Book); }) || !loaded) return;
  Show_Search();
}

void TAdvanced_Search_Frm::Show_Search() {
  target->setCurrentIndex(target->findData(Results_Of_Search()));
  DoRefresh();
}

void TAdvanced_Search_Frm::DoRefresh() {
  TCriteria_Page::DoRefresh();
  folder->Show_Folders(Book);
}

bool Display_Advanced_Search(QWidget* Parent, TForm_Reference& Form, const std::string& Book, bool Clear) {
  if (!Display_Criteria_Page<TAdvanced_Search_Frm>(Parent, Form, Book, Clear)) return false;
  if (!CurrentSearch->Items.empty()) Form.As<TAdvanced_Search_Frm>()->Show_Search();
  return true;
}

}  // namespace KTReminds
