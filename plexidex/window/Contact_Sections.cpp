#include "Contact_Sections.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "Kt_forms.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

// A label is the user's own text: an ampersand in it is no mnemonic.
QString Caption(const std::string& label) {
  return To_Qt(label).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

TContact_Sections::TContact_Sections(const TTemplate& of, TContact_Details details,
                                     const TOther_Texts& others)
    : sections(new QVBoxLayout(this)), kind(of), notes(new QPlainTextEdit) {
  sections->setContentsMargins(0, 0, 0, 0);
  details.Fields = With_Address_In(details.Fields, kind.Address_Style);
  const auto titled = [&](TField_Kind what) {
    switch (what) {
      case TField_Kind::Text:
        return Caption(kind.Name);
      case TField_Kind::Telephone:
        return tr("Telephone");
      default:
        return tr("E-mail and web");
    }
  };
  std::map<QString, QFormLayout*> forms;
  for (std::size_t i = 0; i < Template_Fields.size(); ++i) {
    const auto [code, column, what] = Template_Fields[i];
    const std::string& text = details.Fields[code];
    if (kind.Labels[i].empty() && text.empty()) continue;
    const std::string name = Field_Name(kind, i);
    if (what == TField_Kind::Address) {
      QFormLayout* form = Add_Section(Caption(name));
      for (const TAddress_Part& part : kind.Address_Style)
        Add_Field(form, part.Code, *part.Label ? From_Qt(tr(part.Label)) : name, details.Fields[part.Code],
                  part.Has_Lines);
      continue;
    }
    QFormLayout*& form = forms[titled(what)];
    if (!form) form = Add_Section(titled(what));
    Add_Field(form, code, name, text, false);
  }
  QFormLayout* other_form = Add_Section(tr("Other fields"));
  for (std::size_t i = 0; i < Other_Fields; ++i) {
    other_fields[i] = new QLineEdit(To_Qt(details.Other[i]));
    other_fields[i]->setObjectName(QStringLiteral("Other%1").arg(i + 1));
    other_form->addRow(Caption(others[i]) + QLatin1Char(':'), other_fields[i]);
  }
  notes->setObjectName(QStringLiteral("Notes"));
  constexpr int lines_of_notes = 4;
  Add_Lines(Add_Section(tr("Notes")), tr("N&otes:"), notes, details.Notes, lines_of_notes);
  sections->addStretch();
}

QFormLayout* TContact_Sections::Add_Section(const QString& title) {
  auto* section = new QGroupBox(title);
  auto* form = new QFormLayout(section);
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  sections->addWidget(section);
  return form;
}

void TContact_Sections::Add_Lines(QFormLayout* form, const QString& label, QPlainTextEdit* input,
                                  const std::string& text, int lines) {
  input->setPlainText(To_Qt(text));
  input->setTabChangesFocus(true);
  const int margins = input->frameWidth() * 2 + static_cast<int>(input->document()->documentMargin()) * 2;
  input->setFixedHeight(
      qMax(input->minimumSizeHint().height(), input->fontMetrics().lineSpacing() * lines + margins));
  form->addRow(label, input);
}

void TContact_Sections::Add_Field(QFormLayout* form, int code, const std::string& label,
                                  const std::string& text, bool has_lines) {
  constexpr int lines_of_address = 4;
  const QString name = QStringLiteral("Field%1").arg(code), caption = Caption(label) + QLatin1Char(':');
  if (has_lines) {
    auto* block = new QPlainTextEdit;
    block->setObjectName(name);
    Add_Lines(form, caption, block, text, lines_of_address);
    blocks[code] = block;
  } else {
    auto* field = new QLineEdit(To_Qt(text));
    field->setObjectName(name);
    form->addRow(caption, field);
    fields[code] = field;
  }
}

TContact_Details TContact_Sections::Details() const {
  TContact_Details details;
  details.Template = kind.Key;
  for (const auto& [code, field] : fields) details.Fields[code] = From_Qt(field->text().trimmed());
  for (const auto& [code, block] : blocks) details.Fields[code] = From_Qt(block->toPlainText());
  details.Fields = With_Address_In(details.Fields, kind.Address_Style);
  for (std::size_t i = 0; i < Other_Fields; ++i) details.Other[i] = From_Qt(other_fields[i]->text());
  details.Notes = From_Qt(notes->toPlainText());
  return details;
}

void TContact_Sections::Set_Read_Only() {
  for (auto* line : findChildren<QLineEdit*>()) line->setReadOnly(true);
  for (auto* memo : findChildren<QPlainTextEdit*>()) memo->setReadOnly(true);
}

}  // namespace Plexidex
