// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace vx {

class CFindBar;
struct SFrameContext;

/// Finds texts and symbols in the watchlist.
///
/// Owns    nothing of the context
/// Thread  GUI thread only
class CFindCommands : public QObject {
    Q_OBJECT
public:
    explicit CFindCommands(const SFrameContext& context);

    /// The document is another one, or was saved: what the bar says of the last search is old.
    void ForgetAnswer();

private:
    void GoTo();

    const SFrameContext& m_context;
    CFindBar* m_bar;
};

} // namespace vx
