#pragma once

// Which book a file is brought into, or written from.

#include <string>

#include "Books.h"

namespace Plexidex {

enum class TImported { Entries, Contacts };
/// The book of a name, or the first one for "", of those that the user may see; without a key where it is to
/// be made, as there is none. Throws EImport_Error where there is none of that name, or the user may not make
/// there what is brought in.
Kt_data_01::TBook Import_Book(const std::string& name, TImported what);
/// The same to export. Throws EExport_Error where there is none.
Kt_data_01::TBook Export_Book(const std::string& name);

}  // namespace Plexidex
