#include "fm_Calendar_Search_Results.h"

#include <algorithm>

#include "Build_Progress.h"
#include "Calendar_Search.h"
#include "Current_Search.h"
#include "Entry_List.h"
#include "Kt_util_01.h"
#include "Page_Numbers.h"
#include "Result_Order.h"
#include "Results_Caption.h"
#include "Sort_Header.h"
#include "ui_fm_Calendar_Search_Results.h"

namespace KTReminds {

using namespace Kt_forms;

namespace {

const TEntry_Columns& Result_Columns() {
  const auto sub_item = [](TFound_Column column) { return static_cast<int>(column); };
  static const TEntry_Columns columns = [&] {
    TEntry_Columns made = All_Columns();
    made.Columns.pop_back();  // the priority
    made.Columns.push_back({TCell::Sub_Item, 5, TSide::Left,
                            From_Qt(TCalendar_Search_Results_Frm::tr("Holiday")) + "   ",
                            sub_item(TFound_Column::Kind)});
    made.Columns.push_back(
        {TCell::Sub_Item, 6, TSide::Left, "Somebody Else   ", sub_item(TFound_Column::Owner)});
    return made;
  }();
  return columns;
}

}  // namespace

TCalendar_Search_Results_Frm::TCalendar_Search_Results_Frm()
    : ui(std::make_unique<Ui::Calendar_Search_Results_Frm>()) {
  ui->setupUi(this);
  Set_Up_Tools(this, ui->ToolBar1);
  Initialise_Form(this);
  setFocusProxy(ui->ListView1);
  ui->ListView1->Set_Columns(Result_Columns());
  Set_Up_Commands();
  connect(ui->SearchSettings, &TWebLabel::Clicked, this, [this] { Ask_For(Page_Calendar_Search); });
  connect(ui->Close, &TWebLabel::Clicked, this, [this] { Ask_For(Page_Day); });
}

TCalendar_Search_Results_Frm::~TCalendar_Search_Results_Frm() = default;

void TCalendar_Search_Results_Frm::Set_Up_Commands() {
  const TEntry_Controls controls = {.Toggle = {ui->AckBtn, ui->Ackmenu},
                                    .Delete = {ui->Delbtn, ui->DelMenu},
                                    .Open = {ui->PropsBtn, ui->PropsMenu},
                                    .Popup = ui->PopupMenu1,
                                    .Sort_By = ui->SortBy1,
                                    .Columns = {ui->Sort2, ui->Sort3, ui->Sort5, ui->Sort6},
                                    .Directions = {ui->Ascending1, ui->Descending1}};
  TEntry_Page& as_page = *this;
  commands = std::make_unique<TEntry_Commands>(
      *this, as_page, controls, TEntry_Order{ResultsSortKey, ResultsSortAscending, Sort_Results}, "Item");
  commands->Add_List(ui->ListView1);
  commands->Add_Header(ui->EventTitlePanel, ui->ListView1);
}

void TCalendar_Search_Results_Frm::Set_Keys(const std::string& book, const std::string& owner) {
  NodeKey = book;
  OwnerKey = owner;
}

void TCalendar_Search_Results_Frm::DoRefresh() {
  if (searching) return;
  searching = true;
  if (!Outlives(this, [this] { Fill_List(); })) return;
  searching = false;
  commands->Set_Btns();
}

void TCalendar_Search_Results_Frm::Fill_List() {
  Rows_Are_Shown();
  auto& items = ui->ListView1->Items();
  // While nothing is known yet, it does not say that there is nothing.
  const QString none = ui->NoEventsPanel->text();
  ui->NoEventsPanel->clear();
  ui->Label3->setText(Searching_Caption());
  ui->PB1->reset();
  ui->PBPanel->show();
  std::int64_t elapsed = 0;
  bool all = false;
  {
    TBuild_Progress progress(*this, *ui->PB1, items, true);
    ui->Label3->repaint();
    ui->ListView1->repaint();
    all = SearchCalendar(NodeKey, items, elapsed, &progress);
  }
  const QString found = items.Count() == 1
                            ? tr("1 Item found")
                            : tr("%1 Items found").arg(locale().toString(qulonglong(items.Count())));
  ui->Label3->setText(Results_Caption(found, all, elapsed));
  ui->NoEventsPanel->setText(none);
  ui->PBPanel->hide();
}

void TCalendar_Search_Results_Frm::Ask_For(int page) {
  Post_Message(Get_ParentForm(this), umDisplayForm, page, 0);
}

void TCalendar_Search_Results_Frm::Handle_Message(const TMessage& message) {
  switch (message.Number()) {
    case umRefreshDisplay:
      Rows_Changed();
      break;
    case umGetFormName:
      Copy_Form_Name(*this, message);
      break;
    default:
      break;
  }
}

TOwner TCalendar_Search_Results_Frm::Owner_Of_New(TEntry_Type /*type*/) const {
  return {NodeKey, OwnerKey};
}

void TCalendar_Search_Results_Frm::Refresh_After(const TEntry_Change& change) {
  DoRefresh();
  if (!change.Key.empty()) commands->Select_Key(change.Key);
  if (commands->Selected_Key().empty() && change.Row >= 0)
    ui->ListView1->Select_Row(std::min(change.Row, static_cast<int>(ui->ListView1->Items().Count()) - 1));
}

void TCalendar_Search_Results_Frm::Rows_Changed() {
  commands->Keep_Selection([this] { DoRefresh(); });
}

bool Display_Calendar_Search_Results(QWidget* Parent, TForm_Reference& Form, const std::string& Book,
                                     const std::string& Owner) {
  Kt_util_01::Sound(2);
  auto* page = Form.Reuse_Or_Replace<TCalendar_Search_Results_Frm>();
  if (!page) return false;
  Embed_Page(page, Parent);
  page->Set_Keys(Book, Owner);
  page->show();
  page->DoRefresh();
  return true;
}

}  // namespace KTReminds
