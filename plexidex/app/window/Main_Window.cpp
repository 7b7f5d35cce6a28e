#include "Main_Window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QMenuBar>
#include <QProgressDialog>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeWidget>

#include "Books.h"
#include "Calendar_Export.h"
#include "Calendar_Import.h"
#include "Database.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Upcoming_Page.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

constexpr int Book_Role = Qt::UserRole;
constexpr int Calendar_Role = Qt::UserRole + 1;

// Ends what is under way; nothing has been written then.
class ECancelled : public std::exception {};

// A progress dialog that can be cancelled while nothing is being written.
class TProgress_Dialog : public Kt_data_01::TProgress_Bar {
 public:
  TProgress_Dialog(QWidget* parent, const QString& text) : dialog(text, QObject::tr("Cancel"), 0, 0, parent) {
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(300);
  }
  void Set_Max(std::int64_t steps) override { dialog.setMaximum(static_cast<int>(steps)); }
  void Set_Position(std::int64_t steps) override {
    dialog.setValue(static_cast<int>(steps));
    if (dialog.wasCanceled()) throw ECancelled();
  }

 private:
  QProgressDialog dialog;
};

QString Summary(const TImport_Report& report) {
  QString text =
      QObject::tr(
          "%1 components read: %2 recurring sets, %3 single events and %4 tasks written, %5 unchanged, "
          "%6 replaced.")
          .arg(report.Read)
          .arg(report.Sets)
          .arg(report.Events)
          .arg(report.Tasks)
          .arg(report.Unchanged)
          .arg(report.Replaced);
  constexpr std::size_t most = 12;
  if (!report.Unused.empty()) text += QObject::tr("\n\nNot used:");
  for (std::size_t i = 0; i < std::min(most, report.Unused.size()); ++i) {
    text +=
        QLatin1Char('\n') + To_Qt(report.Unused[i].What) + QStringLiteral(": ") + To_Qt(report.Unused[i].Why);
  }
  if (report.Unused.size() > most) text += QObject::tr("\nand %1 more").arg(report.Unused.size() - most);
  return text;
}

}  // namespace

TMain_Window::TMain_Window() : splitter(new QSplitter), books(new QTreeWidget), page(new TUpcoming_Page) {
  setWindowTitle(QStringLiteral("Plexidex"));
  setObjectName(QStringLiteral("Main_Window"));
  books->setObjectName(QStringLiteral("Books"));
  books->setHeaderHidden(true);
  books->setRootIsDecorated(false);
  books->setAccessibleName(tr("Books"));
  splitter->addWidget(books);
  splitter->addWidget(page);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({220, 700});
  splitter->setChildrenCollapsible(false);
  setCentralWidget(splitter);
  statusBar();
  Make_Menus();
  resize(920, 600);
  connect(books, &QTreeWidget::currentItemChanged, this, [this] { Show_Selected(); });
  Refresh();
}

TMain_Window::~TMain_Window() = default;

void TMain_Window::Make_Menus() {
  const auto add = [this](QMenu* menu, const QString& text, const QKeySequence& keys, const QString& hint,
                          auto run) {
    QAction* action = menu->addAction(text);
    action->setShortcut(keys);
    action->setStatusTip(hint);
    connect(action, &QAction::triggered, this, run);
  };
  QMenu* file = menuBar()->addMenu(tr("&File"));
  file->setObjectName(QStringLiteral("File"));
  add(file, tr("New &Event..."), QKeySequence::New, tr("Create a New Calendar Event"),
      [this] { page->New_Event(); });
  add(file, tr("New &Task..."), Qt::CTRL | Qt::SHIFT | Qt::Key_N, tr("Create a New Address Book Task"),
      [this] { page->New_Task(); });
  file->addSeparator();
  add(file, tr("&Import..."), Qt::CTRL | Qt::Key_I, tr("Brings a calendar file into the selected book"),
      [this] { Import(); });
  add(file, tr("E&xport..."), Qt::CTRL | Qt::Key_E, tr("Writes the selected book to a calendar file"),
      [this] { Export(); });
  file->addSeparator();
  add(file, tr("&Quit"), QKeySequence::Quit, tr("Leaves the program"), [this] { close(); });
}

std::string TMain_Window::Selected_Book() const {
  const QTreeWidgetItem* item = books->currentItem();
  while (item && item->parent()) item = item->parent();
  return item ? From_Qt(item->text(0)) : std::string();
}

void TMain_Window::Refresh() {
  const std::string selected = Selected_Book();
  books->clear();
  try {
    for (const Kt_data_01::TBook& book : Kt_data_01::List_Books()) {
      auto* item = new QTreeWidgetItem(books, {To_Qt(book.Name)});
      item->setData(0, Book_Role, To_Qt(book.Key));
      item->setData(0, Calendar_Role, To_Qt(book.Calendar));
      if (book.Name == selected || !books->currentItem()) books->setCurrentItem(item);
    }
  } catch (...) {
    Kt_data_01::FailRead("Main_Window:Refresh [KT_Books]");
  }
  Show_Selected();
}

void TMain_Window::Show_Selected() {
  const QTreeWidgetItem* item = books->currentItem();
  page->Show_Book(item ? From_Qt(item->data(0, Book_Role).toString()) : std::string(),
                  item ? From_Qt(item->data(0, Calendar_Role).toString()) : std::string());
}

void TMain_Window::Import() {
  const QString file =
      QFileDialog::getOpenFileName(this, tr("Import a Calendar"), {}, tr("Calendars (*.ics);;All files (*)"));
  if (file.isEmpty()) return;
  QPointer<TMain_Window> alive = this;
  try {
    TImport_Report report;
    {
      TProgress_Dialog progress(this, tr("Reading the calendar..."));
      TImport_Options options;
      options.Book = Selected_Book();
      options.Progress = &progress;
      report = Import_Calendar(From_Qt(file), options);
    }
    Kt_util_01::Raise_Info("Import", From_Qt(Summary(report)));
  } catch (const ECancelled&) {
    statusBar()->showMessage(tr("The import was cancelled; nothing was written."), 15'000);
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error("Import", e.what());
  }
  if (alive) Refresh();
}

void TMain_Window::Export() {
  const QString file = QFileDialog::getSaveFileName(this, tr("Export a Calendar"),
                                                    QStringLiteral("calendar.ics"), tr("Calendars (*.ics)"));
  if (file.isEmpty()) return;
  try {
    TProgress_Dialog progress(this, tr("Writing the calendar..."));
    const TExport_Report report = Export_Calendar(From_Qt(file), Selected_Book(), &progress);
    statusBar()->showMessage(tr("Written: %1 sets, %2 single events, %3 tasks")
                                 .arg(report.Rules + report.Dates)
                                 .arg(report.Events)
                                 .arg(report.Tasks),
                             15'000);
  } catch (const ECancelled&) {
    statusBar()->showMessage(tr("The export was cancelled; the file is as it was."), 15'000);
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error("Export", e.what());
  }
}

void TMain_Window::closeEvent(QCloseEvent* event) {
  if (Kt_data_01::Update_Is_Open()) return event->ignore();
  event->accept();
}

}  // namespace Plexidex
