#include "Sheet_Output.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <iostream>

#include "Output_File.h"
#include "Sheet_Pages.h"

namespace Plexidex {

QPageLayout Layout_Of(TSheet_Kind kind, const TPaper& paper) {
  constexpr qreal margin = 13;
  const bool letter = paper.Size == TPaper::TSize::Usual
                          ? QLocale::system().measurementSystem() == QLocale::ImperialUSSystem
                          : paper.Size == TPaper::TSize::Letter;
  const bool on_its_side = paper.Turn == TPaper::TTurn::Usual ? kind == TSheet_Kind::Month
                                                              : paper.Turn == TPaper::TTurn::Landscape;
  return QPageLayout(QPageSize(letter ? QPageSize::Letter : QPageSize::A4),
                     on_its_side ? QPageLayout::Landscape : QPageLayout::Portrait,
                     {margin, margin, margin, margin}, QPageLayout::Millimeter);
}

int Draw_Sheet(const TSheet& sheet, QPagedPaintDevice& device, Kt_data_01::TProgress_Bar* progress,
               const TPage_Range& range) {
  QPainter painter;
  if (!painter.begin(&device)) throw ESheet_Error("Nothing was printed: the printer cannot be used.");
  const TSheet_Pages pages(sheet, device);
  const int first = qMax(1, range.First),
            last = range.Last > 0 ? qMin(range.Last, pages.Count()) : pages.Count();
  const auto check = [](bool taken) {
    if (!taken) throw ESheet_Error("The printer has not taken all pages.");
  };
  if (progress) progress->Set_Max(last);
  for (int page = first; page <= last; ++page) {
    check(page == first || device.newPage());
    pages.Draw(painter, page - 1);
    if (progress) progress->Set_Position(page);
  }
  check(painter.end());
  return pages.Count();
}

int Write_Pdf(const TSheet& sheet, const QPageLayout& layout, const std::string& file,
              Kt_data_01::TProgress_Bar* progress, const TPage_Range& range) {
  // What cannot be written is known before the work is done.
  Kt_data_01::TOutput_File out(file);
  QBuffer buffer;
  int count = 0;
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setPageLayout(layout);
    writer.setTitle(QString::fromStdString(sheet.Title));
    writer.setCreator(QStringLiteral("Plexidex"));
    count = Draw_Sheet(sheet, writer, progress, range);
  }
  out.Stream().write(buffer.data().constData(), buffer.size());
  out.Keep();
  return count;
}

int Write_Pdf_Without_Display(const TSheet& sheet, const TPaper& paper, const std::string& file,
                              Kt_data_01::TProgress_Bar* progress) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qunsetenv("QT_QPA_PLATFORMTHEME");
  // What Qt remarks about its surroundings is nothing to the user.
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtFatalMsg) std::cerr << message.toStdString() << std::endl;
  });
  int count = 1;
  char name[] = "plexidex";
  char* arguments[] = {name, nullptr};
  const QGuiApplication application(count, arguments);
  return Write_Pdf(sheet, Layout_Of(sheet.Kind, paper), file, progress);
}

}  // namespace Plexidex
