#include "Window_Pictures.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QTimer>
#include <functional>
#include <iostream>

#include "Books.h"
#include "KTReminds.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

class TPictures {
 public:
  explicit TPictures(const QString& target) : folder(target) {}

  void Take(QWidget* window, const QString& name) {
    const QString file = folder + QLatin1Char('/') + name + QStringLiteral(".png");
    if (window->grab().save(file)) {
      std::cout << From_Qt(file) << std::endl;
      return;
    }
    std::cerr << "The picture \"" << From_Qt(file) << "\" cannot be written." << std::endl;
    failed = true;
  }

  // Takes a picture of the dialog that a call opens, and cancels it.
  void Take_Dialog(const QString& name, const std::function<void()>& call) {
    QTimer::singleShot(150, qApp, [this, name] {
      if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        Take(dialog, name);
        dialog->reject();
      } else {
        std::cerr << "There is no window for the picture \"" << From_Qt(name) << "\"." << std::endl;
        failed = true;
      }
    });
    call();
  }

  bool Failed() const { return failed; }

 private:
  QString folder;
  bool failed = false;
};

}  // namespace

int Write_Pictures(QWidget& main_window, const std::string& target) {
  const QString folder = To_Qt(target);
  if (!QDir().mkpath(folder)) {
    std::cerr << "The folder \"" << target << "\" cannot be made." << std::endl;
    return 1;
  }
  TPictures pictures(folder);
  main_window.show();
  QApplication::processEvents();
  pictures.Take(&main_window, QStringLiteral("main_window"));
  const auto books = Kt_data_01::List_Books();
  const std::string book = books.empty() ? std::string() : books.front().Key;
  pictures.Take_Dialog(QStringLiteral("new_event"),
                       [&] { KTReminds::Reminder_Properties({}, {}, book, {}, false); });
  pictures.Take_Dialog(QStringLiteral("new_task"),
                       [&] { KTReminds::Task_Properties({}, {}, book, {}, false); });
  pictures.Take_Dialog(QStringLiteral("reminder_properties"), [&] {
    Kt_util_01::TDateTime next_time = 0;
    bool on = true;
    int offset = 15;
    std::string sound;
    KTReminds::Alarm_Properties({}, Kt_util_01::Now(), next_time, on, offset, sound, false);
  });
  pictures.Take_Dialog(QStringLiteral("open_recurring_event"), [] {
    bool whole = false;
    KTReminds::Update_Recurring(whole);
  });
  return pictures.Failed() ? 1 : 0;
}

}  // namespace Plexidex
