#pragma once

#include <QDialog>
#include <string>

namespace Plexidex {

/// Whether the key is a contact's; false also after a failed read, which is reported.
bool Is_Contact(const std::string& key);
/// Lets the user edit a contact's name and details, or read them who may not change it. True when something
/// was saved.
bool Edit_Contact(QWidget* window, const std::string& contact);
/// Lets the user enter a new contact of a book, in a folder or at its top. Its key, or "" when it was
/// cancelled.
std::string New_Contact(QWidget* window, const std::string& book, const std::string& folder = {});

}  // namespace Plexidex
