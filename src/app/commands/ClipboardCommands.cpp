// SPDX-License-Identifier: MIT
#include "app/commands/ClipboardCommands.h"

#include "app/commands/FrameContext.h"
#include "app/frame/Dialogs.h"
#include "base/MessageBox.h"
#include "base/qt/QtText.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/PasteText.h"
#include "watchlist/edit/SortCommands.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>
#include <optional>

namespace vx {

namespace {

const QString kBoardFormat = QStringLiteral("application/x-zantrel-board");

// The grid's own form of a text, else the text itself; nothing when there is none.
std::optional<SPastedText> TextOf(const QMimeData* data) {
    if (data == nullptr) return std::nullopt;
    if (data->hasFormat(kBoardFormat))
        return SPastedText{QString::fromUtf8(data->data(kBoardFormat)), EAnnotationMarks::Yes};
    if (data->hasText()) return SPastedText{data->text(), EAnnotationMarks::No};
    return std::nullopt;
}

} // namespace

CClipboardCommands::CClipboardCommands(const SFrameContext& context, QObject* parent) : CCommandGroup(context, parent) {
    context.commands.Bind(ECommand::EditCopy, [this] { Copy(); });
    context.commands.Bind(ECommand::EditCut, [this] { Cut(); });
    context.commands.Bind(ECommand::EditPaste, [this] { Paste(); });
    connect(&Grid(), &CGridCtrl::DataDropped, this, [this](const QMimeData* dropped, int row, int column) {
        if (dropped != nullptr) Drop(*dropped, row, column);
    });
}

void CClipboardCommands::Copy() {
    const SCellRange range = CellRange();
    auto data = std::make_unique<QMimeData>();
    data->setText(QString::fromStdString(CopyText(Doc(), range)));
    data->setData(kBoardFormat, QByteArray::fromStdString(CopyText(Doc(), range, EAnnotationMarks::Yes)));
    QGuiApplication::clipboard()->setMimeData(data.release());
    Grid().SetMarkedRange(Region().range);
}

void CClipboardCommands::Cut() {
    const SGridRegion region = Region();
    Copy();
    if (!MayDeleteSelection(Doc())) return;
    const CGridGeometry& geometry = Grid().Geometry();
    const int rows = geometry.ShownRowsIn(region.range.firstRow, region.range.lastRow);
    const std::string what =
        region.kind == ERegion::Rows ? Counted(rows, "row") : Counted(rows * region.Columns(), "cell");
    Doc().Edit("cut " + what, [this](CWatchlistEdit& edit) {
        const CEditBatch batch(edit);
        CutShownRows();
    });
    Grid().SetMarkedRange({});
}

// Hidden rows were not copied and stay as they are.
void CClipboardCommands::CutShownRows() {
    SCellRange run = CellRange();
    const int lastRow = run.lastRow;
    const CGridGeometry& geometry = Grid().Geometry();
    for (int row = geometry.NextShownRow(run.firstRow); row <= lastRow; row = geometry.NextShownRow(run.lastRow + 1)) {
        run.firstRow = run.lastRow = row;
        while (run.lastRow < lastRow && !Grid().IsRowHidden(run.lastRow + 1)) ++run.lastRow;
        ClearRange(Doc(), run);
    }
}

void CClipboardCommands::Paste() {
    const std::optional<SPastedText> text = TextOf(QGuiApplication::clipboard()->mimeData());
    if (!text) return Say("The clipboard holds no text.");
    const SGridRange range = Region().range;
    PasteAt(*text, range.firstRow, range.firstColumn);
}

// The program that the text comes from waits until the drop is over, so the rows are filled after it.
void CClipboardCommands::Drop(const QMimeData& dropped, int row, int column) {
    const std::optional<SPastedText> text = TextOf(&dropped);
    if (!text) return;
    QMetaObject::invokeMethod(
        this, [this, row, column, held = *text] { PasteAt(held, row, column); }, Qt::QueuedConnection);
}

void CClipboardCommands::PasteAt(const SPastedText& pasted, int row, int column) {
    if (Doc().Undo().IsRecording()) return; // A long one is still under way.
    Grid().SetMarkedRange({});
    SPasteResult result;
    {
        CWorkProgressBox progress(&Window(), QStringLiteral("Pasting rows..."));
        result = PasteText(Doc(), row, column, BytesFromQt(pasted.text), pasted.marks, progress.Function());
    }
    if (!result.message.empty()) ShowMessageBox({result.message, {}, EBoxButtons::Ok, EBoxIcon::Exclamation});
    if (result.outcome != EPasteOutcome::Pasted) return;
    View().ShowRows(result.firstRow, result.lastRow);
    if (!result.summary.empty()) Say(result.summary);
}

} // namespace vx
