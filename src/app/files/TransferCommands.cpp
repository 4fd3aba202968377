// SPDX-License-Identifier: MIT
#include "app/files/TransferCommands.h"

#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "app/files/FileController.h"
#include "app/files/FileDialogs.h"
#include "app/files/ListPrinter.h"
#include "app/frame/Dialogs.h"
#include "app/frame/ProgramName.h"
#include "app/frame/StatusPanes.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/MessageBox.h"
#include "base/Windows1252.h"
#include "base/qt/QtText.h"
#include "watchlist/dialogs/ImportDlg.h"
#include "watchlist/dialogs/QuoteDataOptions.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/ImportText.h"
#include "watchlist/exchange/ExportText.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QFile>
#include <QPrintDialog>
#include <QPrinter>

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

// More is rarely meant; a tree stands for about as many sheets as this makes.
constexpr int kManyPages = 200;

void Tell(const std::string& text, EBoxIcon icon) {
    if (!text.empty()) ShowMessageBox({text, kProgramName, EBoxButtons::Ok, icon});
}

} // namespace

CTransferCommands::CTransferCommands(const SFrameContext& context, CFileController& files)
    : QObject(&context.window), m_context(context), m_files(files) {
    context.commands.Bind(ECommand::FileImport, [this] { AskAndImport(); });
    context.commands.Bind(ECommand::FileExport, [this] { Export(); });
    context.commands.Bind(ECommand::FilePrint, [this] { Print(); });
    connect(&files, &CFileController::ImportAsked, this, &CTransferCommands::ImportFile);
}

// Export

void CTransferCommands::Export() {
    const SExportOptions& options = m_context.doc.Options().exporting;
    CQuoteDataOptions dialog(options, &m_context.window);
    if (dialog.exec() != QDialog::Accepted) return;
    m_context.doc.RememberExport(dialog.Options());
    EnterWatchlistFolder(m_context.settings);
    const std::string path =
        AskForFileToSave(&m_context.window, {QStringLiteral("Export"),
                                             options.commas ? QStringLiteral("Comma Delimited (*.csv)")
                                                            : QStringLiteral("Tabular Delimited (*.txt)"),
                                             options.commas ? QStringLiteral("csv") : QStringLiteral("txt"),
                                             {},
                                             !options.append});
    if (path.empty()) return;
    const std::string name = Windows1252FromUtf8(path);
    const SExportResult result = ExportToFile(m_context.doc, options, path);
    const std::string reason = ErrorText(result.error);
    switch (result.outcome) {
    case EExportOutcome::Written:
        return Report(fmt::format("{} \"{}\"", options.append ? "Exported to the end of" : "Exported to", name));
    case EExportOutcome::NotOpened: // No box: such a file is passed over.
        return Report(fmt::format("Nothing was exported: \"{}\" could not be opened: {}", name, reason));
    case EExportOutcome::Failed:
        return Tell(fmt::format("The export to \"{}\" failed: {}. The file holds what it held before.", name, reason),
                    EBoxIcon::Exclamation);
    case EExportOutcome::Torn:
        return Tell(fmt::format("The export to \"{}\" is not whole: {}.", name, reason), EBoxIcon::Exclamation);
    }
}

void CTransferCommands::Report(const std::string& text) {
    LogInformation(text);
    m_context.status.Say(text);
}

// Import

void CTransferCommands::AskAndImport() {
    EnterWatchlistFolder(m_context.settings);
    const std::string path = AskForFileToOpen(
        &m_context.window,
        {QStringLiteral("Import Symbols"), QStringLiteral("Lists of Symbols (*.csv *.txt);;All Files (*)"), {}, {}});
    if (!path.empty()) ImportFile(path);
}

void CTransferCommands::ImportFile(const std::string& path) {
    const SImportFile file = ReadImportFile(path);
    if (!file.error.empty()) return Tell(file.error, EBoxIcon::Exclamation);
    ImportText(file.text, fmt::format("\"{}\"", Windows1252FromUtf8(path)));
}

void CTransferCommands::ImportText(const std::string& text, const std::string& source) {
    SImportPreview preview;
    {
        CWorkProgressBox progress(&m_context.window, QStringLiteral("Looking for symbols..."));
        preview = ReadImport(m_context.doc, text, progress.Function());
    }
    if (preview.cancelled) return;
    const int row = std::max(1, m_context.view.Grid().FocusCell().row);
    CImportDlg dialog(preview, QtText(source), row, &m_context.window);
    if (dialog.exec() != QDialog::Accepted) return;
    SImportResult result;
    {
        CWorkProgressBox progress(&m_context.window, QStringLiteral("Adding symbols..."));
        result = ApplyImport(m_context.doc, preview, row, progress.Function());
    }
    if (result.lastRow > 0) m_context.view.ShowRows(result.firstRow, result.lastRow);
    Tell(result.message, EBoxIcon::Information);
}

// Print

void CTransferCommands::Print() {
    if (m_context.doc.LastUsedRow() < 1)
        return Tell("The watchlist is empty: there is nothing to print.", EBoxIcon::Information);
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    const std::string& path = m_files.File().Path();
    const QString title =
        path.empty() ? QString::fromLatin1(kProgramName) : QFile::decodeName(TitleOfPath(path).c_str());
    printer.setDocName(title);
    QPrintDialog dialog(&printer, &m_context.window);
    dialog.setObjectName(QStringLiteral("printDialog"));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    if (dialog.exec() != QDialog::Accepted) return;
    m_context.view.Grid().EnterAllFonts();
    CListPrinter list(m_context.view.Grid(), m_context.doc.LastUsedRow(), title, printer);
    const bool range = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const int first = range ? printer.fromPage() : 1;
    const int last = range ? std::min(printer.toPage(), list.PageCount()) : list.PageCount();
    if (last - first >= kManyPages && ShowMessageBox({fmt::format("This prints {} pages. Go on?", last - first + 1),
                                                      {},
                                                      EBoxButtons::YesNo,
                                                      EBoxIcon::Question}) != EBoxAnswer::Yes)
        return;
    bool cancelled = false;
    CWorkProgressBox progress(&m_context.window, QStringLiteral("Printing..."));
    const bool done = list.Print(first, last, [&](int page) {
        cancelled = !progress.Step(static_cast<size_t>(page - first), static_cast<size_t>(last - first + 1));
        return !cancelled;
    });
    if (!done && !cancelled) Tell("The watchlist could not be printed.", EBoxIcon::Exclamation);
    if (cancelled) printer.abort();
}

} // namespace vx
