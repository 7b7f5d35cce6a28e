#include <QLabel>
#include <QVBoxLayout>

#include "KTAccess.h"
#include "Kt_data_01.h"
#include "Kt_util_01.h"

namespace KTAccess {

using namespace Kt_forms;

namespace {

// Says who may do what. Rights of single users are set when the host has windows for users.
class TPermissions_Frm : public TPermissions_Page {
 public:
  TPermissions_Frm() : title(new QLabel(this)), state(new QLabel(this)), explanation(new QLabel(this)) {
    setObjectName(QStringLiteral("Permissions_Frm"));
    title->setObjectName(QStringLiteral("Title"));
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    title->setText(tr(" Access Permissions"));
    state->setWordWrap(true);
    state->setText(Kt_data_01::DB_Permissions
                       ? tr("Permissions of single users cannot be changed here yet.")
                       : tr("This database has no user accounts: whoever opens it may do everything."));
    explanation->setObjectName(QStringLiteral("Explanation"));
    explanation->setWordWrap(true);
    explanation->setText(
        tr("There are four separate permissions: to create events of one's own, to change events, to delete "
           "them, and to see them."));
    explanation->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(state);
    layout->addWidget(explanation);
    layout->addStretch();
    Initialise_Form(this);
  }
  void Set_Title(const std::string& text) override { title->setText(To_Qt(text)); }
  void Show_Explanation() override { explanation->show(); }

 protected:
  void Handle_Message(const TMessage& message) override {
    if (message.Number() == umGetFormName) Copy_Form_Name(*this, message);
  }

 private:
  QLabel *title, *state, *explanation;
};

}  // namespace

bool Display_Permissions_Page(QWidget* parent, TForm_Reference& form, bool /*in_dialog*/,
                              const std::string& /*node*/, const std::string& /*owner*/, int /*kind*/,
                              bool /*read_only*/) {
  auto* page = form.As<TPermissions_Page>();
  if (!page) {
    if (TForm* other = form.Get(); other && !other->Close_Form()) return false;
    page = new TPermissions_Frm;
    form.Set(page);
  }
  Embed_Page(page, parent);
  page->show();
  return true;
}

}  // namespace KTAccess
