#pragma once

#include <QObject>

#include <cstdint>

namespace vx {

/// Message boxes that open by themselves while one of these lives, as after a save on a slow disk, take no key until
/// none was pressed for kQuietMs: what is being typed was meant for the window.
///
/// Thread  GUI thread only
class CStrayKeyGuard : public QObject {
    Q_OBJECT
public:
    static constexpr int kQuietMs = 2000;

    CStrayKeyGuard();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_holds = false;
    int64_t m_lastMs = 0; ///< When the box opened, or a key was pressed since.
};

} // namespace vx
