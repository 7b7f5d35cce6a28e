#pragma once

#include <QWidget>
#include <string>

#include "Books.h"

namespace Plexidex {

/// Finds a book with which the user has the right to do something, by the level of the right; what is in the
/// way is told, a missing right by the warning sound.
bool May_Act_On_Book(const std::string& key, int level, const std::string& caption, Kt_data_01::TBook& book);

/// Lets the user change a book's name and the labels of its "Other" fields. True when something was saved.
bool Set_Up_Book(QWidget* window, const std::string& book);
/// Lets the user name and set up a new book. Its key, or "" when it was cancelled.
std::string New_Book(QWidget* window);
/// Asks, and removes a book with all it holds, for good. True when it is gone; a user without the right hears
/// the warning sound.
bool Delete_Book_After_Asking(const std::string& book);

}  // namespace Plexidex
