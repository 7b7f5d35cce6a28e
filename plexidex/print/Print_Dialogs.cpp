#include "Print_Dialogs.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QPaintEngine>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Progress_Dialog.h"
#include "Sheet_Output.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

template <class TBody>
void Report_Failure_Of(TBody body) {
  try {
    body();
  } catch (const ECancelled&) {
    Kt_util_01::Raise_Notice("Printing was cancelled.");
  } catch (const Kt_data_01::EData_Error&) {
    Kt_data_01::FailRead("Print_Dialogs:Build_Sheet [KT_Events/KT_Events_Data]");
  } catch (const std::exception& e) {
    Kt_util_01::Raise_Error("Print", e.what());
  }
}

TSheet Read_Sheet(QWidget* window, const TSheet_Request& request) {
  TProgress_Dialog progress(window, QObject::tr("Reading the entries..."));
  return Build_Sheet(request, &progress);
}

// On the printer's own paper, if there is a printer.
void Prepare(QPrinter& printer, const TSheet& sheet) {
  QPageLayout layout = Layout_Of(sheet.Kind, {});
  if (printer.outputFormat() == QPrinter::NativeFormat) layout.setPageSize(printer.pageLayout().pageSize());
  printer.setPageLayout(layout);
  printer.setDocName(To_Qt(sheet.Title));
  printer.setCreator(QStringLiteral("Plexidex"));
}

// A file in the place of a printer is written as any other: whole or not at all.
void Print_On(QPrinter& printer, QWidget* window, const TSheet& sheet) {
  const TPage_Range pages = {printer.fromPage(), printer.toPage()};
  TProgress_Dialog progress(window, QObject::tr("Printing the pages..."));
  if (printer.outputFormat() == QPrinter::PdfFormat) {
    Write_Pdf(sheet, printer.pageLayout(), From_Qt(printer.outputFileName()), &progress, pages);
  } else {
    Draw_Sheet(sheet, printer, &progress, pages);
  }
}

bool Is_Preview(const QPrinter& printer) {
  return printer.paintEngine()->type() == QPaintEngine::Picture;
}

struct TWait_Cursor {
  TWait_Cursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~TWait_Cursor() { QGuiApplication::restoreOverrideCursor(); }
};

// Reads a sheet and has it printed.
template <class TPrint>
void With_Printer(QWidget* window, const TSheet_Request& request, TPrint print) {
  Report_Failure_Of([&] {
    const TSheet sheet = Read_Sheet(window, request);
    QPrinter printer(QPrinter::HighResolution);
    Prepare(printer, sheet);
    const TModal_Scope modal;
    print(printer, sheet);
  });
}

QString File_Name_For(const TSheet& sheet) {
  return To_Qt(sheet.Title).replace(QLatin1Char('/'), QLatin1Char('-')) + QStringLiteral(".pdf");
}

}  // namespace

void Print_With_Dialog(QWidget* window, const TSheet_Request& request) {
  With_Printer(window, request, [window](QPrinter& printer, const TSheet& sheet) {
    QPrintDialog dialog(&printer, window);
    if (dialog.exec() == QDialog::Accepted) Print_On(printer, window, sheet);
  });
}

void Preview_Print(QWidget* window, const TSheet_Request& request) {
  constexpr int wide = 860, high = 900, frame = 40;
  With_Printer(window, request, [window](QPrinter& printer, const TSheet& sheet) {
    QPrintPreviewDialog dialog(&printer, window);
    dialog.resize(QSize(wide, high).boundedTo(dialog.screen()->availableSize() - QSize(frame, frame)));
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog, [&](QPrinter* on) {
      Report_Failure_Of([&] {
        if (!Is_Preview(*on)) return Print_On(*on, &dialog, sheet);
        const TWait_Cursor wait;
        Draw_Sheet(sheet, *on, nullptr);
      });
    });
    dialog.exec();
  });
}

void Save_As_Pdf(QWidget* window, const TSheet_Request& request) {
  Report_Failure_Of([&] {
    const TSheet sheet = Read_Sheet(window, request);
    const TModal_Scope modal;
    QFileDialog dialog(window, QObject::tr("Save as PDF"), File_Name_For(sheet),
                       QObject::tr("PDF files (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    if (dialog.exec() != QDialog::Accepted) return;
    TProgress_Dialog progress(window, QObject::tr("Writing the pages..."));
    const int pages =
        Write_Pdf(sheet, Layout_Of(sheet.Kind, {}), From_Qt(dialog.selectedFiles().value(0)), &progress);
    Kt_util_01::Raise_Notice("Pages written: " + std::to_string(pages));
  });
}

}  // namespace Plexidex
