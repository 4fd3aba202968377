// SPDX-License-Identifier: MIT
#include "app/commands/ColumnLookCommands.h"

#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/RowCellText.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

CColumnLookCommands::CColumnLookCommands(const SFrameContext& context, QObject* parent)
    : CCommandGroup(context, parent) {
    BindSwitch(ECommand::ColumnSeparators, &SColumnLook::separators);
    BindSwitch(ECommand::ColumnShortForms, &SColumnLook::shortForms);
    BindSwitch(ECommand::ColumnFlash, &SColumnLook::flash);
    BindDirection(ECommand::DirectionColour, EDirectionLook::Colour);
    BindDirection(ECommand::DirectionBackground, EDirectionLook::Background);
    BindDirection(ECommand::DirectionArrow, EDirectionLook::Arrow);
    BindDirection(ECommand::DirectionNone, EDirectionLook::None);
}

void CColumnLookCommands::BindSwitch(ECommand command, bool SColumnLook::*member) {
    const auto isOn = [member](const SColumnLook& look) { return look.*member; };
    Commands().Bind(
        command,
        [this, isOn, member] {
            const std::vector<int> columns = Columns(false);
            const bool on = !AllOf(columns, isOn);
            Change(columns, "change the numbers of", [=](SColumnLook& look) { look.*member = on; });
        },
        [this, isOn](SCommandState& state) {
            const std::vector<int> columns = Columns(false);
            state.enabled = !columns.empty();
            state.checked = AllOf(columns, isOn);
            if (!state.enabled) state.tip = QStringLiteral("The selected columns hold no numbers");
        });
}

void CColumnLookCommands::BindDirection(ECommand command, EDirectionLook direction) {
    Commands().Bind(
        command,
        [this, direction] {
            Change(Columns(true), "show the direction of", [=](SColumnLook& look) { look.direction = direction; });
        },
        [this, direction](SCommandState& state) {
            const std::vector<int> columns = Columns(true);
            state.enabled = !columns.empty();
            state.checked = AllOf(columns, [=](const SColumnLook& look) { return look.direction == direction; });
            if (state.enabled) return;
            state.tip = Columns(false).empty()
                            ? QStringLiteral("The selected columns hold no numbers")
                            : QStringLiteral("The formats of the selected columns colour numbers by nothing");
        });
}

std::vector<int> CColumnLookCommands::Columns(bool directed) const {
    std::vector<int> out;
    const SGridRange range = Region().range;
    for (int column = std::max(1, range.firstColumn); column <= std::min(range.lastColumn, Doc().Columns().Count() - 1);
         ++column) {
        const CColumnReader reader(Doc(), column);
        if (reader.NeedsRecord() && reader.IsNumber() && !reader.IsTickTrend() &&
            (!directed || Doc().Formats().ColumnFormat(column).colourByDirection))
            out.push_back(column);
    }
    return out;
}

bool CColumnLookCommands::AllOf(const std::vector<int>& columns,
                                const std::function<bool(const SColumnLook&)>& isSo) const {
    const auto looksSo = [&](int column) { return isSo(Doc().Columns().At(column).look); };
    return !columns.empty() && std::ranges::all_of(columns, looksSo);
}

void CColumnLookCommands::Change(const std::vector<int>& columns, const char* verb,
                                 const std::function<void(SColumnLook&)>& change) {
    const std::string what = columns.size() == 1 ? "column " + Doc().Columns().At(columns.front()).name
                                                 : Counted(static_cast<int>(columns.size()), "column");
    Doc().Edit(fmt::format("{} {}", verb, what), [&](CWatchlistEdit& edit) {
        for (const int column : columns) {
            SColumnLook look = Doc().Columns().At(column).look;
            change(look);
            edit.Columns().SetLook(column, look);
        }
    });
}

} // namespace vx
