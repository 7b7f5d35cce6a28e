#include "Contact_Details.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFormLayout>
#include <QLabel>
#include <optional>

#include "Categories.h"
#include "Contacts.h"
#include "Folders.h"
#include "Kt_forms.h"
#include "Kt_labels.h"
#include "Templates.h"
#include "Web_Links.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

// Long notes would leave no room for the calendar: the first lines show that there are some.
QString First_Lines(const QString& notes) {
  constexpr qsizetype most = 200;
  const QString lines = notes.section(QLatin1Char('\n'), 0, 2);
  const bool cut = lines.size() > most || lines.size() < notes.trimmed().size();
  return cut ? lines.left(most).trimmed() + QChar(0x2026) : lines;
}

// One of the columns, and how many lines it has.
struct TColumn {
  QFormLayout* Form = new QFormLayout;
  qsizetype Lines = 0;

  void Add(const std::string& label, QWidget* value, qsizetype lines = 1) {
    auto* caption = new QLabel(To_Qt(label) + QLatin1Char(':'));
    caption->setTextFormat(Qt::PlainText);
    caption->setForegroundRole(QPalette::PlaceholderText);
    caption->setAlignment(Qt::AlignTop);
    Form->addRow(caption, value);
    Lines += lines;
  }
};

}  // namespace

TContact_Details_View::TContact_Details_View(QWidget* parent) : TContent_Scroll(parent) {
  setObjectName(QStringLiteral("Contact_Details"));
  setAccessibleName(tr("Details"));
  setFocusPolicy(Qt::NoFocus);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

int TContact_Details_View::Most_High() const {
  return parentWidget() ? parentWidget()->height() * 2 / 5 : TContent_Scroll::Most_High();
}

void TContact_Details_View::Set_Direction() {
  constexpr int chars_of_two_columns = 70;
  const bool narrow = width() < fontMetrics().averageCharWidth() * chars_of_two_columns;
  if (columns) columns->setDirection(narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void TContact_Details_View::resizeEvent(QResizeEvent* event) {
  Set_Direction();
  TContent_Scroll::resizeEvent(event);
}

QWidget* TContact_Details_View::Value(const QString& name, const QString& text,
                                      const std::optional<QUrl>& link) {
  constexpr int most_chars = 60;
  QLabel* value = nullptr;
  if (link) {
    auto* label = new TWebLabel(
        fontMetrics().elidedText(text, Qt::ElideMiddle, fontMetrics().averageCharWidth() * most_chars));
    // Queued: a message may be shown, during which the details are read anew.
    connect(
        label, &TWebLabel::Clicked, this, [url = *link] { Open_Link(url); }, Qt::QueuedConnection);
    auto* copy = new QAction(tr("&Copy"), label);
    connect(copy, &QAction::triggered, this, [text] { QApplication::clipboard()->setText(text); });
    label->addAction(copy);
    label->setContextMenuPolicy(Qt::ActionsContextMenu);
    label->setToolTip(QString::fromLatin1(link->toEncoded()));
    label->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    value = label;
  } else {
    value = new QLabel(text);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setWordWrap(true);
  }
  value->setAccessibleName(text);
  value->setObjectName(name);
  return value;
}

void TContact_Details_View::Clear() {
  columns = nullptr;
  delete takeWidget();
}

void TContact_Details_View::Show_Details(const TContact& contact) {
  Clear();
  const TContact_Details known = Read_Contact_Details(contact.Key);
  const TTemplate kind = Find_Template(known.Template).value_or(TTemplate{});
  const TOther_Texts labels = Other_Labels(contact.Book);
  TColumn left, right;
  for (std::size_t i = 0; i < Template_Fields.size(); ++i) {
    const auto [code, column, what] = Template_Fields[i];
    const QString text = To_Qt(known.Fields[code]);
    if (text.isEmpty()) continue;
    const bool is_link = what != TField_Kind::Text && what != TField_Kind::Address;
    (is_link ? right : left)
        .Add(Field_Name(kind, i), Value(QStringLiteral("Field%1").arg(code), text, Link_To(what, text)),
             text.count(QLatin1Char('\n')) + 1);
  }
  for (std::size_t i = 0; i < Other_Fields; ++i) {
    const QString text = To_Qt(known.Other[i]);
    if (text.isEmpty()) continue;
    (right.Lines < left.Lines ? right : left)
        .Add(labels[i], Value(QStringLiteral("Other%1").arg(i + 1), text, {}));
  }
  auto folder = Find_Folder(contact.Book, contact.Folder);
  if (folder && !Access_Allowed(folder->Key, Access_See)) folder.reset();
  for (const auto& [label, text] : {std::pair(tr("Folder"), folder ? To_Qt(folder->Name) : QString()),
                                    {tr("Categories"), To_Qt(Names_Of(Categories_Of(contact.Key)))}}) {
    if (!text.isEmpty())
      (right.Lines < left.Lines ? right : left).Add(From_Qt(label), Value(label, text, {}));
  }
  auto* content = new QWidget;
  auto* whole = new QVBoxLayout(content);
  whole->setContentsMargins(0, 0, 0, 4);
  columns = new QBoxLayout(QBoxLayout::LeftToRight);
  columns->setSpacing(8);
  Set_Direction();
  whole->addLayout(columns);
  for (const TColumn& column : {left, right}) {
    columns->addLayout(column.Form, column.Lines > 0 ? 1 : 0);
  }
  if (const QString notes = First_Lines(To_Qt(known.Notes)); !notes.isEmpty()) {
    TColumn below;
    below.Add(From_Qt(tr("Notes")), Value(QStringLiteral("Notes"), notes, {}));
    whole->addLayout(below.Form);
  }
  whole->addStretch();
  setWidget(content);
  viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
  setVisible(left.Lines + right.Lines > 0 || !known.Notes.empty());
  updateGeometry();
}

}  // namespace Plexidex
