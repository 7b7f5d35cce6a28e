#include "Criteria_Page.h"

#include <algorithm>

#include "Plain_Tip.h"
#include "ui_Criteria_Page.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::Sound;

namespace {

// What an item of the combo boxes stands for: the code of a group, moved by 2 so that none is negative, of a
// field or of an action.
constexpr int Group_Shift = 2;

void Fill(QComboBox* box, const TSearch_Choices& choices, int shift = 0) {
  box->clear();
  for (const TSearch_Choice& choice : choices) box->addItem(To_Qt(choice.Name), choice.Code + shift);
  box->setCurrentIndex(-1);
}

int Chosen(const QComboBox* box, int shift = 0) {
  return box->currentIndex() < 0 ? TCriterion_Input::None : box->currentData().toInt() - shift;
}

// Where only one can be chosen, it is.
void Choose_If_Single(QComboBox* box) {
  if (box->count() == 1) box->setCurrentIndex(0);
}

QString Hint_For(int action) {
  const std::string date = Kt_util_01::Shown_Format(Kt_util_01::Format_Settings().ShortDateFormat);
  switch (action) {
    case Action_On:
    case Action_On_Or_After:
    case Action_On_Or_Before:
      return To_Qt(date);
    case Action_Between:
      return To_Qt(date + " and " + date);
    default:
      return {};
  }
}

}  // namespace

TCriteria_Page::TCriteria_Page(const TCriteria_Texts& texts)
    : texts(texts), ui(std::make_unique<Ui::Criteria_Page>()) {
  ui->setupUi(this);
  ui->Title->setText(texts.Title);
  ui->ListTitle->setText(texts.List_Title);
  ui->SearchNow->setToolTip(texts.Search_Hint);
  Initialise_Form(this);
  Connect_Controls();
  Show_Value(TCriterion_Input::None);
}

TCriteria_Page::~TCriteria_Page() = default;

void TCriteria_Page::Connect_Controls() {
  connect(ui->sf_box, &QComboBox::currentIndexChanged, this, &TCriteria_Page::Group_Chosen);
  connect(ui->st_box, &QComboBox::currentIndexChanged, this, &TCriteria_Page::Field_Chosen);
  connect(ui->sa_Box, &QComboBox::currentIndexChanged, this, &TCriteria_Page::Action_Chosen);
  connect(ui->SpeedButton2, &QPushButton::clicked, this, &TCriteria_Page::Add_Criteria);
  connect(ui->SpeedButton1, &QPushButton::clicked, this, &TCriteria_Page::Remove_Criteria);
  connect(ui->ListBox1, &QListWidget::itemSelectionChanged, this,
          [this] { ui->SpeedButton1->setEnabled(!ui->ListBox1->selectedItems().isEmpty()); });
  connect(ui->ListBox1, &QListWidget::itemDoubleClicked, this, &TCriteria_Page::Remove_Criteria);
  connect(ui->SearchNow, &TWebLabel::Clicked, this, [this] {
    Clear_Fields(false);
    Enter_Pressed();
  });
  connect(ui->ClearSearch, &TWebLabel::Clicked, this, [this] {
    Clear_Search();
    Clear_Fields(true);
    DoRefresh();
    emit Search_Cleared();
  });
  connect(ui->Close, &TWebLabel::Clicked, this,
          [this] { Post_Message(Get_ParentForm(this), umDisplayForm, texts.Closed, 0); });
  for (QCheckBox* box : {ui->MC, ui->MW}) {
    connect(box, &QCheckBox::clicked, this, [this](bool checked) {
      if (shown) Sound(checked ? 3 : 1);
    });
  }
}

void TCriteria_Page::Add_Extras(QWidget* added) {
  ui->ExtraRows->addWidget(added);
  Initialise_Form(added);
  // Captions stand over each other.
  if (auto* caption = added->findChild<QLabel*>()) caption->setMinimumWidth(ui->Label2->sizeHint().width());
  for (QWidget* control : added->findChildren<QWidget*>()) {
    if (!(control->focusPolicy() & Qt::TabFocus)) continue;
    if (last_extra) setTabOrder(last_extra, control);
    last_extra = control;
  }
  setTabOrder(last_extra, ui->sf_box);
}

TSearch_Choices TCriteria_Page::Fields(int group, const std::string& group_name) const {
  TSearch_Choices fields;
  Populate_Type_Fields(group, fields, Book, group_name);
  return fields;
}

void TCriteria_Page::Set_Book(const std::string& key) {
  Book = key;
  Read_Groups();
}

void TCriteria_Page::Read_Groups() {
  Fill(ui->sf_box, Groups(), Group_Shift);
  Clear_Fields(true);
}

void TCriteria_Page::Group_Chosen() {
  const int group = Chosen(ui->sf_box, Group_Shift);
  Fill(ui->st_box, group == TCriterion_Input::None ? TSearch_Choices()
                                                   : Fields(group, From_Qt(ui->sf_box->currentText())));
  Choose_If_Single(ui->st_box);
  Field_Chosen();
}

void TCriteria_Page::Field_Chosen() {
  TSearch_Choices actions;
  const int group = Chosen(ui->sf_box, Group_Shift), field = Chosen(ui->st_box);
  if (group != TCriterion_Input::None && field != TCriterion_Input::None)
    Populate_Search_Actions(actions, field, group);
  Fill(ui->sa_Box, actions);
  Action_Chosen();
}

void TCriteria_Page::Action_Chosen() {
  Show_Value(Chosen(ui->sa_Box));
}

void TCriteria_Page::Show_Value(int action) {
  const bool is_chosen = action != TCriterion_Input::None;
  const bool has_value = is_chosen && Show_Value_Field(action);
  for (QWidget* control : {static_cast<QWidget*>(ui->ValueLabel), static_cast<QWidget*>(ui->Edit1)})
    control->setVisible(has_value);
  if (!has_value) ui->Edit1->Set_Text({});
  if (has_value && Show_Selection_Button(action)) {
    TSearch_Choices values;
    Populate_Value_List(Book, Chosen(ui->st_box), values);
    ui->Edit1->Offer(values);
  } else {
    ui->Edit1->Ask(Hint_For(action));
  }
  ui->MC->setVisible(is_chosen && Show_MatchCase_Box(action));
  ui->MW->setVisible(is_chosen && Show_WholeWord_Box(action));
}

TCriterion_Input TCriteria_Page::Input() const {
  TCriterion_Input input;
  input.Group = Chosen(ui->sf_box, Group_Shift);
  input.Field = Chosen(ui->st_box);
  input.Action = Chosen(ui->sa_Box);
  Get_Template_Name(input.Group, From_Qt(ui->sf_box->currentText()), Book, input.Template, false);
  input.Value = ui->Edit1->Text();
  input.MatchCase = ui->MC->isChecked();
  input.WholeWord = ui->MW->isChecked();
  return input;
}

void TCriteria_Page::Add_Criteria() {
  TCriterion_Input input = Input();
  TCriterion_Fault fault = TCriterion_Fault::None;
  if (!Outlives(this, [&] { fault = Add_Criterion(input); })) return;
  if (!ui->Edit1->isHidden() && input.Value != ui->Edit1->Text()) ui->Edit1->Set_Text(input.Value);
  switch (fault) {
    case TCriterion_Fault::Group:
      return ui->sf_box->setFocus();
    case TCriterion_Fault::Field:
      return ui->st_box->setFocus();
    case TCriterion_Fault::Action:
      return ui->sa_Box->setFocus();
    case TCriterion_Fault::Value:
      return ui->Edit1->Select_All();
    case TCriterion_Fault::None:
      break;
  }
  Clear_Fields(false);
  DoRefresh();
  ui->st_box->setFocus();
}

void TCriteria_Page::Remove_Criteria() {
  const int line = Selected_Line();
  if (line < 0) return;
  Put_Back(Take_Out_Criterion(line));
  DoRefresh();
}

void TCriteria_Page::Put_Back(const TCriterion_Input& input) {
  const auto choose = [](QComboBox* box, int index) { box->setCurrentIndex(index); };
  choose(ui->sf_box, input.Template.empty()
                         ? ui->sf_box->findData(input.Group + Group_Shift)
                         : ui->sf_box->findText(To_Qt(Get_Group_Name(input.Group, input.Template))));
  choose(ui->st_box, ui->st_box->findData(input.Field));
  choose(ui->sa_Box, ui->sa_Box->findData(input.Action));
  ui->Edit1->Set_Text(input.Value);
  ui->MC->setChecked(input.MatchCase);
  ui->MW->setChecked(input.WholeWord);
}

// The criterion of the line that is selected; -1 for the heading and without a selection.
int TCriteria_Page::Selected_Line() const {
  const QList<QListWidgetItem*> selected = ui->ListBox1->selectedItems();
  return selected.isEmpty() ? -1 : selected.first()->data(Qt::UserRole).toInt() - 1;
}

void TCriteria_Page::Clear_Fields(bool with_group) {
  if (with_group) {
    ui->sf_box->setCurrentIndex(-1);
    Choose_If_Single(ui->sf_box);
  }
  Group_Chosen();
  ui->MC->setChecked(false);
  ui->MW->setChecked(false);
}

void TCriteria_Page::DoRefresh() {
  if (!CurrentSearch) Clear_Search();
  constexpr int line_height = 20;
  const QSize size(0, std::max(line_height, ui->ListBox1->fontMetrics().height() + 2));
  ui->ListBox1->clear();
  int number = 0;
  for (const std::string& line : Criteria_Lines(Book)) {
    auto* item = new QListWidgetItem(To_Qt(line), ui->ListBox1);
    item->setData(Qt::UserRole, number++);
    item->setSizeHint(size);
    item->setToolTip(As_Plain_Tip(item->text().trimmed()));
  }
  ui->SpeedButton1->setEnabled(false);
  shown = true;
}

void TCriteria_Page::Enter_Pressed() {
  if (Chosen(ui->sa_Box) != TCriterion_Input::None) return Add_Criteria();
  if (CurrentSearch) Post_Message(Get_ParentForm(this), umDisplayForm, Results(), 0);
}

void TCriteria_Page::Handle_Message(const TMessage& message) {
  switch (message.Number()) {
    case umEnterPressed:
      Enter_Pressed();
      break;
    case umSetActiveControl:
      // Where there is something to choose.
      (ui->sf_box->count() != 1   ? ui->sf_box
       : ui->st_box->count() != 1 ? ui->st_box
                                  : ui->sa_Box)
          ->setFocus(Qt::OtherFocusReason);
      break;
    case umRefreshDisplay:
      DoRefresh();
      break;
    case umGetFormName:
      Copy_Form_Name(*this, message);
      break;
    default:
      break;
  }
}

}  // namespace KTReminds
