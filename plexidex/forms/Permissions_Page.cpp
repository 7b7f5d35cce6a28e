#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

#include "KTAccess.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Permissions.h"

namespace KTAccess {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

struct TLevel {
  bool TRights::*Right;
  const char* Heading;
};
constexpr TLevel Levels[] = {{&TRights::See, QT_TR_NOOP("See")},
                             {&TRights::Create, QT_TR_NOOP("Create")},
                             {&TRights::Update, QT_TR_NOOP("Change")},
                             {&TRights::Delete, QT_TR_NOOP("Delete")}};
constexpr int User_Column = 0, First_Level = 1, Create_Column = First_Level + 1,
              Remark_Column = First_Level + 4;
constexpr int Inherited_Role = Qt::UserRole;

// What is inherited is pale, and can be changed all the same.
class TPermission_Painter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, given, index);
    if (!index.data(Inherited_Role).toBool()) return;
    QStyleOptionViewItem option = given;
    initStyleOption(&option, index);
    constexpr float veil = 0.6F;
    QColor ground = option.palette.color(option.state.testFlag(QStyle::State_Selected) ? QPalette::Highlight
                                                                                       : QPalette::Window);
    ground.setAlphaF(veil);
    painter->fillRect(
        option.widget->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, option.widget),
        ground);
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    if (index.column() == Remark_Column)
      option->palette.setColor(QPalette::Text, option->palette.color(QPalette::PlaceholderText));
  }
};

class TPermissions_Frm : public TPermissions_Page {
 public:
  TPermissions_Frm()
      : title(new QLabel),
        state(new QLabel),
        explanation(new QLabel),
        table(new QTableWidget(0, Remark_Column + 1)),
        inherit(new QAction(tr("Back to &Inherited"), table)),
        inherit_button(new QPushButton(inherit->text())) {
    setObjectName(QStringLiteral("Permissions_Frm"));
    title->setObjectName(QStringLiteral("Title"));
    state->setObjectName(QStringLiteral("State"));
    explanation->setObjectName(QStringLiteral("Explanation"));
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    for (QLabel* label : {title, state, explanation}) {
      label->setTextFormat(Qt::PlainText);
      label->setWordWrap(true);
    }
    explanation->hide();
    Set_Up_Table();
    inherit->setObjectName(QStringLiteral("Inherit"));
    inherit->setShortcut(Qt::Key_Delete);
    inherit->setShortcutContext(Qt::WidgetShortcut);
    inherit_button->setObjectName(QStringLiteral("Inherit_Button"));
    inherit_button->setAutoDefault(false);
    inherit_button->setStatusTip(tr("Takes back what is set here for the selected user"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(inherit_button);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    for (QWidget* each :
         {static_cast<QWidget*>(title), static_cast<QWidget*>(explanation), static_cast<QWidget*>(state)})
      layout->addWidget(each);
    layout->addWidget(table, 1);
    layout->addLayout(buttons);
    setFocusProxy(table);
    Initialise_Form(this);
    connect(table, &QTableWidget::itemChanged, this, &TPermissions_Frm::Toggle);
    connect(table, &QTableWidget::currentItemChanged, this, &TPermissions_Frm::Set_Buttons);
    connect(inherit, &QAction::triggered, this, [this] {
      if (table->currentRow() >= 0) Write(Row(table->currentRow()).User, std::nullopt);
    });
    connect(inherit, &QAction::changed, this, [this] { inherit_button->setEnabled(inherit->isEnabled()); });
    connect(inherit_button, &QPushButton::clicked, inherit, &QAction::trigger);
  }
  void Set_Title(const std::string& text) override {
    // A contact's calendar and tasks have no permissions of their own.
    title->setText(kind == Kind_Contact ? tr("%1 and all else of %2").arg(To_Qt(text), To_Qt(shown.Of))
                                        : To_Qt(text));
  }
  void Show_Explanation() override { explanation->show(); }

  void Show_Owner(const std::string& new_owner, int new_kind, bool new_read_only) {
    owner = new_owner;
    kind = new_kind;
    read_only = new_read_only;
    explanation->setText(Explanation_Of(kind));
    // Nothing is made in a contact but what changes it.
    table->setColumnHidden(Create_Column, kind == Kind_Contact);
    Show_Rows();
    title->setText(tr(" Access Permissions for %1").arg(To_Qt(shown.Of)));
  }

 protected:
  void Handle_Message(const TMessage& message) override {
    if (message.Number() == umGetFormName) Copy_Form_Name(*this, message);
    if (message.Number() == umRefreshDisplay) Show_Rows();
    if (message.Number() == umSetActiveControl) table->setFocus();
  }
  void Rows_Changed() override { Show_Rows(); }

 private:
  static QString Explanation_Of(int kind) {
    switch (kind) {
      case Kind_Contact:
        return tr(
            "To see the contact with its entries, links and journal; to change any of them and make new "
            "ones; "
            "to delete the contact and its entries.");
      case Kind_Folder:
        return tr(
            "To see what lies in the folder and below; to put contacts and folders there; to change and to "
            "delete them. A contact or folder in it may have permissions of its own.");
      case Kind_Book:
        return tr(
            "For all of the book: its calendar and tasks, its folders and contacts, unless they have "
            "permissions of their own.");
      default:
        return tr(
            "To see the events and tasks; to create some of one's own; to change those that are there and "
            "assign them to others; to delete them.");
    }
  }

  void Set_Up_Table() {
    table->setObjectName(QStringLiteral("Permissions_Table"));
    table->setAccessibleName(tr("Permissions"));
    QStringList headings{tr("User")};
    for (const TLevel& level : Levels) headings << tr(level.Heading);
    table->setHorizontalHeaderLabels(headings << tr("Where from"));
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(Remark_Column, QHeaderView::Stretch);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setHighlightSections(false);
    table->verticalHeader()->hide();
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->setItemDelegate(new TPermission_Painter(table));
    table->setContextMenuPolicy(Qt::ActionsContextMenu);
    table->addAction(inherit);
    // As behind other check boxes, which cannot be seen on the ground of a dark list.
    table->viewport()->setAutoFillBackground(false);
  }

  const TPermission_Row& Row(int row) const { return shown.Rows[static_cast<std::size_t>(row)]; }
  bool May_Change(const TPermission_Row& row) const {
    return !read_only && shown.Fault.empty() && !row.Administrator;
  }

  void Show_Rows() {
    Rows_Are_Shown();
    shown = {};
    Read("Permissions_Page:Show_Rows [KT_Rights/KT_Users/KT_Contacts]", [this] {
      if (DB_Permissions) shown = Read_Permissions(owner);
    });
    const QSignalBlocker quiet(table);
    table->setRowCount(static_cast<int>(shown.Rows.size()));
    for (int row = 0; row < table->rowCount(); ++row) Show_Row(row);
    if (table->currentRow() < 0 && table->rowCount() > 0) table->setCurrentCell(0, First_Level);
    table->setVisible(!shown.Rows.empty());
    inherit_button->setVisible(!shown.Rows.empty());
    const QString said = !DB_Permissions
                             ? tr("This database has no user accounts: whoever opens it may do everything.")
                         : shown.Of.empty() ? tr("It has been removed.")
                                            : To_Qt(shown.Fault);
    state->setText(said);
    state->setVisible(!said.isEmpty());
    Set_Buttons();
  }

  void Show_Row(int at) {
    const TPermission_Row& row = Row(at);
    const QString name = To_Qt(row.Name), remark = To_Qt(row.Remark);
    constexpr auto read = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const auto text = [&](int column, const QString& said) {
      auto* item = new QTableWidgetItem(said);
      item->setFlags(read);
      item->setToolTip(said);
      table->setItem(at, column, item);
    };
    text(User_Column, name);
    text(Remark_Column, remark);
    int column = First_Level;
    for (const TLevel& level : Levels) {
      const bool allowed = row.Rights.*level.Right;
      auto* item = new QTableWidgetItem;
      item->setFlags(May_Change(row) ? read | Qt::ItemIsUserCheckable : read);
      item->setCheckState(allowed ? Qt::Checked : Qt::Unchecked);
      item->setData(Inherited_Role, !row.Own);
      item->setData(Qt::AccessibleTextRole,
                    tr("%1, %2, %3, %4")
                        .arg(name, tr(level.Heading), allowed ? tr("allowed") : tr("not allowed"), remark));
      table->setItem(at, column++, item);
    }
  }

  void Set_Buttons() {
    const int row = table->currentRow();
    inherit->setEnabled(row >= 0 && row < table->rowCount() && Row(row).Own && May_Change(Row(row)));
  }

  // What was inherited becomes the user's own with the one right changed.
  void Toggle(const QTableWidgetItem* item) {
    const int level = item->column() - First_Level;
    if (level < 0 || item->column() >= Remark_Column) return;
    const TPermission_Row& row = Row(item->row());
    TRights rights = row.Rights;
    rights.*Levels[level].Right = item->checkState() == Qt::Checked;
    Write(row.User, rights);
  }

  void Write(const std::string& of_user, const std::optional<TRights>& rights) {
    std::string fault;
    const std::string user = of_user;  // what is shown may be read again while a message is open
    if (Outlives(this, [&] {
          Update("Permissions_Page:Write [KT_Rights]", [&] {
            fault = Change_Permissions(owner, user, rights);
            if (!fault.empty()) throw EAlready_Reported();
          });
          if (!fault.empty()) Kt_util_01::Raise_Error("Permissions", fault);
        }))
      Show_Rows();
  }

  QLabel *title, *state, *explanation;
  QTableWidget* table;
  QAction* inherit;
  QPushButton* inherit_button;
  std::string owner;
  int kind = Kind_Calendar;
  bool read_only = false;
  TPermissions shown;
};

}  // namespace

bool Display_Permissions_Page(QWidget* parent, TForm_Reference& form, bool in_dialog, const std::string& node,
                              const std::string& owner, int kind, bool read_only) {
  auto* page = static_cast<TPermissions_Frm*>(form.As<TPermissions_Page>());
  if (!page) {
    if (TForm* other = form.Get(); other && !other->Close_Form()) return false;
    page = new TPermissions_Frm;
    form.Set(page);
  }
  if (in_dialog) page->layout()->setContentsMargins({});
  Embed_Page(page, parent);
  std::string of = owner;
  Read("Permissions_Page:Display [KT_Contacts]", [&] {
    const std::string calendar = Calendar_Of_Book(node);
    if (of.empty()) of = calendar;
    if (kind == Kind_Calendar && of != calendar) kind = Kind_Contact;
  });
  page->Show_Owner(of, kind, read_only);
  page->show();
  return true;
}

}  // namespace KTAccess
