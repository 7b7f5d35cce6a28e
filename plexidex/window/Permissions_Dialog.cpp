#include "Permissions_Dialog.h"

#include "Host_Dialog.h"
#include "KTAccess.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

class TPermissions_Dialog : public THost_Dialog {
 public:
  TPermissions_Dialog(const std::string& book, const std::string& owner, int kind, QWidget* parent)
      : THost_Dialog(tr("Permissions"), parent) {
    setObjectName(QStringLiteral("Permissions_Dialog"));
    auto* place = new QWidget;
    Form()->addRow(place);
    KTAccess::Display_Permissions_Page(place, page, true, book, owner, kind, false);
    page.As<KTAccess::TPermissions_Page>()->Show_Explanation();
    Buttons()->setStandardButtons(QDialogButtonBox::Close);
    constexpr int chars_wide = 85, lines_high = 20;
    setMinimumWidth(fontMetrics().averageCharWidth() * chars_wide);
    place->setMinimumHeight(fontMetrics().lineSpacing() * lines_high);
    Finish();
    place->setFocusProxy(page.Get());
    page.Get()->setFocus();
  }

 protected:
  bool Save() override { return true; }

 private:
  TForm_Reference page;
};

}  // namespace

void Edit_Permissions(QWidget* window, const std::string& book, const std::string& owner, int kind) {
  TPermissions_Dialog(book, owner, kind, window).exec();
}

}  // namespace Plexidex
