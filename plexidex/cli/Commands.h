#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "Kt_lists.h"
#include "Paper.h"

namespace Plexidex {

/// Runs one command of the program: `args` without the program's own name, results on `out`, everything else
/// on `err`, each error in one sentence. Returns the exit status, 0 when all was done. Opens and closes the
/// shared database, and has prompts written to `err` meanwhile. `progress` may be null, and without a
/// `write_pdf` the program cannot print.
int Run_Program(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                Kt_data_01::TProgress_Bar* progress = nullptr, const TPdf_Writer& write_pdf = {});

}  // namespace Plexidex
