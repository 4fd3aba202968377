// SPDX-License-Identifier: MIT
#include "day/UserCommands.h"

#include "alerts/rules/AlertInfo.h"
#include "day/PlainList.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/ColumnMoves.h"
#include "watchlist/edit/PasteText.h"
#include "watchlist/edit/SortCommands.h"

#include <algorithm>

namespace vx::test {

namespace {

using EKind = SDayStep::EKind;

constexpr std::array kTexts = {"ibm", "MSFT", "ge", "T", "aa", "nope1", "NOPE2", "#Banks", "#Big tech names", ""};
constexpr std::array kFields = {"Bid", "Ask", "Volume", "% Chg", "Open", "Settle"};
constexpr uint32_t kRows = 14;

void Paste(const SDayStep& step, int row, int count, CWatchlistDoc& doc, CPlainList& plain) {
    std::vector<std::string> texts;
    std::string text;
    for (int i = 0; i < count; ++i) {
        texts.emplace_back(kTexts[(step.c / (1U << (4 * i))) % kTexts.size()]);
        text += texts.back() + "\n";
    }
    if (text.find_first_not_of('\n') == std::string::npos) return;
    PasteText(doc, row, 1, text);
    plain.Fill(row, texts);
}

void EditColumns(const SDayStep& step, CWatchlistDoc& doc) {
    const int columns = doc.Columns().Count() - 1;
    const int at = 1 + static_cast<int>(step.b) % columns, to = 1 + static_cast<int>(step.c) % columns;
    switch (step.a % 4) {
    case 0:
        InsertColumn(doc, at, kFields[step.c % kFields.size()]);
        return;
    case 1:
        if (columns > 3) RemoveColumn(doc, at);
        return;
    case 2:
        return MoveColumn(doc, at, to);
    default:
        return SetColumnWidth(doc, at, static_cast<int>(step.c % 4) * 40);
    }
}

// The order is the program's; that headings stay, and what is under them, is the plain list's.
std::string Sort(CWatchlistDoc& doc, CPlainList& plain) {
    const int rows = static_cast<int>(plain.rows.size());
    std::vector<uint32_t> ids;
    for (int row = 1; row <= rows; ++row) ids.push_back(doc.RowId(row));
    ManualSort(doc, {1, std::max(1, doc.RowCount()), 1, 1, 1});
    std::vector<int> order(static_cast<size_t>(rows), 0);
    for (int row = 1; row <= rows; ++row) {
        const int to = doc.RowOfId(ids[static_cast<size_t>(row - 1)]);
        if (to < 1) return "a sort lost a row";
        if (static_cast<size_t>(to) > order.size()) order.resize(static_cast<size_t>(to), 0);
        order[static_cast<size_t>(to - 1)] = row;
    }
    int headings = 0;
    std::vector<int> blockOf;
    for (const CPlainList::SRow& row : plain.rows)
        blockOf.push_back(row.kind == CPlainList::EKind::Heading ? -++headings : headings);
    headings = 0;
    for (const int row : order) {
        if (row == 0 || doc.Options().sortAcrossHeadings) continue;
        const int block = blockOf[static_cast<size_t>(row - 1)];
        if (block < 0 ? block != -++headings : block != headings) return "a sort mixed what is under headings";
    }
    plain.Reorder(order);
    return {};
}

void AddAlert(const SDayStep& step, CWatchlistDoc& doc, CPlainList& plain) {
    const std::string symbol = kSymbols[step.a % kSymbols.size()];
    A_INFO alert;
    alert.enabled = 1;
    alert.fieldId = AlertFieldId("Last").value();
    alert.condition = static_cast<uint32_t>(EAlertCondition::Greater);
    alert.value = step.b % 40 + step.c % 64 / 64.0;
    if (std::ranges::count(plain.alerts[symbol], alert.value, &CPlainList::SAlert::above) != 0) return;
    doc.Edit("new alert", [&](CWatchlistEdit& edit) { edit.Alerts().Add(symbol, alert); });
    plain.AddAlert(symbol, alert.value);
}

} // namespace

std::string DoAsUser(const SDayStep& step, CWatchlistDoc& doc, CPlainList& plain) {
    const int row = 1 + static_cast<int>(step.a % kRows), count = 1 + static_cast<int>(step.b % 3);
    const int last = plain.LastUsedRow();
    switch (step.kind) {
    case EKind::Paste:
        Paste(step, row, count, doc, plain);
        break;
    case EKind::Insert:
        doc.InsertRows(row, count);
        plain.Insert(row, count);
        break;
    case EKind::Delete:
        doc.DeleteRows(row, count);
        plain.Delete(row, count);
        break;
    case EKind::Move: {
        const int used = std::max(1, last), first = 1 + row % used, many = std::min(count, used - first + 1);
        const int before = 1 + static_cast<int>(step.c) % (used + 1);
        doc.MoveRows(first, many, before);
        plain.Move(first, many, before);
        break;
    }
    case EKind::Empty:
        doc.Edit("empty row", [&](CWatchlistEdit& edit) { edit.EmptyRow(row); });
        plain.Empty(row);
        break;
    case EKind::Note: {
        const std::string note = step.c % 3 == 0 ? std::string() : "n" + std::to_string(step.c % 100);
        doc.Edit("note", [&](CWatchlistEdit& edit) {
            edit.Notes().Set(row, note);
            edit.ShowText(row, {});
        });
        plain.SetNote(row, note);
        break;
    }
    case EKind::Hide:
        if (last == 0) break;
        doc.SetRowsHidden({1 + row % last}, step.b % 2 == 0);
        plain.SetHidden(1 + row % last, step.b % 2 == 0);
        break;
    case EKind::Sort:
        return Sort(doc, plain);
    case EKind::Format: {
        SCellFormat format;
        format.decimals = static_cast<int>(step.b % 6);
        const int column = static_cast<int>(step.c % static_cast<uint32_t>(doc.Columns().Count()));
        const int formatted = column == 0 || step.b % 5 == 0 ? 0 : row;
        doc.Edit("format", [&](CWatchlistEdit& edit) { edit.Formats().Set(formatted, column, format); });
        break;
    }
    case EKind::Column:
        EditColumns(step, doc);
        break;
    case EKind::Option:
        doc.Edit("option", [&](CWatchlistEdit& edit) {
            SWatchlistOptions& options = edit.Options();
            (step.a % 3 == 0 ? options.trailingRows : options.lockedColumns) = static_cast<int>(step.b % 4);
            options.sortAcrossHeadings = step.c % 4 == 0;
            options.showToolBar = step.c % 5 != 0;
        });
        break;
    case EKind::Alert:
        AddAlert(step, doc, plain);
        break;
    case EKind::Together: {
        std::string fault;
        doc.Edit("together", [&](CWatchlistEdit& edit) {
            for (uint32_t i = 1 + step.b % 7; i > 0; --i) {
                const auto kind = static_cast<EKind>((step.a >> i) % static_cast<uint32_t>(EKind::Together));
                fault += DoAsUser({kind, step.a / i, step.b / i, step.c / i}, doc, plain);
                if (step.c % 5 != i) continue;
                edit.Cancel();
                plain.Cancel();
            }
        });
        return fault;
    }
    case EKind::Undo:
        return doc.Undo().Undo().done == plain.Undo() ? "" : "only one could undo";
    case EKind::Redo:
        return doc.Undo().Redo().done == plain.Redo() ? "" : "only one could redo";
    default:
        break;
    }
    return {};
}

} // namespace vx::test
