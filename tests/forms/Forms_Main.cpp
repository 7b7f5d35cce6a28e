#include <gtest/gtest.h>

#include <QApplication>
#include <QFontDatabase>

#include "Kt_forms.h"

// Windows without a screen, in one style and one font, whatever the machine prefers.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qunsetenv("QT_QPA_PLATFORMTHEME");
  qputenv("QTEST_FUNCTION_TIMEOUT", "60000");
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  Kt_forms::Reserve_Messages();
  return RUN_ALL_TESTS();
}
