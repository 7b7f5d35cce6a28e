#pragma once

#include <QWidget>
#include <cstdint>
#include <string>

namespace Plexidex {

/// How many entries one file may bring, as the user set it.
std::int64_t Read_Most_Entries();
void Write_Most_Entries(std::int64_t entries);

/// Asks for a file of a calendar or of contacts, or takes the one named, and brings it into a book, with a
/// progress dialog that can be cancelled; says what came of it. True when something may have been written.
bool Import_With_Progress(QWidget* window, const std::string& book, QString file = {});
/// The same with a file that the desktop handed over: asks for the book.
bool Import_Into_Chosen_Book(QWidget* window, const QString& file);
/// Asks for a file and writes a book to it: its calendar, or its contacts where the file is named like
/// theirs.
void Export_With_Progress(QWidget* window, const std::string& book);

}  // namespace Plexidex
