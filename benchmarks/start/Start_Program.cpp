// Starts with a window and ends as soon as it has been painted: "empty", a window of the same kind with
// nothing in it, or "calendar FILE", the program on a database.

#include <QApplication>
#include <QDir>
#include <QListView>
#include <QMainWindow>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <string>

#include "Window_Program.h"

namespace {

// Ends the program once a list has been painted; the event itself is let through first.
class TEnd_After_Paint : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* list = event->type() == QEvent::Paint ? qobject_cast<QListView*>(watched->parent()) : nullptr;
    if (list && list->isVisible()) {
      QTimer::singleShot(0, qApp, [] { _Exit(0); });
    }
    return false;
  }
};

void Watch_For_Paint() {
  qApp->installEventFilter(new TEnd_After_Paint(qApp));
}
Q_COREAPP_STARTUP_FUNCTION(Watch_For_Paint)

int Run_Empty(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  for (const char* title : {"File", "Book", "View", "Tools", "Help"})
    window.menuBar()->addMenu(QString::fromLatin1(title));
  window.addToolBar(QStringLiteral("Tools"));
  auto* splitter = new QSplitter;
  splitter->addWidget(new QTreeWidget);
  splitter->addWidget(new QListView);
  window.setCentralWidget(splitter);
  window.statusBar();
  window.resize(1000, 660);
  window.show();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // Not the settings of whoever runs this.
  qputenv("XDG_CONFIG_HOME", (QDir::tempPath() + QStringLiteral("/kt_start_settings")).toUtf8());
  if (argc == 2 && std::string(argv[1]) == "empty") return Run_Empty(argc, argv);
  if (argc != 3) return 2;
  Plexidex::TWindow_Options options;
  options.Database = argv[2];
  Plexidex::Run_Window(argc, argv, options);
  return 1;
}
