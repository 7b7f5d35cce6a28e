#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "Engine.h"
#include "Schema.h"

namespace Kt_data_01 {

/// A database that cannot be opened: one sentence that says which file and why.
class EOpen_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws EOpen_Error for a database of another program, or of a newer version of this one.
void Refuse_Foreign(const TIdentity& found, const std::string& path);

/// Creates the schema in an empty database or migrates an older one, in one transaction. Throws EOpen_Error
/// and changes nothing when the database belongs to another program, has a newer schema, or needs a change
/// and cannot be written.
void Bring_Up_To_Date(TEngine& engine, const std::string& path, bool read_only);

/// Applies the steps above `version`, inside the caller's transaction.
void Migrate(TEngine& engine, int version, const std::vector<TMigration>& steps);

}  // namespace Kt_data_01
