#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "Engine.h"
#include "Schema.h"

namespace Kt_data_01 {

/// A database that cannot be opened; says which file and why, in one sentence.
class EOpen_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Makes the schema in an empty database, or brings an older one up to date, in one transaction. Throws
/// EOpen_Error and changes nothing when the database belongs to another program, has a newer schema, or would
/// have to be changed and cannot be.
void Bring_Up_To_Date(TEngine& engine, const std::string& path, bool read_only);

/// Applies the steps that lie above `version`, in a transaction of the caller.
void Migrate(TEngine& engine, int version, const std::vector<TMigration>& steps);

}  // namespace Kt_data_01
