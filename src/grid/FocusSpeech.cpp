#include "grid/FocusSpeech.h"

#include "grid/GridAccessible.h"
#include "grid/GridCellAccessible.h"
#include "grid/GridCtrl.h"

namespace vx {

CFocusSpeech::CFocusSpeech(CGridCtrl& grid) : m_grid(grid), m_pause(&grid) {
    m_pause.setObjectName(QStringLiteral("focusSpeechPause"));
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPauseMs);
    QObject::connect(&m_pause, &QTimer::timeout, &grid, [this] { Say(); });
}

bool CFocusSpeech::IsHeard() const { return QAccessible::isActive() && m_grid.hasFocus(); }

void CFocusSpeech::Moved() {
    if (!IsHeard()) return;
    m_said = SpokenCell(m_grid, m_grid.FocusCell());
    m_pause.start(); // What was read just now is not talked over.
}

void CFocusSpeech::TextsChanged() {
    if (IsHeard() && !m_pause.isActive()) Say();
}

void CFocusSpeech::Say() {
    if (!IsHeard()) return;
    const QString text = SpokenCell(m_grid, m_grid.FocusCell());
    if (text == m_said) return;
    m_said = text;
    AnnounceCell(m_grid, m_grid.FocusCell(), QAccessible::NameChanged);
    m_pause.start();
}

} // namespace vx
