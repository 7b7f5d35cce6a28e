#pragma once

#include <memory>
#include <string>

#include "Criteria_Rules.h"
#include "Current_Search.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"

class QComboBox;

namespace Ui {
class Criteria_Page;
}

namespace KTReminds {

/// How the pages on which criteria are put together differ.
struct TCriteria_Texts {
  QString Title, List_Title;
  QString Search_Hint;  // of the link that searches
  int Results, Closed;  // the pages that the form around is asked for: what was found, and what was there
};

/// A page on which the criteria of the current search are put together one by one. Each names the groups
/// that it offers.
class TCriteria_Page : public Kt_forms::TForm {
  Q_OBJECT

 public:
  ~TCriteria_Page() override;

  void Set_Book(const std::string& key);
  /// Shows the current search, which it makes when there is none.
  virtual void DoRefresh();

 signals:
  /// The user has cleared the current search.
  void Search_Cleared();

 protected:
  explicit TCriteria_Page(const TCriteria_Texts& texts);

  virtual TSearch_Choices Groups() const = 0;
  virtual TSearch_Choices Fields(int group, const std::string& group_name) const;
  /// The page that shows what is found.
  virtual int Results() const { return texts.Results; }
  /// What a page has besides, one below the other above the criterion.
  void Add_Extras(QWidget* added);
  /// Reads the groups anew; nothing is chosen then.
  void Read_Groups();
  /// umEnterPressed adds the criterion for which an action is chosen, or else searches; umSetActiveControl
  /// gives the page the keyboard.
  void Handle_Message(const Kt_forms::TMessage& message) override;

  std::string Book;

 private:
  void Connect_Controls();
  void Group_Chosen();
  void Field_Chosen();
  void Action_Chosen();
  void Show_Value(int action);
  void Add_Criteria();
  void Remove_Criteria();
  void Clear_Fields(bool with_group);
  void Enter_Pressed();
  int Selected_Line() const;
  TCriterion_Input Input() const;
  void Put_Back(const TCriterion_Input& input);

  const TCriteria_Texts texts;
  std::unique_ptr<Ui::Criteria_Page> ui;
  QWidget* last_extra = nullptr;  // that can have the keyboard
  bool shown = false;             // from the first refresh on the boxes make a sound
};

/// What the entry point of each does: shows the page for a book, with an empty search if `clear` says so.
template <class TPage>
bool Display_Criteria_Page(QWidget* parent, Kt_forms::TForm_Reference& form, const std::string& book,
                           bool clear) {
  Kt_util_01::Sound(2);
  auto* page = form.Reuse_Or_Replace<TPage>();
  if (!page) return false;
  if (clear) Clear_Search();
  Kt_forms::Embed_Page(page, parent);
  page->Set_Book(book);
  page->show();
  page->DoRefresh();
  return true;
}

}  // namespace KTReminds
