#pragma once

#include <QObject>

namespace vx {

class CFindBar;
struct SBoardContext;

/// Finds texts and symbols in the watchlist.
///
/// Owns    nothing of the context
/// Thread  GUI thread only
class CFindDesk : public QObject {
    Q_OBJECT
public:
    explicit CFindDesk(const SBoardContext& context);

    /// The document is another one, or was saved: what the bar says of the last search is old.
    void ForgetAnswer();

private:
    void GoTo();

    const SBoardContext& m_context;
    CFindBar* m_bar;
};

} // namespace vx
