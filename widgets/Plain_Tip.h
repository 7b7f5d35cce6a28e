#pragma once

#include <QRect>
#include <QString>

class QHelpEvent;
class QWidget;

namespace KTReminds {

/// Answers the question for a tip: shows a text, which may have lines, as it stands and not as markup, while
/// the mouse stays over a place of the widget. An empty text hides the tip.
void Show_Plain_Tip(const QHelpEvent& asked, const QString& text, QWidget* widget, const QRect& place);

}  // namespace KTReminds
