#include <filesystem>
#include <fstream>

#include "Clip_Sounds.h"
#include "Editor_Fixture.h"
#include "Kt_labels.h"
#include "Message_Prompts.h"
#include "Qt_Settings.h"

namespace {

struct TPage : TForm {
  std::string Told;
  std::function<void()> On_Message;

 protected:
  void FormClose() override { Told += "c"; }
  void FormActivate() override { Told += "+"; }
  void FormDeactivate() override { Told += "-"; }
  void Handle_Message(const TMessage& message) override {
    Told += std::to_string(message.Number() - First_Message) + "/" + std::to_string(message.WParam) + "/" +
            std::to_string(message.LParam) + " ";
    if (On_Message) On_Message();
  }
};

using Forms = TEditor_Fixture;

TEST_F(Forms, A_Page_Is_Closed_Once_And_Its_Reference_Empties_At_Once) {
  QWidget host;
  const QPointer<TPage> page = new TPage;
  page->setParent(&host);
  TForm_Reference reference;
  reference.Set(page);
  host.show();
  // Closed from inside one of its own handlers, which goes on afterwards.
  page->On_Message = [page] {
    EXPECT_TRUE(page->Close_Form() && page->Close_Form());
    page->Told += "still here ";
  };
  Send_Message(page, umSelectNode, 0, 0);
  EXPECT_EQ(reference.Get(), nullptr);
  ASSERT_TRUE(page);
  Send_Message(page, umSelectNode, 0, 0);
  EXPECT_EQ(page->Told, "+4/0/0 c-still here ") << "a closed page gets no message";
  Settle();
  EXPECT_FALSE(page);
}

TEST_F(Forms, Messages_Are_Posted_Or_Sent_And_Their_Failures_Reported) {
  TPage page;
  Post_Message(&page, umDisplayForm, 51, -1);
  Send_Message(&page, umGetFormName, 0, 7);
  Settle();
  EXPECT_EQ(page.Told, "34/0/7 10/51/-1 ");
  Post_Message(nullptr, umDisplayForm, 0, 0);
  page.On_Message = [] { throw std::runtime_error("trouble"); };
  seams.Prompts.Expect_Error("Read Failed", "The data could not be read: trouble\n\nKt_forms:Handle_Message");
  Send_Message(&page, umDateChanged, 0, 0);
}

TEST_F(Forms, A_Dialog_Asks_Before_It_Discards_What_Was_Put_In) {
  struct TEditor : TDialog_Form {
    QLineEdit* Text = new QLineEdit(this);
    QCheckBox* Box = new QCheckBox(this);
    void FormShow() override { Guard_Inputs(); }
    using TDialog_Form::Cancel_Form;
  };
  const std::function<void(TEditor&)> ways[] = {[](TEditor& editor) { Cancel(&editor); },
                                                [](TEditor& editor) { editor.close(); }};
  for (const auto& leave : ways) {
    TEditor editor;
    editor.setWindowTitle(QStringLiteral("Notes"));
    Show(editor);
    leave(editor);
    EXPECT_FALSE(editor.isVisible()) << "nothing was changed";
    editor.show();
    editor.Box->setChecked(true);
    for (const int answer : {Answer_No, Answer_Yes}) {
      seams.Prompts.Expect_Question(
          "Discard changes?", "The changes in \"Notes\" have not been saved.\r\n\r\nDiscard them?", answer);
      leave(editor);
      EXPECT_EQ(editor.isVisible(), answer == Answer_No);
    }
    editor.show();
    editor.Text->setText(QStringLiteral("more"));
    editor.Cancel_Form();
    EXPECT_FALSE(editor.isVisible());
  }
}

TEST_F(Forms, Hints_Are_Split_And_Controls_Named_For_Screen_Readers) {
  QWidget form;
  QLabel label(QStringLiteral("&Subject:"), &form);
  QLineEdit input(&form);
  label.setBuddy(&input);
  input.setToolTip(QStringLiteral("Search|Searches everything"));
  Initialise_Form(&form);
  EXPECT_EQ(input.accessibleName() + input.toolTip() + input.statusTip(),
            QStringLiteral("SubjectSearchSearches everything"));
  EXPECT_EQ(label.textFormat(), Qt::PlainText);
}

TEST_F(Forms, A_Time_Steps_By_Quarters_Round_Midnight_And_Keeps_What_Is_Typed) {
  TTimeEdit edit;
  for (const auto& [from, key, to] : {std::tuple("9:07 AM", Qt::Key_Up, "9:15 AM"),
                                      {"9:07 AM", Qt::Key_Down, "9:00 AM"},
                                      {"11:50 PM", Qt::Key_Up, "12:00 AM"},
                                      {"12:00 AM", Qt::Key_Down, "11:45 PM"},
                                      {"soon", Qt::Key_Up, "soon"}}) {
    edit.setText(QString::fromLatin1(from));
    QTest::keyClick(&edit, key);
    EXPECT_EQ(edit.text().toStdString(), to) << from;
  }
}

TEST_F(Forms, Labels_Shorten_Paths_And_Act_As_Links) {
  const QString path = QStringLiteral("/a/long/way/down/to/ding.wav");
  TFileLabel file;
  file.resize(file.fontMetrics().horizontalAdvance(QStringLiteral("mmmmmmmmmmmm")), 20);
  file.Set_File(path);
  EXPECT_TRUE(file.text().startsWith(QChar(0x2026)) && file.text().endsWith(QStringLiteral("/ding.wav")));
  EXPECT_EQ(file.toolTip(), path);
  TWebLabel link(QStringLiteral("Daily"));
  link.resize(link.sizeHint());
  const QSignalSpy clicks(&link, &TWebLabel::Clicked);
  for (const auto button : {Qt::LeftButton, Qt::RightButton}) QTest::mouseClick(&link, button);
  for (const auto key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Tab}) QTest::keyClick(&link, key);
  EXPECT_EQ(clicks.count(), 3);
}

TEST_F(Forms, Settings_Outlive_Their_Store_And_Keep_Every_Text) {
  const TTemporary_Folder folder;
  const QString file = To_Qt(folder.File("settings.ini"));
  const std::string text = "a, b;\"c\"\n\xC3\xA4 %General";
  TQt_Settings(file).Write("General", "Text", text);
  std::string read;
  EXPECT_TRUE(TQt_Settings(file).Read("General", "Text", read) && read == text) << read;
  EXPECT_FALSE(TQt_Settings(file).Read("Options", "Nothing", read));
  for (const char* damage : {"\n[Common\n", "\nrubbish\n", "a\\0=", ""}) {
    const std::string before =
        *damage == 0 ? "" : File_Content(From_Qt(file)) + (damage[0] == 'a' ? std::string(1, '\0') : damage);
    std::ofstream(From_Qt(file)) << before;
    TQt_Settings settings(file);
    const std::string kept = From_Qt(file) + ".damaged-2024-01-15-120000";
    EXPECT_EQ(settings.Damage(), "The settings in \"" + From_Qt(file) +
                                     "\" were damaged; they are kept as \"" + kept +
                                     "\", and all preferences are as at first.");
    EXPECT_FALSE(settings.Read("General", "Text", read)) << damage;
    settings.Write("General", "Text", text);
    EXPECT_EQ(File_Content(kept), before);
    std::filesystem::remove(kept);
  }
  TQt_Settings nowhere(file + QStringLiteral("/x.ini"));
  nowhere.Write("General", "Text", text);
  nowhere.Write("General", "Text", text + text);
  EXPECT_EQ(seams.Prompts.Notices.size(), 1u) << "that it cannot be written";
}

TEST_F(Forms, A_Sound_That_Cannot_Be_Played_Is_Told_At_Once_Or_Later) {
  const TTemporary_Folder folder;
  QFile clip(QStringLiteral(":/clips/1.wav"));
  ASSERT_TRUE(clip.open(QIODevice::ReadOnly));
  const std::string whole = clip.readAll().toStdString();
  bool told = false;
  const auto play = [&](const std::string& content) {
    std::ofstream(folder.File("a.wav")) << content;
    told = false;
    return Play_Or(folder.File("a.wav"), [&] { told = true; });
  };
  for (const std::size_t size : {std::size_t{0}, std::size_t{40}, whole.size() - 1})
    EXPECT_FALSE(play(whole.substr(0, size))) << size;
  EXPECT_FALSE(play(std::string(whole.size(), 'x')));
  std::string foreign = whole;
  foreign[20] = 'U';  // its coding
  EXPECT_TRUE(play(foreign));
  EXPECT_TRUE(QTest::qWaitFor([&] { return told; }));
  EXPECT_FALSE(Play_Or(folder.File("a.wav"), [] {})) << "it is known now, until it is written anew";
}

TEST_F(Forms, Prompts_Are_Message_Boxes_With_Plain_Texts) {
  TMessage_Prompts prompts;
  With_Dialog(
      [](QWidget* box) {
        EXPECT_EQ(box->windowTitle() + box->property("text").toString(),
                  QStringLiteral("Caption<b>one</b>\n\ntwo\nthree"));
        Confirm(box);
      },
      [&] { prompts.Error("Caption", "<b>one</b>\r\n\r\ntwo\rthree"); });
  const auto ask = [&] { return prompts.Question("Caption", "Sure?"); };
  EXPECT_EQ(With_Dialog(Cancel, ask), Answer_No);
  EXPECT_EQ(With_Dialog([](QWidget* box) { QTest::keyClick(box, Qt::Key_Y, Qt::AltModifier); }, ask),
            Answer_Yes);
}

TEST_F(Forms, A_Notice_That_Nobody_Sees_Stays_And_Is_Told_Elsewhere) {
  QStringList elsewhere;
  TMessage_Prompts prompts([&](const QString& text) { elsewhere << text; });
  QMainWindow window;
  const auto after = [&](const char* text) {
    prompts.Notice(text);
    return elsewhere.join(QLatin1Char(' ')) + QLatin1Char('/') + window.statusBar()->currentMessage();
  };
  EXPECT_EQ(after("hidden"), QStringLiteral("hidden/hidden"));
  Show(window);
  EXPECT_EQ(after("seen"), QStringLiteral("hidden/seen"));
  window.showMinimized();
  EXPECT_EQ(after("small"), QStringLiteral("hidden small/small"));
}

}  // namespace
