#include "Page_Tools.h"

#include <QAction>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

#include "Image_List.h"
#include "Kt_forms.h"

namespace KTReminds {

QList<QAction*> TCommand::Actions() const {
  QList<QAction*> actions;
  for (QAction* action : {Tool, Item}) {
    if (action) actions.append(action);
  }
  return actions;
}

void TCommand::Set_Enabled(bool enabled) const {
  for (QAction* action : Actions()) action->setEnabled(enabled);
}

void Set_Up_Tools(QWidget* panel, QToolBar* bar) {
  const TImage_List images("P3_Enabled");
  const auto set_image = [&images](auto* shown) {
    if (const QVariant image = shown->property("Image"); image.isValid())
      shown->setIcon(images.Icon(image.toInt()));
  };
  for (QAction* action : panel->findChildren<QAction*>()) set_image(action);
  for (QMenu* menu : panel->findChildren<QMenu*>()) {
    set_image(menu);
    menu->menuAction()->setStatusTip(menu->statusTip());
  }
  for (QAction* tool : bar->actions()) {
    if (tool->isSeparator()) continue;
    bar->widgetForAction(tool)->setObjectName(tool->objectName());
    Kt_forms::Set_Hint(tool, tool->toolTip());
  }
  // The style's own image for what does not fit in is black on every palette.
  if (auto* more = bar->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
    more->setIcon({});
    more->setArrowType(Qt::DownArrow);
  }
}

int Tag(const QObject* object) {
  return object->property("Tag").toInt();
}

}  // namespace KTReminds
