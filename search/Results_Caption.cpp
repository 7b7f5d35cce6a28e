#include "Results_Caption.h"

#include <QCoreApplication>
#include <QLocale>

namespace KTReminds {

namespace {

QString Text(const char* source) {
  return QCoreApplication::translate("Search_Results", source);
}

}  // namespace

QString Results_Caption(const QString& found, bool all, std::int64_t elapsed_msecs) {
  if (!all) return Text("Search Results [%1, the search was stopped]").arg(found);
  return Text("Search Results [%1 in %2 seconds]")
      .arg(found, QLocale().toString(static_cast<double>(elapsed_msecs) / 1000, 'f', 2));
}

QString Searching_Caption() {
  return Text("Searching. Press Escape to stop.");
}

}  // namespace KTReminds
