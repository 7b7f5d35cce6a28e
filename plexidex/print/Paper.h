#pragma once

// On what a sheet is printed, and what writes it, for those who cannot see Qt.

#include <functional>
#include <string>

#include "Sheet.h"

namespace Plexidex {

/// By default the paper that is usual in the user's country, for a month on its side and else upright.
struct TPaper {
  enum class TSize { Usual, A4, Letter };
  enum class TTurn { Usual, Portrait, Landscape };
  TSize Size = TSize::Usual;
  TTurn Turn = TTurn::Usual;
};

/// Writes a sheet as a PDF file, whole or not at all; how many pages it has. Progress may be null. Throws
/// EOutput_Error and ESheet_Error.
using TPdf_Writer = std::function<int(const TSheet& sheet, const TPaper& paper, const std::string& file,
                                      Kt_data_01::TProgress_Bar* progress)>;

}  // namespace Plexidex
