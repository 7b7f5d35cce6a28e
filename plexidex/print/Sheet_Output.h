#pragma once

#include <QPageLayout>
#include <QPagedPaintDevice>

#include "Paper.h"

namespace Plexidex {

QPageLayout Layout_Of(TSheet_Kind kind, const TPaper& paper);

/// Draws the pages of a sheet from one to another, by default all; how many it has. A last page of 0 is the
/// last there is. Throws ESheet_Error when the device does not take them.
int Draw_Sheet(const TSheet& sheet, QPagedPaintDevice& device, Kt_data_01::TProgress_Bar* progress,
               int first = 1, int last = 0);

/// As a TPdf_Writer does.
int Write_Pdf(const TSheet& sheet, const QPageLayout& layout, const std::string& file,
              Kt_data_01::TProgress_Bar* progress);
/// The TPdf_Writer of a program without windows: makes what Qt needs for the time of the call.
int Write_Pdf_Without_Display(const TSheet& sheet, const TPaper& paper, const std::string& file,
                              Kt_data_01::TProgress_Bar* progress);

}  // namespace Plexidex
