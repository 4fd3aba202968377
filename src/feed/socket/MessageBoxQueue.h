#pragma once

#include "base/MessageBox.h"

#include <QObject>

#include <deque>

namespace vx {

/// Shows message boxes from the event loop, one at a time, in the order they were posted.
///
/// A box opened inside a socket notification would keep that socket silent until the user answers; a posted one lets
/// the feed run on behind it.
///
/// Owns    the boxes that wait; they go unseen with the queue
/// Thread  GUI thread only
class CMessageBoxQueue {
public:
    void Post(SMessageBox box);

private:
    void Schedule();
    void ShowNext();

    std::deque<SMessageBox> m_waiting;
    bool m_busy = false; ///< A box is open or its turn is posted.
    QObject m_context;   ///< Turns that are still posted go with it.
};

} // namespace vx
