// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vx {

class CAlertsMap;

/// What one step changed in the alerts: those of the symbols that differ. Undoing exchanges them with the document's.
///
/// What became of an alert since stays: that it fired, or was armed again, perhaps with another threshold. Undoing arms
/// nothing that fired.
///
/// Thread  GUI thread only
class CUndoAlerts {
public:
    CUndoAlerts() = default; ///< Of a step that changes none.
    /// The user is about to change alerts.
    explicit CUndoAlerts(const CAlertsMap& map);

    /// The step is whole: keeps what differs.
    void Close(const CAlertsMap& map);
    bool IsEmpty() const { return m_alerts.empty(); }
    void Exchange(CAlertsMap& map);
    size_t Bytes() const;

private:
    struct SAlerts {
        std::string symbol;
        CAlertArray other;
        CAlertArray present; ///< As this step left them.
    };
    std::vector<SAlerts> m_alerts; ///< By symbol, rising.
};

} // namespace vx
