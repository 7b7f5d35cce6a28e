#pragma once

// What any import and export may tell.

#include <stdexcept>
#include <string>

namespace Plexidex {

/// A file that cannot be imported; one sentence that names the file, the place in it where there is one, and
/// the reason.
class EImport_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TImport_Remark {
  std::string What;  // the title and the UID, as far as there are any
  std::string Why;
};

/// An export that did not happen; one sentence with the file and the reason.
class EExport_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace Plexidex
