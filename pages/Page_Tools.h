#pragma once

// The tools and menus of a page, made from its layout.

#include <QList>

class QAction;
class QObject;
class QToolBar;
class QWidget;

namespace KTReminds {

/// A command's tool and its item in the popup menu, which are enabled alike. Either may be missing.
struct TCommand {
  QAction* Tool = nullptr;
  QAction* Item = nullptr;

  QList<QAction*> Actions() const;
  void Set_Enabled(bool enabled) const;
};

/// Gives the actions and menus below a panel their images, whose numbers are in their property "Image", and
/// the buttons of the tool bar the names and hints of their actions.
void Set_Up_Tools(QWidget* panel, QToolBar* bar);

/// The number that the layout gave to an object.
int Tag(const QObject* object);

}  // namespace KTReminds
