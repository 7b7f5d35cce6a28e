#include "fm_Filters.h"

#include "Current_Search.h"
#include "Filter_Store.h"
#include "Image_List.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "ui_fm_Filters.h"

namespace KTReminds {

using namespace Kt_forms;
using namespace Kt_util_01;

namespace {

constexpr int Shared_Type = 1;
constexpr int Image_Delete = 2;

std::string Book_Name(const std::string& book) {
  return Kt_data_01::Read("fm_Filters:Book_Name [KT_Books]",
                          [&] {
                            Kt_data_01::TTable books(Kt_data_01::Books_Table, "Key", {"BookName"});
                            return books.FindKey({book}) ? std::string(books.Text(books.Field("BookName")))
                                                         : std::string();
                          })
      .value_or(std::string());
}

// A text that holds one %S.
std::string Format(const char* text, const std::string& name) {
  std::string made = text;
  return made.replace(made.find("%s"), 2, name);
}

}  // namespace

TFilters_Frm::TFilters_Frm(TMode mode, const std::string& book, QWidget* parent)
    : TDialog_Form(parent), ui(std::make_unique<Ui::Filters_Frm>()), mode(mode), book(book) {
  ui->setupUi(this);
  setProperty("Tag", static_cast<int>(mode));
  ui->OpenBtn->setProperty("Tag", static_cast<int>(mode));
  if (mode == TMode::Load) {
    ui->OpenBtn->setText(tr("Load"));
  } else if (CurrentSearch->Name != New_Filter_Name) {
    ui->Edit2->setText(To_Qt(CurrentSearch->Name));
  }
  ui->OpenBtn->setEnabled(!ui->Edit2->text().isEmpty());
  ui->Edit1->setText(To_Qt(Book_Name(book)));
  ui->Delbtn->setIcon(TImage_List("P3_Enabled").Icon(Image_Delete));
  Initialise_Form(this);
  connect(ui->ComboBox1, &QComboBox::currentIndexChanged, this, &TFilters_Frm::Populate_Filter_List);
  connect(ui->ListView1, &QTreeWidget::itemSelectionChanged, this, &TFilters_Frm::ListView1Click);
  connect(ui->ListView1, &QTreeWidget::itemClicked, this, &TFilters_Frm::ListView1Click);
  connect(ui->ListView1, &QTreeWidget::itemDoubleClicked, this, &TFilters_Frm::OpenBtnClick);
  connect(ui->Edit2, &QLineEdit::textChanged, this,
          [this](const QString& name) { ui->OpenBtn->setEnabled(!name.isEmpty()); });
  connect(ui->Delbtn, &QToolButton::clicked, this, &TFilters_Frm::DelbtnClick);
  connect(ui->OpenBtn, &QPushButton::clicked, this, &TFilters_Frm::OpenBtnClick);
  connect(ui->CancelBtn, &QPushButton::clicked, this, &QDialog::reject);
  Populate_Filter_List();
}

TFilters_Frm::~TFilters_Frm() = default;

std::string TFilters_Frm::Filter_Name() const {
  return From_Qt(ui->Edit2->text());
}

bool TFilters_Frm::Is_Shared() const {
  return ui->ComboBox1->currentIndex() == Shared_Type;
}

void TFilters_Frm::FormShow() {
  ui->Edit2->setFocus();
}

void TFilters_Frm::Populate_Filter_List() {
  ui->ListView1->clear();
  for (const std::string& name : Filter_Names(book, Is_Shared()))
    ui->ListView1->addTopLevelItem(new QTreeWidgetItem({To_Qt(name)}));
  ListView1Click();
}

void TFilters_Frm::ListView1Click() {
  const QList<QTreeWidgetItem*> selected = ui->ListView1->selectedItems();
  ui->Delbtn->setEnabled(!selected.isEmpty() && May_Delete_Filter(book, Is_Shared()));
  if (!selected.isEmpty()) ui->Edit2->setText(selected.first()->text(0));
}

bool TFilters_Frm::Process_Action() {
  ui->Edit2->setText(ui->Edit2->text().trimmed());
  const std::string name = Filter_Name();
  const auto refuse = [this](const char* caption, const std::string& text) {
    Raise_Error(caption, text);
    ui->Edit2->setFocus();
    return false;
  };
  if (name.empty() || name.starts_with('<'))
    return refuse("Filter Name Required", "Please specify a name for the Search Filter being saved");
  const bool exists = Has_Filter(book, name, Is_Shared());
  if (mode == TMode::Load && !exists)
    return refuse("Invalid Filter Name",
                  Format("The Search Filter \"%s\" does not exist. Please specify another name", name));
  if (mode == TMode::Save && exists &&
      Raise_Question("Replace Filter",
                     "Search Filter already exists. Do you wish to overwrite the Search Filter \"" + name +
                         "\"") != Answer_Yes) {
    ui->Edit2->setFocus();
    return false;
  }
  return true;
}

void TFilters_Frm::OpenBtnClick() {
  if (Process_Action()) accept();
}

void TFilters_Frm::DelbtnClick() {
  const QList<QTreeWidgetItem*> selected = ui->ListView1->selectedItems();
  if (selected.isEmpty()) return;
  const std::string name = From_Qt(selected.first()->text(0));
  if (Raise_Question("Delete Search Filter",
                     Format("Are you sure you wish to delete the Search Filter \"%s\"?", name)) != Answer_Yes)
    return;
  Delete_Filter(book, name, Is_Shared());
  Populate_Filter_List();
  ui->Edit2->clear();
}

bool Save_Filter(const std::string& Book) {
  TFilters_Frm form(TFilters_Frm::TMode::Save, Book, Active_Window());
  CentreForm(&form);
  if (form.exec() != QDialog::Accepted) return false;
  CurrentSearch->SavetoTable(Book, form.Filter_Name(), form.Is_Shared());
  return true;
}

bool Load_Filter(const std::string& Book) {
  TFilters_Frm form(TFilters_Frm::TMode::Load, Book, Active_Window());
  CentreForm(&form);
  if (form.exec() != QDialog::Accepted) return false;
  Load_Filter_Settings(Book, form.Filter_Name(), form.Is_Shared());
  return true;
}

}  // namespace KTReminds
