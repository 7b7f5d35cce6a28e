#include "Name_Dialog.h"

#include <QLineEdit>

#include "Host_Dialog.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

class TName_Dialog : public THost_Dialog {
 public:
  TName_Dialog(const QString& title, const QString& thing, const std::string& text, const TSave_Name& save,
               QWidget* parent)
      : THost_Dialog(title, parent), thing(thing), name(new QLineEdit(To_Qt(text))), save(save) {
    setObjectName(QStringLiteral("Name_Dialog"));
    name->setObjectName(QStringLiteral("Name"));
    Form()->addRow(tr("&Name of the %1:").arg(thing), name);
    setMinimumWidth(fontMetrics().averageCharWidth() * 55);
    Finish();
    Guard_Inputs();
  }

 protected:
  bool Save() override {
    const std::string text = From_Qt(name->text().simplified());
    if (text.empty()) return Refuse(name, "A " + From_Qt(thing) + " needs a name.");
    const auto why = save(text);
    return !why || (!why->empty() && Refuse(name, *why));
  }

 private:
  const QString thing;
  QLineEdit* name;
  const TSave_Name& save;
};

}  // namespace

bool Enter_Name(QWidget* window, const QString& title, const QString& thing, const std::string& name,
                const TSave_Name& save) {
  TName_Dialog dialog(title, thing, name, save, window);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace Plexidex
