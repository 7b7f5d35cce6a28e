#pragma once

#include <QPageLayout>
#include <QPagedPaintDevice>

#include "Paper.h"

namespace Plexidex {

QPageLayout Layout_Of(TSheet_Kind kind, const TPaper& paper);

/// From 1, both included; 0 is where there are no others.
struct TPage_Range {
  int First = 0, Last = 0;
};

/// Draws the pages of a sheet; how many it has in all. Throws ESheet_Error when the device does not take
/// them.
int Draw_Sheet(const TSheet& sheet, QPagedPaintDevice& device, Kt_data_01::TProgress_Bar* progress,
               const TPage_Range& range = {});

/// As a TPdf_Writer does.
int Write_Pdf(const TSheet& sheet, const QPageLayout& layout, const std::string& file,
              Kt_data_01::TProgress_Bar* progress, const TPage_Range& range = {});
/// The TPdf_Writer of a program without windows: makes what Qt needs for the time of the call.
int Write_Pdf_Without_Display(const TSheet& sheet, const TPaper& paper, const std::string& file,
                              Kt_data_01::TProgress_Bar* progress);

}  // namespace Plexidex
