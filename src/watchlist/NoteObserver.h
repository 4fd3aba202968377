#pragma once

namespace vx {

/// Hears of every note before it changes.
///
/// Thread  GUI thread only
class CNoteObserver {
public:
    virtual ~CNoteObserver() = default;
    virtual void BeforeNote(int row) = 0;
};

} // namespace vx
