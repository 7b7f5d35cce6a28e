#pragma once

#include <QRect>
#include <QString>

class QHelpEvent;
class QWidget;

namespace KTReminds {

/// A text for a tip, which may have lines, that is shown as it stands and not as markup.
QString As_Plain_Tip(const QString& text);

/// Answers the question for a tip: shows a plain text while the mouse stays over a place of the widget. An
/// empty text hides the tip.
void Show_Plain_Tip(const QHelpEvent& asked, const QString& text, QWidget* widget, const QRect& place);

}  // namespace KTReminds
