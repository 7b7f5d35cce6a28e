#include "Contact_Drag.h"

#include "Kt_forms.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

QString Type() {
  return QStringLiteral("application/x-plexidex-contacts");
}

}  // namespace

QMimeData* To_Mime(const TDragged_Contacts& dragged) {
  if (dragged.Keys.empty()) return nullptr;
  QStringList lines{To_Qt(dragged.Book)};
  for (const std::string& key : dragged.Keys) lines << To_Qt(key);
  auto* mime = new QMimeData;
  mime->setData(Type(), lines.join(QLatin1Char('\n')).toUtf8());
  return mime;
}

std::optional<TDragged_Contacts> From_Mime(const QMimeData* mime) {
  if (!mime->hasFormat(Type())) return {};
  TDragged_Contacts dragged;
  QStringList lines = QString::fromUtf8(mime->data(Type())).split(QLatin1Char('\n'));
  dragged.Book = From_Qt(lines.takeFirst());
  for (const QString& key : lines) dragged.Keys.push_back(From_Qt(key));
  return dragged;
}

}  // namespace Plexidex
