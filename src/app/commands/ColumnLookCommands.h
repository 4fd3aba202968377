// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"

#include <functional>
#include <vector>

namespace vx {

enum class EDirectionLook : uint8_t;
struct SColumnLook;

/// How the numbers of the selected columns are drawn: thousands separators, short forms, how their direction is shown,
/// and whether a change lights up.
///
/// Shape   columns without numbers are left alone; where there are no others the commands are disabled and say why
/// Thread  GUI thread only
class CColumnLookCommands : public CCommandGroup {
    Q_OBJECT
public:
    CColumnLookCommands(const SFrameContext& context, QObject* parent);

private:
    void BindSwitch(ECommand command, bool SColumnLook::*member);
    void BindDirection(ECommand command, EDirectionLook direction);
    /// Those of the selected columns that show numbers; directed: and their direction.
    std::vector<int> Columns(bool directed) const;
    bool AllOf(const std::vector<int>& columns, const std::function<bool(const SColumnLook&)>& isSo) const;
    void Change(const std::vector<int>& columns, const char* verb, const std::function<void(SColumnLook&)>& change);
};

} // namespace vx
