#include "Plain_Tip.h"

#include <QHelpEvent>
#include <QToolTip>

namespace KTReminds {

// A tip that looks like markup would be shown as such.
QString As_Plain_Tip(const QString& text) {
  if (text.isEmpty()) return text;
  return QStringLiteral("<qt>") + text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")) +
         QStringLiteral("</qt>");
}

void Show_Plain_Tip(const QHelpEvent& asked, const QString& text, QWidget* widget, const QRect& place) {
  QToolTip::showText(asked.globalPos(), As_Plain_Tip(text), widget, place);
}

}  // namespace KTReminds
