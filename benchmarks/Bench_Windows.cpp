#include "Bench_Windows.h"

#include <QApplication>

namespace Bench {

void Need_Windows() {
  static int count = 1;
  static char name[] = "kt_bench";
  static char* arguments[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qunsetenv("QT_QPA_PLATFORMTHEME");
  if (!QCoreApplication::instance()) new QApplication(count, arguments);
}

}  // namespace Bench
