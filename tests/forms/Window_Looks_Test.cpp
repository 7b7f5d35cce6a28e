#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include "Book_Dialogs.h"
#include "Contact_Dialog.h"
#include "Editor_Fixture.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Preferences.h"
#include "Sample_Calendar.h"
#include "Welcome.h"

using namespace Plexidex;

namespace {

/// The host's window, pages and dialogs on the sample's data, dark or light.
class Window_Looks : public TEditor_Fixture, public testing::WithParamInterface<bool> {
 protected:
  Window_Looks() : light(QApplication::palette()) {
    if (GetParam()) QApplication::setPalette(Dark_Palette());
    Fill_With_Sample({}, Kt_util_01::Today());
  }
  ~Window_Looks() override { QApplication::setPalette(light); }

  static std::string Look(QWidget* window, const char* name) {
    Settle();
    const std::string wrong = Make_Checks(window);
    Picture(window, QStringLiteral("window_%1_%2")
                        .arg(QString::fromLatin1(name),
                             GetParam() ? QStringLiteral("dark") : QStringLiteral("light")));
    return wrong;
  }
  static void Look_At_Dialog(const char* name, const std::function<void()>& call) {
    TModal_Driver driver([&](QWidget* form) {
      EXPECT_EQ(Look(form, name), "") << name;
      QTest::keyClick(form, Qt::Key_Escape);
    });
    call();
  }

  const QPalette light;
};

TEST_P(Window_Looks, Nothing_Is_Clipped_Unnamed_Or_Ambiguous) {
  TMain_Window window;
  Show(window);
  const std::string book = database.Book().Key;
  const struct {
    TNode_Kind Kind;
    const char* Name;
  } pages[] = {{TNode_Kind::Book, "weeks"},
               {TNode_Kind::Tasks, "tasks"},
               {TNode_Kind::Contacts, "contacts"},
               {TNode_Kind::Calendar, "calendar"}};
  for (const auto& page : pages) {
    ASSERT_TRUE(window.Tree().Select(page.Kind, book));
    EXPECT_EQ(Look(&window, page.Name), "") << page.Name;
  }
  const std::string contact = Query_Text("SELECT Key FROM KT_Contacts WHERE Type = 0 ORDER BY DisplayName");
  ASSERT_TRUE(window.Tree().Select(TNode_Kind::Contact, book, contact));
  EXPECT_EQ(Look(&window, "contact"), "");
  ASSERT_TRUE(window.Tree().Select(TNode_Kind::Calendar, book));
  for (const char* name : {"Tools1", "Book", "File"}) {
    auto* menu = Control<QMenu>(&window, name);
    menu->popup(window.mapToGlobal(QPoint(10, 30)));
    Settle();
    Picture(menu, QStringLiteral("window_menu_%1").arg(QString::fromLatin1(name)));
    menu->close();
  }
  window.resize(560, 420);
  EXPECT_EQ(Look(&window, "narrow"), "");

  Look_At_Dialog("contact_dialog", [&] { Edit_Contact(&window, contact); });
  Look_At_Dialog("book_dialog", [&] { Set_Up_Book(&window, book); });
  Look_At_Dialog("preferences", [&] { Edit_Preferences(&window, database.Path()); });
  Look_At_Dialog("welcome", [&] { EXPECT_FALSE(Welcome(database.Path())); });
}

INSTANTIATE_TEST_SUITE_P(Of, Window_Looks, testing::Values(false, true));

}  // namespace
