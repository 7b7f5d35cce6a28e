#pragma once

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <functional>
#include <string>

#include "Kt_forms.h"

class QLabel;

namespace Plexidex {

/// A dialog of labelled controls with OK and Cancel. OK keeps it open while Accept says false.
class THost_Dialog : public Kt_forms::TDialog_Form {
  Q_OBJECT

 public:
  THost_Dialog(const QString& title, QWidget* parent);
  void accept() override;

 protected:
  /// Checks and saves; has told the user why when it is false.
  virtual bool Save() = 0;
  /// To be called when all controls are in the form.
  void Finish();
  /// For Save: says why what is typed into an input cannot be, and brings the user back to it. False.
  bool Refuse(QLineEdit* input, const std::string& why);
  QFormLayout* Form() { return form; }
  QDialogButtonBox* Buttons() { return buttons; }

 private:
  QFormLayout* form;
  QDialogButtonBox* buttons;
};

/// A text of a dialog that is as long as it needs to be. The caller owns it.
QLabel* Plain_Label(const QString& text);

/// Whether the user may; one who may not hears the warning sound.
bool May(const std::string& owner, int level);

/// Runs a body inside an update bracket. False when the database takes no update, or when the body failed;
/// either has been reported, a failure with the tag.
bool Update_Host(const char* tag, const std::function<void()>& body);

}  // namespace Plexidex
