#include <gtest/gtest.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

#include "Form_Driver.h"
#include "Kt_forms.h"
#include "Kt_labels.h"
#include "Kt_util_01.h"
#include "Message_Prompts.h"
#include "Qt_Settings.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace Kt_forms;

namespace {

class TPage : public TForm {
 public:
  std::string Told;
  bool May_Close = true;
  std::function<void()> On_Message;

 protected:
  bool FormCloseQuery() override { return May_Close; }
  void FormClose() override { Told += "c"; }
  void FormActivate() override { Told += "+"; }
  void FormDeactivate() override { Told += "-"; }
  void Handle_Message(const TMessage& message) override {
    Told += std::to_string(message.Number() - First_Message) + "/" + std::to_string(message.WParam) + "/" +
            std::to_string(message.LParam) + " ";
    if (On_Message) On_Message();
  }
};

class Forms : public testing::Test {
 protected:
  Kt_test::TTest_Seams seams;
};

TEST_F(Forms, A_Page_Is_Asked_Closed_Once_And_Its_Reference_Empties_At_Once) {
  QWidget host;
  auto* page = new TPage;
  page->setParent(&host);
  QPointer<TPage> alive = page;
  TForm_Reference reference;
  reference.Set(page);
  host.show();
  page->show();
  page->May_Close = false;
  EXPECT_FALSE(page->Close_Form());
  EXPECT_EQ(reference.Get(), page);
  page->May_Close = true;
  // Closed from inside one of its own handlers, which goes on afterwards.
  page->On_Message = [page] {
    EXPECT_TRUE(page->Close_Form());
    EXPECT_TRUE(page->Close_Form());
    page->Told += "still here ";
  };
  Send_Message(page, umSelectNode, 0, 0);
  EXPECT_EQ(reference.Get(), nullptr);
  ASSERT_TRUE(alive);
  EXPECT_EQ(alive->Told, "+4/0/0 c-still here ");
  Send_Message(page, umSelectNode, 0, 0);
  EXPECT_EQ(alive->Told, "+4/0/0 c-still here ") << "a closed page gets no message";
  Settle();
  EXPECT_FALSE(alive);
}

TEST_F(Forms, Messages_Are_Posted_Or_Sent_With_Their_Parameters) {
  TPage page;
  Post_Message(&page, umDisplayForm, 51, -1);
  Send_Message(&page, umGetFormName, 0, 7);
  EXPECT_EQ(page.Told, "34/0/7 ");
  Settle();
  EXPECT_EQ(page.Told, "34/0/7 10/51/-1 ");
  Post_Message(nullptr, umDisplayForm, 0, 0);
  page.On_Message = [] { throw std::runtime_error("trouble"); };
  seams.Prompts.Expect_Error("Read Failed", "The data could not be read: trouble\n\nKt_forms:Handle_Message");
  Send_Message(&page, umDateChanged, 0, 0);
}

TEST_F(Forms, Finds_The_Page_Around_A_Control_And_Focuses_Through_Tabs) {
  TPage page;
  auto* tabs = new QTabWidget(&page);
  auto* first = new QLineEdit;
  auto* second = new QWidget;
  auto* inside = new QLineEdit(QStringLiteral("text"), second);
  inside->setObjectName(QStringLiteral("Inside"));
  tabs->addTab(first, QStringLiteral("1"));
  tabs->addTab(second, QStringLiteral("2"));
  EXPECT_EQ(Get_ParentForm(inside), &page);
  EXPECT_EQ(Get_ParentForm(&page), nullptr);
  page.show();
  Focus_Control(&page, "Inside");
  EXPECT_EQ(tabs->currentWidget(), second);
  EXPECT_EQ(page.focusWidget(), inside);
  EXPECT_EQ(inside->selectedText(), QStringLiteral("text"));
  Focus_Control(&page, "NoSuchControl");
}

TEST_F(Forms, Hints_Are_Split_And_Controls_Named_For_Screen_Readers) {
  QWidget form;
  auto* label = new QLabel(QStringLiteral("&Subject:"), &form);
  auto* input = new QLineEdit(&form);
  label->setBuddy(input);
  input->setToolTip(QStringLiteral("Search|Searches everything"));
  Initialise_Form(&form);
  EXPECT_EQ(input->accessibleName(), QStringLiteral("Subject"));
  EXPECT_EQ(input->toolTip(), QStringLiteral("Search"));
  EXPECT_EQ(input->statusTip(), QStringLiteral("Searches everything"));
  EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST_F(Forms, A_Time_Steps_By_Quarters_Round_Midnight_And_Keeps_What_Is_Typed) {
  TTimeEdit edit;
  const auto step = [&](const char* from, Qt::Key key) {
    edit.setText(QString::fromLatin1(from));
    QTest::keyClick(&edit, key);
    return edit.text();
  };
  EXPECT_EQ(step("9:00 AM", Qt::Key_Up), QStringLiteral("9:15 AM"));
  EXPECT_EQ(step("9:07 AM", Qt::Key_Up), QStringLiteral("9:15 AM"));
  EXPECT_EQ(step("9:07 AM", Qt::Key_Down), QStringLiteral("9:00 AM"));
  EXPECT_EQ(step("11:50 PM", Qt::Key_Up), QStringLiteral("12:00 AM"));
  EXPECT_EQ(step("12:00 AM", Qt::Key_Down), QStringLiteral("11:45 PM"));
  EXPECT_EQ(step("soon", Qt::Key_Up), QStringLiteral("soon"));
}

TEST_F(Forms, Labels_Shorten_Paths_And_Act_As_Links) {
  TFileLabel file;
  file.resize(file.fontMetrics().horizontalAdvance(QStringLiteral("mmmmmmmmmmmm")), 20);
  file.Set_File(QStringLiteral("/a/long/way/down/to/ding.wav"));
  EXPECT_TRUE(file.text().endsWith(QStringLiteral("/ding.wav"))) << file.text().toStdString();
  EXPECT_TRUE(file.text().startsWith(QChar(0x2026)));
  EXPECT_EQ(file.toolTip(), QStringLiteral("/a/long/way/down/to/ding.wav"));
  TWebLabel link(QStringLiteral("Daily"));
  link.resize(link.sizeHint());
  int clicks = 0;
  QObject::connect(&link, &TWebLabel::Clicked, [&clicks] { ++clicks; });
  QTest::mouseClick(&link, Qt::LeftButton);
  QTest::mouseClick(&link, Qt::RightButton);
  QTest::keyClick(&link, Qt::Key_Return);
  QTest::keyClick(&link, Qt::Key_Space);
  EXPECT_EQ(clicks, 3);
}

TEST_F(Forms, Settings_Outlive_Their_Store_And_Keep_Every_Text) {
  TTemporary_Folder folder;
  const QString file = To_Qt(folder.File("settings.ini"));
  const std::string text = "a, b;\"c\"\n\xC3\xA4 %General";
  {
    TQt_Settings store(file);
    store.Write("General", "Text", text);
    Kt_util_01::Install_Settings(&store);
    Kt_util_01::Write_Bool("General", "Show Calendar", true);
    Kt_util_01::Write_Integer("Options", "Reminder Type", 18);
  }
  TQt_Settings store(file);
  Kt_util_01::Install_Settings(&store);
  EXPECT_EQ(Kt_util_01::Read_String("General", "Text", ""), text);
  EXPECT_TRUE(Kt_util_01::Read_Bool("General", "Show Calendar", false));
  EXPECT_EQ(Kt_util_01::Read_Integer("Options", "Reminder Type", 1), 18);
  EXPECT_EQ(Kt_util_01::Read_Integer("Options", "Nothing", 42), 42);
  Kt_util_01::Install_Settings(&seams.Settings);
}

TEST_F(Forms, Prompts_Are_Message_Boxes_With_Plain_Texts) {
  TMessage_Prompts prompts;
  {
    TModal_Driver driver([](QWidget* box) {
      EXPECT_EQ(box->windowTitle(), QStringLiteral("Caption"));
      EXPECT_EQ(box->property("text").toString(), QStringLiteral("<b>one</b>\n\ntwo\nthree"));
      Picture(box, QStringLiteral("prompt_error"));
      QTest::keyClick(box, Qt::Key_Return);
    });
    prompts.Error("Caption", "<b>one</b>\r\n\r\ntwo\rthree");
  }
  const auto answer = [&prompts](Qt::Key key) {
    TModal_Driver driver([key](QWidget* box) { QTest::keyClick(box, key, Qt::NoModifier); });
    return prompts.Question("Caption", "Sure?");
  };
  EXPECT_EQ(answer(Qt::Key_Escape), Kt_util_01::Answer_No);
  TModal_Driver driver([](QWidget* box) { QTest::keyClick(box, Qt::Key_Y, Qt::AltModifier); });
  EXPECT_EQ(prompts.Question("Caption", "Sure?"), Kt_util_01::Answer_Yes);
}

}  // namespace
