#pragma once

#include <functional>
#include <string>

#include "Kt_forms.h"

namespace Plexidex {

/// The part of the main window that holds one page: what pages find when they look for the form around them.
class TPage_Place : public Kt_forms::TForm {
  Q_OBJECT

 public:
  explicit TPage_Place(QWidget* parent = nullptr);

  /// To be told before the tree beside it is read.
  void Tree_Is_Shown() { Rows_Are_Shown(); }

 signals:
  /// The database has changed since then.
  void Tree_Is_Stale();
  /// A page asks for one of the host's own pages.
  void Display_Page(int index);
  void Add_Contact();

 protected:
  void Handle_Message(const Kt_forms::TMessage& message) override;
  void Rows_Changed() override { emit Tree_Is_Stale(); }
};

/// A page of the host that belongs to a book: makes entries for its owner when it is asked to.
class TBook_Page : public Kt_forms::TForm {
  Q_OBJECT

 public:
  using TForm::TForm;
  /// Of the book `book`; new entries belong to `owner`, a contact or the book's calendar record.
  void Set_Keys(const std::string& book, const std::string& owner);
  const std::string& Book() const { return book_key; }
  const std::string& Owner() const { return owner_key; }
  virtual void Reload() = 0;

 protected:
  void Handle_Message(const Kt_forms::TMessage& message) override;
  void Rows_Changed() override { Reload(); }

 private:
  void New_Entry(bool task);

  std::string book_key, owner_key;
};

/// Embeds a page of the class, an existing one again, and has it read what it shows; a new one is told to
/// `made` once. Null when the page that is in the way refuses to close.
template <class T>
T* Display_Book_Page(
    QWidget* parent, Kt_forms::TForm_Reference& form, const std::string& book, const std::string& owner,
    const std::function<void(T&)>& made = [](T&) {}) {
  const bool is_new = !form.As<T>();
  T* page = form.Reuse_Or_Replace<T>();
  if (!page) return nullptr;
  if (is_new) made(*page);
  Kt_forms::Embed_Page(page, parent);
  page->Set_Keys(book, owner);
  page->show();
  page->Reload();
  return page;
}

}  // namespace Plexidex
