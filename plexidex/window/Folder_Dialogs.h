#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace Plexidex {

/// Lets the user name a new folder in a folder, or at the top of the book. Its key, or "" when it was
/// cancelled; a user without the right hears the warning sound.
std::string New_Folder(QWidget* window, const std::string& book, const std::string& parent);
/// Lets the user rename one. True when it was saved.
bool Edit_Folder(QWidget* window, const std::string& folder);
/// Asks, and removes a folder, whose content moves to where it lay. True when it is gone.
bool Delete_Folder_After_Asking(const std::string& folder);

/// Moves contacts and folders of a book into one of its folders, or to its top: all of them, or none, and
/// then the user is told why.
bool Move_Contacts(const std::string& book, const std::vector<std::string>& keys, const std::string& folder);
/// The same after the user has chosen the folder.
bool Move_With_Dialog(QWidget* window, const std::string& book, const std::vector<std::string>& keys);

}  // namespace Plexidex
