#include "Found_Contacts_Page.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QVBoxLayout>

#include "Build_Progress.h"
#include "KTReminds.h"
#include "Kt_labels.h"
#include "Results_Caption.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

TFound_Contacts_Page::TFound_Contacts_Page() : caption(new QLabel), bar(new QProgressBar) {
  setObjectName(QStringLiteral("Found_Contacts_Page"));
  caption->setObjectName(QStringLiteral("Search_Caption"));
  QFont bold = caption->font();
  bold.setBold(true);
  caption->setFont(bold);
  caption->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  bar->setObjectName(QStringLiteral("Search_Progress"));
  bar->setTextVisible(false);
  bar->setMaximumHeight(caption->sizeHint().height());
  bar->hide();
  deleted->hide();
  auto* links = new QHBoxLayout;
  const auto add_link = [&](const char* name, const QString& text, const QString& hint, auto wanted) {
    auto* link = new TWebLabel(text);
    link->setObjectName(QLatin1String(name));
    link->setToolTip(hint);
    links->addWidget(link);
    connect(link, &TWebLabel::Clicked, this, wanted);
  };
  add_link("SearchSettings", tr("Search Settings..."), tr("Returns to the criteria of the search"),
           &TFound_Contacts_Page::Settings_Wanted);
  add_link("Close", tr("Close"), tr("Closes the search and returns to the contacts"),
           &TFound_Contacts_Page::Close_Wanted);
  links->addStretch();
  auto* says = new QHBoxLayout;
  says->addWidget(caption, 1);
  says->addWidget(bar);
  auto* above = new QVBoxLayout;
  above->addLayout(links);
  above->addLayout(says);
  Add_Above(above);
  Initialise_Form(this);
}

void TFound_Contacts_Page::Reload() {
  if (searching) return;
  Rows_Are_Shown();
  searching = true;
  if (!Outlives(this, [this] { Search(); })) return;
  searching = false;
  Show_Rows();
  emit Searched();
}

void TFound_Contacts_Page::Search() {
  caption->setText(KTReminds::Searching_Caption());
  bar->reset();
  bar->show();
  std::int64_t elapsed = 0;
  bool all = false;
  tree.Begin_Update(tree.Root());
  tree.Clear(tree.Root());
  tree.End_Update();
  {
    KTReminds::TBuild_Progress progress(*this, *bar, true);
    caption->repaint();
    all = KTReminds::SearchContacts(Book(), {}, tree.Root(), tree, elapsed, Contact_Type_Contact, &progress);
  }
  keys.clear();
  for (const auto& node : tree.Root().Children) keys.push_back(node->Key.Str());
  const QString found = keys.size() == 1
                            ? tr("1 Contact found")
                            : tr("%1 Contacts found").arg(QLocale().toString(qulonglong(keys.size())));
  caption->setText(KTReminds::Results_Caption(found, all, elapsed));
  bar->hide();
}

std::vector<TContact_Row> TFound_Contacts_Page::Read_Rows() {
  return Read_Rows_Of_Contacts(Book(), keys);
}

}  // namespace Plexidex
